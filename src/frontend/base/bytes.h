// Bytes of files and letters of texts, as the reading routines share them.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace orvex::frontend {

// All that can be read from a descriptor. False, with errno set, where reading fails.
bool read_all(int descriptor, std::string& bytes);

// A whole file. False, with errno set, where it cannot be opened or read.
bool read_file(const std::string& path, std::string& bytes);

// Only the letters a to z have an upper case, as for the translator.
inline char upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

inline void make_upper(std::string& text) {
    std::transform(text.begin(), text.end(), text.begin(), upper);
}

inline std::string_view without_trailing_blanks(std::string_view text) {
    return text.substr(0, text.find_last_not_of(' ') + 1);
}

inline std::string_view without_blanks_around(std::string_view text) {
    const auto first = text.find_first_not_of(' ');
    return first == std::string_view::npos ? std::string_view()
                                           : without_trailing_blanks(text.substr(first));
}

// Without blanks, TABs and line ends behind it.
inline std::string_view trim_end(std::string_view text) {
    return text.substr(0, text.find_last_not_of(" \t\r\n") + 1);
}

// Without them in front of it, too.
inline std::string_view trimmed(std::string_view text) {
    return trim_end(text.substr(std::min(text.find_first_not_of(" \t\r\n"), text.size())));
}

// Takes the first line off a text, which is not empty, and its LF with it.
inline std::string_view take_line(std::string_view& text) {
    const auto end = text.find('\n');
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    return line;
}

// All lines of a text, without their LF.
std::vector<std::string_view> lines_of(std::string_view text);

// Appends a byte as "%" and two digits of base 16.
void append_percent(std::string& text, char c);

struct Character {
    char32_t code = 0;
    std::size_t length = 0;  // in bytes; 0 where there is no character
};

// The character of UTF-8 at the front of a text, which is not empty.
Character decode(std::string_view text);

bool is_utf8(std::string_view text);

// The characters of a text: of UTF-8, or its bytes where it is not UTF-8.
std::vector<std::string_view> characters_of(std::string_view text);

// Columns that a text takes on the screen: one for each character.
std::size_t width_of(std::string_view text);

}  // namespace orvex::frontend
