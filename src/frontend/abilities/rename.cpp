#include "frontend/abilities/rename.h"

#include "frontend/abilities/host_text.h"
#include "frontend/abilities/name_places.h"
#include "frontend/findings/faults.h"
#include "frontend/syntax/expressions.h"
#include "frontend/syntax/reading.h"
#include "notation/limits.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <utility>

namespace orvex::frontend {

namespace {

using std::string;
using std::string_view;

string quoted(string_view text) {
    string result = "`";
    return result.append(text).append("`");
}

string line_text_of(const Document& document, Offset offset) {
    return "line " + std::to_string(line_of(document.source.tree, offset));
}

// What cannot be renamed.

string refusal_of_word(string_view word) {
    const string name = capitals(word);
    if (is_operator_word(name)) return quoted(name) + " is an operator of the host";
    if (is_function(name)) return quoted(name) + " is a function of the host";
    return "this line cannot be read: correct it first";
}

string refusal_of_token(TokenKind kind, string_view text) {
    switch (kind) {
    case TokenKind::keyword: return quoted(text) + " is a keyword";
    case TokenKind::label: return quoted(text) + " is a label, and labels cannot be renamed";
    case TokenKind::model_name:
        return "the name of a model cannot be renamed: its output files are named after it";
    case TokenKind::argument:
    case TokenKind::string: return "an element in quotes cannot be renamed";
    case TokenKind::macro: return quoted(text) + " is replaced by the host";
    case TokenKind::word: return refusal_of_word(text);
    default: return "this is not a name of the model";
    }
}

// Refuses a word that no model owns, or that several models own.
string refusal_in_host_text(const Document& document, Offset offset) {
    const auto word = host_word_at(document, offset);
    const string_view name = word ? text_of(document.source.bytes, *word) : string_view();
    const bool is_known = std::any_of(document.models.begin(), document.models.end(),
                                      [&](const Model& model) { return owns_name(model, name); });
    if (!is_known) return refusal_of_token(TokenKind::outside, {});
    return "several models use the name " + quoted(name) + ": rename it in a model";
}

// Why the thing at an offset, or ending there, cannot be renamed.
string refusal_at(const Document& document, Offset offset) {
    const Tree& tree = document.source.tree;
    const auto after = std::upper_bound(tree.tokens.begin(), tree.tokens.end() - 1, offset,
                                        [](Offset at, const Token& t) { return at < t.begin; });
    if (after == tree.tokens.begin()) return refusal_of_token(TokenKind::outside, {});
    auto token = static_cast<Index>(after - tree.tokens.begin()) - 1;
    const auto is_empty = [&] {
        const TokenKind kind = tree.tokens[token].kind;
        return kind == TokenKind::blank || kind == TokenKind::colon || kind == TokenKind::symbol ||
               kind == TokenKind::line_end;
    };
    if (is_empty() && token > 0 && tree.tokens[token].begin == offset) --token;
    if (tree.tokens[token].kind == TokenKind::outside)
        return refusal_in_host_text(document, offset);
    return refusal_of_token(tree.tokens[token].kind,
                            text_of(document.source.bytes, range_of(tree, token)));
}

// Names whose uses are not all known.

bool is_among(const std::vector<NamedPlace>& places, Range range) {
    const auto after =
        std::upper_bound(places.begin(), places.end(), range.begin,
                         [](Offset at, const NamedPlace& place) { return at < place.range.begin; });
    return after != places.begin() && (after - 1)->range.end >= range.end;
}

// The first occurrence of a name in a token that is not among the known places.
std::optional<Range> unknown_in_token(string_view bytes, Range token, string_view name,
                                      const std::vector<NamedPlace>& places) {
    const string_view text = text_of(bytes, token);
    for (std::size_t at = 0; at < text.size();) {
        const Lexeme next = next_lexeme(text, at);
        const Range word = {token.begin + static_cast<Offset>(at),
                            token.begin + static_cast<Offset>(next.end)};
        const bool is_name =
            next.kind == TokenKind::word && same_when_read(text_of(bytes, word), name);
        if (is_name && !is_among(places, word)) return word;
        at = next.end;
    }
    return {};
}

bool may_name(TokenKind kind) {
    return kind == TokenKind::word || kind == TokenKind::name || kind == TokenKind::argument ||
           kind == TokenKind::ignored;
}

// Where a model with errors has the name in a part that cannot be read.
std::optional<Range> unknown_place(const Document& document, const Model& model, string_view name,
                                   const std::vector<NamedPlace>& places) {
    const Symbol* const symbol = find_symbol(model, name);
    const bool is_touched = symbol != nullptr && symbol->touched;
    if (model.errors.empty() || !(is_touched || model.lost)) return {};
    const Tree& tree = document.source.tree;
    const ModelNode& node = tree.models[model.node];
    const Index end = tree.records[node.end].token;
    for (Index token = tree.records[node.record].token; token < end; ++token) {
        if (!may_name(tree.tokens[token].kind)) continue;
        const auto found =
            unknown_in_token(document.source.bytes, range_of(tree, token), name, places);
        if (found) return found;
    }
    return {};
}

string refusal_of_place(const Document& document, const Target& target,
                        const std::vector<NamedPlace>& places) {
    for (const Model& model : document.models) {
        if (target.kind == TargetKind::name && model.node != target.model) continue;
        const auto unknown = unknown_place(document, model, target.name, places);
        if (unknown) {
            return quoted(target.name) + " is also in " + line_text_of(document, unknown->begin) +
                   ", which cannot be read: correct that line first";
        }
    }
    return {};
}

string refusal_of_target(const Document& document, const Target& target) {
    if (target.kind == TargetKind::nest)
        return quoted(target.name) + " is the label of a nest, and labels cannot be renamed";
    if (!is_plain_name(target.name))
        return quoted(target.name) + " is not a name: not all places where it is used are known";
    if (target.kind == TargetKind::name) return {};
    for (const Model& model : document.models) {
        if (owns_name(model, target.name))
            return quoted(target.name) + " is also a name of model " + quoted(model.name);
    }
    return {};
}

// New names that cannot be used.

string refusal_of_form(string_view name) {
    if (!is_plain_name(name)) {
        return quoted(name) +
               " is not a name: use letters, digits and \"_\", and do not begin with a digit";
    }
    if (name.size() > notation::name_columns) {
        return quoted(name) + " is longer than " + std::to_string(notation::name_columns) +
               " characters";
    }
    const string word = capitals(name);
    return is_operator_word(word) || is_function(word) ? refusal_of_word(word) : "";
}

// Refuses a name already used by one of the models, or as a word of the host program.
string refusal_of_known(const Document& document, const Target& target, string_view name) {
    for (const Model& model : document.models) {
        if (same_when_read(model.name, name)) return quoted(name) + " is the name of a model";
        const bool is_concerned =
            target.kind == TargetKind::host_name || model.node == target.model;
        if (is_concerned && model.names.find(name) != no_index)
            return "model " + quoted(model.name) + " already uses the name " + quoted(name);
    }
    const auto word = first_host_word(document, name);
    if (!word) return {};
    return "the host's program already uses the word " + quoted(name) + ", in " +
           line_text_of(document, word->begin);
}

string refusal_of_new_name(const Document& document, const Target& target, string_view name) {
    string refusal = refusal_of_form(name);
    if (!refusal.empty() || same_when_read(name, target.name)) return refusal;
    return refusal_of_known(document, target, name);
}

// What the new name does to the text.

string renamed(string_view bytes, const std::vector<NamedPlace>& places, string_view name) {
    string text;
    Offset end = 0;
    for (const NamedPlace& place : places) {
        if (place.model == no_index) continue;
        text.append(text_of(bytes, {end, place.range.begin})).append(name);
        end = place.range.end;
    }
    return text.append(bytes.substr(end));
}

// The number of a changed line that does not fit the columns read, before or after; 0 if there is
// none.
Index cut_line(const Tree& before, const Tree& after) {
    for (Index record = 0; record < line_count(before); ++record) {
        const Range old = line_range(before, record);
        const Range now = line_range(after, record);
        const Offset old_size = old.end - old.begin;
        const Offset size = now.end - now.begin;
        const bool is_cut = std::max(old_size, size) > notation::record_columns;
        if (is_cut && old_size != size && before.records[record].kind != RecordKind::outside)
            return record + 1;
    }
    return 0;
}

bool has_long_label(const std::vector<NamedPlace>& places, string_view name) {
    const std::size_t longest = notation::label_columns - notation::element_label.size();
    return name.size() > longest &&
           std::any_of(places.begin(), places.end(),
                       [](const NamedPlace& place) { return place.in_label; });
}

bool same_uses(const Model& before, const Model& after) {
    return std::equal(before.uses.begin(), before.uses.end(), after.uses.begin(), after.uses.end(),
                      [](const Use& a, const Use& b) {
                          return a.symbol == b.symbol && a.record == b.record && a.role == b.role;
                      });
}

// How a model would change with the new name; empty if it would not.
string difference(const Model& before, const Model& after) {
    const auto [old, now] = std::mismatch(
        before.errors.begin(), before.errors.end(), after.errors.begin(), after.errors.end(),
        [](const Error& a, const Error& b) { return a.fault == b.fault && a.record == b.record; });
    if (now != after.errors.end()) {
        return "line " + std::to_string(line_of_record(now->record)) + " would have the error " +
               quoted(code_of(now->fault));
    }
    const bool is_same = old == before.errors.end() && same_uses(before, after);
    return is_same ? "" : "model " + quoted(before.name) + " would mean something else";
}

string refusal_of_result(const Document& document, const std::vector<NamedPlace>& places,
                         string_view name) {
    if (has_long_label(places, name)) {
        return "a label with " + quoted(name) + " would be longer than " +
               std::to_string(notation::label_columns) + " characters";
    }
    Document changed;
    set_text(changed, renamed(document.source.bytes, places, name));
    read_text(changed);
    const Index cut = cut_line(document.source.tree, changed.source.tree);
    if (cut > 0) {
        return "line " + std::to_string(cut) + " would be cut after column " +
               std::to_string(notation::record_columns);
    }
    for (std::size_t model = 0; model < document.models.size(); ++model) {
        string found = difference(document.models[model], changed.models[model]);
        if (!found.empty()) return found;
    }
    return {};
}

// What can be renamed at an offset, and all its places. If there is no target, there is a refusal.
struct Found {
    std::optional<Target> target;
    std::vector<NamedPlace> places;
    string refusal;
};

Found find_name(const Document& document, Offset offset) {
    Found found;
    found.target = target_at(document, offset);
    if (!found.target) {
        found.refusal = refusal_at(document, offset);
        return found;
    }
    found.refusal = refusal_of_target(document, *found.target);
    if (!found.refusal.empty()) return found;
    found.places = places_of(document, *found.target);
    found.refusal = refusal_of_place(document, *found.target, found.places);
    return found;
}

}  // namespace

Renaming prepare_rename(const Document& document, Offset offset) {
    Found found = find_name(document, offset);
    Renaming renaming;
    renaming.refusal = std::move(found.refusal);
    if (found.target) renaming.name = found.target->place;
    return renaming;
}

Renaming rename_at(const Document& document, Offset offset, std::string_view new_name) {
    Found found = find_name(document, offset);
    Renaming renaming;
    renaming.refusal = std::move(found.refusal);
    if (renaming.refusal.empty())
        renaming.refusal = refusal_of_new_name(document, *found.target, new_name);
    if (renaming.refusal.empty())
        renaming.refusal = refusal_of_result(document, found.places, new_name);
    if (!renaming.refusal.empty()) return renaming;
    renaming.name = found.target->place;
    for (const NamedPlace& place : found.places) {
        if (text_of(document.source.bytes, place.range) != new_name)
            renaming.places.push_back({place.range, place.model == no_index});
    }
    return renaming;
}

}  // namespace orvex::frontend
