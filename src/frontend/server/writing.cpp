#include "frontend/server/writing.h"

#include "frontend/abilities/rename.h"

#include <utility>

namespace orvex::frontend {

namespace {

constexpr const char* host_text = "host text";

// What the client asks about before it changes words outside of the models.
Json annotations() {
    return {{host_text,
             {{"label", "Rename in the host's program"},
              {"needsConfirmation", true},
              {"description", "Words outside of the models that are the same as the name"}}}};
}

void expect_allowed(const Renaming& renaming) {
    if (!renaming.refusal.empty()) throw RequestError{request_failed, renaming.refusal};
}

}  // namespace

Json prepare_renaming(Server& server, const Json& params) {
    const Document& document = open_text(server, params).document;
    const Renaming renaming = prepare_rename(document, offset_in(document, params));
    expect_allowed(renaming);
    return {{"range", json_of(document, renaming.name)},
            {"placeholder", text_of(document.source.bytes, renaming.name)}};
}

Json renaming(Server& server, const Json& params) {
    const Document& document = open_text(server, params).document;
    const std::string name = params.at("newName").get<std::string>();
    const Renaming renaming = rename_at(document, offset_in(document, params), name);
    expect_allowed(renaming);
    const Client& client = server.client;
    const bool asks = client.annotates_edits && client.edits_by_version;
    Json edits = Json::array();
    bool has_host_text = false;
    for (const RenamedPlace& place : renaming.places) {
        if (place.in_host_text && !asks) continue;
        Json edit = {{"range", json_of(document, place.range)}, {"newText", name}};
        if (place.in_host_text) edit["annotationId"] = host_text;
        has_host_text = has_host_text || place.in_host_text;
        edits.push_back(std::move(edit));
    }
    Json change = workspace_edit(document, std::move(edits), client.edits_by_version);
    if (has_host_text) change["changeAnnotations"] = annotations();
    return change;
}

}  // namespace orvex::frontend
