// What does not balance: accounts whose two sides differ, and reference prices that differ from
// those that the taxes make.
#pragma once

#include "frontend/accounts/books.h"

#include <cstddef>
#include <optional>
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

// The one entry that belongs to all accounts with a gap, found in a pass over all entries.
struct Suspects {
    std::vector<AccountIndex> gaps;
    std::size_t direct = 0;     // entries that belong to all these accounts
    std::size_t by_income = 0;  // the same, through what is left of an income
    std::optional<Transaction> first_direct = {};
    std::optional<Transaction> first_by_income = {};
};

void suspect(Suspects& suspects, const Books& books, const Transaction& entry);

// Null where several entries, or none, are suspected.
const Transaction* likely_entry(const Suspects& suspects);

// The reference price that an entry should have, where its own is another one.
std::optional<double> wrong_price(const Books& books, const Levels& levels,
                                  const Transaction& entry, double tolerance);

}  // namespace orvex::frontend
