// Operators of the host in a model's expressions: missing ones, and those used as names.
#pragma once

#include "frontend/model/model.h"
#include "frontend/rules/constraint_bodies.h"
#include "frontend/syntax/source.h"

#include <map>
#include <string>
#include <vector>

namespace orvex::frontend {

// Two operands with nothing between them; or a word that begins like a number.
struct OperatorGap {
    Range place;       // in one line
    std::string left;  // in capitals
    std::string right;
    bool is_word = false;
};

struct Operators {
    std::vector<OperatorGap> gaps;
    std::map<std::string, Range> names;  // in capitals, with the first place of each
};

// Reads the conditions and expressions in the model's fields, and its equations.
Operators read_operators(const Source& source, const Model& model, const std::vector<Body>& bodies);

}  // namespace orvex::frontend
