#include "frontend/base/printable.h"

#include "frontend/base/bytes.h"

namespace orvex::frontend {

namespace {

constexpr std::string_view replacement = "\xEF\xBF\xBD";  // U+FFFD

// What would change the terminal or the order of what it shows: control characters, and those that
// set the direction of writing.
bool is_control(char32_t code) {
    return code < 0x20 || (code >= 0x7F && code < 0xA0) || code == 0x2028 || code == 0x2029 ||
           code == 0x200E || code == 0x200F || (code >= 0x202A && code <= 0x202E) ||
           (code >= 0x2066 && code <= 0x2069);
}

}  // namespace

std::vector<std::string_view> shown_characters(std::string_view text) {
    std::vector<std::string_view> shown = characters_of(text);
    for (std::string_view& character : shown) {
        const Character decoded = decode(character);
        const bool hidden = decoded.length == 0 || is_control(decoded.code);
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
