// The type of each part of a text, for syntax highlighting in an editor.
#pragma once

#include "frontend/abilities/document.h"

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace orvex::frontend {

struct ColouredToken {
    Range range;  // within one line
    std::uint32_t type = 0;
    bool is_declaration = false;
};

// The names of the types in the protocol; ColouredToken::type is an index.
std::span<const std::string_view> token_types();

// The tokens that overlap a range of the text, in order. Precondition: the document has been read.
std::vector<ColouredToken> coloured_tokens(const Document& document, Range range);

}  // namespace orvex::frontend
