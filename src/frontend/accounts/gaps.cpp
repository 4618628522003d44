#include "frontend/accounts/gaps.h"

#include <algorithm>
#include <cmath>

namespace orvex::frontend {

namespace {

using notation::Meaning;

bool holds_all(const std::vector<AccountIndex>& accounts, const std::vector<AccountIndex>& wanted) {
    return std::all_of(wanted.begin(), wanted.end(), [&](AccountIndex account) {
        return std::find(accounts.begin(), accounts.end(), account) != accounts.end();
    });
}

// Counts the entry where all accounts with a gap are among its own, and keeps the first such one.
void count_if_all(const Suspects& suspects, const std::vector<AccountIndex>& accounts,
                  const Transaction& entry, std::size_t& count, std::optional<Transaction>& first) {
    if (!holds_all(accounts, suspects.gaps)) return;
    if (count++ == 0) first = entry;
}

}  // namespace

bool agree(double one, double other, double tolerance) {
    return std::abs(one - other) <= tolerance * std::max(std::abs(one), std::abs(other));
}

double gap_of(const Account& account) {
    const bool is_commodity = account.kind == AccountKind::commodity;
    const double gap =
        is_commodity ? account.paid - account.received : account.received - account.paid;
    return std::abs(gap) <= rounding_of(account) ? 0 : gap;
}

Gaps find_gaps(const Books& books, double tolerance) {
    Gaps gaps;
    for (AccountIndex i = 0; i < books.accounts.size(); ++i) {
        if (books.accounts[i].open_count > 1) gaps.undetermined.push_back(i);
    }
    for (AccountIndex i = 0; i < books.accounts.size(); ++i) {
        const Account& account = books.accounts[i];
        const bool balances =
            gap_of(account) == 0 || agree(account.received, account.paid, tolerance);
        if (!balances && !is_unknown(account, gaps)) gaps.accounts.push_back(i);
    }
    return gaps;
}

bool is_unknown(const Account& account, const Gaps& gaps) {
    return account.open_count > 1 || (account.takes_rest && !gaps.undetermined.empty());
}

void suspect(Suspects& suspects, const Books& books, const Transaction& entry) {
    count_if_all(suspects, accounts_of(books, entry, false), entry, suspects.direct,
                 suspects.first_direct);
    count_if_all(suspects, accounts_of(books, entry, true), entry, suspects.by_income,
                 suspects.first_by_income);
}

const Transaction* likely_entry(const Suspects& suspects) {
    if (suspects.direct == 1) return &*suspects.first_direct;
    if (suspects.direct == 0 && suspects.by_income == 1) return &*suspects.first_by_income;
    return nullptr;
}

std::optional<double> wrong_price(const Books& books, const Levels& levels,
                                  const Transaction& entry, double tolerance) {
    if (!is_of_sector(entry.flow)) return std::nullopt;
    const auto good = find_account(books, AccountKind::commodity, entry.commodity);
    if (!good || books.accounts[*good].level != 1) return std::nullopt;
    const double rates = rate_of(levels, entry);
    const double expected = entry.flow == Meaning::input ? 1 + rates : 1 - rates;
    if (agree(entry.price.value_or(1), expected, tolerance)) return std::nullopt;
    return expected;
}

}  // namespace orvex::frontend
