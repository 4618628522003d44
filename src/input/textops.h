// Small routines that change texts in place, byte by byte.
#pragma once

#include "text/text.h"

namespace orvex {

template <int N>
void upper(Text<N>& text) {
    text.map(upper_letter);
}

template <int N>
void lower(Text<N>& text) {
    text.map(lower_letter);
}

// Carriage returns become blanks, so that files with CR LF read like files with LF.
template <int N>
void strip(Text<N>& text) {
    text.map([](char c) { return c == carriage_return ? blank_char : c; });
}

template <int N>
void stripup(Text<N>& text) {
    strip(text);
    upper(text);
}

// TABs become blanks.
template <int N>
void notab(Text<N>& text) {
    text.map([](char c) { return c == tab ? blank_char : c; });
}

template <int N>
void uppernotab(Text<N>& text) {
    text.map([](char c) { return c == tab ? blank_char : upper_letter(c); });
}

// Position of the first character other than a blank (a TAB counts), or 0.
template <int N>
int firstnonblank(const Text<N>& text) {
    const auto found = text.view().find_first_not_of(blank_char);
    return found == View::npos ? 0 : static_cast<int>(found) + 1;
}

// Removes leading blanks and TABs. A text whose only other character is in the last position stays
// unchanged.
template <int N>
void lftjst(Text<N>& text) {
    const View view = text;
    const View justified = left_justified(view, N);
    if (justified.size() != view.size()) text = justified;
}

}  // namespace orvex
