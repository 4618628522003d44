#include "frontend/views/mermaid.h"

#include "frontend/views/picture_text.h"

#include <cstddef>
#include <string_view>
#include <utility>
#include <vector>

namespace orvex::frontend {

namespace {

// The texts that open and close the label of a node and give its shape.
std::pair<std::string_view, std::string_view> shape(Kind kind) {
    switch (kind) {
    case Kind::sector: return {"[", "]"};
    case Kind::commodity: return {"([", "])"};
    case Kind::consumer: return {"{{", "}}"};
    default: return {"{", "}"};
    }
}

std::string_view class_of(const Node& node) {
    switch (node.kind) {
    case Kind::sector: return "sector";
    case Kind::commodity: return "commodity";
    case Kind::consumer: return "consumer";
    default: return node.constraint ? "determined" : "auxiliary";
    }
}

std::string_view arrow_of(Flow flow) {
    switch (flow) {
    case Flow::makes:
    case Flow::endows: return "==>";
    case Flow::uses:
    case Flow::demands: return "-->";
    case Flow::taxes: return "-.->";
    case Flow::sets: return "-.-o";
    }
    return {};
}

// Characters with a meaning for Mermaid or the page are written as entities.
std::string escaped(std::string_view text) {
    constexpr std::string_view special = "\"#&<>`;\\";
    std::string result;
    for (const char c : text) {
        if (special.find(c) == std::string_view::npos)
            result += c;
        else
            result += '#' + std::to_string(static_cast<int>(c)) + ';';
    }
    return result;
}

// Lines in double quotes.
std::string quoted(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) {
        if (!text.empty()) text += "<br/>";
        text += escaped(line);
    }
    if (text.empty()) text = " ";  // Mermaid refuses an empty text
    return '"' + text + '"';
}

std::vector<std::string> lines_of_node(const Node& node, bool has_room) {
    std::vector<std::string> lines = {node.label};
    if (!has_room) return lines;
    for (const auto& part : {description_lines(node), block_lines(node)})
        lines.insert(lines.end(), part.begin(), part.end());
    return lines;
}

// A line for each kind of arrow that occurs, with the numbers of its arrows.
void put_colours(const Graph& graph, std::string& out) {
    for (const FlowRow& row : flow_table) {
        std::string numbers;
        for (std::size_t i = 0; i < graph.edges.size(); ++i) {
            if (graph.edges[i].flow != row.flow) continue;
            if (!numbers.empty()) numbers += ',';
            numbers += std::to_string(i);
        }
        if (numbers.empty()) continue;
        out += "    linkStyle " + numbers + " stroke:" + std::string(row.colour) + "\n";
    }
}

}  // namespace

std::string mermaid_text(const Graph& graph) {
    const bool room = has_room(graph);
    std::string out = "flowchart LR\n";
    for (std::size_t i = 0; i < graph.nodes.size(); ++i) {
        const Node& node = graph.nodes[i];
        const auto [opening, closing] = shape(node.kind);
        out += "    n" + std::to_string(i + 1) + std::string(opening) +
               quoted(lines_of_node(node, room)) + std::string(closing) +
               ":::" + std::string(class_of(node)) + '\n';
    }
    for (const Edge& edge : graph.edges) {
        out += "    n" + std::to_string(edge.from + 1) + ' ' + std::string(arrow_of(edge.flow));
        if (!edge.label.empty()) out.append("|").append(quoted(arrow_lines(edge))).append("|");
        out += " n" + std::to_string(edge.to + 1) + '\n';
    }
    put_colours(graph, out);
    return out +
           "    classDef sector fill:#DCE9F5,stroke:#444444,color:#000000\n"
           "    classDef commodity fill:#FFFFFF,stroke:#444444,color:#000000\n"
           "    classDef consumer fill:#FBE6CF,stroke:#444444,color:#000000\n"
           "    classDef auxiliary fill:#EEEEEE,stroke:#444444,color:#000000\n"
           "    classDef determined fill:#EEEEEE,stroke:#444444,color:#000000,"
           "stroke-width:3px\n";
}

}  // namespace orvex::frontend
