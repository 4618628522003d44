#include "text/bytes.h"

#include <algorithm>
#include <cstring>

namespace orvex {

void copy_long_piece(char* to, View piece) { std::memmove(to, piece.data(), piece.size()); }

namespace {

// Order of the rest of a text compared with blanks.
int compare_to_blanks(View rest) {
    for (const char c : rest) {
        if (c != blank_char) return static_cast<unsigned char>(c) < blank_char ? -1 : 1;
    }
    return 0;
}

}  // namespace

int compare_padded(View a, View b) {
    const std::size_t common = std::min(a.size(), b.size());
    const int order = a.substr(0, common).compare(b.substr(0, common));  // as unsigned characters
    if (order != 0) return order;
    return a.size() > common ? compare_to_blanks(a.substr(common))
                             : -compare_to_blanks(b.substr(common));
}

}  // namespace orvex
