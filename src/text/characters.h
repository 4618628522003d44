// The characters of the notation: bytes in any encoding, with the 26 letters of ASCII.
#pragma once

#include <cstddef>
#include <string_view>

namespace orvex {

using View = std::string_view;

constexpr char blank_char = ' ';
constexpr char tab = '\t';
constexpr char carriage_return = '\r';

constexpr char upper_letter(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}
constexpr char lower_letter(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

// The view without its trailing blanks.
constexpr View trimmed(View view) {
    while (!view.empty() && view.back() == blank_char) view.remove_suffix(1);
    return view;
}

// The view without its leading blanks and TABs, for a text of `width` columns. If it has no other
// character, or only one in the last of these columns, it stays unchanged.
constexpr View left_justified(View view, std::size_t width) {
    std::size_t first = 0;
    while (first < view.size() && (view[first] == blank_char || view[first] == tab)) ++first;
    return first < view.size() && first + 1 < width ? view.substr(first) : view;
}

// Position of the first such character, or npos. For short texts, where a call would take longer
// than the search.
constexpr std::size_t find_in_short(View text, char wanted) {
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] == wanted) return at;
    }
    return View::npos;
}

constexpr bool is_digit(char c) { return c >= '0' && c <= '9'; }

}  // namespace orvex
