// Keywords that are written wrong.
#pragma once

#include "notation/keywords.h"

#include <cstddef>
#include <string_view>

namespace orvex::frontend {

// The keyword that was meant by an unknown word, "$" and colon left out: the nearest one, or
// one that begins alike, as with PRODUCTION or COMM; null where there is none.
const notation::Keyword* meant_keyword(std::string_view word);

// The size of the keyword of a named block that a longer word begins with, as PRODY or PRODUCTION;
// 0 where there is none. The rest may be the name of the block.
std::size_t joined_keyword(std::string_view word);

// Does the word, without its "$", belong outside of models: does it begin one, or the text around
// it, or is it the host's, as the one that takes in the outputs? Inside of a model it shows that
// the $OFFTEXT is missing.
bool belongs_outside(std::string_view word);

}  // namespace orvex::frontend
