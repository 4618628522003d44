// What the translator accepts in silence and a modeller wants to know.
#pragma once

#include "frontend/cli/options.h"
#include "frontend/findings/finding.h"
#include "frontend/model/economy.h"
#include "frontend/syntax/source.h"

#include <vector>

namespace orvex::frontend {

// About the lines of the file: too long, a "$" or "+" behind column 1, a "+" joined to a label,
// text that is not read, no $OFFTEXT, no $MODEL:. Models that are left out are not looked at.
void warn_of_lines(const Source& source, const std::vector<bool>& left_out,
                   std::vector<Finding>& findings);

// About the names of a translated model: declared and not used, used and not declared, made and not
// used, a sector without inputs, ...
void warn_of_names(const Source& source, const Economy& economy, std::vector<Finding>& findings);

// About the rows of a translated model: one that belongs to the row above, one outside of all
// blocks, a field, a set or a declaration with nothing in it, a nest that the block does not open.
void warn_of_rows(const Source& source, const Economy& economy, std::vector<Finding>& findings);

// Gives each warning the level that the options ask for, and drops those that are off.
void apply_levels(const Options& options, std::vector<Finding>& findings);

}  // namespace orvex::frontend
