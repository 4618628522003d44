#include "frontend/findings/place.h"
#include "frontend/findings/wording.h"
#include "frontend/rules/checks.h"
#include "frontend/rules/facts.h"
#include "frontend/rules/rows.h"
#include "frontend/rules/warn.h"
#include "frontend/syntax/expressions.h"
#include "frontend/syntax/reading.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace orvex::frontend {

namespace {

// The "#" of a field with the list after it.
Range list_of(const Subject& subject, const Field& field) {
    const Tree& tree = subject.source.tree;
    const Index end = end_of_field(tree, field.record, field.node);
    Index token = tree.fields[field.node].token;
    while (token < end && tree.tokens[token].kind != TokenKind::list) ++token;
    Index close = token;
    while (close < end && tree.tokens[close].kind != TokenKind::close) ++close;
    return range_of(tree, token, std::min(close + 1, end));
}

enum class Sets { same, other_order, other };

// The set of an argument, without a lead or lag; empty for an element, and if it is not a set.
std::string_view set_of(std::string_view argument) {
    const std::string_view set =
        without_blanks_at_end(argument.substr(0, argument.find_first_of("+-")));
    return may_be_name(set) ? set : std::string_view();
}

Sets compare(const Subject& subject, const Symbol& symbol, const Reference& reference) {
    const auto arguments = arguments_of(*subject.model, reference);
    const std::vector<std::string>& declared = symbol.arguments;
    Sets found = Sets::same;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string argument = as_read(subject, arguments[i].range);
        const std::string_view set = set_of(argument);
        if (set.empty() || set_of(declared[i]).empty() || set == declared[i]) continue;
        if (std::find(declared.begin(), declared.end(), set) == declared.end()) return Sets::other;
        found = Sets::other_order;
    }
    return found;
}

std::string declared_text(const Model& model, Index symbol) {
    std::string text;
    for (const std::string& argument : model.symbols[symbol].arguments)
        text.append(text.empty() ? "(" : ",").append(argument);
    return name_of(model, symbol) + text + ")";
}

void check_reference(const Subject& subject, const Field& field, Sets wanted, Findings& findings) {
    const Reference& reference = field.reference;
    if (reference.symbol == no_index || field.faulty) return;
    const Symbol& symbol = subject.model->symbols[reference.symbol];
    const bool is_known = symbol.is_declared && is_variable(symbol.kind) &&
                          symbol.arguments.size() == reference.argument_count;
    if (!is_known || compare(subject, symbol, reference) != wanted) return;
    const std::string declared = declared_text(*subject.model, reference.symbol);
    const std::string used = reference_text(*subject.model, subject.source.bytes, reference);
    Finding& finding = warn(subject, findings, {reference.name.begin, field.text.end},
                            {{"reference", used}, {"declared", declared}});
    finding.remarks.insert(finding.remarks.begin(),
                           {Severity::note, back_quoted(declared) + " is declared here",
                            span_of(subject.source, symbol.declaration)});
}

void check_sets(const Subject& subject, Sets wanted, Findings& findings) {
    const Model& model = *subject.model;
    for (const Block& block : model.blocks) {
        if (is_function(block)) check_reference(subject, block.head, wanted, findings);
        for (const Entry& entry : entries_of(model, block)) {
            check_reference(subject, entry.head, wanted, findings);
            for (const Field& field : fields_of(model, entry)) {
                if (field.is_name) check_reference(subject, field, wanted, findings);
            }
        }
    }
}

}  // namespace

// Only the first field of a row loops over its extra indices, and so does a label of the elements
// of a set.
void check_index_list(const Subject& subject, Findings& findings) {
    for (const Field& field : subject.model->fields) {
        if (field.reference.extra_count == 0 || field.faulty) continue;
        const bool loops =
            is_made_by_host(subject.source, field) && field.reference.argument_count > 0;
        if (loops || has_error(*subject.facts, field.node)) continue;
        const Range list = list_of(subject, field);
        Finding& finding =
            warn(subject, findings, list,
                 {{"list", as_read(subject, list)}, {"label", label_text(subject, field)}});
        finding.fix = Fix{Confidence::maybe, {{list.begin, list.end, ""}}};
    }
}

void check_set_order(const Subject& subject, Findings& findings) {
    check_sets(subject, Sets::other_order, findings);
}

void check_set_other(const Subject& subject, Findings& findings) {
    check_sets(subject, Sets::other, findings);
}

}  // namespace orvex::frontend
