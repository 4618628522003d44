// A graph as a Mermaid flowchart, which many web pages show as a picture.
#pragma once

#include "frontend/views/graph.h"

#include <string>

namespace orvex::frontend {

std::string mermaid_text(const Graph& graph);

}  // namespace orvex::frontend
