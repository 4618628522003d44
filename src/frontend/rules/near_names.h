// "Did you mean ...?" for the names of a model: a name that is meant is of the right kind, has the
// right number of sets, and usually has no other use.
#pragma once

#include "frontend/model/model.h"

#include <string>
#include <string_view>
#include <vector>

namespace orvex::frontend {

// A name that may be meant.
struct Candidate {
    std::string name;
    int dimension = -1;  // number of its sets; -1 if unknown
    bool is_unused = false;
};

// Of the candidates with that number of sets (-1: any), the one most similar to the name; of
// equally similar ones, the only unused one. A name of one or two letters may mean any other name
// of that size, provided that only one is unused. Empty if none is similar, or several are equally
// likely.
std::string nearest_name(std::string_view name, int dimension,
                         const std::vector<Candidate>& candidates);

// All candidates with that number of sets that are similar to the name.
std::vector<std::string> near_names(std::string_view name, int dimension,
                                    const std::vector<Candidate>& candidates);

// The names of a kind that the model declares or, outside faulty places, uses.
std::vector<Candidate> names_of(const Model& model, Kind kind);

}  // namespace orvex::frontend
