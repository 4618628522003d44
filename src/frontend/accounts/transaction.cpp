#include "frontend/accounts/transaction.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <span>

namespace orvex::frontend {

namespace {

using notation::Meaning;

bool is_receiver(const TaxField& field) { return field.kind == TaxField::Kind::receiver; }

void add_rate(Tax& tax, const TaxField& field) {
    if (field.kind == TaxField::Kind::variable) {
        tax.variables.push_back(field.name);
    } else {
        tax.rate += field.rate;
    }
}

// The number of the receiver that the rate at `place` belongs to; past the last if there is none.
std::size_t nearest_receiver(std::span<const TaxField> fields, std::size_t place) {
    const auto before = static_cast<std::size_t>(std::count_if(
        fields.begin(), fields.begin() + static_cast<std::ptrdiff_t>(place), is_receiver));
    return is_receiver(fields.front()) ? before - 1 : before;
}

}  // namespace

bool is_of_sector(Meaning flow) { return flow == Meaning::output || flow == Meaning::input; }

bool is_of_consumer(Meaning flow) { return flow == Meaning::demand || flow == Meaning::endowment; }

std::vector<Tax> taxes_of(const Transaction& entry) {
    const std::span<const TaxField> fields = entry.tax_fields;
    std::vector<Tax> taxes;
    for (const TaxField& field : fields) {
        if (is_receiver(field)) taxes.push_back({field.name, 0, {}});
    }
    const bool in_order = 2 * taxes.size() == fields.size();
    std::size_t rates = 0;
    for (std::size_t i = 0; i < fields.size(); ++i) {
        if (is_receiver(fields[i])) continue;
        const std::size_t number = in_order ? rates : nearest_receiver(fields, i);
        ++rates;
        if (number < taxes.size()) add_rate(taxes[number], fields[i]);
    }
    return taxes;
}

}  // namespace orvex::frontend
