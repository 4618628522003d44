// info and graph as JSON.
#pragma once

#include "frontend/model/model.h"
#include "frontend/syntax/source.h"
#include "frontend/views/graph.h"

#include <string>
#include <string_view>

namespace orvex::frontend {

// Each is one line with its line end. docs/data.schema.json describes them. The model is one of the
// source, and may have errors.
std::string info_json(const Source& source, const Model& model);
std::string graph_json(const Graph& graph);

// A text as UTF-8: any other text is taken as Latin-1. Control characters become blanks.
std::string as_utf8(std::string_view text);

}  // namespace orvex::frontend
