#include "frontend/accounts/books.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace orvex::frontend {

namespace {

using notation::Meaning;

// If no level is given, an activity or a price is 1, and an auxiliary variable 0.
constexpr double usual_level = 1;
constexpr double usual_variable = 0;

double level_of(const Levels& levels, std::string_view name, double usual) {
    const double* const level = levels ? levels(name) : nullptr;
    return level == nullptr ? usual : *level;
}

AccountKind owner_kind(Meaning flow) {
    return is_of_sector(flow) ? AccountKind::sector : AccountKind::consumer;
}

// Without a quantity, an endowment is zero, and an output or an input is one unit.
double quantity_of(const Levels& levels, const Transaction& entry) {
    const double usual = entry.flow == Meaning::endowment ? 0 : 1;
    const double factor = entry.ration.empty() ? 1 : level_of(levels, entry.ration, usual_variable);
    return entry.quantity.value_or(usual) * factor;
}

double rate_of(const Levels& levels, const Tax& tax) {
    double rate = tax.rate;
    for (const std::string& variable : tax.variables)
        rate += level_of(levels, variable, usual_variable);
    return rate;
}

void post(Books& books, AccountIndex row, AccountIndex column, double amount,
          const Posting& posting) {
    Account& receiver = books.accounts[row];
    Account& payer = books.accounts[column];
    receiver.received += amount;
    receiver.turnover += std::abs(amount);
    payer.paid += amount;
    payer.turnover += std::abs(amount);
    if (posting) posting(row, column, amount);
}

void post_taxes(Books& books, const Levels& levels, const Transaction& entry, AccountIndex payer,
                double value, const Posting& posting) {
    for (const Tax& tax : taxes_of(entry)) {
        const AccountIndex receiver =
            open_account(books, levels, AccountKind::consumer, tax.receiver, entry.place);
        const double amount = value * rate_of(levels, tax);
        if (amount == 0) continue;
        post(books, receiver, payer, amount, posting);
        books.accounts[payer].taxes += amount;
    }
}

// Remembers the commodity of a demand without a quantity until all income is known.
void keep_open(Books& books, AccountIndex owner, AccountIndex good) {
    Account& consumer = books.accounts[owner];
    if (consumer.open_count == 0) consumer.open_good = good;
    ++consumer.open_count;
    books.accounts[good].takes_rest = true;
}

}  // namespace

double rounding_of(const Account& account) {
    constexpr double precision = 1e-12;  // for sums of up to some thousand amounts
    return precision * account.turnover;
}

AccountIndex open_account(Books& books, const Levels& levels, AccountKind kind,
                          std::string_view name, LinePlace place) {
    auto& names = books.names[static_cast<std::size_t>(kind)];
    const auto found = names.find(name);
    if (found != names.end()) return found->second;
    const auto index = static_cast<AccountIndex>(books.accounts.size());
    Account& account = books.accounts.emplace_back();
    account.kind = kind;
    account.name = name;
    account.place = place;
    if (kind != AccountKind::consumer) account.level = level_of(levels, name, usual_level);
    names.emplace(name, index);
    return index;
}

std::optional<AccountIndex> find_account(const Books& books, AccountKind kind,
                                         std::string_view name) {
    const auto& names = books.names[static_cast<std::size_t>(kind)];
    const auto found = names.find(name);
    if (found == names.end()) return std::nullopt;
    return found->second;
}

std::vector<AccountIndex> by_kind(const Books& books) {
    std::vector<AccountIndex> order(books.accounts.size());
    std::iota(order.begin(), order.end(), AccountIndex{0});
    std::stable_sort(order.begin(), order.end(), [&](AccountIndex one, AccountIndex other) {
        return books.accounts[one].kind < books.accounts[other].kind;
    });
    return order;
}

void post_entry(Books& books, const Levels& levels, const Transaction& entry,
                const Posting& posting) {
    const AccountIndex owner =
        open_account(books, levels, owner_kind(entry.flow), entry.owner, entry.place);
    const AccountIndex good =
        open_account(books, levels, AccountKind::commodity, entry.commodity, entry.place);
    if (entry.flow == Meaning::demand && !entry.quantity) {
        keep_open(books, owner, good);
        return;
    }
    const double value =
        quantity_of(levels, entry) * books.accounts[owner].level * books.accounts[good].level;
    const bool is_received =
        entry.flow == Meaning::output || (entry.flow == Meaning::endowment && value > 0);
    const double amount = entry.flow == Meaning::endowment ? std::abs(value) : value;
    if (is_received) {
        post(books, owner, good, amount, posting);
    } else {
        post(books, good, owner, amount, posting);
    }
    if (is_of_sector(entry.flow)) post_taxes(books, levels, entry, owner, value, posting);
}

void settle(Books& books, const Posting& posting) {
    for (AccountIndex i = 0; i < books.accounts.size(); ++i) {
        const Account& consumer = books.accounts[i];
        if (consumer.open_count != 1) continue;
        const double left = consumer.received - consumer.paid;
        if (std::abs(left) <= rounding_of(consumer)) continue;
        post(books, consumer.open_good, i, left, posting);
    }
}

std::vector<AccountIndex> accounts_of(const Books& books, const Transaction& entry, bool follow) {
    std::vector<AccountIndex> found;
    const auto add = [&](AccountKind kind, std::string_view name) {
        const auto index = find_account(books, kind, name);
        if (!index) return;
        found.push_back(*index);
        const Account& account = books.accounts[*index];
        if (follow && account.open_count == 1) found.push_back(account.open_good);
    };
    add(owner_kind(entry.flow), entry.owner);
    add(AccountKind::commodity, entry.commodity);
    for (const Tax& tax : taxes_of(entry)) add(AccountKind::consumer, tax.receiver);
    return found;
}

double rate_of(const Levels& levels, const Transaction& entry) {
    double sum = 0;
    for (const Tax& tax : taxes_of(entry)) sum += rate_of(levels, tax);
    return sum;
}

}  // namespace orvex::frontend
