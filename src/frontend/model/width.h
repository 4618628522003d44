// Whether the statement of a field fits the translator's columns.
#pragma once

#include "frontend/model/model.h"
#include "notation/statements.h"
#include "text/text.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace orvex::frontend {

// The condition of a field's own statement, in its parentheses; empty if it has none. `value`
// includes extra indices, `condition` is the text after "$", `has_condition` says whether there is
// one.
std::string condition_of(std::string_view label, std::string_view value, std::string_view condition,
                         bool has_condition);

// Large enough for a statement with everything that a field can contribute.
using LongStatement = Text<2048>;

// The columns of a statement apart from the field's own; no statement of a field needs more.
constexpr std::size_t most_fixed_columns = 48;

// The statement of a name, and an upper bound of the columns that the field contributes.
LongStatement name_statement(const Model& model, std::string_view bytes, const Field& field,
                             std::string_view label, std::string_view condition, notation::Put put);
std::size_t most_columns_of_name(const Model& model, const Field& field, std::string_view label,
                                 std::string_view condition);

// Precondition: `label` is in capitals.
bool value_fits(std::string_view label, std::string_view value, std::string_view condition);
bool name_fits(const Model& model, std::string_view bytes, const Field& field,
               std::string_view label, std::string_view condition, notation::Put put);

}  // namespace orvex::frontend
