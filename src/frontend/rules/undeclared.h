// Names that are used and not declared, and the declared names that may be meant.
#pragma once

#include "frontend/model/model.h"
#include "frontend/rules/near_names.h"

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace orvex::frontend {

struct Undeclared {
    Index symbol;
    Kind kind;        // what it is used as
    Index first_use;  // in Model::uses, by which the translator comes to know it
    std::vector<Index> uses;
    std::string near;  // a declared name of the kind that may be meant; empty where none is nearest
    std::vector<std::string> others;  // where none is, those that are near
};

// Finds declared names that are near to others.
class Suggestions {
  public:
    // `is_skipped` says for each symbol whether it is never meant.
    Suggestions(const Model& model, const std::vector<bool>& is_skipped);

    // The declared name of the kind, with that number of sets (-1: any), that is near to a name, or
    // nothing.
    std::string near(std::string_view name, Kind kind, int dimension);

    // All of them.
    std::vector<std::string> all_near(std::string_view name, Kind kind, int dimension);

  private:
    bool may_compare(Kind kind);

    std::array<std::vector<Candidate>, kind_count> declared_;
    std::size_t left_;  // names that may still be compared: a model can have too many
};

// The names of the model that are not declared, a name for each kind that it is used as, in the
// order in which they first occur; those of owners in reports at the end. Names in faulty places
// are among them.
std::vector<Undeclared> read_undeclared(std::string_view bytes, const Model& model,
                                        Suggestions& suggestions);

}  // namespace orvex::frontend
