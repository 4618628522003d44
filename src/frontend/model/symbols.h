// The symbols of a model while it is being built: the contents of the translator's symbol table and
// its active sets at each step, and the uses of each name.
#pragma once

#include "frontend/model/model.h"

#include <string_view>
#include <vector>

namespace orvex::frontend {

class Symbols {
  public:
    // The model must outlive the object.
    explicit Symbols(Model& model) : model_(model) {}

    // The symbol of a name, which the translator need not know.
    Index mention(std::string_view name);

    // Notes that a name is in a part of the text that has a fault.
    void touch(std::string_view name) { touch(mention(name)); }
    void touch(Index symbol) { model_.symbols[symbol].touched = true; }

    // Notes a use. It is listed for its record if the translator knows the name and `is_listed` is
    // true.
    Index add_use(Index symbol, Range range, Index record, Role role, bool is_listed);

    // Enters a name, or checks it against its entry. A new one is listed with its use on `record`.
    // Faults: name-too-long, too-many-names, report-name-undeclared, kind-mismatch,
    // dimension-mismatch. An undeclared name is entered all the same.
    Fault enter(Index symbol, Index use, Kind kind, int dimension, Index record);

    // From here on variables must be known.
    void require_declarations() { declarations_required_ = true; }
    bool declarations_required() const { return declarations_required_; }

    // The active sets: those that open loops control. activate returns false if there is no room.
    bool is_active(Index symbol) const;
    bool activate(Index symbol);

    // Deactivates all sets; keeps the current ones as the block's; goes back to those.
    void close_block();
    void mark_block() { block_mark_ = active_.size(); }
    void return_to_block();
    void close_field();

  private:
    Fault enter_new(Index symbol, Index use, Kind kind, int dimension, Index record);
    void deactivate_from(std::size_t mark);

    Model& model_;
    std::vector<Index> active_;
    std::vector<char> is_active_;  // for each symbol
    std::size_t block_mark_ = 0;
    int entered_ = 0;
    bool declarations_required_ = false;
};

}  // namespace orvex::frontend
