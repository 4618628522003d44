// The texts of constraints: what the host reads as an equation.
#pragma once

#include "frontend/model/model.h"
#include "frontend/syntax/expression_parts.h"
#include "frontend/syntax/source.h"

#include <cstddef>
#include <vector>

namespace orvex::frontend {

// What is wrong with the text of a constraint. Of several faults, which may have one cause, the
// first in this list.
enum class BodyFault {
    none,
    empty,
    colon,           // where the ";" may be meant
    group,           // parentheses that do not match
    no_relation,     // none such as "=E="
    many_relations,  // a second one
    no_operator,     // between two operands
};

struct FaultPlace {
    BodyFault fault = BodyFault::none;
    std::size_t at = no_part;  // the part at fault; of no_relation, a "=", or no_part
};

// The fault of an equation.
FaultPlace fault_of(const std::vector<Part>& parts);

struct Body {
    const Constraint* constraint = nullptr;
    std::vector<Part> parts;  // up to the ";", which is left out
    Range rest;               // what follows the ";" on its line
    bool is_ended = false;    // with a ";"
    bool is_clear = true;     // no macro, nothing cut, no line that is the host's
    BodyFault fault = BodyFault::none;
    std::size_t at = no_part;
};

// The texts of the model's constraints but those of refused names. Both must outlive them.
std::vector<Body> read_bodies(const Source& source, const Model& model);

}  // namespace orvex::frontend
