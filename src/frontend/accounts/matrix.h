// The table of accounts: a row and a column for each account; a cell contains what the account of
// the row receives from the account of the column.
#pragma once

#include "frontend/accounts/books.h"

#include <map>
#include <string>
#include <string_view>
#include <utility>

namespace orvex::frontend {

// By row and column; missing cells are 0.
using Matrix = std::map<std::pair<AccountIndex, AccountIndex>, double>;

// As CSV with the names in the first row and column: sectors, then commodities, then consumers.
// `corner` is the first cell.
std::string matrix_csv(const Books& books, const Matrix& matrix, std::string_view corner);

}  // namespace orvex::frontend
