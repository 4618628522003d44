// What the rows of the data files are to one model, and whether it has all the data it wants.
#pragma once

#include "frontend/expansion/data.h"
#include "frontend/expansion/program.h"
#include "frontend/findings/finding.h"

#include <map>
#include <string>
#include <vector>

namespace orvex::frontend {

// The variables that a model declares, each with the number of its arguments.
using Variables = std::map<std::string, int>;

// Sorts the rows into sets, aliases, parameters and levels. What a row of CSV is follows from how
// the program uses its name. Notes the names that the model wants in `files.used`. False, with
// findings, where rows do not fit; each row is reported for one model only.
bool make_data(DataFiles& files, const GeneratorProgram& program, const Variables& variables,
               Data& data, std::vector<Finding>& findings);

// Finds what the program wants and the data do not have, or have in another form.
void check_data(const GeneratorProgram& program, const Data& data, std::vector<Flaw>& flaws);

// Elements that no set has, in the rows that are the model's and in the model: a typing error there
// would silently be 0. Each is reported once for all models. Nothing where the data have no set.
void find_unknown_elements(DataFiles& files, const GeneratorProgram& program, const Data& data,
                           std::vector<Finding>& findings, std::vector<Flaw>& flaws);

// Names of the data files that no model has wanted.
void add_unused_names(const DataFiles& files, std::vector<Finding>& findings);

}  // namespace orvex::frontend
