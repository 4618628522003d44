#include "frontend/rules/checks.h"
#include "frontend/rules/edits.h"
#include "frontend/rules/facts.h"
#include "frontend/rules/warn.h"
#include "frontend/syntax/tree.h"

#include <string>

namespace orvex::frontend {

namespace {

void warn_of_repeated(const Subject& subject, const Field& field, Findings& findings) {
    const Index symbol = field.reference.symbol;
    const bool is_known = symbol != no_index && subject.model->symbols[symbol].entered;
    if (!is_known || field.faulty || has(*subject.facts, symbol, is_odd)) return;
    if (is_no_name(*subject.facts, field.reference.name.begin)) return;
    Finding& finding =
        warn(subject, findings, field.reference.name, {{"name", name_of(*subject.model, symbol)}});
    if (subject.source.tree.records[field.record].kind != RecordKind::names) return;
    if (const auto edit = removing_field(subject.source, field.record, field.node))
        set_fix(finding, Confidence::maybe, {*edit});
}

// A report variable is declared by the first record that begins with it.
bool is_declared_before(const Subject& subject, const Field& head) {
    if (head.reference.symbol == no_index || head.row == nullptr) return false;
    const Symbol& symbol = subject.model->symbols[head.reference.symbol];
    return head.row->begins == notation::report_record && symbol.kind == Kind::report &&
           symbol.is_declared && symbol.declared_record != head.record;
}

}  // namespace

void check_name_missing(const Subject& subject, Findings& findings) {
    const Tree& tree = subject.source.tree;
    for (const Field& field : subject.model->nameless) {
        if (field.faulty) continue;
        const Range place = range_of(tree, tree.fields[field.node].token,
                                     end_of_field(tree, field.record, field.node));
        if (is_no_name(*subject.facts, place.begin)) continue;
        warn(subject, findings, place);
    }
}

void check_name_twice(const Subject& subject, Findings& findings) {
    const Model& model = *subject.model;
    for (const Field& field : model.repeated) warn_of_repeated(subject, field, findings);
    for (const Block& block : model.blocks) {
        if (!is_opened_by(block, notation::Opens::report)) continue;
        for (const Entry& entry : entries_of(model, block)) {
            if (is_declared_before(subject, entry.head))
                warn_of_repeated(subject, entry.head, findings);
        }
    }
}

}  // namespace orvex::frontend
