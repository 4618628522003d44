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

// Reads the files in order; "-" is standard input. A file is JSON if its name ends with .json, CSV
// if it ends with .csv, and otherwise JSON if it begins with "{". False, with findings, if one
// cannot be read or is malformed.
bool read_data(const std::vector<std::string>& paths, DataFiles& files,
               std::vector<Finding>& findings);

// Is this the name of a data file, judging by its extension?
bool is_data_path(std::string_view path);

// A finding about a malformed place of a data file: the line of the offset. The variant of the
// message says why.
Finding data_finding(const DataFiles& files, std::uint32_t text, std::size_t offset,
                     const Values& values, std::string_view variant);

// Suggests the name that may be meant, if the values have one as "near".
void advise_near(Finding& finding, const Values& values);

// The line of a data file at an offset. A very long line is not shown.
Span data_line(const DataText& text, std::size_t offset);

// Why a text is not valid as a name or an element, as a variant of the message; empty if it is
// valid.
std::string_view fault_of_name(std::string_view text);

// Adds the rows of the last file in `files.texts`. False, with a finding, if it is malformed.
bool read_json_data(DataFiles& files, std::vector<Finding>& findings);
bool read_csv_data(DataFiles& files, std::vector<Finding>& findings);

}  // namespace orvex::frontend
