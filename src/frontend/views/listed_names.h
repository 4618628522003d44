// The names of a model as info and graph list them.
#pragma once

#include "frontend/model/model.h"

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace orvex::frontend {

// The kinds in the order in which their names are listed.
constexpr std::array<Kind, kind_count> listed_kinds = {
    Kind::sector, Kind::commodity, Kind::consumer, Kind::auxiliary,
    Kind::report, Kind::parameter, Kind::set,      Kind::host};

// The symbols of a kind that are used anywhere: first those declared, in the order of their
// declarations, then the others in alphabetical order.
std::vector<Index> used_names(const Model& model, Kind kind);

// Those of them that the translator also knows. Any other name is used only in expressions,
// conditions, constraints and extra indices, or in a declaration that gives it no type.
std::vector<Index> known_names(const Model& model, Kind kind);

// "PY(S)": the name with the arguments of its declaration or, without one, of its first use.
std::string name_with_arguments(const Model& model, Index symbol);

// The description in the declaration, as written.
std::string_view description_of(const Model& model, std::string_view bytes, Index symbol);

// The line of the declaration, or of a report variable's record; 0 if there is none.
int declared_line(const Symbol& symbol);

// The lines of the uses that the translator lists under the name, ascending, including the
// declaration; a line occurs as often as it uses the name. The translator lists a lead or lag under
// its whole text, not under that of its set.
std::vector<int> reference_lines(const Model& model, const Symbol& symbol);

}  // namespace orvex::frontend
