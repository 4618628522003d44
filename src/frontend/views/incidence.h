// A graph as a table for a terminal: how each sector and consumer deals with each commodity.
#pragma once

#include "frontend/views/graph.h"

#include <string>

namespace orvex::frontend {

// Rows are commodities, columns are sectors and consumers. A table wider than 100 columns is split
// into bands.
std::string incidence_table(const Graph& graph);

}  // namespace orvex::frontend
