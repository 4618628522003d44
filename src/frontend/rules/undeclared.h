// Names that are used but not declared, and the declared names that may be meant.
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
    Index first_use;  // in Model::uses, by which the translator learns of it
    std::vector<Index> uses;
    std::string near;                 // the most similar declared name of the kind, if one is
    std::vector<std::string> others;  // if none is, the similar ones
};

// Finds similar declared names.
class Suggestions {
  public:
    // `is_skipped` says for each symbol whether it can never be meant.
    Suggestions(const Model& model, const std::vector<bool>& is_skipped);

    // The declared name of the kind, with that number of sets (-1: any), that is similar to a name,
    // or empty.
    std::string near(std::string_view name, Kind kind, int dimension);

    // All of them.
    std::vector<std::string> all_near(std::string_view name, Kind kind, int dimension);

  private:
    bool may_compare(Kind kind);

    std::array<std::vector<Candidate>, kind_count> declared_;
    std::size_t left_;  // names that may still be compared: a model can have too many
};

// The undeclared names of the model, once for each kind that a name is used as, in the order in
// which they first occur; owners in reports come last. Names in faulty places are included.
std::vector<Undeclared> read_undeclared(std::string_view bytes, const Model& model,
                                        Suggestions& suggestions);

}  // namespace orvex::frontend
