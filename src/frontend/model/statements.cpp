#include "frontend/model/statements.h"

#include "frontend/model/width.h"
#include "frontend/syntax/reading.h"
#include "notation/labels.h"
#include "notation/limits.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace orvex::frontend {

namespace {

using Read = FieldReader::Read;
using Part = CutStatement::Part;

constexpr auto columns_of_line = static_cast<std::size_t>(notation::record_columns);
constexpr int many_levels = 32;          // too many for a single field to be the cause
constexpr std::size_t checked_back = 4;  // statements of one field are close together

// A list of sets for a loop, which adds its ")".
std::string_view without_comma(std::string_view list) { return list.substr(0, list.size() - 1); }

}  // namespace

void Statements::close_block() {
    block_levels_ = 0;
    return_to_block();
}

void Statements::return_to_block() {
    levels_ = block_levels_;
    is_deep_ = false;
}

bool Statements::surely_fits(std::size_t size) const {
    const auto indent = static_cast<std::size_t>(notation::indent_of(levels_));
    return size + indent + most_fixed_columns <= columns_of_line;
}

// One finding per field is enough, and one about the levels of an entry.
void Statements::check(const Read& read, Part part, Range place, std::size_t columns) {
    columns += static_cast<std::size_t>(2 * levels_);
    if (columns <= columns_of_line || read.field.faulty) return;
    if (levels_ >= many_levels) {
        if (!std::exchange(is_deep_, true))
            model_.cut.push_back({read.field, Part::levels, read.field.label, columns, levels_});
        return;
    }
    const std::size_t known = model_.cut.size();
    for (std::size_t i = known - std::min(known, checked_back); i < known; ++i) {
        if (model_.cut[i].field.node == read.field.node) return;
    }
    model_.cut.push_back({read.field, part, place, columns, levels_});
}

// The longer one of the sets and the condition that open a loop gets the finding.
void Statements::check_head(const Read& read, std::string_view sets, std::string_view condition,
                            std::size_t columns) {
    const bool is_condition = condition.size() > sets.size();
    check(read, is_condition ? Part::condition : Part::sets,
          is_condition ? read.parts.condition : read.parts.value, columns);
}

void Statements::open(const Read& read, std::string_view list, std::string_view condition) {
    const std::string_view sets = without_comma(list);
    if (sets.size() < 2 && condition.empty()) return;
    if (!surely_fits(sets.size() + condition.size())) {
        LongStatement statement;
        if (sets.size() < 2) {
            notation::make_condition(statement, condition);
        } else {
            notation::make_loop(statement, sets, condition);
        }
        check_head(read, sets, condition, statement.view().size());
    }
    ++levels_;
}

// A line of the header file is not in any level.
void Statements::check_line(const Read& read, Part part, std::size_t columns) {
    const int levels = levels_;
    levels_ = 0;
    check(read, part, part == Part::condition ? read.parts.condition : read.parts.value, columns);
    levels_ = levels;
}

void Statements::add_term(const Read& read, std::string_view condition) {
    const std::string_view name = text(read.field.text);
    if (2 * name.size() + condition.size() + most_fixed_columns <= columns_of_line) return;
    const std::string sets = distinct_sets(read.field);
    const Part part = condition.size() > 2 * name.size() ? Part::condition : Part::sets;
    if (sets.size() < 2)
        return check_line(read, part, name.size() + condition.size() + (condition.empty() ? 1 : 2));
    LongStatement sum;
    notation::make_sum(sum, sets, condition);
    check_line(read, part, sum.view().size() + name.size() + 1);
}

void Statements::add_report_term(const Read& read, std::string_view condition) {
    if (condition.empty()) return add_term(read, "(ORVREPORT)");
    LongStatement whole;
    notation::make_report_condition(whole, condition);
    add_term(read, whole.view());
}

void Statements::declare_equation(const Read& read, Range variable, Range arguments) {
    constexpr std::string_view number = "EQ_001";  // whatever its number is
    LongStatement equation;
    equation.append(number, text(arguments));
    LongStatement statement;
    notation::make_equation(statement, equation.view(), text(variable));
    check_line(read, Part::sets, statement.view().size());
}

// As "(S,T": each set once, leads and lags as written.
std::string Statements::distinct_sets(const Field& field) const {
    std::vector<std::string_view> sets;
    for (const Argument& argument : arguments_of(model_, field.reference)) {
        if (argument.kind == notation::ArgumentKind::element) continue;
        const std::string_view set = text(argument.range);
        const bool is_known = std::any_of(sets.begin(), sets.end(), [&](std::string_view known) {
            return same_when_read(known, set);
        });
        if (!is_known) sets.push_back(set);
    }
    std::string list;
    for (const std::string_view set : sets) list.append(list.empty() ? "(" : ",").append(set);
    return list;
}

void Statements::open_shift(const Read& read, std::string_view argument, std::size_t at) {
    if (!surely_fits(3 * argument.size())) {
        LongStatement statement;
        const std::string_view set = without_blanks_at_end(argument.substr(0, at));
        notation::make_shift_guard(statement, set, argument.substr(at));
        check(read, Part::sets, read.parts.value, statement.view().size());
    }
    ++levels_;
}

void Statements::open_guard(const Read& read, Range value) {
    if (value.empty()) return;
    if (!surely_fits(value.end - value.begin)) {
        LongStatement statement;
        notation::make_guard(statement, text(value));
        check(read, Part::value, value, statement.view().size());
    }
    ++levels_;
}

void Statements::open_label(const Read& read) {
    if (!surely_fits(read.label.size())) {
        LongStatement statement;
        notation::make_label_loop(statement,
                                  read.label.substr(0, read.label.find(notation::element_label)));
        check(read, Part::sets, read.field.label, statement.view().size());
    }
    ++levels_;
}

void Statements::print_name(const Read& read, std::string_view label, std::string_view condition,
                            notation::Put put) {
    const std::size_t size = most_columns_of_name(model_, read.field, label, condition);
    if (read.field.faulty || surely_fits(size)) return;
    const LongStatement statement =
        name_statement(model_, bytes_, read.field, label, condition, put);
    const bool is_condition = condition.size() > read.field.text.end - read.field.text.begin;
    check(read, is_condition ? Part::condition : Part::sets,
          is_condition ? read.parts.condition : read.field.text, statement.view().size());
}

void Statements::print_value(const Read& read, std::string_view condition) {
    const std::string_view value = text(read.field.text);
    if (read.field.faulty || surely_fits(read.label.size() + value.size() + condition.size()))
        return;
    LongStatement statement;
    notation::make_value(statement, condition, read.label, value);
    const bool is_condition = read.parts.has_condition &&
                              read.parts.condition.end - read.parts.condition.begin > value.size();
    check(read, is_condition ? Part::condition : Part::value,
          is_condition    ? read.parts.condition
          : value.empty() ? read.field.label
                          : read.field.text,
          statement.view().size());
}

}  // namespace orvex::frontend
