// Misspelt keywords.
#pragma once

#include "notation/keywords.h"

#include <cstddef>
#include <string_view>

namespace orvex::frontend {

// The keyword meant by an unknown word, without "$" and colon: the most similar one, or one with
// the same beginning, like PRODUCTION or COMM; null if there is none.
const notation::Keyword* meant_keyword(std::string_view word);

// The length of the keyword of a named block at the start of a longer word, like PRODY or
// PRODUCTION; 0 if there is none. The rest may be the name of the block.
std::size_t joined_keyword(std::string_view word);

// Does the word, without its "$", belong outside models? Either it begins a model or the text
// around it, or it is one of the host's, such as the one that includes the outputs. Inside a model
// it shows that the $OFFTEXT is missing.
bool belongs_outside(std::string_view word);

}  // namespace orvex::frontend
