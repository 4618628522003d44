// A model as a picture: who makes, uses, demands, owns and taxes what.
#pragma once

#include "frontend/model/model.h"
#include "frontend/syntax/source.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace orvex::frontend {

// A negative endowment is a demand.
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
    // Of each block that says more than the name: its elements or condition, and its nests with
    // their elasticities, as "$K0(R) S:0.5 VA:1".
    std::vector<std::string> blocks = {};
};

// An arrow, in the direction of the thing or the money that flows.
struct Edge {
    // Indices of nodes.
    std::size_t from = 0;
    std::size_t to = 0;
    Flow flow = Flow::makes;
    // Its fields: "Q:Y0(S)", after what differs from the label of the commodity, as in
    // "PK(T+1)$C(T) Q:5"; those of several entries separated by "; ".
    std::string label;
    // Of the entries or fields that it is drawn for, ascending.
    std::vector<int> lines;
};

struct Graph {
    std::string model;
    std::vector<Node> nodes;
    std::vector<Edge> edges;
};

// The graph of a model of the source.
Graph make_graph(const Source& source, const Model& model);

// The part of the graph within `depth` arrows (in any direction) of a node, or all that is
// connected to it if depth is negative. False, with the graph unchanged, if there is no node of
// that name.
bool focus(Graph& graph, std::string_view name, int depth);

// A picture in a format: dot, mermaid, json or table.
std::string draw(const Graph& graph, std::string_view picture);

}  // namespace orvex::frontend
