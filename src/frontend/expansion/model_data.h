// What the rows of the data files mean for one model, and whether it has all the data it needs.
#pragma once

#include "frontend/expansion/data.h"
#include "frontend/expansion/program.h"
#include "frontend/findings/finding.h"

#include <map>
#include <string>
#include <vector>

namespace orvex::frontend {

// The variables that a model declares, each with its number of arguments.
using Variables = std::map<std::string, int>;

// Sorts the rows into sets, aliases, parameters and levels. The meaning of a CSV row depends on how
// the program uses its name. Notes the names that the model needs in `files.used`. False, with
// findings, if rows do not fit; each row is reported for only one model.
bool make_data(DataFiles& files, const GeneratorProgram& program, const Variables& variables,
               Data& data, std::vector<Finding>& findings);

// Finds what the program needs but the data do not have, or have in another form.
void check_data(const GeneratorProgram& program, const Data& data, std::vector<Flaw>& flaws);

// Finds elements that are in no set, in the model and in the rows it uses: such a typing error
// would silently mean 0. Each is reported once for all models. Finds nothing if the data have no
// sets.
void find_unknown_elements(DataFiles& files, const GeneratorProgram& program, const Data& data,
                           std::vector<Finding>& findings, std::vector<Flaw>& flaws);

// Adds findings for names in the data files that no model has needed.
void add_unused_names(const DataFiles& files, std::vector<Finding>& findings);

}  // namespace orvex::frontend
