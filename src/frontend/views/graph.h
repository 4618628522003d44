// A model as a picture: who makes, uses, demands, owns and taxes what.
#pragma once

#include "frontend/model/economy.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace orvex::frontend {

enum class Flow { makes, uses, demands, endows, taxes, sets };

struct FlowRow {
    Flow flow;
    std::string_view word;
    // Of a palette that the colour-blind can tell apart.
    std::string_view colour;
};

// In the order of the flows.
constexpr std::array<FlowRow, 6> flow_table = {{{Flow::makes, "makes", "#0072B2"},
                                                {Flow::uses, "uses", "#B34700"},
                                                {Flow::demands, "demands", "#00704F"},
                                                {Flow::endows, "endows", "#8F4A76"},
                                                {Flow::taxes, "taxes", "#000000"},
                                                {Flow::sets, "sets", "#666666"}}};

constexpr const FlowRow& row_of(Flow flow) { return flow_table[static_cast<std::size_t>(flow)]; }

static_assert(std::all_of(flow_table.begin(), flow_table.end(),
                          [](const FlowRow& row) { return &row_of(row.flow) == &row; }));

struct Node {
    std::string name;
    Kind kind = Kind::sector;
    // "Y(S)"
    std::string label;
    std::string description;
    // An auxiliary variable that a constraint determines.
    bool constraint = false;
};

// An arrow, in the direction of the thing or the money that flows.
struct Edge {
    // Indices of nodes.
    std::size_t from = 0;
    std::size_t to = 0;
    Flow flow = Flow::makes;
    // Of the fields: "Q:Y0(S)"; those of several entries parted by "; ".
    std::string label;
};

struct Graph {
    std::string model;
    std::vector<Node> nodes;
    std::vector<Edge> edges;
};

Graph make_graph(const Economy& economy);

// The part of the graph within `depth` arrows (in any direction) of a node; all that hangs together
// with it where depth is negative. False where there is no node of that name.
bool focus(Graph& graph, std::string_view name, int depth);

// A picture in a format: dot, mermaid, json, table. (svg is dot, drawn by draw_svg.)
std::string draw(const Graph& graph, std::string_view picture);

// The dot text drawn by Graphviz. False, with the reason, where that cannot be run.
bool draw_svg(const std::string& dot, std::string& svg, std::string& reason);

}  // namespace orvex::frontend
