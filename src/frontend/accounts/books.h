// The accounts of a model: what each sector, commodity and consumer receives and pays. An amount is
// received by one account and paid by another, as in a table of accounts (row, column): an output
// is received by its sector and paid by the commodity, an input received by the commodity and paid
// by the sector. What a commodity receives is its demand, what it pays its supply.
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
    double taxes = 0;            // of a sector: a part of `paid`
    double turnover = 0;         // all amounts without their signs
    LinePlace place = 0;         // where the account is declared, or first used
    unsigned open_count = 0;     // demands of a consumer without a quantity
    AccountIndex open_good = 0;  // commodity of the first of them
    bool takes_rest = false;     // of a commodity: one of such a demand
};

// What a sector pays for its inputs.
inline double cost_of(const Account& sector) { return sector.paid - sector.taxes; }

// What the sums of an account may be wrong by because numbers have a limited precision.
double rounding_of(const Account& account);

struct TextHash : std::hash<std::string_view> {
    using is_transparent = void;
};

// The activity, price or value of a variable by its printed name in capitals; null where it is not
// given. An empty function gives none.
using Levels = std::function<const double*(std::string_view name)>;

struct Books {
    std::vector<Account> accounts;  // in the order in which they were opened
    std::array<std::unordered_map<std::string, AccountIndex, TextHash, std::equal_to<>>,
               account_kind_count>
        names;  // of each kind
};

// Is called with the accounts that receive and pay an amount.
using Posting = std::function<void(AccountIndex row, AccountIndex column, double amount)>;

// The account of that kind and name, opened at its level where there is none yet.
AccountIndex open_account(Books& books, const Levels& levels, AccountKind kind,
                          std::string_view name, LinePlace place);

// The account of that kind and name, if there is one.
std::optional<AccountIndex> find_account(const Books& books, AccountKind kind,
                                         std::string_view name);

// All accounts: sectors, then commodities, then consumers.
std::vector<AccountIndex> by_kind(const Books& books);

// Enters an entry into all its accounts. Each amount is also given to `posting` where that is set.
void post_entry(Books& books, const Levels& levels, const Transaction& entry,
                const Posting& posting = {});

// After the last entry of a model: gives each consumer's single demand without a quantity the
// income that is left.
void settle(Books& books, const Posting& posting = {});

// The accounts of an entry: its owner's, its commodity's and those of the receivers of its taxes.
// With `follow`, also the commodity that takes what is left of the income of one of them.
// Precondition: the entry was posted.
std::vector<AccountIndex> accounts_of(const Books& books, const Transaction& entry, bool follow);

// The sum of all rates of an entry.
double rate_of(const Levels& levels, const Transaction& entry);

}  // namespace orvex::frontend
