#include "frontend/base/bytes.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace orvex::frontend {

std::vector<std::string_view> lines_of(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) lines.push_back(take_line(text));
    return lines;
}

void append_percent(std::string& text, char c) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    const auto byte = static_cast<unsigned char>(c);
    text += '%';
    text += digits[byte >> 4U];
    text += digits[byte & 15U];
}

Character decode(std::string_view text) {
    const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(text[at]); };
    const unsigned char first = byte(0);
    if (first < 0x80) return {first, 1};
    const std::size_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
    if (first < 0xC2 || first > 0xF4 || length > text.size()) return {};
    char32_t code = first & (0xFFU >> (length + 1));
    for (std::size_t at = 1; at < length; ++at) {
        if ((byte(at) & 0xC0U) != 0x80) return {};
        code = (code << 6U) | (byte(at) & 0x3FU);
    }
    constexpr std::array<char32_t, 5> least{0, 0, 0x80, 0x800, 0x10000};
    const bool surrogate = code >= 0xD800 && code <= 0xDFFF;
    if (code < least[length] || code > 0x10FFFF || surrogate) return {};
    return {code, length};
}

bool is_utf8(std::string_view text) {
    while (!text.empty()) {
        const std::size_t length = decode(text).length;
        if (length == 0) return false;
        text.remove_prefix(length);
    }
    return true;
}

std::vector<std::string_view> characters_of(std::string_view text) {
    const bool utf8 = is_utf8(text);
    std::vector<std::string_view> characters;
    characters.reserve(text.size());
    while (!text.empty()) {
        const std::size_t length = utf8 ? decode(text).length : 1;
        characters.push_back(text.substr(0, length));
        text.remove_prefix(length);
    }
    return characters;
}

std::size_t width_of(std::string_view text) {
    const bool is_ascii = std::none_of(
        text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) >= 0x80; });
    return is_ascii ? text.size() : characters_of(text).size();
}

}  // namespace orvex::frontend
