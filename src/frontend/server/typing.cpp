#include "frontend/server/typing.h"

#include "frontend/abilities/completion.h"
#include "frontend/abilities/hover.h"
#include "frontend/abilities/signature.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace orvex::frontend {

namespace {

constexpr int snippet_format = 2;

// The protocol's numbers, in the order of ItemKind: keyword, property, enum member, class,
// variable, interface, property, constant, and enumeration for a set.
constexpr int item_kinds[] = {14, 10, 20, 7, 6, 8, 10, 21, 13};

Json markdown(std::string text) { return {{"kind", "markdown"}, {"value", std::move(text)}}; }

Json json_of_item(const Server& server, const Document& document, const Completion& completion,
                  const CompletionItem& item) {
    const bool is_snippet = server.client.has_snippets && !item.snippet.empty();
    Json json = {{"label", item.label},
                 {"kind", item_kinds[static_cast<std::size_t>(item.kind)]},
                 {"sortText", std::to_string(item.rank) + item.label},
                 {"filterText", item.text},
                 {"textEdit",
                  {{"range", json_of(document, completion.replaced)},
                   {"newText", is_snippet ? item.snippet : item.text}}},
                 {"data",
                  {{"uri", document.uri},
                   {"offset", completion.replaced.begin},
                   {"kind", static_cast<int>(item.kind)}}}};
    if (!item.detail.empty()) json["detail"] = item.detail;
    if (is_snippet) json["insertTextFormat"] = snippet_format;
    return json;
}

}  // namespace

Json hover(Server& server, const Json& params) {
    const Document& document = open_text(server, params).document;
    const auto found = hover_at(document, offset_in(document, params));
    if (!found) return nullptr;
    return {{"contents", markdown(found->text)}, {"range", json_of(document, found->range)}};
}

Json completion(Server& server, const Json& params) {
    const Document& document = open_text(server, params).document;
    const Completion found = complete_at(document, offset_in(document, params));
    Json items = Json::array();
    for (const CompletionItem& item : found.items)
        items.push_back(json_of_item(server, document, found, item));
    return {{"isIncomplete", false}, {"items", std::move(items)}};
}

Json resolve_completion(Server& server, const Json& params) {
    const Json& data = params.at("data");
    const auto found = server.open.find(data.at("uri").get<std::string>());
    Json item = params;
    if (found == server.open.end()) return item;
    Document& document = found->second.document;
    read_text(document);
    const auto size = static_cast<Offset>(document.source.bytes.size());
    const Offset offset = std::min(data.at("offset").get<Offset>(), size);
    const int kind = data.at("kind").get<int>();
    if (kind < 0 || kind > static_cast<int>(ItemKind::set))
        throw RequestError{invalid_params, "unknown kind of item"};
    std::string text = item_text(document, offset, item.at("label").get<std::string>(),
                                 static_cast<ItemKind>(kind));
    if (!text.empty()) item["documentation"] = markdown(std::move(text));
    return item;
}

Json signature_help(Server& server, const Json& params) {
    const Document& document = open_text(server, params).document;
    const auto found = signature_at(document, offset_in(document, params));
    if (!found) return nullptr;
    Json arguments = Json::array();
    for (const auto& [begin, end] : found->arguments)
        arguments.push_back({{"label", {begin, end}}});
    Json signature = {{"label", found->text}, {"parameters", std::move(arguments)}};
    if (!found->description.empty()) signature["documentation"] = found->description;
    return {{"signatures", Json::array({std::move(signature)})},
            {"activeSignature", 0},
            {"activeParameter", found->active}};
}

}  // namespace orvex::frontend
