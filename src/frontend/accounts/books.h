// The accounts of a model: what each sector, commodity and consumer receives and pays. One account
// receives an amount and another pays it, as in a table of accounts (row, column): a sector
// receives the value of its output and the commodity pays it; a commodity receives the value of an
// input and the sector pays it. What a commodity receives is its demand, what it pays is its
// supply.
#pragma once

#include "frontend/accounts/line_place.h"
#include "frontend/accounts/transaction.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace orvex::frontend {

enum class AccountKind { sector, commodity, consumer };

constexpr std::size_t account_kind_count = 3;

using AccountIndex = std::uint32_t;

struct Account {
    AccountKind kind = AccountKind::sector;
    std::string name;  // as printed, in capitals
    double level = 1;  // activity of a sector, price of a commodity
    double received = 0;
    double paid = 0;
    double taxes = 0;            // of a sector: included in `paid`
    double turnover = 0;         // the sum of the absolute amounts
    LinePlace place = 0;         // where the account is declared, or first used
    unsigned open_count = 0;     // of a consumer: its demands without a quantity
    AccountIndex open_good = 0;  // the commodity of the first of them
    bool takes_rest = false;     // of a commodity: some consumer demands it without a quantity
};

// What a sector pays for its inputs.
inline double cost_of(const Account& sector) { return sector.paid - sector.taxes; }

// The largest rounding error that the sums of an account may have.
double rounding_of(const Account& account);

struct TextHash : std::hash<std::string_view> {
    using is_transparent = void;
};

// The activity, price or value of a variable by its printed name in capitals; null if none is
// given. An empty function gives none.
using Levels = std::function<const double*(std::string_view name)>;

struct Books {
    std::vector<Account> accounts;  // in the order in which they were opened
    std::array<std::unordered_map<std::string, AccountIndex, TextHash, std::equal_to<>>,
               account_kind_count>
        names;  // one for each kind
};

// Called with the accounts that receive and pay an amount.
using Posting = std::function<void(AccountIndex row, AccountIndex column, double amount)>;

// The account with that kind and name; opens it at its level if there is none yet.
AccountIndex open_account(Books& books, const Levels& levels, AccountKind kind,
                          std::string_view name, LinePlace place);

// The account with that kind and name, if there is one.
std::optional<AccountIndex> find_account(const Books& books, AccountKind kind,
                                         std::string_view name);

// All accounts: sectors, then commodities, then consumers.
std::vector<AccountIndex> by_kind(const Books& books);

// Enters an entry into all its accounts. If `posting` is set, it is called with each amount.
void post_entry(Books& books, const Levels& levels, const Transaction& entry,
                const Posting& posting = {});

// Call after the last entry of a model: gives each consumer's single demand without a quantity the
// remaining income.
void settle(Books& books, const Posting& posting = {});

// The accounts of an entry: its owner's, its commodity's and those of the receivers of its taxes.
// With `follow`, also the commodity on which one of them spends its remaining income. Precondition:
// the entry was posted.
std::vector<AccountIndex> accounts_of(const Books& books, const Transaction& entry, bool follow);

// The sum of all rates of an entry.
double rate_of(const Levels& levels, const Transaction& entry);

}  // namespace orvex::frontend
