// What each part of a text is, for an editor that colours it.
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

// The names of the types, as the protocol has them; ColouredToken::type is an index.
std::span<const std::string_view> token_types();

// The tokens that are, in part at least, in a range of the text, in their order. Precondition: the
// document is read.
std::vector<ColouredToken> coloured_tokens(const Document& document, Range range);

}  // namespace orvex::frontend
