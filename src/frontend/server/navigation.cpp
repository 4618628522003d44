#include "frontend/server/navigation.h"

#include "frontend/abilities/name_places.h"
#include "frontend/abilities/outline.h"
#include "frontend/base/bytes.h"
#include "frontend/server/folders.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace orvex::frontend {

namespace {

// The protocol's numbers.
constexpr int highlight_text = 1;
constexpr int highlight_read = 2;
constexpr int highlight_write = 3;
constexpr int symbol_module = 2;
constexpr int symbol_namespace = 3;
// In the order of Kind: function, variable, class, property, constant, event, enumeration, and
// constant for a host name.
constexpr int symbol_kinds[] = {12, 13, 5, 7, 14, 24, 10, 14};

int highlight_kind(const NamedPlace& place) {
    if (is_written_at(place)) return highlight_write;
    return place.model == no_index ? highlight_text : highlight_read;
}

int symbol_kind(const OutlineItem& item) {
    if (item.is_model) return symbol_module;
    return item.kind ? symbol_kinds[static_cast<std::size_t>(*item.kind)] : symbol_namespace;
}

Json symbol_of(const Document& document, const OutlineItem& item, Json children) {
    Json symbol = {{"name", item.name},
                   {"kind", symbol_kind(item)},
                   {"range", json_of(document, item.range)},
                   {"selectionRange", json_of(document, item.selection)}};
    if (!item.detail.empty()) symbol["detail"] = item.detail;
    if (!children.empty()) symbol["children"] = std::move(children);
    return symbol;
}

// The models with their blocks, which contain their names.
Json nested_symbols(const Document& document, const std::vector<OutlineItem>& models) {
    Json list = Json::array();
    for (const OutlineItem& model : models) {
        Json blocks = Json::array();
        for (const OutlineItem& block : model.items) {
            Json names = Json::array();
            for (const OutlineItem& name : block.items)
                names.push_back(symbol_of(document, name, Json::array()));
            blocks.push_back(symbol_of(document, block, std::move(names)));
        }
        list.push_back(symbol_of(document, model, std::move(blocks)));
    }
    return list;
}

Json flat_symbol(const Document& document, const OutlineItem& item, const std::string& container) {
    Json symbol = {{"name", item.name},
                   {"kind", symbol_kind(item)},
                   {"location", location_of(document, item.selection)}};
    if (!container.empty()) symbol["containerName"] = container;
    return symbol;
}

Json flat_symbols(const Document& document, const std::vector<OutlineItem>& models) {
    Json list = Json::array();
    for (const OutlineItem& model : models) {
        list.push_back(flat_symbol(document, model, ""));
        for (const OutlineItem& block : model.items) {
            list.push_back(flat_symbol(document, block, model.name));
            for (const OutlineItem& name : block.items)
                list.push_back(flat_symbol(document, name, block.name));
        }
    }
    return list;
}

// Does a name contain the letters of a query in order, in any case?
bool matches(const std::string& name, const std::string& query) {
    std::size_t found = 0;
    for (const char c : name) {
        if (found < query.size() && upper(c) == upper(query[found])) ++found;
    }
    return found == query.size();
}

// Adds the matching models and names that they declare.
void add_matches(const Document& document, const std::string& query, Json& list) {
    for (const OutlineItem& model : outline_of(document)) {
        if (matches(model.name, query)) list.push_back(flat_symbol(document, model, ""));
        for (const OutlineItem& block : model.items) {
            for (const OutlineItem& name : block.items) {
                if (matches(name.name, query))
                    list.push_back(flat_symbol(document, name, model.name));
            }
        }
    }
}

struct Way {
    Range from;
    Range to;
};

std::optional<Way> way_to_definition(const Document& document, const Json& params) {
    const auto target = target_at(document, offset_in(document, params));
    if (!target) return {};
    const auto to = definition_of(document, *target);
    return to ? std::optional(Way{target->place, *to}) : std::nullopt;
}

Json link_of(const Document& document, const Way& way) {
    return {{"originSelectionRange", json_of(document, way.from)},
            {"targetUri", document.uri},
            {"targetRange", json_of(document, way.to)},
            {"targetSelectionRange", json_of(document, way.to)}};
}

}  // namespace

Json definition(Server& server, const Json& params) {
    const Document& document = open_text(server, params).document;
    const auto way = way_to_definition(document, params);
    if (!way) return Json::array();
    return Json::array({server.client.links_definitions ? link_of(document, *way)
                                                        : location_of(document, way->to)});
}

Json declaration(Server& server, const Json& params) {
    const Document& document = open_text(server, params).document;
    const auto way = way_to_definition(document, params);
    return way ? Json::array({location_of(document, way->to)}) : Json::array();
}

Json references(Server& server, const Json& params) {
    const Document& document = open_text(server, params).document;
    const bool with_declaration = params.at("context").at("includeDeclaration").get<bool>();
    const auto target = target_at(document, offset_in(document, params));
    Json list = Json::array();
    if (!target) return list;
    for (const NamedPlace& place : places_of(document, *target)) {
        if (with_declaration || !place.defines) list.push_back(location_of(document, place.range));
    }
    return list;
}

Json highlights(Server& server, const Json& params) {
    const Document& document = open_text(server, params).document;
    const auto target = target_at(document, offset_in(document, params));
    Json list = Json::array();
    if (!target) return list;
    for (const NamedPlace& place : places_of(document, *target)) {
        list.push_back(
            {{"range", json_of(document, place.range)}, {"kind", highlight_kind(place)}});
    }
    return list;
}

Json document_symbols(Server& server, const Json& params) {
    const Document& document = open_text(server, params).document;
    const std::vector<OutlineItem> models = outline_of(document);
    return server.client.nests_symbols ? nested_symbols(document, models)
                                       : flat_symbols(document, models);
}

Json workspace_symbols(Server& server, const Json& params) {
    const std::string query = params.at("query").get<std::string>();
    Json list = Json::array();
    for (auto& [uri, open] : server.open) {
        read_text(open.document);
        add_matches(open.document, query, list);
    }
    each_closed_text(server, [&](const Document& document) { add_matches(document, query, list); });
    return list;
}

}  // namespace orvex::frontend
