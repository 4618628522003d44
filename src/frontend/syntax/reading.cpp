#include "frontend/syntax/reading.h"

#include "notation/records.h"
#include "text/characters.h"

#include <algorithm>

namespace orvex::frontend {

std::string capitals(std::string_view text) {
    std::string read(text);
    std::transform(read.begin(), read.end(), read.begin(), notation::as_read);
    return read;
}

std::string_view without_blanks_at_end(std::string_view text) {
    while (!text.empty() && notation::as_blank(text.back()) == blank_char) text.remove_suffix(1);
    return text;
}

bool same_when_read(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return notation::as_read(x) == notation::as_read(y); });
}

}  // namespace orvex::frontend
