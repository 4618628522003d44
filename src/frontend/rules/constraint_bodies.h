// The bodies of constraints, which the host reads as equations.
#pragma once

#include "frontend/model/model.h"
#include "frontend/syntax/expression_parts.h"
#include "frontend/syntax/source.h"

#include <cstddef>
#include <vector>

namespace orvex::frontend {

// What is wrong with the body of a constraint. If there are several faults, which may have one
// cause, the first in this list.
enum class BodyFault {
    none,
    empty,
    colon,           // where a ";" may be meant
    group,           // parentheses that do not match
    no_relation,     // no relation such as "=E="
    many_relations,  // more than one relation
    no_operator,     // between two operands
};

struct FaultPlace {
    BodyFault fault = BodyFault::none;
    std::size_t at = no_part;  // the part at fault; for no_relation, a "=" or no_part
};

// The fault of an equation.
FaultPlace fault_of(const std::vector<Part>& parts);

struct Body {
    const Constraint* constraint = nullptr;
    std::vector<Part> parts;  // up to the ";", which is left out
    Range rest;               // the text after the ";" on its line
    bool is_ended = false;    // with a ";"
    bool is_clear = true;     // no macro, nothing cut, no line of the host
    BodyFault fault = BodyFault::none;
    std::size_t at = no_part;
};

// The bodies of the model's constraints, except those of refused names. Both arguments must outlive
// them.
std::vector<Body> read_bodies(const Source& source, const Model& model);

}  // namespace orvex::frontend
