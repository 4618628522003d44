// The protocol's types that this server receives and sends, as JSON.
#pragma once

#include "frontend/abilities/document.h"
#include "frontend/findings/finding.h"
#include "frontend/server/wire.h"

#include <nlohmann/json_fwd.hpp>
#include <string>
#include <string_view>

namespace orvex::frontend {

Json json_of(Position position);
Json json_of(const Document& document, Range range);
Json location_of(const Document& document, Range range);

// A change of one text; with its version, if the client supports that.
Json workspace_edit(const Document& document, Json edits, bool by_version);

// A finding as an editor shows it. Only places in its own file can be shown with it.
Json diagnostic_of(const Document& document, const Finding& finding);

// These read parameters of requests. They throw a JSON exception, or RequestError, if the
// parameters have another form.
Position position_in(const Json& json);
Offset offset_in(const Document& document, const Json& params);  // of params.position
Range range_in(const Document& document, const Json& json);
std::string uri_in(const Json& params);  // of params.textDocument

// "file:///a%20b" to "/a b", and back; any other kind of URI is used as a path itself.
std::string path_of_uri(std::string_view uri);
std::string uri_of_path(std::string_view path);

}  // namespace orvex::frontend
