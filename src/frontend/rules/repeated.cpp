#include "frontend/findings/failure.h"
#include "frontend/findings/place.h"
#include "frontend/findings/wording.h"
#include "frontend/rules/checks.h"
#include "frontend/rules/edits.h"
#include "frontend/rules/facts.h"
#include "frontend/rules/rows.h"
#include "frontend/rules/warn.h"
#include "text/characters.h"

#include <set>
#include <string>
#include <unordered_map>
#include <vector>

namespace orvex::frontend {

namespace {

void add_first(const Subject& subject, Finding& finding, Range place) {
    finding.remarks.insert(finding.remarks.begin(), {Severity::note, "the first one is here",
                                                     span_of(subject.source, place)});
}

// A field as it is read, without blanks.
std::string text_of_field(const Subject& subject, const Field& field) {
    const Tree& tree = subject.source.tree;
    const Index end = end_of_field(tree, field.record, field.node);
    std::string text =
        as_read(subject, {label_place(subject, field).begin, range_of(tree, end - 1).end});
    std::erase(text, blank_char);
    return text;
}

// Is the row an entry that can be read and that the solver counts as part of its block?
bool is_whole(const Rows& rows, const Row& row) {
    const bool is_entry = row.entry != nullptr && begins_entry(row.entry->head) &&
                          !row.entry->head.faulty && !row.entry->refused;
    return is_entry && !row.unclear && !row.stray && !row.outside &&
           joined_field(rows, row) == nullptr;
}

// Removes all lines of a row, which may have comments between them.
std::vector<Edit> removal_of(const Subject& subject, const Row& row) {
    const Tree& tree = subject.source.tree;
    std::set<Index> records{row.entry->head.record};
    for (const Field* const field : fields_of(subject.facts->rows, row))
        records.insert(field->record);
    std::vector<Edit> edits;
    edits.reserve(records.size());
    for (const Index record : records) edits.push_back(removing(whole_line(tree, record)));
    return edits;
}

}  // namespace

void check_block_repeated(const Subject& subject, Findings& findings) {
    for (const RepeatedBlock& block : subject.facts->repeated_blocks) {
        const Field& head = *block.second;
        const Kind kind = subject.model->symbols[head.reference.symbol].kind;
        Finding& finding =
            warn(subject, findings, head.reference.name,
                 {{"kind", std::string(kind_name(kind))},
                  {"name", reference_text(*subject.model, subject.source.bytes, head.reference)}});
        if (block.meant != no_index) {
            const std::string& meant = name_of(*subject.model, block.meant);
            set_help(finding, "did you mean " + back_quoted(meant) + "?");
        }
        add_first(subject, finding, block.first->reference.name);
    }
}

// If the opening line of a block is missing, its rows belong to the previous block.
void check_entry_repeated(const Subject& subject, Findings& findings) {
    if (subject.facts->has_forgotten) return;
    const Rows& rows = subject.facts->rows;
    std::unordered_map<std::string, const Row*> known;
    for (const Row& row : rows.rows) {
        if (row.entry == nullptr) known.clear();
        if (!is_whole(rows, row)) continue;
        std::string text = text_of_field(subject, row.entry->head);
        for (const Field* const field : fields_of(rows, row))
            text.append(" ").append(text_of_field(subject, *field));
        const auto [first, is_new] = known.emplace(std::move(text), &row);
        if (is_new) continue;
        const Field& head = row.entry->head;
        Finding& finding = warn(subject, findings, label_place(subject, head),
                                {{"entry", text_of_field(subject, head)}});
        add_first(subject, finding, label_place(subject, first->second->entry->head));
        set_fix(finding, Confidence::maybe, removal_of(subject, row));
    }
}

}  // namespace orvex::frontend
