// Where there already are findings: a note there would usually have the same cause.
#pragma once

#include "frontend/rules/checks.h"
#include "frontend/rules/rows.h"

#include <unordered_set>

namespace orvex::frontend {

class FoundLines {
  public:
    // The lines of the subject's model with a finding that is not off.
    FoundLines(const Subject& subject, const Findings& findings);

    // Is one of these lines part of the row?
    bool touch(const Rows& rows, const Row& row) const;

  private:
    std::unordered_set<int> lines_;
};

}  // namespace orvex::frontend
