// What does not balance: accounts whose two sides differ, and reference prices that differ from
// those that the taxes make.
#pragma once

#include "frontend/accounts/books.h"
#include "frontend/accounts/line_place.h"

#include <cstddef>
#include <map>
#include <optional>
#include <set>
#include <vector>

namespace orvex::frontend {

constexpr double usual_tolerance = 1e-6;  // of the larger side

// Do two numbers agree within a tolerance relative to the larger one?
bool agree(double one, double other, double tolerance);

// Revenue less cost and taxes, supply less demand, income less spending; 0 where that is a rounding
// error.
double gap_of(const Account& account);

// Which accounts of settled books have a gap, and which cannot be judged, since a consumer has
// several demands without a quantity.
struct Gaps {
    std::vector<AccountIndex> accounts;      // ascending
    std::vector<AccountIndex> undetermined;  // the consumers
};

Gaps find_gaps(const Books& books, double tolerance);

// Can an account not be judged?
bool is_unknown(const Account& account, const Gaps& gaps);

// Of the entries with one place, which may be one row of a model for many elements: the first one,
// and the accounts with a gap that belong to any of them.
struct SuspectedRow {
    Transaction first;
    std::set<AccountIndex> direct;
    std::set<AccountIndex> by_income;  // also through what is left of an income
};

// How many entries, or rows, belong to all accounts with a gap, and the first of them.
struct Suspicion {
    std::size_t count = 0;
    Transaction first;
};

// The one entry that belongs to all accounts with a gap, found in a pass over all entries.
struct Suspects {
    std::vector<AccountIndex> gaps;  // ascending
    bool has_rows = false;           // several entries can have one place
    Suspicion direct;
    Suspicion by_income;
    std::map<LinePlace, SuspectedRow> rows;  // by their places
};

void suspect(Suspects& suspects, const Books& books, const Transaction& entry);

// Where a single entry belongs to all accounts with a gap, that one; else a single row. None where
// there are several, or none.
std::optional<Transaction> likely_entry(const Suspects& suspects);

// Does the entry, or its row, belong to all accounts with a gap?
bool is_suspected(const Suspects& suspects, const Books& books, const Transaction& entry);

// The reference price that an entry should have, where its own is another one.
std::optional<double> wrong_price(const Books& books, const Levels& levels,
                                  const Transaction& entry, double tolerance);

}  // namespace orvex::frontend
