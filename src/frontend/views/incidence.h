// A graph as a table for a terminal: what each sector and consumer does with each commodity.
#pragma once

#include "frontend/views/graph.h"

#include <string>

namespace orvex::frontend {

// Rows are commodities, columns sectors and consumers. A table wider than 100 columns is cut into
// bands.
std::string incidence_table(const Graph& graph);

}  // namespace orvex::frontend
