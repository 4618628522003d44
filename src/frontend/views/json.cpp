#include "frontend/views/json.h"

#include "frontend/base/bytes.h"
#include "frontend/views/info.h"

#include <cstddef>
#include <nlohmann/json.hpp>
#include <vector>

namespace orvex::frontend {

namespace {

using nlohmann::ordered_json;

std::string line_of(const ordered_json& object) {
    return object.dump(-1, ' ', false, ordered_json::error_handler_t::replace) + '\n';
}

// A number that may be unknown.
ordered_json known(int number, int unknown) {
    return number == unknown ? ordered_json() : ordered_json(number);
}

ordered_json texts(const std::vector<std::string>& list) {
    ordered_json result = ordered_json::array();
    for (const std::string& text : list) result.push_back(as_utf8(text));
    return result;
}

std::string id(std::size_t node) { return 'n' + std::to_string(node + 1); }

}  // namespace

std::string as_utf8(std::string_view text) {
    const bool latin1 = !is_utf8(text);
    std::string result;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x20 || byte == 0x7F) {
            result += ' ';
        } else if (latin1 && byte >= 0x80) {
            result += static_cast<char>(0xC0 | (byte >> 6));
            result += static_cast<char>(0x80 | (byte & 0x3F));
        } else {
            result += c;
        }
    }
    return result;
}

std::string info_json(const Economy& economy, std::string_view path) {
    ordered_json names = ordered_json::array();
    for (const Name* name : ordered_names(economy)) {
        names.push_back({{"name", as_utf8(name->name)},
                         {"kind", kind_name(name->kind)},
                         {"dimension", known(name->dimension, -1)},
                         {"arguments", texts(name->arguments)},
                         {"description", as_utf8(name->description)},
                         {"declared", known(name->declared, 0)},
                         {"references", name->references}});
    }
    return line_of({{"version", 1},
                    {"type", "model"},
                    {"model", as_utf8(economy.model)},
                    {"path", as_utf8(path)},
                    {"line", economy.line},
                    {"names", names},
                    {"constraints", texts(economy.constraints)}});
}

std::string graph_json(const Graph& graph) {
    ordered_json nodes = ordered_json::array();
    for (std::size_t i = 0; i < graph.nodes.size(); ++i) {
        const Node& node = graph.nodes[i];
        nodes.push_back({{"id", id(i)},
                         {"name", node.name},
                         {"kind", kind_name(node.kind)},
                         {"label", node.label},
                         {"description", node.description},
                         {"constraint", node.constraint}});
    }
    ordered_json edges = ordered_json::array();
    for (const Edge& edge : graph.edges) {
        edges.push_back({{"from", id(edge.from)},
                         {"to", id(edge.to)},
                         {"flow", row_of(edge.flow).word},
                         {"label", edge.label}});
    }
    return line_of({{"version", 1},
                    {"type", "graph"},
                    {"model", graph.model},
                    {"nodes", nodes},
                    {"edges", edges}});
}

}  // namespace orvex::frontend
