// The messages of the index as patterns: fixed texts, and <name> or <name:20> for what differs from
// case to case.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace orvex::frontend {

// A fixed text of a pattern, and the name of what follows it; the last one has none.
struct Piece {
    std::string_view literal;
    std::string_view name;
};

std::vector<Piece> pieces_of(std::string_view pattern);

// What is in the places of a message, by their names, trimmed.
using Values = std::map<std::string, std::string>;

// Whether a line has the form of the pattern. `values` gets what is in its places.
bool matches(const std::vector<Piece>& pieces, std::string_view line, Values& values);

// What makes one pattern fit better than another: its fixed characters.
std::size_t weight(const std::vector<Piece>& pieces);

}  // namespace orvex::frontend
