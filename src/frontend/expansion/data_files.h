// Data files, JSON or CSV, as rows.
#pragma once

#include "frontend/expansion/data.h"
#include "frontend/findings/finding.h"
#include "frontend/findings/pattern.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace orvex::frontend {

// Reads the files, in their order; "-" is standard input. A file is JSON where its name ends with
// .json, and CSV where it ends with .csv; another is JSON if it begins with "{". False, with
// findings, where one cannot be read or is malformed.
bool read_data(const std::vector<std::string>& paths, DataFiles& files,
               std::vector<Finding>& findings);

// Is it the name of a data file, by its ending?
bool is_data_path(std::string_view path);

// A malformed place of a data file: the line of the offset. The variant of the message says why.
Finding data_finding(const DataFiles& files, std::uint32_t text, std::size_t offset,
                     const Values& values, std::string_view variant);

// Advises the name that may be meant, where the values have one as "near".
void advise_near(Finding& finding, const Values& values);

// The line of a data file at an offset. A very long line is not shown.
Span data_line(const DataText& text, std::size_t offset);

// What is wrong with a text as a name or an element, as a variant of the message; empty where
// nothing is.
std::string_view fault_of_name(std::string_view text);

// Adds the rows of one file, the last one of `files.texts`. False, with a finding, where it is
// malformed.
bool read_json_data(DataFiles& files, std::vector<Finding>& findings);
bool read_csv_data(DataFiles& files, std::vector<Finding>& findings);

}  // namespace orvex::frontend
