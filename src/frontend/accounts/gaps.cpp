#include "frontend/accounts/gaps.h"

#include <algorithm>
#include <cmath>

namespace orvex::frontend {

namespace {

using notation::Meaning;

// The accounts among these that have a gap.
std::set<AccountIndex> with_gap(const Suspects& suspects, const std::vector<AccountIndex>& all) {
    std::set<AccountIndex> found;
    for (const AccountIndex account : all) {
        if (std::binary_search(suspects.gaps.begin(), suspects.gaps.end(), account))
            found.insert(account);
    }
    return found;
}

void count_if_all(const Suspects& suspects, const std::set<AccountIndex>& found,
                  const Transaction& entry, Suspicion& suspicion) {
    if (found.size() < suspects.gaps.size()) return;
    if (suspicion.count++ == 0) suspicion.first = entry;
}

// The rows that belong to all accounts with a gap.
Suspicion suspected_rows(const Suspects& suspects, std::set<AccountIndex> SuspectedRow::*accounts) {
    Suspicion suspicion;
    for (const auto& [place, row] : suspects.rows)
        count_if_all(suspects, row.*accounts, row.first, suspicion);
    return suspicion;
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
    const std::set<AccountIndex> direct = with_gap(suspects, accounts_of(books, entry, false));
    const std::set<AccountIndex> by_income = with_gap(suspects, accounts_of(books, entry, true));
    count_if_all(suspects, direct, entry, suspects.direct);
    count_if_all(suspects, by_income, entry, suspects.by_income);
    if (!suspects.has_rows || by_income.empty()) return;
    SuspectedRow& row =
        suspects.rows.try_emplace(entry.place, SuspectedRow{entry, {}, {}}).first->second;
    row.direct.insert(direct.begin(), direct.end());
    row.by_income.insert(by_income.begin(), by_income.end());
}

std::optional<Transaction> likely_entry(const Suspects& suspects) {
    for (const Suspicion& suspicion :
         {suspects.direct, suspected_rows(suspects, &SuspectedRow::direct), suspects.by_income,
          suspected_rows(suspects, &SuspectedRow::by_income)}) {
        if (suspicion.count == 1) return suspicion.first;
        if (suspicion.count > 1) break;
    }
    return std::nullopt;
}

bool is_suspected(const Suspects& suspects, const Books& books, const Transaction& entry) {
    if (with_gap(suspects, accounts_of(books, entry, true)).size() == suspects.gaps.size())
        return true;
    const auto row = suspects.rows.find(entry.place);
    return row != suspects.rows.end() && row->second.by_income.size() == suspects.gaps.size();
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
