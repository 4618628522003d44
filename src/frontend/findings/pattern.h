// The messages of the index as patterns: fixed texts, and <name> or <name:20> for the parts that
// vary.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace orvex::frontend {

// A fixed text of a pattern, and the name of the placeholder after it; the last piece has none.
struct Piece {
    std::string_view literal;
    std::string_view name;
};

std::vector<Piece> pieces_of(std::string_view pattern);

// The values for the placeholders of a message, by name, trimmed.
using Values = std::map<std::string, std::string>;

// Does a line match the pattern? `values` gets the texts of its placeholders.
bool matches(const std::vector<Piece>& pieces, std::string_view line, Values& values);

// How specific a pattern is: the number of its fixed characters.
std::size_t weight(const std::vector<Piece>& pieces);

}  // namespace orvex::frontend
