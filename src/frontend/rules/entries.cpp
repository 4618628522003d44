#include "frontend/rules/arguments.h"
#include "frontend/rules/checks.h"
#include "frontend/rules/edits.h"
#include "frontend/rules/facts.h"
#include "frontend/rules/rows.h"
#include "frontend/rules/warn.h"
#include "notation/records.h"
#include "text/characters.h"

#include <algorithm>
#include <string>

namespace orvex::frontend {

namespace {

using notation::Opens;

// What is in a record before its first label, which begins after the last blank before its colon;
// empty where there is nothing, or no colon.
Range text_before_label(const Subject& subject, Index record) {
    const Tree& tree = subject.source.tree;
    Range text;
    Offset last = 0;  // the end of what is not blank
    for (Index token = tree.records[record].token; token < tree.records[record + 1].token;
         ++token) {
        const Range range = range_of(tree, token);
        switch (tree.tokens[token].kind) {
        case TokenKind::colon: return text;
        case TokenKind::plus: break;
        case TokenKind::blank: text.end = last; break;
        default:
            if (last == 0) text.begin = range.begin;
            last = range.end;
        }
    }
    return {};
}

// A "+" in column 1 that is joined to a label is no text.
Range without_plus(const Subject& subject, Range text) {
    const bool has_plus = !text.empty() && text_in(subject, text).starts_with('+');
    return has_plus ? Range{text.begin + 1, text.end} : text;
}

void check_before_label(const Subject& subject, Index record, Findings& findings) {
    const Tree& tree = subject.source.tree;
    const RecordNode& node = tree.records[record];
    const bool is_labelled = node.kind == RecordKind::entry ||
                             node.kind == RecordKind::continuation ||
                             node.kind == RecordKind::report;
    if (!is_labelled || node.fault != Fault::none) return;
    if (tree.fields[node.field].fault != Fault::none) return;
    if (is_indented(text_in(subject, line_range(tree, record)))) return;
    const Range text = without_plus(subject, text_before_label(subject, record));
    if (!text.empty()) warn(subject, findings, text, {{"text", as_read(subject, text)}});
}

// Up to the first blank.
Range first_word(const Subject& subject, Range text) {
    const std::string read = capitals(text_in(subject, text));
    const std::size_t size = std::min(read.find(blank_char), read.size());
    return {text.begin, text.begin + static_cast<Offset>(size)};
}

// What is after the arguments may be a part of them where one of them is wrong.
bool has_invalid_set(const Subject& subject, const Field& field) {
    const auto arguments = arguments_of(*subject.model, field.reference);
    return std::any_of(arguments.begin(), arguments.end(), [&](const Argument& argument) {
        return argument.kind == notation::ArgumentKind::set &&
               is_invalid_set(text_in(subject, argument.range));
    });
}

// Calls work(row) for the row of each entry of a production or demand block.
template <typename Work>
void for_each_entry(const Subject& subject, const Work& work) {
    for (const Row& row : subject.facts->rows.rows) {
        if (row.entry != nullptr && !row.entry->head.faulty) work(row);
    }
}

// Is a variable refused in the place of a value?
bool is_refused(const Model& model, const Field& field) {
    const Index symbol = field.reference.symbol;
    return !field.is_name && symbol != no_index && is_variable(model.symbols[symbol].kind);
}

}  // namespace

// Text before the first label of a line, and after the sets of a block's or an entry's name.
void check_entry_text(const Subject& subject, Findings& findings) {
    const Tree& tree = subject.source.tree;
    const Index end = tree.models[subject.model->node].end;
    for (const Block& block : subject.model->blocks) {
        if (!is_function(block) && !is_opened_by(block, Opens::report)) continue;
        for (Index record = block.record + 1; record < end; ++record) {
            if (tree.records[record].kind == RecordKind::opening) break;
            check_before_label(subject, record, findings);
        }
    }
    for (const Row& row : subject.facts->rows.rows) {
        const Field& head = head_of(row);
        if (head.ignored.empty() || head.faulty || has_invalid_set(subject, head)) continue;
        const Range word = first_word(subject, head.ignored);
        warn(subject, findings, word, {{"text", as_read(subject, word)}});
    }
}

void check_entry_outside(const Subject& subject, Findings& findings) {
    for_each_entry(subject, [&](const Row& row) {
        if (!row.outside) return;
        warn(subject, findings, label_place(subject, row.entry->head));
    });
}

// That its "$" or "+" is in a wrong column is found already, and so is text before its label, in
// which the label of the entry may be.
void check_entry_label(const Subject& subject, Findings& findings) {
    for_each_entry(subject, [&](const Row& row) {
        const Field& head = row.entry->head;
        if (!row.stray || row.indented || !head.before.empty()) return;
        warn(subject, findings, label_place(subject, head),
             {{"block", std::string(row.keyword->word)}, {"label", label_text(subject, head)}});
    });
}

void check_entry_joined(const Subject& subject, Findings& findings) {
    for (const Row& row : subject.facts->rows.rows) {
        const Field* const joined = joined_field(subject.facts->rows, row);
        if (joined == nullptr || joined->faulty || is_refused(*subject.model, *joined)) continue;
        const Range label = label_place(subject, *joined);
        Finding& finding =
            warn(subject, findings, label, {{"label", label_text(subject, *joined)}});
        if (!joined->before.empty()) continue;
        const Tree& tree = subject.source.tree;
        const Offset start = line_range(tree, joined->record).begin;
        const bool is_first = tree.records[joined->record].field == joined->node;
        set_fix(finding, Confidence::certain,
                {is_first ? replacing({start, start + 1}, " ")
                          : breaking_line(subject.source.bytes, label.begin, "  ")});
    }
}

}  // namespace orvex::frontend
