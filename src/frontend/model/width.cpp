#include "frontend/model/width.h"

#include "notation/conditions.h"
#include "notation/limits.h"

#include <algorithm>
#include <cstddef>

namespace orvex::frontend {

namespace {

constexpr std::size_t argument_columns = 12;

std::size_t size_of(Range range) { return range.end - range.begin; }

bool surely_fits(std::size_t size) {
    return size + most_fixed_columns <= static_cast<std::size_t>(notation::record_columns);
}

}  // namespace

std::string condition_of(std::string_view label, std::string_view value, std::string_view condition,
                         bool has_condition) {
    if (has_condition) {
        const std::string text(condition);
        return notation::is_wrapped(condition) ? "(" + text + ")" : text;
    }
    if (!notation::has_implicit_condition(label)) return {};
    return std::string(notation::implicit_condition(value).view());
}

bool value_fits(std::string_view label, std::string_view value, std::string_view condition) {
    if (surely_fits(label.size() + value.size() + condition.size())) return true;
    notation::Statement statement;
    return notation::make_value(statement, condition, label, value);
}

std::size_t most_columns_of_name(const Model& model, const Field& field, std::string_view label,
                                 std::string_view condition) {
    std::size_t size = condition.size() + label.size() + size_of(field.reference.name);
    for (const Argument& argument : arguments_of(model, field.reference))
        size += 2 * size_of(argument.range) + argument_columns;
    return size;
}

LongStatement name_statement(const Model& model, std::string_view bytes, const Field& field,
                             std::string_view label, std::string_view condition,
                             notation::Put put) {
    LongStatement statement;
    notation::begin_name(statement, condition, put, label, text_of(bytes, field.reference.name));
    for (const Argument& argument : arguments_of(model, field.reference))
        notation::append_argument(statement, text_of(bytes, argument.range));
    notation::end_name(statement, condition);
    return statement;
}

bool name_fits(const Model& model, std::string_view bytes, const Field& field,
               std::string_view label, std::string_view condition, notation::Put put) {
    if (surely_fits(most_columns_of_name(model, field, label, condition))) return true;
    const auto arguments = arguments_of(model, field.reference);
    notation::Statement statement;
    notation::begin_name(statement, condition, put, label, text_of(bytes, field.reference.name));
    return std::all_of(arguments.begin(), arguments.end(), [&](const Argument& argument) {
        return notation::append_argument(statement, text_of(bytes, argument.range));
    });
}

}  // namespace orvex::frontend
