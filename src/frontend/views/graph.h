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
    // From a palette suited to colour-blind readers.
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
    // An auxiliary variable determined by a constraint.
    bool constraint = false;
    // For each block that shows more than the name: its elements or condition, and its nests with
    // their elasticities, such as "$K0(R) S:0.5 VA:1".
    std::vector<std::string> blocks = {};
};

// An arrow, in the direction in which the goods or money flow.
struct Edge {
    // Indices of nodes.
    std::size_t from = 0;
    std::size_t to = 0;
    Flow flow = Flow::makes;
    // Its fields: "Q:Y0(S)", after any difference from the label of the commodity, as in
    // "PK(T+1)$C(T) Q:5"; those of several entries are separated by "; ".
    std::string label;
    // Of the entries or fields for which it is drawn, ascending.
    std::vector<int> lines;
};

struct Graph {
    std::string model;
    std::vector<Node> nodes;
    std::vector<Edge> edges;
};

// The graph of a model of the source.
Graph make_graph(const Source& source, const Model& model);

// The part of the graph within `depth` arrows (in any direction) of a node, or everything connected
// to it if depth is negative. False, with the graph unchanged, if there is no node with that name.
bool focus(Graph& graph, std::string_view name, int depth);

// A picture in a format: dot, mermaid, json or table.
std::string draw(const Graph& graph, std::string_view picture);

}  // namespace orvex::frontend
