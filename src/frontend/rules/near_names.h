// "Did you mean ...?" for the names of a model: a name that is meant is of the right kind, has the
// right number of sets, and mostly has no other use.
#pragma once

#include "frontend/model/model.h"

#include <string>
#include <string_view>
#include <vector>

namespace orvex::frontend {

// A name that may be meant.
struct Candidate {
    std::string name;
    int dimension = -1;  // number of its sets; -1 where it is not known
    bool is_unused = false;
};

// Of the candidates with that number of sets (-1: any), the one that is nearest to the name; of
// equally near ones the only one that is not used. A name of one or two letters may be any other of
// that size, if only one is not used. Empty where none is near, or more than one is equally likely.
std::string nearest_name(std::string_view name, int dimension,
                         const std::vector<Candidate>& candidates);

// All candidates with that number of sets that are near to the name.
std::vector<std::string> near_names(std::string_view name, int dimension,
                                    const std::vector<Candidate>& candidates);

// The names of a kind that the model declares or, outside of faulty places, uses.
std::vector<Candidate> names_of(const Model& model, Kind kind);

}  // namespace orvex::frontend
