// Accounts that do not balance because their two sides differ, and reference prices that do not
// match the taxes.
#pragma once

#include "frontend/accounts/books.h"
#include "frontend/accounts/line_place.h"

#include <cstddef>
#include <map>
#include <optional>
#include <set>
#include <vector>

namespace orvex::frontend {

constexpr double usual_tolerance = 1e-6;  // relative to the larger side

// Do two numbers agree within a tolerance relative to the larger one?
bool agree(double one, double other, double tolerance);

// Revenue less cost and taxes, supply less demand, income less spending; 0 if that is a rounding
// error.
double gap_of(const Account& account);

// The accounts of settled books that have a gap, and those that cannot be judged because a consumer
// has several demands without a quantity.
struct Gaps {
    std::vector<AccountIndex> accounts;      // ascending
    std::vector<AccountIndex> undetermined;  // the consumers
};

Gaps find_gaps(const Books& books, double tolerance);

// Can an account not be judged?
bool is_unknown(const Account& account, const Gaps& gaps);

// The entries with one place, which may be one row of a model for many elements: the first of them,
// and the accounts with a gap that any of them belongs to.
struct SuspectedRow {
    Transaction first;
    std::set<AccountIndex> direct;
    std::set<AccountIndex> by_income;  // also through remaining income
};

// How many entries, or rows, belong to all accounts with a gap, and the first of them.
struct Suspicion {
    std::size_t count = 0;
    Transaction first;
};

// The single entry that belongs to all accounts with a gap, found in a pass over all entries.
struct Suspects {
    std::vector<AccountIndex> gaps;  // ascending
    bool has_rows = false;           // several entries can have the same place
    Suspicion direct;
    Suspicion by_income;
    std::map<LinePlace, SuspectedRow> rows;  // by their places
};

void suspect(Suspects& suspects, const Books& books, const Transaction& entry);

// The single entry that belongs to all accounts with a gap, or else the single row. None if there
// are several, or none at all.
std::optional<Transaction> likely_entry(const Suspects& suspects);

// Does the entry, or its row, belong to all accounts with a gap?
bool is_suspected(const Suspects& suspects, const Books& books, const Transaction& entry);

// The reference price that an entry should have, if its own differs.
std::optional<double> wrong_price(const Books& books, const Levels& levels,
                                  const Transaction& entry, double tolerance);

}  // namespace orvex::frontend
