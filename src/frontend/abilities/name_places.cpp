#include "frontend/abilities/name_places.h"

#include "frontend/abilities/context.h"
#include "frontend/abilities/host_text.h"
#include "frontend/abilities/nest_labels.h"
#include "frontend/syntax/reading.h"

#include <algorithm>
#include <cstddef>

namespace orvex::frontend {

namespace {

using std::string_view;

bool holds(Range range, Offset offset) { return range.begin <= offset && offset <= range.end; }

const Symbol* find_used(const Model& model, string_view name) {
    const Symbol* const symbol = find_symbol(model, name);
    return symbol == nullptr || symbol->first_use == no_index ? nullptr : symbol;
}

bool is_owned(const Symbol& symbol) {
    return symbol.is_declared || is_variable(symbol.kind) || symbol.kind == Kind::report;
}

// How many models use the name, and how many of those own it.
struct Shared {
    int users = 0;
    int owners = 0;
    Index owner = no_index;  // the last one
};

Shared sharing_of(const Document& document, string_view name) {
    Shared shared;
    for (Index model = 0; model < document.models.size(); ++model) {
        const Symbol* const symbol = find_used(document.models[model], name);
        if (symbol == nullptr) continue;
        ++shared.users;
        if (!is_owned(*symbol)) continue;
        ++shared.owners;
        shared.owner = model;
    }
    return shared;
}

bool has_host_words(const Document& document, const Target& target) {
    if (target.kind == TargetKind::nest) return false;
    const Shared shared = sharing_of(document, target.name);
    return target.kind == TargetKind::name ? shared.users == 1 : shared.owners == 0;
}

Target target_of_use(const Document& document, const UsePlace& place) {
    const Model& model = model_of(document, place);
    const Use& use = use_of(document, place);
    const bool owned = is_owned(model.symbols[use.symbol]);
    return {owned ? TargetKind::name : TargetKind::host_name, name_of(model, use.symbol),
            owned ? place.model : no_index, no_index, use.range};
}

// The label token that contains an offset or ends there; an empty range if there is none.
Range label_at(const Tree& tree, Index record, Offset offset) {
    for (Index token = tree.records[record].token; token < tree.records[record + 1].token;
         ++token) {
        const Range range = range_of(tree, token);
        if (tree.tokens[token].kind == TokenKind::label && holds(range, offset)) return range;
    }
    return {};
}

std::optional<Target> target_of_label(const Document& document, const Context& context,
                                      Offset offset) {
    const string_view bytes = document.source.bytes;
    const Range label = label_at(document.source.tree, context.record, offset);
    if (label.empty() || context.block == nullptr) return {};
    const Range set = set_in_label(bytes, label);
    if (!set.empty() && holds(set, offset)) {
        const std::string name = capitals(text_of(bytes, set));
        const bool owned = owns_name(*context.model, name);
        return Target{owned ? TargetKind::name : TargetKind::host_name, name,
                      owned ? context.model->node : no_index, no_index, set};
    }
    const auto block = static_cast<Index>(context.block - context.model->blocks.data());
    for (const NestLabel& nest : nest_labels_of(document, *context.model, block)) {
        if (!holds(nest.range, offset)) continue;
        return Target{TargetKind::nest, capitals(text_of(bytes, nest.range)), context.model->node,
                      block, nest.range};
    }
    return {};
}

std::optional<Target> target_of_host_word(const Document& document, Offset offset) {
    const auto word = host_word_at(document, offset);
    if (!word) return {};
    const std::string name = capitals(text_of(document.source.bytes, *word));
    const Shared shared = sharing_of(document, name);
    if (shared.users == 0 || (shared.owners > 0 && shared.users > 1)) return {};
    const bool owned = shared.owners > 0;
    return Target{owned ? TargetKind::name : TargetKind::host_name, name, shared.owner, no_index,
                  *word};
}

void add_uses(const Document& document, Index number, const Target& target,
              std::vector<NamedPlace>& places) {
    const Model& model = document.models[number];
    const Symbol* const symbol = find_symbol(model, target.name);
    const bool owned = symbol != nullptr && is_owned(*symbol);
    if (owned != (target.kind == TargetKind::name)) return;
    if (symbol != nullptr) {
        for (Index use = symbol->first_use; use != no_index; use = model.uses[use].next)
            places.push_back({model.uses[use].range, number, model.uses[use].role});
    }
    for (const Range range : labels_of_set(document, model, target.name))
        places.push_back({range, number, Role::set, false, true});
}

void add_nests(const Document& document, const Target& target, std::vector<NamedPlace>& places) {
    const string_view bytes = document.source.bytes;
    const Model& model = document.models[target.model];
    for (const NestLabel& nest : nest_labels_of(document, model, target.block)) {
        if (same_when_read(text_of(bytes, nest.range), target.name))
            places.push_back({nest.range, target.model, Role::other, nest.opens, true});
    }
}

void add_names(const Document& document, const Target& target, std::vector<NamedPlace>& places) {
    if (target.kind == TargetKind::name) {
        add_uses(document, target.model, target, places);
    } else {
        for (Index model = 0; model < document.models.size(); ++model)
            add_uses(document, model, target, places);
    }
    if (!has_host_words(document, target)) return;
    for (const Range range : host_words(document, target.name)) places.push_back({range});
}

}  // namespace

bool owns_name(const Model& model, std::string_view name) {
    const Symbol* const symbol = find_used(model, name);
    return symbol != nullptr && is_owned(*symbol);
}

std::optional<Target> target_at(const Document& document, Offset offset) {
    const UsePlace* const use = use_at(document, offset);
    if (use != nullptr) return target_of_use(document, *use);
    const Context context = context_at(document, offset);
    return context.model == nullptr ? target_of_host_word(document, offset)
                                    : target_of_label(document, context, offset);
}

std::optional<Range> definition_of(const Document& document, const Target& target) {
    if (target.kind == TargetKind::name) {
        const Symbol* const symbol = find_symbol(document.models[target.model], target.name);
        return symbol != nullptr && symbol->is_declared ? std::optional(symbol->declaration)
                                                        : std::nullopt;
    }
    if (target.kind == TargetKind::host_name) {
        return has_host_words(document, target) ? first_host_word(document, target.name)
                                                : std::nullopt;
    }
    std::vector<NamedPlace> places;
    add_nests(document, target, places);
    const auto opened = std::find_if(places.begin(), places.end(),
                                     [](const NamedPlace& place) { return place.defines; });
    return opened == places.end() ? std::nullopt : std::optional(opened->range);
}

std::vector<NamedPlace> places_of(const Document& document, const Target& target) {
    std::vector<NamedPlace> places;
    if (target.kind == TargetKind::nest) {
        add_nests(document, target, places);
    } else {
        add_names(document, target, places);
    }
    const auto definition = definition_of(document, target);
    for (NamedPlace& place : places) {
        place.defines = place.defines || place.role == Role::declared ||
                        (definition && place.range == *definition);
    }
    std::stable_sort(places.begin(), places.end(), [](const NamedPlace& a, const NamedPlace& b) {
        return a.range.begin < b.range.begin;
    });
    // Nothing may be changed twice, so overlapping places are removed.
    const auto end = std::unique(
        places.begin(), places.end(),
        [](const NamedPlace& a, const NamedPlace& b) { return b.range.begin < a.range.end; });
    places.erase(end, places.end());
    return places;
}

bool is_written_at(const NamedPlace& place) {
    switch (place.role) {
    case Role::declared:
    case Role::block:
    case Role::produced:
    case Role::endowed:
    case Role::receives_tax: return true;
    default: return place.defines && place.model != no_index;
    }
}

}  // namespace orvex::frontend
