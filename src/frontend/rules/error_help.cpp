#include "frontend/rules/error_help.h"

#include "frontend/base/spelling.h"
#include "frontend/syntax/meant_keyword.h"
#include "notation/labels.h"

#include <algorithm>
#include <string_view>
#include <vector>

namespace orvex::frontend {

namespace {

std::string_view text(const ErrorCase& at, Range range) { return text_of(at.source.bytes, range); }

std::vector<std::string> names_of(const Model& model, Kind kind) {
    std::vector<std::string> names;
    for (Index symbol = 0; symbol < model.symbols.size(); ++symbol) {
        const Symbol& known = model.symbols[symbol];
        const bool fits = known.kind == kind && known.first_use != no_index;
        if (fits) names.push_back(name_of(model, symbol));
    }
    return names;
}

template <typename Fits>
std::vector<std::string> labels_that(Fits fits) {
    std::vector<std::string> texts;
    for (const notation::Label& label : notation::labels())
        if (fits(label)) texts.emplace_back(label.text);
    return texts;
}

std::string keyword_meant(const ErrorCase& at) {
    const std::string word = capitals(at.error.text);
    const notation::Keyword* keyword = notation::find_keyword(word);
    if (keyword == nullptr) keyword = meant_keyword(orvex::trimmed(word));
    if (keyword == nullptr) return {};
    const bool ends = keyword->opens == notation::Opens::end;
    return "$" + std::string(keyword->word) + (ends ? "" : ":");
}

std::string shifted_meant(const ErrorCase& at) {
    const std::string& argument = at.error.text;
    const std::size_t shift = std::min(argument.find_first_of("+-"), argument.size());
    const std::string set = nearest(argument.substr(0, shift), names_of(at.model, Kind::set));
    return set.empty() ? set : set + argument.substr(shift);
}

// The record of the error, as it is read, without leading blanks.
std::string record_text(const ErrorCase& at) {
    return capitals(text(at, record_range(at.source.tree, at.error.record)));
}

bool is_after_constraint(const ErrorCase& at) {
    const auto& blocks = at.model.blocks;
    const auto after = std::find_if(blocks.begin(), blocks.end(), [&](const Block& block) {
        return block.record > at.error.record;
    });
    return after != blocks.begin() && is_opened_by(*(after - 1), notation::Opens::constraint);
}

std::string unlabelled_help(const ErrorCase& at) {
    if (is_after_constraint(at))
        return "a constraint ends with its first `;`: what follows is no part of it";
    const std::string record = record_text(at);
    if (record.starts_with('$')) return "move the `$` to column 1";
    const bool looks_like_comment =
        !record.empty() && std::string_view("*#;-/").find(record.front()) != std::string_view::npos;
    return looks_like_comment ? "begin a comment with `*` in column 1" : "";
}

std::string argument_help(const ErrorCase& at) {
    if (at.error.text.empty()) return "name the blank argument, or remove the comma";
    return at.error.text.starts_with('\'') ? "put the element into double quotes" : "";
}

// The label of the field in which the error is.
std::string label_before(const ErrorCase& at) {
    const Tree& tree = at.source.tree;
    const auto after =
        std::upper_bound(tree.tokens.begin(), tree.tokens.end(), at.error.place.begin,
                         [](Offset offset, const Token& token) { return offset < token.begin; });
    auto token = static_cast<Index>(after - tree.tokens.begin());
    while (token > tree.records[at.error.record].token) {
        --token;
        if (tree.tokens[token].kind == TokenKind::label) {
            return capitals(text(at, range_of(tree, token)));
        }
    }
    return {};
}

// A name in a place of a value: an entry was meant, or a field of one.
std::string value_help(const ErrorCase& at) {
    if (at.error.expected != Kind::parameter) return {};
    const std::string label = label_before(at);
    const notation::Label* const row = notation::find_label(label);
    if (row == nullptr || row->type == notation::no_type) return {};
    if ((row->begins & (notation::production_entry | notation::demand_entry)) != 0)
        return "begin a new line with `" + label + ":`: here it takes a value";
    return row->names_later ? "move `" + label + ":` to an entry: here it takes a value" : "";
}

}  // namespace

std::string meant(const ErrorCase& at) {
    switch (at.error.fault) {
    case Fault::keyword_unknown:
    case Fault::keyword_colon: return keyword_meant(at);
    case Fault::addsym_undeclared:
    case Fault::chksym_unknown:
        return nearest(at.error.text, names_of(at.model, at.error.expected));
    case Fault::chkset_inactive: return nearest(at.error.text, names_of(at.model, Kind::set));
    case Fault::leadlg_inactive: return shifted_meant(at);
    case Fault::repblk_second:
        return nearest(at.error.text, labels_that([](const auto& row) { return row.reported; }));
    case Fault::repblk_third:
        return nearest(at.error.text, labels_that([](const auto& row) { return row.owns; }));
    default: return {};
    }
}

std::string own_help(const ErrorCase& at) {
    switch (at.error.fault) {
    case Fault::getfld_label: return unlabelled_help(at);
    case Fault::chkset_inactive: return argument_help(at);
    case Fault::addsym_type: return value_help(at);
    default: return {};
    }
}

bool lacks_end(const ErrorCase& at) {
    const bool of_keyword =
        at.error.fault == Fault::keyword_unknown || at.error.fault == Fault::keyword_colon;
    return of_keyword && belongs_outside(at.error.text);
}

}  // namespace orvex::frontend
