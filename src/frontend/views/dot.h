// A graph in the language of Graphviz.
#pragma once

#include "frontend/views/graph.h"

#include <string>

namespace orvex::frontend {

std::string dot_text(const Graph& graph);

}  // namespace orvex::frontend
