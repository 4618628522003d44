#include "frontend/rules/checks.h"
#include "frontend/rules/facts.h"
#include "frontend/rules/warn.h"

#include <string>
#include <vector>

namespace orvex::frontend {

void check_auxiliary_constraint(const Subject& subject, Findings& findings) {
    if (subject.facts->any_constrained) return;
    for (const Index index : subject.facts->judged) {
        const Symbol& symbol = subject.model->symbols[index];
        if (symbol.kind != Kind::auxiliary || !is_used(*subject.model, symbol)) continue;
        if (has(*subject.facts, index, has_constraint)) continue;
        warn(subject, findings, symbol.declaration, {{"name", name_of(*subject.model, index)}});
    }
}

void check_constraint_twice(const Subject& subject, Findings& findings) {
    std::vector<bool> is_known(subject.model->symbols.size());
    for (const Constraint& constraint : subject.model->constraints) {
        if (constraint.symbol == no_index || subject.model->symbols[constraint.symbol].touched)
            continue;
        if (is_known[constraint.symbol]) {
            warn(subject, findings, constraint.name,
                 {{"name", name_of(*subject.model, constraint.symbol)}});
        }
        is_known[constraint.symbol] = true;
    }
}

}  // namespace orvex::frontend
