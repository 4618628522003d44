// Dashes and blanks that look like "-" and " " but are other characters, as in texts from other
// programs. They are never read as a minus or a blank.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace orvex::frontend {

struct Lookalike {
    std::size_t begin = 0;
    std::size_t end = 0;
    char meant = '-';       // or ' '
    std::string_view name;  // "U+2212"
};

// The lookalikes in a UTF-8 text, outside quotes.
std::vector<Lookalike> lookalikes(std::string_view text);

// The text with the characters that are meant.
std::string without_lookalikes(std::string_view text);

}  // namespace orvex::frontend
