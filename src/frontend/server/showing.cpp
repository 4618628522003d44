#include "frontend/server/showing.h"

#include "frontend/abilities/annotations.h"
#include "frontend/abilities/structure.h"
#include "frontend/abilities/tokens.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <utility>

namespace orvex::frontend {

namespace {

constexpr std::uint32_t declaration_modifier = 1;
constexpr int hint_of_type = 1;

Range whole(const Document& document) {
    return {0, static_cast<Offset>(document.source.bytes.size())};
}

// Five numbers per token: line and character relative to the previous one, length, type, modifiers.
std::vector<std::uint32_t> encoded(const Document& document,
                                   const std::vector<ColouredToken>& tokens) {
    std::vector<std::uint32_t> data;
    data.reserve(5 * tokens.size());
    Position last;
    for (const ColouredToken& token : tokens) {
        const Position begin = position_at(document, token.range.begin);
        const Position end = position_at(document, token.range.end);
        if (end.line != begin.line || end.character <= begin.character) continue;
        const bool is_same_line = begin.line == last.line;
        data.push_back(begin.line - last.line);
        data.push_back(is_same_line ? begin.character - last.character : begin.character);
        data.push_back(end.character - begin.character);
        data.push_back(token.type);
        data.push_back(token.is_declaration ? declaration_modifier : 0);
        last = begin;
    }
    return data;
}

// Remembers the tokens that the client has from now on, and returns their identifier.
const std::string& keep_tokens(Open& open, std::vector<std::uint32_t> data) {
    open.tokens = std::move(data);
    open.tokens_id = std::to_string(++open.tokens_count);
    return open.tokens_id;
}

std::vector<std::uint32_t> tokens_of(const Document& document) {
    return encoded(document, coloured_tokens(document, whole(document)));
}

// The parts around a position, each inside the next one.
Json selection_of(const Document& document, Offset offset) {
    Json selection;
    const std::vector<Range> parts = parts_around(document, offset);
    for (std::size_t at = parts.size(); at > 0; --at) {
        Json inner = {{"range", json_of(document, parts[at - 1])}};
        if (!selection.is_null()) inner["parent"] = std::move(selection);
        selection = std::move(inner);
    }
    if (selection.is_null()) selection = {{"range", json_of(document, {offset, offset})}};
    return selection;
}

std::string target_of(const Document& document, const std::string& name) {
    const std::filesystem::path folder = std::filesystem::path(document.source.path).parent_path();
    return uri_of_path((folder / name).lexically_normal().string());
}

}  // namespace

Json token_legend() {
    Json types = Json::array();
    for (const std::string_view name : token_types()) types.push_back(name);
    return {{"tokenTypes", std::move(types)}, {"tokenModifiers", {"declaration"}}};
}

Json all_tokens(Server& server, const Json& params) {
    Open& open = open_text(server, params);
    const std::string& id = keep_tokens(open, tokens_of(open.document));
    return {{"resultId", id}, {"data", open.tokens}};
}

Json changed_tokens(Server& server, const Json& params) {
    Open& open = open_text(server, params);
    if (params.at("previousResultId") != open.tokens_id) return all_tokens(server, params);
    const std::vector<std::uint32_t> before = std::move(open.tokens);
    const std::string& id = keep_tokens(open, tokens_of(open.document));
    const std::vector<std::uint32_t>& now = open.tokens;
    const auto [old_at, new_at] =
        std::mismatch(before.begin(), before.end(), now.begin(), now.end());
    const auto [old_end, new_end] =
        std::mismatch(before.rbegin(), std::make_reverse_iterator(old_at), now.rbegin(),
                      std::make_reverse_iterator(new_at));
    Json edits = Json::array();
    if (old_at != before.end() || new_at != now.end()) {
        edits.push_back({{"start", old_at - before.begin()},
                         {"deleteCount", old_end.base() - old_at},
                         {"data", std::vector<std::uint32_t>(new_at, new_end.base())}});
    }
    return {{"resultId", id}, {"edits", std::move(edits)}};
}

Json tokens_in_range(Server& server, const Json& params) {
    const Document& document = open_text(server, params).document;
    const Range range = range_in(document, params.at("range"));
    return {{"data", encoded(document, coloured_tokens(document, range))}};
}

Json folding_ranges(Server& server, const Json& params) {
    const Document& document = open_text(server, params).document;
    Json ranges = Json::array();
    for (const Fold& fold : folds_of(document)) {
        const Position begin = position_at(document, fold.range.begin);
        const Position end = position_at(document, fold.range.end);
        if (end.line == begin.line) continue;
        ranges.push_back({{"startLine", begin.line},
                          {"endLine", end.line},
                          {"kind", fold.is_comment ? "comment" : "region"}});
    }
    return ranges;
}

Json selection_ranges(Server& server, const Json& params) {
    const Document& document = open_text(server, params).document;
    Json selections = Json::array();
    for (const Json& position : params.at("positions"))
        selections.push_back(selection_of(document, offset_at(document, position_in(position))));
    return selections;
}

Json inlay_hints(Server& server, const Json& params) {
    const Document& document = open_text(server, params).document;
    Json hints = Json::array();
    for (const Hint& hint : hints_in(document, range_in(document, params.at("range")))) {
        hints.push_back({{"position", json_of(position_at(document, hint.offset))},
                         {"label", hint.text},
                         {"kind", hint_of_type}});
    }
    return hints;
}

Json code_lenses(Server& server, const Json& params) {
    const Document& document = open_text(server, params).document;
    Json lenses = Json::array();
    for (const Lens& lens : lenses_of(document)) {
        lenses.push_back({{"range", json_of(document, lens.range)},
                          {"command", {{"title", lens.text}, {"command", ""}}}});
    }
    return lenses;
}

Json document_links(Server& server, const Json& params) {
    const Document& document = open_text(server, params).document;
    Json links = Json::array();
    for (const FileLink& link : links_of(document)) {
        links.push_back(
            {{"range", json_of(document, link.range)}, {"target", target_of(document, link.name)}});
    }
    return links;
}

}  // namespace orvex::frontend
