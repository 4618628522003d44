#include "frontend/server/writing.h"

#include "frontend/abilities/rename.h"
#include "frontend/layout/layout.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace orvex::frontend {

namespace {

constexpr const char* host_text = "host text";

// What the client asks the user before it changes words outside the models.
Json annotations() {
    return {{host_text,
             {{"label", "Rename in the host's program"},
              {"needsConfirmation", true},
              {"description", "Words outside the models that match the name"}}}};
}

void expect_allowed(const Renaming& renaming) {
    if (!renaming.refusal.empty()) throw RequestError{request_failed, renaming.refusal};
}

void add_edits(const Document& document, const std::vector<Edit>& edits, Json& answer) {
    for (const Edit& edit : edits) {
        const Range range = {static_cast<Offset>(edit.begin), static_cast<Offset>(edit.end)};
        answer.push_back({{"range", json_of(document, range)}, {"newText", edit.text}});
    }
}

// The edits of `lay_out` for each model that contains any of these lines, counted from 1, both
// inclusive.
template <typename LayOut>
Json layout_of_models(const Document& document, int first, int last, const LayOut& lay_out) {
    Json answer = Json::array();
    for (const Model& model : document.models) {
        const ModelText& text = document.source.models[model.node];
        if (text.last < first || text.line > last || !may_be_laid_out(model)) continue;
        add_edits(document, lay_out(model), answer);
    }
    return answer;
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

Json formatting(Server& server, const Json& params) {
    const Document& document = open_text(server, params).document;
    return layout_of_models(document, 1, line_count(document.source),
                            [&](const Model& model) { return layout_of(document.source, model); });
}

Json range_formatting(Server& server, const Json& params) {
    const Document& document = open_text(server, params).document;
    const Range range = range_in(document, params.at("range"));
    const int first = line_of(document.source.tree, range.begin);
    const int last = line_of(document.source.tree, std::max(range.begin + 1, range.end) - 1);
    return layout_of_models(document, first, last, [&](const Model& model) {
        return layout_of_lines(document.source, model, first, last);
    });
}

// The position is on the new line.
Json line_formatting(Server& server, const Json& params) {
    const Document& document = open_text(server, params).document;
    const int line = line_of(document.source.tree, offset_in(document, params)) - 1;
    return layout_of_models(document, line, line, [&](const Model& model) {
        return layout_of_line(document.source, model, line);
    });
}

}  // namespace orvex::frontend
