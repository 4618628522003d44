#include "frontend/model/model.h"

#include "frontend/syntax/reading.h"

#include <array>
#include <cstddef>

namespace orvex::frontend {

namespace {

struct KindRow {
    std::string_view name;
    std::string_view with_article;
    notation::TypeCode type;
};

constexpr std::array<KindRow, kind_count> kind_rows = {{
    {"sector", "a sector", 'A'},
    {"commodity", "a commodity", 'P'},
    {"consumer", "a consumer", 'C'},
    {"auxiliary variable", "an auxiliary variable", 'V'},
    {"parameter", "a parameter", 'D'},
    {"report variable", "a report variable", 'R'},
    {"set", "a set", 'S'},
    {"host's name", "a name of the host", notation::no_type},
}};

constexpr std::array<std::string_view, 15> role_names = {
    "declared", "block", "produced",  "used", "demanded", "endowed",    "receives_tax", "rate",
    "ration",   "value", "condition", "set",  "lead",     "constraint", "report"};

const KindRow& row_of(Kind kind) { return kind_rows[static_cast<std::size_t>(kind)]; }

template <typename Element>
std::span<const Element> part(const std::vector<Element>& list, Index first, Index count) {
    return {list.data() + first, count};
}

}  // namespace

std::string_view kind_name(Kind kind) { return row_of(kind).name; }
std::string_view kind_with_article(Kind kind) { return row_of(kind).with_article; }

bool is_variable(Kind kind) { return notation::is_variable(row_of(kind).type); }

Kind kind_of_type(notation::TypeCode type) {
    std::size_t kind = 0;
    while (kind_rows[kind].type != type) ++kind;
    return static_cast<Kind>(kind);
}

std::string_view role_name(Role role) {
    return role == Role::other ? "other" : role_names[static_cast<std::size_t>(role)];
}

std::span<const Field> fields_of(const Model& model, const Block& block) {
    return part(model.fields, block.first_field, block.field_count);
}

std::span<const Field> fields_of(const Model& model, const Entry& entry) {
    return part(model.fields, entry.first_field, entry.field_count);
}

std::span<const Entry> entries_of(const Model& model, const Block& block) {
    return part(model.entries, block.first_entry, block.entry_count);
}

std::span<const Argument> arguments_of(const Model& model, const Reference& reference) {
    return part(model.arguments, reference.first_argument, reference.argument_count);
}

std::span<const Argument> extras_of(const Model& model, const Reference& reference) {
    return part(model.arguments, reference.first_extra, reference.extra_count);
}

const Symbol* find_symbol(const Model& model, std::string_view name) {
    const Index symbol = model.names.find(name);
    return symbol == no_index ? nullptr : &model.symbols[symbol];
}

bool is_used(const Model& model, const Symbol& symbol) {
    Index use = symbol.first_use;
    while (use != no_index && model.uses[use].role == Role::declared) use = model.uses[use].next;
    return use != no_index;
}

bool is_opened_by(const Block& block, notation::Opens opens) {
    return block.keyword != nullptr && block.keyword->opens == opens;
}

std::string reference_text(const Model& model, std::string_view bytes, const Reference& reference) {
    std::string text = capitals(text_of(bytes, reference.name));
    std::string_view before = "(";
    for (const Argument& argument : arguments_of(model, reference)) {
        text.append(before).append(capitals(text_of(bytes, argument.range)));
        before = ",";
    }
    return reference.argument_count == 0 ? text : text + ")";
}

}  // namespace orvex::frontend
