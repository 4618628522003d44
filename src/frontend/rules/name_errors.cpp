// What is wrong with a name: its kind, its number of sets, or a missing declaration.
#include "frontend/findings/place.h"
#include "frontend/findings/wording.h"
#include "frontend/rules/descriptions.h"
#include "frontend/rules/edits.h"
#include "frontend/rules/error_place.h"
#include "frontend/rules/error_texts.h"
#include "frontend/rules/near_names.h"
#include "frontend/syntax/expressions.h"
#include "notation/keywords.h"
#include "notation/labels.h"
#include "notation/limits.h"

#include <algorithm>
#include <array>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace orvex::frontend {

namespace {

using notation::Opens;

const Symbol& symbol_of(const ErrorCase& at) { return at.model.symbols[at.error.symbol]; }

// Where the symbol was declared, or first used as far as the translator can see.
Range first_place(const Model& model, const Symbol& symbol) {
    Range place = symbol.declaration;
    for (Index use = symbol.first_use; place.empty() && use != no_index; use = model.uses[use].next)
        if (model.uses[use].listed != no_index) place = model.uses[use].range;
    return place;
}

void add_first_use(const ErrorCase& at, const std::string& how, Said& said) {
    const Symbol& symbol = symbol_of(at);
    const Range place = first_place(at.model, symbol);
    if (place.empty() || place == at.error.place) return;
    const std::string name = back_quoted(name_of(at.model, at.error.symbol));
    const std::string_view what =
        symbol.is_declared ? " was declared here, " : " was first used here, ";
    said.notes.push_back(
        {Severity::note, name + std::string(what) + how, span_of(at.source, place)});
}

// Adds the name that is meant, and the edit that replaces the wrong one.
void add_meant(const ErrorCase& at, const std::string& name, Said& said) {
    if (name.empty()) return;
    said.meant = name;
    if (at.error.also.empty())
        said.fix = Fix{Confidence::maybe,
                       {replacing(at.error.place, cased_like(text_in(at, at.error.place), name))}};
}

// A similar name of the expected kind with as many sets.
std::string near_symbol(const ErrorCase& at) {
    if (!at.is_compared) return {};
    return nearest_name(at.error.text, at.error.dimension, names_of(at.model, at.error.expected));
}

// The same, but only among names that are not used otherwise.
std::string near_unused_symbol(const ErrorCase& at) {
    if (!at.is_compared) return {};
    std::vector<Candidate> names = names_of(at.model, at.error.expected);
    std::erase_if(names, [](const Candidate& name) { return !name.is_unused; });
    return nearest_name(at.error.text, at.error.dimension, names);
}

// Kinds.

// The other keyword or label that fits the kind of the name: $DEMAND: for a consumer after $PROD:,
// "N:" for an auxiliary variable after "A:" or "T:", "W:" for a consumer in a report. Empty if
// there is none.
std::string fitting_label(const ErrorCase& at, const std::string& label) {
    const Kind known = symbol_of(at).kind;
    if (label == "$PROD:" && known == Kind::consumer) return "$DEMAND:";
    if (label == "$DEMAND:" && known == Kind::sector) return "$PROD:";
    if ((label == "A:" || label == "T:") && known == Kind::auxiliary) return "N:";
    if (label == "N:" && known == Kind::consumer) return "A:";
    const Block* const block = block_of(at);
    const bool is_report = block != nullptr && is_opened_by(*block, Opens::report);
    return is_report && known == Kind::consumer && label != "V:" ? "W:" : "";
}

// The variables with a production or demand block in the model.
std::set<Index> owners_of_blocks(const Model& model) {
    std::set<Index> owners;
    for (const Block& block : model.blocks) {
        const Index symbol = block.head.reference.symbol;
        if (symbol == no_index) continue;
        const bool is_consumer = model.symbols[symbol].kind == Kind::consumer;
        if (is_opened_by(block, is_consumer ? Opens::demand : Opens::production))
            owners.insert(symbol);
    }
    return owners;
}

// The only name of the expected kind with as many sets that the model declares, not counting those
// skipped. Empty if there is not exactly one.
std::string only_name(const ErrorCase& at, const std::set<Index>& skipped) {
    std::string only;
    for (const Index index : at.model.declared) {
        const Symbol& symbol = at.model.symbols[index];
        const bool fits = symbol.kind == at.error.expected &&
                          symbol.dimension == at.error.dimension && !skipped.contains(index);
        if (!fits) continue;
        if (!only.empty()) return {};
        only = name_of(at.model, index);
    }
    return only;
}

// Replaces the label before the name by another one.
void put_label(const ErrorCase& at, const std::string& label, const std::string& other,
               Said& said) {
    said.meant = other + at.error.text;
    const Offset name = at.error.place.begin;
    const Offset start = record_range(at.source.tree, at.error.record).begin;
    const std::size_t found = as_read(at, {start, name}).rfind(label);
    if (found == std::string::npos || !at.error.also.empty()) return;
    const Offset begin = start + static_cast<Offset>(found);
    said.fix = Fix{Confidence::maybe,
                   {replacing({begin, begin + static_cast<Offset>(label.size())},
                              cased_like(text_in(at, at.error.place), other))}};
}

// The model declares nothing of the expected kind.
void say_undeclared_kind(const ErrorCase& at, Said& said) {
    said.help = "keyword";
    said.values["kind"] = kind_name(at.error.expected);
    said.values["keyword"] = declaring_keyword(at.error.expected);
}

// A name after a label that names something else. A name with a block of its own is not meant to
// have another one.
void say_label(const ErrorCase& at, const std::string& label, Said& said) {
    said.variant = "label";
    if (!at.is_compared) return;
    std::set<Index> owners;
    if (label.starts_with('$')) owners = owners_of_blocks(at.model);
    const std::string other = fitting_label(at, label);
    if (!other.empty() && !owners.contains(at.error.symbol))
        return put_label(at, label, other, said);
    if (is_variable(at.error.expected) && !declares(at.model, at.error.expected))
        return say_undeclared_kind(at, said);
    const std::string near = near_symbol(at);
    add_meant(at, near.empty() ? only_name(at, owners) : near, said);
}

// Does the label begin rows of the block?
bool begins_rows_of(const notation::Label& label, const Block& block) {
    const unsigned wanted = is_opened_by(block, Opens::production) ? notation::production_entry
                            : is_opened_by(block, Opens::demand)   ? notation::demand_entry
                                                                   : notation::nothing;
    return (label.begins & wanted) != 0;
}

// A name instead of a value: an entry was meant, or a field of one.
void say_value(const ErrorCase& at, const std::string& label, Said& said) {
    said.variant = "value";
    if (const std::string other = fitting_label(at, label); !other.empty())
        return put_label(at, label, other, said);
    const notation::Label* const row =
        notation::find_label(std::string_view(label).substr(0, label.find(':')));
    if (row == nullptr || row->type == notation::no_type) return;
    if ((row->begins & (notation::production_entry | notation::demand_entry)) == 0) {
        if (row->names_later) said.help = "field";
        return;
    }
    said.help = "entry";
    const Tree& tree = at.source.tree;
    const Index field = field_at(tree, at.error.place.begin);
    const bool is_first = field == tree.records[at.error.record].field;
    if (is_first || !at.error.also.empty()) return;
    const Block* const block = block_of(at);
    const bool fits = block != nullptr && begins_rows_of(*row, *block);
    said.fix = Fix{Confidence::certain, {breaking_row(at, parts_at(at).label.begin)}};
    if (!fits) said.fix->confidence = Confidence::maybe;
}

bool is_declaration(const ErrorCase& at) {
    return at.source.tree.records[at.error.record].kind == RecordKind::names;
}

// Numbers of sets.

std::string number_word(int count) {
    constexpr std::array<std::string_view, notation::most_arguments + 1> words = {
        "no", "one", "two", "three", "four", "five", "six", "seven"};
    return std::string(
        words[static_cast<std::size_t>(std::clamp(count, 0, notation::most_arguments))]);
}

std::string sets_in_words(int count) {
    return number_word(count) + (count == 1 ? " set" : " sets");
}

// The sets that the name has elsewhere; empty if they are unknown.
std::vector<std::string> known_sets(const ErrorCase& at) {
    const Symbol& symbol = symbol_of(at);
    const bool are_known = symbol.arguments.size() == static_cast<std::size_t>(symbol.dimension);
    return are_known ? symbol.arguments : std::vector<std::string>();
}

std::string listed(const std::vector<std::string>& arguments) {
    std::string list;
    for (const std::string& argument : arguments) list += (list.empty() ? "" : ",") + argument;
    return list.empty() ? list : "(" + list + ")";
}

// The argument list of the name at the error; empty if it has none.
Range list_after_name(const ErrorCase& at) {
    const Tree& tree = at.source.tree;
    Index token = token_at(tree, at.error.place.begin) + 1;
    while (tree.tokens[token].kind == TokenKind::blank) ++token;
    if (tree.tokens[token].kind != TokenKind::open) return {at.error.place.end, at.error.place.end};
    const Index open = token;
    const Index end = tree.records[at.error.record + 1].token;
    while (token < end && tree.tokens[token].kind != TokenKind::close) ++token;
    return range_of(tree, open, std::min(token + 1, end));
}

std::vector<std::string> arguments_in(const ErrorCase& at, Range list) {
    const Tree& tree = at.source.tree;
    std::vector<std::string> arguments;
    for (Index token = token_at(tree, list.begin); tree.tokens[token].begin < list.end; ++token) {
        if (tree.tokens[token].kind == TokenKind::argument)
            arguments.push_back(as_read(at, range_of(tree, token)));
    }
    return arguments;
}

// Are the elements of one list also in another one, in the same order?
bool is_part(const std::vector<std::string>& part, const std::vector<std::string>& whole) {
    std::size_t found = 0;
    for (const std::string& element : whole)
        if (found < part.size() && part[found] == element) ++found;
    return found == part.size();
}

// Shows the sets that the name has elsewhere, if the list here has just too many or too few of
// them.
void say_right_sets(const ErrorCase& at, Range list, const std::vector<std::string>& here,
                    const std::vector<std::string>& known, Said& said) {
    if (known.empty()) {
        said.help = "without";
    } else if (here.empty()) {
        said.help = "missing";
    } else if (is_part(here, known)) {
        said.help = "fewer";
    } else if (is_part(known, here)) {
        said.help = "more";
    } else {
        return;
    }
    said.values["right"] = at.error.text + listed(known);
    if (at.error.also.empty())
        said.fix = Fix{Confidence::maybe,
                       {replacing(list, cased_like(text_in(at, at.error.place), listed(known)))}};
}

// Constraints.

// The keyword record of the block that declares the error's name, if that does not make its names
// auxiliary variables; no_index if there is none.
Index misspelt_declaration(const ErrorCase& at) {
    const Symbol& symbol = symbol_of(at);
    if (!symbol.is_declared || symbol.kind != Kind::auxiliary) return no_index;
    Index record = no_index;
    for (const Block& block : at.model.blocks) {
        if (block.record < symbol.declared_record) record = block.record;
    }
    return record;
}

}  // namespace

void say_kind(const ErrorCase& at, Said& said) {
    std::string label = label_before(at, at.error.place.begin);
    if (label.empty()) label = ":";
    said.values["known"] = kind_with_article(symbol_of(at).kind);
    said.values["wanted"] = kind_with_article(at.error.expected);
    said.values["label"] = label;
    add_first_use(at, "as " + said.values["known"], said);
    if (is_declaration(at) && at.error.expected != Kind::set) {
        const Block* const block = block_of(at);
        said.variant = "declared";
        if (is_little_word(at.error.text)) said.help = "description";
        if (block != nullptr) said.values["label"] = keyword_of_record(at, block->record) + ":";
    } else if (at.error.expected == Kind::set) {
        said.variant = "set";
        const Tree& tree = at.source.tree;
        said.values["owner"] =
            as_read(at, range_of(tree, owner_of_argument(tree, at.error.place.begin)));
    } else if (at.error.expected == Kind::parameter) {
        say_value(at, label, said);
    } else {
        say_label(at, label, said);
    }
}

void say_dimension(const ErrorCase& at, Said& said) {
    const int dimension = symbol_of(at).dimension;
    const Range list = list_after_name(at);
    const std::vector<std::string> here = arguments_in(at, list);
    const std::vector<std::string> known = known_sets(at);
    said.variant = "sets";
    said.values["known"] = sets_in_words(dimension) + (known.empty() ? "" : ", " + listed(known));
    said.values["here"] = at.error.dimension == 0
                              ? "none here"
                              : number_word(at.error.dimension) + " here, " + listed(here);
    add_first_use(at, dimension == 0 ? "without sets" : "with " + listed(known), said);
    const std::string near = near_unused_symbol(at);
    if (!near.empty()) return add_meant(at, near, said);
    const bool are_known = known.size() == static_cast<std::size_t>(dimension);
    if (symbol_of(at).is_declared && are_known) say_right_sets(at, list, here, known, said);
}

void say_undeclared(const ErrorCase& at, Said& said) {
    said.variant = "kind";
    said.values["kind"] = kind_name(at.error.expected);
    add_meant(at, near_symbol(at), said);
}

void say_constrained_kind(const ErrorCase& at, Said& said) {
    if (at.error.text.empty()) {
        said.variant = "empty";
        return;
    }
    said.variant = "known";
    said.values["known"] = kind_with_article(symbol_of(at).kind);
    add_first_use(at, "as " + said.values["known"], said);
    add_meant(at, near_symbol(at), said);
}

void say_constrained_name(const ErrorCase& at, Said& said) {
    if (at.error.text.empty()) {
        said.variant = "empty";
        return;
    }
    const Index record = misspelt_declaration(at);
    if (record == no_index) return add_meant(at, near_symbol(at), said);
    const Tree& tree = at.source.tree;
    const Range keyword = range_of(tree, tree.records[record].token);
    said.variant = "keyword";
    said.values["keyword"] = keyword_of_record(at, record);
    said.notes.push_back({Severity::note, back_quoted(at.error.text) + " was declared here",
                          span_of(at.source, symbol_of(at).declaration)});
    said.fix = Fix{Confidence::certain,
                   {replacing(keyword, cased_like(text_in(at, keyword), "$AUXILIARY"))}};
}

void say_long_name(const ErrorCase& at, Said& said) {
    if (at.error.expected == Kind::parameter && !is_plain_name(at.error.text))
        said.help = "expression";
}

}  // namespace orvex::frontend
