// The accounts of a model as a table for people, as CSV and as JSON.
#pragma once

#include "frontend/accounts/books.h"
#include "frontend/accounts/gaps.h"

#include <string>
#include <string_view>

namespace orvex::frontend {

struct AccountStatement {
    std::string_view model;
    std::string_view path;
    std::size_t line;  // of $MODEL:
    const Books& books;
    const Gaps& gaps;
};

// The table: sectors, commodities and consumers with their two sides, and the gap where there is
// one; "?" where it is not known.
std::string statement_text(const AccountStatement& statement, bool colour);

// A row for each account, with the columns of statement_csv_head.
std::string statement_csv_head();
std::string statement_csv(const AccountStatement& statement);

// One line with an object.
std::string statement_json(const AccountStatement& statement);

}  // namespace orvex::frontend
