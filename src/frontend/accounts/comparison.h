// The accounts of a model against a table of accounts that was made elsewhere.
#pragma once

#include "frontend/accounts/books.h"
#include "frontend/accounts/matrix.h"
#include "frontend/expansion/data.h"
#include "frontend/findings/finding.h"

#include <cstddef>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace orvex::frontend {

// A cell of the file, and where its row begins, in bytes.
struct TableCell {
    double value = 0;
    std::size_t offset = 0;
};

// A table of accounts: names in capitals in its first row and column, in any order. Cells that are
// empty are left out.
struct AccountTable {
    DataText file;
    std::map<std::string, std::size_t> names;  // of rows and columns, and where the rows are
    std::map<std::pair<std::string, std::string>, TableCell> cells;  // by row and column
};

// Reads a table from `table.file`. False, with a finding, where it is malformed.
bool read_table(AccountTable& table, std::vector<Finding>& findings);

// What differs: accounts that only one side has, and cells of the others.
std::vector<Finding> compare(const AccountTable& table, const Books& books, const Matrix& matrix,
                             double tolerance);

}  // namespace orvex::frontend
