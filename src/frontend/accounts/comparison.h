// Compares the accounts of a model with a table of accounts from elsewhere.
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

// A cell of the file, and the offset of its row in bytes.
struct TableCell {
    double value = 0;
    std::size_t offset = 0;
};

// A table of accounts: names in capitals in its first row and column, in any order. Empty cells are
// left out.
struct AccountTable {
    DataText file;
    std::map<std::string, std::size_t> names;  // of rows and columns, with row offsets
    std::map<std::pair<std::string, std::string>, TableCell> cells;  // by row and column
};

// Reads a table from `table.file`. False, with a finding, if it is malformed.
bool read_table(AccountTable& table, std::vector<Finding>& findings);

// The differences: accounts that only one side has, and cells of the shared accounts.
std::vector<Finding> compare(const AccountTable& table, const Books& books, const Matrix& matrix,
                             double tolerance);

}  // namespace orvex::frontend
