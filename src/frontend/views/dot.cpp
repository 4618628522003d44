#include "frontend/views/dot.h"

#include "frontend/views/picture_text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>
#include <vector>

namespace orvex::frontend {

namespace {

// The head and the line of an arrow.
struct ArrowLook {
    std::string_view head;
    std::string_view line;
};

ArrowLook look_of(Flow flow) {
    switch (flow) {
    case Flow::makes: return {"normal", ", penwidth=1.6"};
    case Flow::uses: return {"vee", ""};
    case Flow::demands: return {"onormal", ""};
    case Flow::endows: return {"empty", ", penwidth=1.6"};
    case Flow::taxes: return {"diamond", ", style=dotted"};
    case Flow::sets: return {"open", ", style=dashed"};
    }
    return {};
}

std::string_view node_attributes(Kind kind) {
    switch (kind) {
    case Kind::sector: return "shape=box, fillcolor=\"#DCE9F5\"";
    case Kind::commodity: return "shape=ellipse, fillcolor=\"#FFFFFF\"";
    case Kind::consumer: return "shape=hexagon, fillcolor=\"#FBE6CF\"";
    default: return "shape=diamond, fillcolor=\"#EEEEEE\"";
    }
}

// The same for a column with one line per node.
std::string_view row_attributes(Kind kind) {
    switch (kind) {
    case Kind::commodity: return R"(shape=box, style="rounded,filled", fillcolor="#FFFFFF")";
    case Kind::consumer: return "shape=box, fillcolor=\"#FBE6CF\"";
    case Kind::sector: return node_attributes(kind);
    default: return R"(shape=box, style="dashed,filled", fillcolor="#EEEEEE")";
    }
}

// A text in double quotes, where Graphviz interprets backslashes and entities.
std::string escaped(std::string_view text) {
    std::string result;
    for (const char c : text) {
        if (c == '"' || c == '\\') result += '\\';
        result += c;
        if (c == '&') result += "amp;";
    }
    return result;
}

std::string quoted(std::string_view text) { return '"' + escaped(text) + '"'; }

std::string quoted_lines(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) {
        if (!text.empty()) text += "\\n";
        text += escaped(line);
    }
    return '"' + text + '"';
}

// A text for markup, in which these characters need entities.
std::string as_markup(std::string_view text) {
    std::string result;
    for (const char c : text) {
        if (c == '<')
            result += "&lt;";
        else if (c == '>')
            result += "&gt;";
        else if (c == '&')
            result += "&amp;";
        else
            result += c;
    }
    return result;
}

std::string small_lines(const std::vector<std::string>& lines, std::string_view attributes) {
    std::string text;
    for (const std::string& line : lines) {
        text += text.empty() ? "" : "<br/>";
        text += as_markup(line);
    }
    return "<font " + std::string(attributes) + ">" + text + "</font>";
}

// The label of a node; the lines below or beside it are in smaller letters.
std::string node_label(const Node& node, std::string_view separator,
                       const std::vector<std::string>& description,
                       const std::vector<std::string>& blocks) {
    if (node.label.empty() || (description.empty() && blocks.empty())) return quoted(node.label);
    std::string text = as_markup(node.label);
    if (!description.empty())
        text += std::string(separator) + small_lines(description, "point-size=\"9\"");
    if (!blocks.empty())
        text += std::string(separator) + small_lines(blocks, R"(point-size="9" color="#444444")");
    return '<' + text + '>';
}

// The text under the picture: the model's name, if any, the words for the arrows that occur, each
// in its colour, and a remark.
std::string key(const Graph& graph, std::string_view remark) {
    std::string text = "<br/>";
    if (!graph.model.empty()) text += "<b>" + as_markup(graph.model) + "</b>";
    for (const FlowRow& row : flow_table) {
        const bool occurs = std::any_of(graph.edges.begin(), graph.edges.end(),
                                        [&](const Edge& edge) { return edge.flow == row.flow; });
        if (!occurs) continue;
        text += "&#160;&#160; <font color=" + quoted(row.colour) + ">" + std::string(row.word) +
                "</font>";
    }
    return text + std::string(remark);
}

void put_head(const Graph& graph, std::string_view attributes, std::string_view remark,
              std::string& out) {
    out += "digraph " + quoted(graph.model) + " {\n    graph [" + std::string(attributes) +
           ", fontname=\"Helvetica\", fontsize=11,\n           labelloc=b, label=<" +
           key(graph, remark) + ">];\n";
}

std::string node_id(std::size_t node) { return 'n' + std::to_string(node + 1); }

void put_node(const Node& node, std::size_t number, std::string_view attributes,
              const std::string& label, std::string& out) {
    out += "    " + node_id(number) + " [label=" + label + ", ";
    out += attributes;
    if (node.constraint) out += ", peripheries=2";
    std::string tip(kind_name(node.kind));
    if (!node.description.empty()) tip += ": " + node.description;
    for (const std::string& block : node.blocks) tip += "; " + block;
    out += ", tooltip=" + quoted(tip) + "];\n";
}

// What a browser shows when pointing at an arrow.
std::string tip_of(const Graph& graph, const Edge& edge) {
    const std::string tip = graph.nodes[edge.from].name + " -> " + graph.nodes[edge.to].name +
                            ", " + std::string(row_of(edge.flow).word);
    return quoted(edge.label.empty() ? tip : tip + ": " + edge.label);
}

// A picture in which goods flow from left to right, except those that come back.

void put_arrow(const Graph& graph, const Edge& edge, std::string& out) {
    const std::string colour = quoted(row_of(edge.flow).colour);
    const ArrowLook look = look_of(edge.flow);
    out += "    " + node_id(edge.from) + " -> " + node_id(edge.to) + " [";
    if (!edge.label.empty()) out += "label=" + quoted_lines(arrow_lines(edge)) + ", ";
    out += "color=" + colour + ", fontcolor=" + colour + ", arrowhead=" + std::string(look.head) +
           std::string(look.line) + ", tooltip=" + tip_of(graph, edge) + "];\n";
}

std::string flow_text(const Graph& graph) {
    std::string out;
    put_head(graph, "rankdir=LR, nodesep=0.35, ranksep=0.7", "", out);
    out +=
        "    node [fontname=\"Helvetica\", fontsize=12, style=filled, color=\"#444444\"];\n"
        "    edge [fontname=\"Helvetica\", fontsize=9, arrowsize=0.8];\n\n";
    for (std::size_t i = 0; i < graph.nodes.size(); ++i) {
        const Node& node = graph.nodes[i];
        put_node(node, i, node_attributes(node.kind),
                 node_label(node, "<br/>", description_lines(node), block_lines(node)), out);
    }
    out += '\n';
    for (const Edge& edge : graph.edges) put_arrow(graph, edge, out);
    return out + "}\n";
}

// A picture in columns. If most sectors use most goods, the flow has no direction: Graphviz then
// takes minutes to give each node a rank of its own and route each arrow through all ranks between
// its ends. Fixed columns, with a fixed order of nodes, leave it almost nothing to search.

constexpr std::size_t column_count = 4;

// For each column, its nodes.
using Columns = std::array<std::vector<std::size_t>, column_count>;

// For each node, its column: auxiliary variables and goods that nobody makes, sectors, goods that
// they make, consumers. No arrow has both ends in one column.
std::vector<std::size_t> columns_of(const Graph& graph) {
    std::vector<std::size_t> column(graph.nodes.size(), 0);
    for (std::size_t i = 0; i < graph.nodes.size(); ++i) {
        if (graph.nodes[i].kind == Kind::sector) column[i] = 1;
        if (graph.nodes[i].kind == Kind::consumer) column[i] = 3;
    }
    for (const Edge& edge : graph.edges)
        if (edge.flow == Flow::makes) column[edge.to] = 2;
    return column;
}

// The nodes of each column in order, and the first nodes of all columns in order.
void put_columns(const Graph& graph, const std::vector<std::size_t>& column, std::string& out) {
    Columns columns;
    for (std::size_t i = 0; i < graph.nodes.size(); ++i) columns[column[i]].push_back(i);
    std::string firsts;
    for (const std::vector<std::size_t>& nodes : columns) {
        if (nodes.empty()) continue;
        firsts += (firsts.empty() ? "" : " -> ") + node_id(nodes.front());
        out += "    { rank=same; ";
        for (const std::size_t node : nodes)
            out += (node == nodes.front() ? "" : " -> ") + node_id(node);
        out += nodes.size() > 1 ? " [style=invis] }\n" : " }\n";
    }
    out += "    " + firsts + " [style=invis, weight=0];\n";
}

// Pale where lines cross, palest if there are many; the lines from makers are always clear.
std::string line_colour(const Graph& graph, Flow flow) {
    constexpr std::size_t many = 1000;
    std::string colour(row_of(flow).colour);
    if (flow == Flow::makes) return colour;
    return colour + (flow == Flow::uses && graph.edges.size() > many ? "38" : "90");
}

// Draws from the left to the right end, whatever the direction of the arrow.
void put_line(const Graph& graph, const Edge& edge, bool is_forward, std::string& out) {
    const ArrowLook look = look_of(edge.flow);
    const std::string head(look.head);
    out += "    " + node_id(is_forward ? edge.from : edge.to) + ":e -> " +
           node_id(is_forward ? edge.to : edge.from) +
           ":w [color=" + quoted(line_colour(graph, edge.flow)) +
           (is_forward ? ", arrowhead=" + head : ", dir=back, arrowtail=" + head) +
           std::string(look.line) + ", tooltip=" + tip_of(graph, edge) + "];\n";
}

// Lines drawn later cover earlier ones, so those from makers come last.
void put_lines(const Graph& graph, const std::vector<std::size_t>& column, std::string& out) {
    for (const bool is_last : {false, true}) {
        for (const Edge& edge : graph.edges) {
            if ((edge.flow == Flow::makes) == is_last)
                put_line(graph, edge, column[edge.from] < column[edge.to], out);
        }
    }
}

// Inches between columns: lines that are too steep are hard to distinguish.
std::size_t distance_of_columns(const Graph& graph) {
    constexpr std::size_t nodes_for_an_inch = 20;
    constexpr std::size_t least = 2;
    constexpr std::size_t most = 20;
    return std::clamp(graph.nodes.size() / nodes_for_an_inch, least, most);
}

// A description beside its name, cut to one line.
std::vector<std::string> line_beside(const Node& node) {
    std::vector<std::string> lines = description_lines(node);
    if (lines.size() > 1) lines = {lines.front() + " ..."};
    return lines;
}

std::string columns_text(const Graph& graph) {
    std::string out;
    put_head(graph,
             "rankdir=LR, nodesep=0.08, ranksep=" + std::to_string(distance_of_columns(graph)) +
                 ", splines=line, outputorder=edgesfirst",
             "&#160;&#160; (too many arrows for labels: point at one, or draw a part with --focus)",
             out);
    out +=
        "    node [fontname=\"Helvetica\", fontsize=11, style=filled, color=\"#444444\","
        " height=0.3, margin=\"0.1,0.03\"];\n"
        "    edge [arrowsize=0.6];\n\n";
    for (std::size_t i = 0; i < graph.nodes.size(); ++i) {
        const Node& node = graph.nodes[i];
        put_node(node, i, row_attributes(node.kind),
                 node_label(node, "&#160; ", line_beside(node), {}), out);
    }
    out += '\n';
    const std::vector<std::size_t> column = columns_of(graph);
    put_columns(graph, column, out);
    out += '\n';
    put_lines(graph, column, out);
    return out + "}\n";
}

}  // namespace

std::string dot_text(const Graph& graph) {
    return has_room(graph) ? flow_text(graph) : columns_text(graph);
}

}  // namespace orvex::frontend
