// Comments that allow findings, in models and outside:
//
//   * orvex: allow CODE[, CODE...] REASON        for the next record or block
//   * orvex: allow-file CODE[, CODE...] REASON   for the file
//
// If the next record opens a block, the comment is for all of it, else for the record with the
// lines that continue it. Errors cannot be allowed.
#pragma once

#include "frontend/findings/finding.h"
#include "frontend/rules/rule.h"
#include "frontend/syntax/source.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace orvex::frontend {

enum class Reach { record, block, file };

// A code of a comment.
struct Allowance {
    std::string code;  // in small letters; empty where the comment names none
    Range place;       // of the code, or of the word "allow"
    Index record = 0;  // of the comment
    Reach reach = Reach::record;
    Index first = 0;  // the records that it is for, the end exclusive; of a file, all
    Index end = 0;
    bool is_used = false;
};

// The codes of all comments of a file, in its order.
std::vector<Allowance> read_allowances(const Source& source);

// The rule of a code that can be allowed, or null: errors cannot be, nor can the findings about
// comments that allow nothing.
const Rule* allowable_rule(std::string_view code);

// Removes the findings that are allowed, and marks what allows them: of several comments the one
// with the least reach.
void remove_allowed(std::vector<Allowance>& allowances, std::vector<Finding>& findings);

// Adds a finding for each code that allows nothing although its rule was judged there.
void add_unused_allowances(const Source& source, const std::vector<Allowance>& allowances,
                           const std::function<bool(const Allowance&)>& is_judged,
                           std::vector<Finding>& findings);

// New comments.
struct AddedComments {
    std::vector<Edit> edits;
    std::size_t findings = 0;  // that they allow
};

// One comment above each record with warnings that can be allowed, or at the start of the file for
// those without a line.
AddedComments comments_for(const Source& source, const std::vector<Finding>& findings);

}  // namespace orvex::frontend
