#include "frontend/accounts/transaction.h"

namespace orvex::frontend {

namespace {

using notation::Meaning;

// The tax to which a rate that comes now belongs.
Tax& tax_of_rate(Transaction& entry) {
    if (entry.taxes.empty()) entry.rates_first = true;
    const bool begins =
        entry.rates_first && (entry.taxes.empty() || !entry.taxes.back().receiver.empty());
    return begins ? entry.taxes.emplace_back() : entry.taxes.back();
}

}  // namespace

bool is_of_sector(Meaning flow) { return flow == Meaning::output || flow == Meaning::input; }

bool is_of_consumer(Meaning flow) { return flow == Meaning::demand || flow == Meaning::endowment; }

void add_receiver(Transaction& entry, std::string_view name) {
    const bool waits = !entry.taxes.empty() && entry.taxes.back().receiver.empty();
    Tax& tax = waits ? entry.taxes.back() : entry.taxes.emplace_back();
    tax.receiver = name;
}

void add_rate(Transaction& entry, double rate) { tax_of_rate(entry).rate += rate; }

void add_variable_rate(Transaction& entry, std::string_view variable) {
    tax_of_rate(entry).variables.emplace_back(variable);
}

}  // namespace orvex::frontend
