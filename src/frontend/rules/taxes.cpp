#include "frontend/rules/checks.h"
#include "frontend/rules/facts.h"
#include "frontend/rules/rows.h"
#include "frontend/rules/warn.h"

#include <vector>

namespace orvex::frontend {

namespace {

using notation::Meaning;

bool is_receiver(const Field& field) { return meaning_of(field) == Meaning::tax_receiver; }

// The taxes of a row. Each takes two labels: one for the receiver, one for the rate.
struct Taxes {
    const Row& row;
    std::vector<const Field*> fields;  // of both kinds, in order
    std::size_t receivers = 0;
    std::size_t rates = 0;
    bool lacks_text = false;  // a label without its name or value, which has its own finding
};

// Calls work(taxes) for each entry of which all lines can be read.
template <typename Work>
void for_each_row(const Subject& subject, const Work& work) {
    const Rows& rows = subject.facts->rows;
    for (const Row& row : rows.rows) {
        if (row.entry == nullptr || row.unclear || joined_field(rows, row) != nullptr) continue;
        Taxes taxes{row, {}};
        for (const Field* const field : fields_of(rows, row)) {
            const bool is_rate = meaning_of(*field) == Meaning::tax_rate;
            if (!is_rate && !is_receiver(*field)) continue;
            taxes.lacks_text |= field->text.empty();
            taxes.fields.push_back(field);
            ++(is_rate ? taxes.rates : taxes.receivers);
        }
        if (!taxes.lacks_text) work(taxes);
    }
}

// The first receiver without a rate of its own. The rate follows the receiver or, if the row begins
// with a rate, precedes it. Precondition: the row has more receivers than rates.
const Field& receiver_without_rate(const Taxes& taxes) {
    const auto& fields = taxes.fields;
    const bool rates_follow = is_receiver(*fields.front());
    for (std::size_t i = 0; i < fields.size(); ++i) {
        const std::size_t rate = rates_follow ? i + 1 : i - 1;
        const bool has_rate = rate < fields.size() && !is_receiver(*fields[rate]);
        if (is_receiver(*fields[i]) && !has_rate) return *fields[i];
    }
    return *fields.front();
}

bool is_demand(const Row& row) { return meaning_of(row.entry->head) == Meaning::demand; }

}  // namespace

void check_tax_rate(const Subject& subject, Findings& findings) {
    for_each_row(subject, [&](const Taxes& taxes) {
        if (taxes.receivers <= taxes.rates) return;
        const Field& receiver = receiver_without_rate(taxes);
        if (receiver.faulty) return;
        warn(subject, findings, label_place(subject, receiver),
             {{"label", label_text(subject, receiver)}});
    });
}

void check_tax_receiver(const Subject& subject, Findings& findings) {
    for_each_row(subject, [&](const Taxes& taxes) {
        if (taxes.rates == 0 || taxes.receivers > 0 || taxes.fields.back()->faulty) return;
        const Field& rate = *taxes.fields.back();
        warn(subject, findings, label_place(subject, rate), {{"label", label_text(subject, rate)}});
    });
}

// A tax without its rate or its receiver has its own finding.
void check_tax_demand(const Subject& subject, Findings& findings) {
    for_each_row(subject, [&](const Taxes& taxes) {
        const bool is_whole = taxes.receivers > 0 && taxes.receivers <= taxes.rates;
        if (!is_whole || !is_demand(taxes.row) || taxes.fields.front()->faulty) return;
        const Field& first = *taxes.fields.front();
        warn(subject, findings, label_place(subject, first),
             {{"label", label_text(subject, first)}});
    });
}

}  // namespace orvex::frontend
