// The texts in a drawn picture, split into lines.
#pragma once

#include "frontend/views/graph.h"

#include <string>
#include <vector>

namespace orvex::frontend {

// Does a picture of the graph have room for more than names: for descriptions, nests and labels of
// arrows?
bool has_room(const Graph& graph);

// Lines below the label of a node: of its description, and of its blocks. Long texts end with
// "...".
std::vector<std::string> description_lines(const Node& node);
std::vector<std::string> block_lines(const Node& node);

// The lines on an arrow.
std::vector<std::string> arrow_lines(const Edge& edge);

}  // namespace orvex::frontend
