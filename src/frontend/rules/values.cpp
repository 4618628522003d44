#include "frontend/findings/failure.h"
#include "frontend/rules/checks.h"
#include "frontend/rules/facts.h"
#include "frontend/rules/rows.h"
#include "frontend/rules/warn.h"
#include "frontend/syntax/expressions.h"
#include "frontend/syntax/lookalikes.h"
#include "frontend/syntax/reading.h"
#include "frontend/syntax/value_form.h"
#include "text/characters.h"

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orvex::frontend {

namespace {

// A value as it is read, and its place.
struct Value {
    std::string text;
    Range place;
};

std::string_view variant_of(ValueForm form) {
    switch (form) {
    case ValueForm::expression: return "expression";
    case ValueForm::unfinished: return "operator";
    case ValueForm::several: return "several";
    case ValueForm::not_number: return "number";
    case ValueForm::quoted: return "quotes";
    case ValueForm::comma: return "comma";
    case ValueForm::semicolon: return "semicolon";
    case ValueForm::brackets: return "brackets";
    case ValueForm::parentheses: return "parentheses";
    case ValueForm::good:
    case ValueForm::not_value: break;
    }
    return {};
}

bool is_good(std::string_view text) {
    return !text.empty() && shape_of_value(capitals(text)).form == ValueForm::good;
}

bool is_number(std::string_view text) {
    return is_good(text) && next_lexeme(text, 0).kind == TokenKind::number;
}

// How sure it is that parentheses around the value make it valid.
Confidence confidence_of(const ValueShape& shape) {
    const bool is_right = shape.form == ValueForm::good || shape.form == ValueForm::expression;
    return is_right && !shape.compares ? Confidence::certain : Confidence::maybe;
}

std::string_view without_blanks(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(blank_char), text.size()));
    return orvex::trimmed(text);
}

// Replaces each character in `from` by its counterpart in `to`.
std::string with(std::string text, std::string_view from, std::string_view to) {
    for (char& c : text) {
        const std::size_t at = from.find(c);
        if (at != std::string_view::npos) c = to[at];
    }
    return text;
}

// The value with its wrong characters replaced by those probably meant; empty if that is not a
// value.
std::string respelt(ValueForm form, std::string_view text) {
    std::string meant;
    bool is_right = false;
    if (form == ValueForm::not_value || form == ValueForm::comma) {
        meant = with(std::string(text), "OoIiLl,", "001111.");
        is_right = is_number(meant);
    } else if (form == ValueForm::quoted || form == ValueForm::brackets) {
        meant = form == ValueForm::quoted ? text.substr(1, text.size() - 2)
                                          : with(std::string(text), "[]{}", "()()");
        is_right = is_good(meant);
    }
    return is_right ? meant : std::string();
}

std::optional<Fix> fix_of(const Subject& subject, const Value& value, const ValueShape& shape) {
    const Offset begin = value.place.begin;
    const Offset end = value.place.end;
    if (shape.form == ValueForm::expression)
        return Fix{confidence_of(shape), {{begin, begin, "("}, {end, end, ")"}}};
    const std::string_view rest = text_in(subject, {begin, end - 1});
    if (shape.form == ValueForm::semicolon && is_good(rest))
        return Fix{Confidence::certain, {{end - 1, end, ""}}};
    std::string meant = respelt(shape.form, text_in(subject, value.place));
    if (meant.empty()) return {};
    return Fix{Confidence::maybe, {{begin, end, std::move(meant)}}};
}

// Does the second word of a value look like a label without its colon: one that takes a value, or
// that of a nest which the block opens?
bool is_label(const Subject& subject, const Row& opening, std::string_view word, bool is_last) {
    const notation::Label* const known = notation::find_label(word);
    if (known != nullptr && known->full) return !is_last;
    const auto fields = fields_of(subject.facts->rows, opening);
    return std::any_of(fields.begin(), fields.end(), [&](const Field* field) {
        const std::string label = capitals(text_in(subject, field->label));
        return label.substr(0, label.find('(')) == word;
    });
}

void warn_of_shape(const Subject& subject, const Row& opening, const Value& value,
                   const ValueShape& shape, Findings& findings) {
    std::string_view variant = variant_of(shape.form);
    const std::string second = value.text.substr(shape.second, shape.second_end - shape.second);
    const bool is_last = shape.second_end == value.text.size();
    const bool lacks_colon =
        shape.form == ValueForm::several && is_label(subject, opening, second, is_last);
    if (lacks_colon) variant = "label";
    Finding& finding =
        warn(subject, findings, value.place, {{"value", value.text}, {"label", second}}, variant);
    finding.fix = fix_of(subject, value, shape);
    const bool is_guess = finding.fix && finding.fix->confidence == Confidence::maybe &&
                          finding.fix->edits.size() == 1;
    if (is_guess) set_help(finding, "did you mean `" + finding.fix->edits.front().text + "`?");
    if (!lacks_colon) return;
    const std::size_t colon = value.place.begin + shape.second_end;
    finding.fix = Fix{Confidence::maybe, {{colon, colon, ":"}}};
}

void warn_of_lookalikes(const Subject& subject, const Value& value,
                        const std::vector<Lookalike>& found, Findings& findings) {
    const Lookalike& first = found.front();
    const Offset begin = value.place.begin;
    const Range place = {begin + static_cast<Offset>(first.begin),
                         begin + static_cast<Offset>(first.end)};
    Finding& finding = warn(subject, findings, place,
                            {{"value", value.text}, {"character", std::string(first.name)}},
                            first.meant == blank_char ? "blank" : "dash");
    const std::string text = without_lookalikes(value.text);
    const ValueShape shape = shape_of_value(without_blanks(text));
    const bool is_expression = shape.form == ValueForm::expression;
    Fix fix = {confidence_of(shape), {}};
    if (is_expression) fix.edits.push_back({begin, begin, "("});
    for (const Lookalike& each : found)
        fix.edits.push_back({begin + each.begin, begin + each.end, std::string(1, each.meant)});
    if (is_expression) fix.edits.push_back({value.place.end, value.place.end, ")"});
    finding.fix = std::move(fix);
}

void check_value(const Subject& subject, const Row& opening, const Field& field,
                 Findings& findings) {
    if (field.is_name || field.faulty) return;
    const Value value = {as_read(subject, field.text), field.text};
    const std::vector<Lookalike> found = lookalikes(value.text);
    if (!found.empty()) return warn_of_lookalikes(subject, value, found, findings);
    const ValueShape shape = shape_of_value(value.text);
    if (shape.form != ValueForm::good) warn_of_shape(subject, opening, value, shape, findings);
}

}  // namespace

// Wrong arguments and translator errors have their own findings.
void check_value_invalid(const Subject& subject, Findings& findings) {
    const Rows& rows = subject.facts->rows;
    // The first row is an opening record.
    const Row* opening = rows.rows.data();
    for (const Row& row : rows.rows) {
        if (row.entry == nullptr) opening = &row;
        for (const Field* const field : own_fields_of(rows, row)) {
            if (needs_value(row, *field) && !has_error(*subject.facts, field->node))
                check_value(subject, *opening, *field, findings);
        }
    }
}

}  // namespace orvex::frontend
