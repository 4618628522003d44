#include "frontend/rules/checks.h"
#include "frontend/rules/facts.h"
#include "frontend/rules/warn.h"

namespace orvex::frontend {

namespace {

// Calls work(symbol) for each name of the kind that is declared and used.
template <typename Work>
void for_each_used(const Subject& subject, Kind kind, const Work& work) {
    for (const Index index : subject.facts->judged) {
        const Symbol& symbol = subject.model->symbols[index];
        if (symbol.kind == kind && is_used(*subject.model, symbol)) work(index);
    }
}

void warn_of(const Subject& subject, Index symbol, Range place, Findings& findings) {
    warn(subject, findings, place, {{"name", name_of(*subject.model, symbol)}});
}

// Warns of a sector or a consumer if none of its blocks has the needed fact.
void warn_of_block(const Subject& subject, Kind kind, Fact needed, Findings& findings) {
    const Facts& facts = *subject.facts;
    for_each_used(subject, kind, [&](Index symbol) {
        const Field* const block = facts.blocks[symbol];
        if (block == nullptr || has(facts, symbol, block_unclear) || has(facts, symbol, needed))
            return;
        warn_of(subject, symbol, block->reference.name, findings);
    });
}

}  // namespace

void check_commodity_unused(const Subject& subject, Findings& findings) {
    const Facts& facts = *subject.facts;
    if (facts.any_wanted) return;
    for_each_used(subject, Kind::commodity, [&](Index symbol) {
        const bool is_taken = has(facts, symbol, made) && has(facts, symbol, taken);
        if (!has(facts, symbol, supplied) || has(facts, symbol, wanted) || is_taken) return;
        if (has(facts, symbol, is_turned)) return;
        warn_of(subject, symbol, subject.model->symbols[symbol].declaration, findings);
    });
}

void check_commodity_unmade(const Subject& subject, Findings& findings) {
    const Facts& facts = *subject.facts;
    if (facts.any_supplied) return;
    for_each_used(subject, Kind::commodity, [&](Index symbol) {
        const bool is_taken = has(facts, symbol, taken);
        if (has(facts, symbol, supplied) || !(has(facts, symbol, wanted) || is_taken)) return;
        if (has(facts, symbol, is_turned)) return;
        warn(subject, findings, subject.model->symbols[symbol].declaration,
             {{"name", name_of(*subject.model, symbol)}}, is_taken ? "negative" : "");
    });
}

void check_sector_output(const Subject& subject, Findings& findings) {
    warn_of_block(subject, Kind::sector, has_output, findings);
}

void check_sector_input(const Subject& subject, Findings& findings) {
    warn_of_block(subject, Kind::sector, has_input, findings);
}

void check_consumer_demand(const Subject& subject, Findings& findings) {
    warn_of_block(subject, Kind::consumer, has_demand, findings);
}

void check_consumer_endowment(const Subject& subject, Findings& findings) {
    if (is_doubtful(*subject.facts, Kind::consumer)) return;
    warn_of_block(subject, Kind::consumer, has_income, findings);
}

}  // namespace orvex::frontend
