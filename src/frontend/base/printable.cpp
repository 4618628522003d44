#include "frontend/base/printable.h"

#include "frontend/base/bytes.h"

#include <algorithm>
#include <iterator>

namespace orvex::frontend {

namespace {

constexpr std::string_view replacement = "\xEF\xBF\xBD";  // U+FFFD

struct Interval {
    char32_t first, last;
};

// Characters that would change the terminal or the order of what it shows, or that are invisible:
// control characters, those that set the writing direction, and those without a width. Joiners,
// which the scripts of some languages need, are shown.
constexpr Interval hidden_characters[] = {
    {0x00, 0x1F},     {0x7F, 0x9F},     {0xAD, 0xAD},     {0x61C, 0x61C},
    {0x180E, 0x180E}, {0x200B, 0x200B}, {0x200E, 0x200F}, {0x2028, 0x202E},
    {0x2060, 0x206F}, {0xFEFF, 0xFEFF}, {0xFFF9, 0xFFFB}, {0xE0000, 0xE007F},
};

bool is_hidden(char32_t code) {
    return std::any_of(
        std::begin(hidden_characters), std::end(hidden_characters),
        [&](const Interval& each) { return code >= each.first && code <= each.last; });
}

}  // namespace

std::vector<std::string_view> shown_characters(std::string_view text) {
    std::vector<std::string_view> shown = characters_of(text);
    for (std::string_view& character : shown) {
        const Character decoded = decode(character);
        const bool hidden = decoded.length == 0 || is_hidden(decoded.code);
        if (hidden && character != "\t") character = replacement;
    }
    return shown;
}

std::string printable(std::string_view text) {
    std::string shown;
    for (const std::string_view character : shown_characters(text)) {
        shown += character == "\t" ? " " : character;
    }
    return shown;
}

}  // namespace orvex::frontend
