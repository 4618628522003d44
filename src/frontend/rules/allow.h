// Comments that allow findings, in models and elsewhere:
//
//   * orvex: allow CODE[, CODE...] REASON        for the next record or block
//   * orvex: allow-file CODE[, CODE...] REASON   for the file
//
// If the next record opens a block, the comment applies to the whole block; otherwise to the record
// and the lines that continue it. Errors cannot be allowed.
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

// A code in a comment.
struct Allowance {
    std::string code;  // in lower case; empty if the comment has no code
    Range place;       // of the code, or of the word "allow"
    Index record = 0;  // of the comment
    Reach reach = Reach::record;
    Index first = 0;  // the records that it applies to, the end exclusive; for a file, all
    Index end = 0;
    bool is_used = false;
};

// The codes of all comments of a file, in order.
std::vector<Allowance> read_allowances(const Source& source);

// The rule of a code that can be allowed, or null: neither errors can be allowed, nor findings
// about comments that allow nothing.
const Rule* allowable_rule(std::string_view code);

// Removes the findings that are allowed, and marks the codes that allow them: of several comments,
// the one with the smallest reach.
void remove_allowed(std::vector<Allowance>& allowances, std::vector<Finding>& findings);

// Adds a finding for each code that allows nothing although its rule was checked there.
void add_unused_allowances(const Source& source, const std::vector<Allowance>& allowances,
                           const std::function<bool(const Allowance&)>& is_judged,
                           std::vector<Finding>& findings);

// New comments.
struct AddedComments {
    std::vector<Edit> edits;
    std::size_t findings = 0;  // allowed by them
};

// One comment above each record with warnings that can be allowed, or at the start of the file for
// warnings without a line.
AddedComments comments_for(const Source& source, const std::vector<Finding>& findings);

}  // namespace orvex::frontend
