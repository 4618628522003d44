// The protocol's types that this server takes and gives, as JSON.
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

// A change of one text: with its version, for a client that takes it so.
Json workspace_edit(const Document& document, Json edits, bool by_version);

// What a finding is to an editor. Only its own file's places can be shown with it.
Json diagnostic_of(const Document& document, const Finding& finding);

// These take parameters of requests. They throw a JSON exception, or RequestError, where these have
// another form.
Position position_in(const Json& json);
Offset offset_in(const Document& document, const Json& params);  // of params.position
Range range_in(const Document& document, const Json& json);
std::string uri_in(const Json& params);  // of params.textDocument

// "file:///a%20b" to "/a b", and back; a URI of another kind is a path of its own.
std::string path_of_uri(std::string_view uri);
std::string uri_of_path(std::string_view path);

}  // namespace orvex::frontend
