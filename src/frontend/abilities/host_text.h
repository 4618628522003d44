// The words of the host program around the models.
#pragma once

#include "frontend/abilities/document.h"

#include <optional>
#include <string_view>
#include <vector>

namespace orvex::frontend {

// Where a name is a word of the host program, in the order of the text: outside models, comments,
// control lines ("$" in column 1), quotes and "%X%", and not an attribute such as ".L". Its case
// does not matter. Precondition: the document has been read.
std::vector<Range> host_words(const Document& document, std::string_view name);

// The first of them.
std::optional<Range> first_host_word(const Document& document, std::string_view name);

// The word of the host program that contains an offset or ends there.
std::optional<Range> host_word_at(const Document& document, Offset offset);

}  // namespace orvex::frontend
