#include "frontend/views/picture_text.h"

#include "frontend/base/wrapping.h"

#include <cstddef>
#include <string_view>

namespace orvex::frontend {

namespace {

// Graphviz lays out a picture with this many labelled arrows quickly, and a reader can still follow
// them.
constexpr std::size_t most_labelled_arrows = 60;

struct Room {
    std::size_t width;  // in columns
    std::size_t lines;
};

constexpr Room below_name = {24, 3};
constexpr Room in_diamond = {14, 4};  // which grows fast with its text
constexpr Room below_description = {32, 6};
constexpr Room on_arrow = {40, 8};

// False if the lines are full: then the last one shows it.
bool add_lines(std::string_view text, Room room, std::vector<std::string>& lines) {
    for (const std::string& line : wrapped(text, room.width)) {
        if (lines.size() == room.lines) {
            lines.back() += " ...";
            return false;
        }
        lines.push_back(line);
    }
    return true;
}

}  // namespace

bool has_room(const Graph& graph) { return graph.edges.size() <= most_labelled_arrows; }

std::vector<std::string> description_lines(const Node& node) {
    std::vector<std::string> lines;
    const Room room = node.kind == Kind::auxiliary ? in_diamond : below_name;
    if (!node.description.empty()) add_lines(node.description, room, lines);
    return lines;
}

std::vector<std::string> block_lines(const Node& node) {
    std::vector<std::string> lines;
    for (const std::string& block : node.blocks)
        if (!add_lines(block, below_description, lines)) break;
    return lines;
}

std::vector<std::string> arrow_lines(const Edge& edge) {
    std::vector<std::string> lines;
    std::string_view rest = edge.label;
    while (!rest.empty()) {
        const std::size_t end = rest.find("; ");
        if (!add_lines(rest.substr(0, end), on_arrow, lines)) break;
        rest = end == std::string_view::npos ? std::string_view() : rest.substr(end + 2);
    }
    return lines;
}

}  // namespace orvex::frontend
