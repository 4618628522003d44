// A part of a text: positions from 0, the end exclusive.
#pragma once

#include "text/characters.h"

#include <cstddef>

namespace orvex::notation {

struct Cut {
    std::size_t begin = 0;
    std::size_t end = 0;

    bool empty() const { return begin >= end; }
    View in(View text) const { return text.substr(begin, end - begin); }
};

// The part without its leading and trailing blanks.
constexpr Cut without_blanks(View text, Cut cut) {
    while (cut.begin < cut.end && text[cut.begin] == blank_char) ++cut.begin;
    while (cut.begin < cut.end && text[cut.end - 1] == blank_char) --cut.end;
    return cut;
}

}  // namespace orvex::notation
