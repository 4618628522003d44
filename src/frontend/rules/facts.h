// What several rules need to know about a model: who makes, uses and owns what, which names have a
// block or a constraint, which are not declared, and where an error or another finding leaves that
// open.
#pragma once

#include "frontend/model/model.h"
#include "frontend/rules/constraint_bodies.h"
#include "frontend/rules/descriptions.h"
#include "frontend/rules/host_text.h"
#include "frontend/rules/lost_rows.h"
#include "frontend/rules/operators.h"
#include "frontend/rules/repeated_blocks.h"
#include "frontend/rules/rows.h"
#include "frontend/rules/undeclared.h"
#include "frontend/rules/unknown_names.h"
#include "frontend/syntax/source.h"

#include <array>
#include <vector>

namespace orvex::frontend {

// What is known about a name.
enum Fact : unsigned {
    made = 1U << 0U,        // a commodity: has an O: row
    supplied = 1U << 1U,    // has an O: or E: row
    wanted = 1U << 2U,      // has an I: or D: row
    taken = 1U << 3U,       // has an E: row that may be negative
    has_output = 1U << 4U,  // a sector
    has_input = 1U << 5U,
    has_demand = 1U << 6U,      // a consumer
    has_income = 1U << 7U,      // an endowment, or a tax
    block_unclear = 1U << 8U,   // a row of its block cannot be judged
    has_constraint = 1U << 9U,  // an auxiliary variable
    is_odd = 1U << 10U,         // has characters that are not valid in a name
    is_stray = 1U << 11U,       // begins a row with a label that cannot begin one
    is_excused = 1U << 12U,     // what it lacks has an error, or its own finding
    is_turned = 1U << 13U,      // in a block whose rows all have one direction: one may be wrong
};

struct Facts {
    Rows rows;
    std::vector<unsigned> names;       // a set of Fact bits for each symbol
    std::vector<const Field*> blocks;  // the head of each symbol's first block, or null
    std::vector<Index> judged;         // declared variables about which enough can be read
    std::vector<Undeclared> undeclared;
    std::vector<UnknownName> unknown;
    std::vector<Body> bodies;  // of the constraints
    Operators operators;
    std::vector<RepeatedBlock> repeated_blocks;
    std::vector<Description> descriptions;  // without "!"
    std::vector<LostRows> lost_rows;
    std::vector<Range> no_names;       // both of these in declarations, in the order of the file
    bool has_forgotten = false;        // a sector or a consumer occurs only in its declaration
    Index block_after_end = no_index;  // the first record of the model after its end
    std::array<bool, kind_count> is_declared{};  // the model declares names of the kind
    // A name of another kind is refused where a name of this kind is needed: any may be meant.
    std::array<bool, kind_count> is_doubtful{};
    Index first_field = 0;         // of the model, in Tree::fields
    std::vector<bool> has_error;   // of each field from that one on
    bool any_supplied = false;     // any commodity may be made or owned where a name is refused
    bool any_wanted = false;       // or used or demanded
    bool any_constrained = false;  // any auxiliary variable may be that of a refused constraint
};

inline bool has(const Facts& facts, Index symbol, Fact fact) {
    return (facts.names[symbol] & fact) != 0;
}

// Does the translator report an error in the field?
inline bool has_error(const Facts& facts, Index field) {
    return facts.has_error[field - facts.first_field];
}

inline bool is_doubtful(const Facts& facts, Kind kind) {
    return facts.is_doubtful[static_cast<std::size_t>(kind)];
}

// Is a place in a declaration part of words that are not meant as names and have a finding?
bool is_no_name(const Facts& facts, Offset place);

// The source and the model must outlive the facts.
Facts read_facts(const Source& source, const HostText& host, const Model& model);

}  // namespace orvex::frontend
