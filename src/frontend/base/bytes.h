// Bytes, letters and lines of texts.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace orvex::frontend {

// Only the letters a to z have an upper case, as in the translator.
inline char upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

inline char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

inline std::string in_small_letters(std::string_view text) {
    std::string small(text);
    std::transform(small.begin(), small.end(), small.begin(), lower);
    return small;
}

inline void make_upper(std::string& text) {
    std::transform(text.begin(), text.end(), text.begin(), upper);
}

// What may surround a text without being part of it: blanks, TABs and line ends.
constexpr std::string_view white_space = " \t\r\n";

// The text without any bytes of `around` at its end.
inline std::string_view trim_end(std::string_view text, std::string_view around = white_space) {
    return text.substr(0, text.find_last_not_of(around) + 1);
}

// The same without those at its start, too.
inline std::string_view trimmed(std::string_view text, std::string_view around = white_space) {
    return trim_end(text.substr(std::min(text.find_first_not_of(around), text.size())), around);
}

inline std::string_view without_trailing_blanks(std::string_view text) {
    return trim_end(text, " ");
}

inline std::string_view without_blanks_around(std::string_view text) { return trimmed(text, " "); }

// Takes the first line and its LF off a text, which must not be empty.
inline std::string_view take_line(std::string_view& text) {
    const auto end = text.find('\n');
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    return line;
}

// All lines of a text, without their LF.
std::vector<std::string_view> lines_of(std::string_view text);

// Appends a byte as "%" and two hexadecimal digits.
void append_percent(std::string& text, char c);

struct Character {
    char32_t code = 0;
    std::size_t length = 0;  // in bytes; 0 if there is no character
};

// The UTF-8 character at the start of a text, which must not be empty.
Character decode(std::string_view text);

bool is_utf8(std::string_view text);

// The characters of a UTF-8 text; the bytes of any other text.
std::vector<std::string_view> characters_of(std::string_view text);

// Columns that a text needs on the screen: one per character.
std::size_t width_of(std::string_view text);

}  // namespace orvex::frontend
