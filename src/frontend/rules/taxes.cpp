#include "frontend/rules/checks.h"
#include "frontend/rules/facts.h"
#include "frontend/rules/rows.h"
#include "frontend/rules/warn.h"

namespace orvex::frontend {

namespace {

using notation::Meaning;

// A tax takes two labels: who receives it, and how high it is. The last ones of a row.
struct Tax {
    const Field* receiver = nullptr;
    const Field* rate = nullptr;
};

// A label without its name or value is found as such.
bool lacks_text(const Field* field) { return field != nullptr && field->text.empty(); }

// Calls work(tax) for each entry that can be read in all its lines.
template <typename Work>
void for_each_tax(const Subject& subject, const Work& work) {
    const Rows& rows = subject.facts->rows;
    for (const Row& row : rows.rows) {
        if (row.entry == nullptr || row.unclear || joined_field(rows, row) != nullptr) continue;
        Tax tax;
        for (const Field* const field : fields_of(rows, row)) {
            if (meaning_of(*field) == Meaning::tax_receiver) tax.receiver = field;
            if (meaning_of(*field) == Meaning::tax_rate) tax.rate = field;
        }
        if (!lacks_text(tax.receiver) && !lacks_text(tax.rate)) work(tax);
    }
}

}  // namespace

void check_tax_rate(const Subject& subject, Findings& findings) {
    for_each_tax(subject, [&](const Tax& tax) {
        if (tax.receiver == nullptr || tax.rate != nullptr || tax.receiver->faulty) return;
        warn(subject, findings, label_place(subject, *tax.receiver),
             {{"label", label_text(subject, *tax.receiver)}});
    });
}

void check_tax_receiver(const Subject& subject, Findings& findings) {
    for_each_tax(subject, [&](const Tax& tax) {
        if (tax.rate == nullptr || tax.receiver != nullptr || tax.rate->faulty) return;
        warn(subject, findings, label_place(subject, *tax.rate),
             {{"label", label_text(subject, *tax.rate)}});
    });
}

}  // namespace orvex::frontend
