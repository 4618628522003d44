#include "frontend/views/dot.h"

#include <cstddef>
#include <string_view>

namespace orvex::frontend {

namespace {

std::string_view edge_attributes(Flow flow) {
    switch (flow) {
    case Flow::makes: return "arrowhead=normal, penwidth=1.6";
    case Flow::uses: return "arrowhead=vee";
    case Flow::demands: return "arrowhead=onormal";
    case Flow::endows: return "arrowhead=empty, penwidth=1.6";
    case Flow::taxes: return "arrowhead=diamond, style=dotted";
    case Flow::sets: return "arrowhead=open, style=dashed";
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

// A text between double quotes, where Graphviz reads backslashes and entities.
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

// The parts of a label, each on a line. An escaped "&" can look like the end of a part.
std::string quoted_lines(std::string_view label) {
    std::string lines;
    for (std::size_t end = 0; (end = label.find("; ")) != std::string_view::npos;) {
        lines += escaped(label.substr(0, end)) + "\\n";
        label.remove_prefix(end + 2);
    }
    return '"' + lines + escaped(label) + '"';
}

// What is under the picture: the model, where it has a name, and the words for the arrows that
// occur, each in its colour. This is the one text with markup, in which the same characters need
// entities.
std::string key(const Graph& graph) {
    std::string name;
    for (const char c : graph.model) {
        if (c == '<')
            name += "&lt;";
        else if (c == '>')
            name += "&gt;";
        else if (c == '&')
            name += "&amp;";
        else
            name += c;
    }
    std::string text = "<br/>";
    if (!name.empty()) text += "<b>" + name + "</b>";
    for (const FlowRow& row : flow_table) {
        bool occurs = false;
        for (const Edge& edge : graph.edges) occurs = occurs || edge.flow == row.flow;
        if (!occurs) continue;
        text += "&#160;&#160; <font color=" + quoted(row.colour) + ">" + std::string(row.word) +
                "</font>";
    }
    return text;
}

void put_node(const Node& node, std::size_t number, std::string& out) {
    out += "    n" + std::to_string(number) + " [label=" + quoted(node.label) + ", ";
    out += node_attributes(node.kind);
    if (node.constraint) out += ", peripheries=2";
    const std::string kind(kind_name(node.kind));
    out += ", tooltip=" + quoted(node.description.empty() ? kind : kind + ": " + node.description) +
           "];\n";
}

void put_edge(const Edge& edge, std::string& out) {
    const FlowRow& row = row_of(edge.flow);
    out += "    n" + std::to_string(edge.from + 1) + " -> n" + std::to_string(edge.to + 1) + " [";
    if (!edge.label.empty()) out += "label=" + quoted_lines(edge.label) + ", ";
    const std::string colour = quoted(row.colour);
    out += "color=" + colour + ", fontcolor=" + colour + ", " +
           std::string(edge_attributes(edge.flow)) + ", tooltip=" + quoted(row.word) + "];\n";
}

}  // namespace

std::string dot_text(const Graph& graph) {
    std::string out = "digraph " + quoted(graph.model) + " {\n";
    out +=
        "    graph [rankdir=LR, nodesep=0.35, ranksep=0.7, fontname=\"Helvetica\", fontsize=11,"
        "\n           labelloc=b, label=<" +
        key(graph) + ">];\n";
    out +=
        "    node [fontname=\"Helvetica\", fontsize=12, style=filled, color=\"#444444\"];\n"
        "    edge [fontname=\"Helvetica\", fontsize=9, arrowsize=0.8];\n\n";
    for (std::size_t i = 0; i < graph.nodes.size(); ++i) put_node(graph.nodes[i], i + 1, out);
    out += '\n';
    for (const Edge& edge : graph.edges) put_edge(edge, out);
    return out + "}\n";
}

}  // namespace orvex::frontend
