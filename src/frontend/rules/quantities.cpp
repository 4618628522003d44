#include "frontend/rules/amounts.h"
#include "frontend/rules/checks.h"
#include "frontend/rules/facts.h"
#include "frontend/rules/found.h"
#include "frontend/rules/rows.h"
#include "frontend/rules/warn.h"

#include <algorithm>
#include <span>
#include <string>
#include <vector>

namespace orvex::frontend {

namespace {

using notation::Meaning;

// Calls work(rows) for the entries of each block.
template <typename Work>
void for_each_block(const std::vector<Row>& rows, const Work& work) {
    for (auto first = rows.begin(); first != rows.end();) {
        const auto end = std::find_if(first + 1, rows.end(),
                                      [](const Row& row) { return row.entry == nullptr; });
        work(std::span(first + 1, end));
        first = end;
    }
}

// Is it clear that the entry has no quantity? In a block without any demand its label may be wrong.
bool lacks_quantity(const Facts& facts, const Row& row) {
    const Rows& rows = facts.rows;
    const Field& head = row.entry->head;
    const bool is_cut = row.unclear || row.stray || row.outside || row.entry->refused ||
                        head.faulty || !head.ignored.empty() || !head.before.empty();
    const Index symbol = head.reference.symbol;
    if (symbol != no_index && has(facts, symbol, is_turned)) return false;
    return !is_cut && joined_field(rows, row) == nullptr && quantity_of(rows, row) == nullptr;
}

bool has_quantities(const Rows& rows, std::span<const Row> block) {
    return std::any_of(block.begin(), block.end(),
                       [&](const Row& row) { return quantity_of(rows, row) != nullptr; });
}

class Missing {
  public:
    Missing(const Subject& subject, Findings& findings)
        : subject_(subject), found_(subject, findings), findings_(findings) {}

    // A block without any quantities may turn one good into another; with more goods, one finding
    // is enough.
    void check(std::span<const Row> block) {
        const bool has_some = has_quantities(rows(), block);
        bool needs = has_some || block.size() > 2;
        for (const Row& row : block) {
            if (!lacks_quantity(*subject_.facts, row) || found_.touch(rows(), row)) continue;
            const Meaning meaning = meaning_of(row.entry->head);
            const bool is_flow = meaning == Meaning::output || meaning == Meaning::input;
            if (meaning == Meaning::endowment) add(row, "endowment");
            if (!is_flow || !needs) continue;
            add(row, "");
            needs = has_some;
        }
    }

  private:
    const Rows& rows() const { return subject_.facts->rows; }

    void add(const Row& row, std::string_view variant) {
        const Field& head = row.entry->head;
        warn(subject_, findings_, head.reference.name,
             {{"name", as_read(subject_, head.reference.name)}}, variant);
    }

    const Subject& subject_;
    const FoundLines found_;
    Findings& findings_;
};

}  // namespace

// Only a demand may omit the quantity. A row with another finding may lack its quantity for the
// same reason.
void check_quantity_missing(const Subject& subject, Findings& findings) {
    Missing missing(subject, findings);
    for_each_block(subject.facts->rows.rows,
                   [&](std::span<const Row> block) { missing.check(block); });
}

void check_quantity_suspicious(const Subject& subject, Findings& findings) {
    const Rows& rows = subject.facts->rows;
    for (const Row& row : rows.rows) {
        if (row.entry == nullptr || row.entry->head.faulty) continue;
        const Field* const quantity = quantity_of(rows, row);
        if (quantity == nullptr || quantity->faulty) continue;
        const Amount amount = amount_of(text_in(subject, quantity->text));
        const bool is_input = meaning_of(row.entry->head) == Meaning::input;
        const bool is_negative = is_input && amount == Amount::negative;
        if (amount != Amount::zero && !is_negative) continue;
        warn(subject, findings, quantity->text,
             {{"name", as_read(subject, row.entry->head.reference.name)}},
             is_negative ? "negative" : "");
    }
}

}  // namespace orvex::frontend
