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
    std::size_t line;  // of the line with $MODEL:
    const Books& books;
    const Gaps& gaps;
};

// The table: sectors, commodities and consumers with their two sides, and any gap; "?" if it is
// unknown.
std::string statement_text(const AccountStatement& statement, bool colour);

// A row for each account, with the columns of statement_csv_head.
std::string statement_csv_head();
std::string statement_csv(const AccountStatement& statement);

// An object on one line.
std::string statement_json(const AccountStatement& statement);

}  // namespace orvex::frontend
