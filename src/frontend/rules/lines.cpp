#include "frontend/rules/checks.h"
#include "frontend/rules/edits.h"
#include "frontend/rules/rows.h"
#include "frontend/rules/warn.h"
#include "frontend/syntax/host_lines.h"
#include "frontend/syntax/reading.h"
#include "notation/keywords.h"
#include "notation/labels.h"
#include "notation/limits.h"
#include "notation/records.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace orvex::frontend {

namespace {

std::string_view line_of(const Subject& subject, Index record) {
    return text_in(subject, line_range(subject.source.tree, record));
}

// A part of a line, by positions from 0.
Range part_of(const Subject& subject, Index record, std::size_t begin, std::size_t end) {
    const Offset start = line_range(subject.source.tree, record).begin;
    return {start + static_cast<Offset>(begin), start + static_cast<Offset>(end)};
}

// Calls work(record) for each record of the model that is read, except the first.
template <typename Work>
void for_each_record(const Subject& subject, const Work& work) {
    const Tree& tree = subject.source.tree;
    const ModelNode& node = tree.models[subject.model->node];
    for (Index record = node.record + 1; record < node.end; ++record) {
        const RecordKind kind = tree.records[record].kind;
        if (kind != RecordKind::blank && kind != RecordKind::comment) work(record);
    }
}

// The first word of a text: up to a blank, a TAB or a colon.
std::string_view first_word(std::string_view text) {
    return text.substr(0, text.find_first_of(" \t:"));
}

// A line without labels has an error that says what is wrong with it.
bool has_error(const Tree& tree, Index record) {
    const RecordNode& node = tree.records[record];
    if (node.fault != Fault::none) return true;
    if (node.field == tree.records[record + 1].field) return false;
    const Fault fault = tree.fields[node.field].fault;
    return fault == Fault::getfld_label || fault == Fault::getfld_blank;
}

void check_hidden_model(const Subject& subject, Index record, Findings& findings) {
    const std::string line = capitals(line_of(subject, record));
    const bool is_marked = line.starts_with(byte_order_mark);
    const std::size_t at = line.find_first_not_of(' ', is_marked ? byte_order_mark.size() : 0);
    const std::string_view keyword = notation::model_keyword;
    if (at == std::string::npos || at == 0 || line.compare(at, keyword.size(), keyword) != 0)
        return;
    Finding& finding =
        warn(subject, findings, part_of(subject, record, at, at + keyword.size() - 1),
             {{"mark", std::string(keyword.substr(0, keyword.size() - 1))}},
             is_marked ? "byte order mark" : "");
    // Blanks may have been put there on purpose, so that the model is ignored.
    const bool is_certain = is_marked && at == byte_order_mark.size();
    set_fix(finding, is_certain ? Confidence::certain : Confidence::maybe,
            {removing(part_of(subject, record, 0, at))});
}

// Moves the mark at `at` to column 1. The text after a "+" stays in its column.
void fix_indent(const Subject& subject, Index record, std::size_t at, Finding& finding) {
    const std::string_view line = line_of(subject, record);
    if (line[at] == notation::keyword_mark) {
        const std::string word = capitals(first_word(line.substr(at))).substr(1);
        if (notation::find_keyword(word) != nullptr || notation::ends_model(word))
            set_fix(finding, Confidence::certain, {removing(part_of(subject, record, 0, at))});
    } else if (subject.source.tree.records[record].kind == RecordKind::entry) {
        const std::size_t end = line.front() == blank_char ? 1 : 0;
        set_fix(finding, Confidence::certain,
                {replacing(part_of(subject, record, 0, end), "+"),
                 replacing(part_of(subject, record, at, at + 1), " ")});
    }
}

// Does the label begin an entry, and so need a line of its own?
bool begins_line(std::string_view label) {
    const notation::Label* const row = notation::find_label(label);
    return row != nullptr && row->begins != notation::nothing;
}

// Breaks a long line before the last field that begins in the part that is read.
void fix_length(const Subject& subject, Index record, Finding& finding) {
    const Tree& tree = subject.source.tree;
    const RecordNode& node = tree.records[record];
    const Index last = tree.records[record + 1].field - 1;
    const bool has_fields =
        node.kind == RecordKind::entry || node.kind == RecordKind::continuation ||
        (node.kind == RecordKind::opening && tree.records[record + 1].field > node.field);
    if (!has_fields || last == node.field) return;
    for (Index field = node.field; field <= last; ++field)
        if (tree.fields[field].fault != Fault::none) return;
    set_fix(finding, Confidence::maybe,
            {breaking_line(subject.source.bytes, field_begin(tree, last), "+ ")});
}

}  // namespace

// A model that the translator ignores because its line does not begin in column 1. An editor's byte
// order mark hides the first one.
void check_line_indent_outside(const Subject& subject, Findings& findings) {
    const Tree& tree = subject.source.tree;
    for (Index record = 0; record < line_count(tree); ++record) {
        if (tree.records[record].kind == RecordKind::outside)
            check_hidden_model(subject, record, findings);
    }
}

void check_line_indent(const Subject& subject, Findings& findings) {
    for_each_record(subject, [&](Index record) {
        const std::string_view line = line_of(subject, record);
        const bool is_body = subject.source.tree.records[record].kind == RecordKind::body;
        if (is_body || !is_indented(line) || has_error(subject.source.tree, record)) return;
        const std::size_t at = line.find_first_not_of(" \t");
        const bool is_keyword = line[at] == notation::keyword_mark;
        const std::size_t size = is_keyword ? first_word(line.substr(at)).size() : 1;
        Finding& finding = warn(subject, findings, part_of(subject, record, at, at + size),
                                {{"mark", std::string(line.substr(at, size))}});
        fix_indent(subject, record, at, finding);
    });
}

// A "+" directly before a label becomes part of it.
void check_line_plus(const Subject& subject, Findings& findings) {
    for_each_record(subject, [&](Index record) {
        const std::string_view line = line_of(subject, record);
        const bool is_body = subject.source.tree.records[record].kind == RecordKind::body;
        if (is_body || !line.starts_with(notation::continuation_mark)) return;
        const std::string_view label = first_word(line);
        const bool is_label =
            label.size() >= 2 && label.size() < line.size() && line[label.size()] == ':';
        if (!is_label || has_error(subject.source.tree, record)) return;
        const Range place = part_of(subject, record, 0, label.size());
        Finding& finding = warn(subject, findings, place, {{"label", as_read(subject, place)}});
        const bool continues = subject.source.tree.records[record].kind == RecordKind::continuation;
        const bool has_room = line.size() < notation::record_columns;
        if (continues && has_room && !begins_line(as_read(subject, place).substr(1)))
            set_fix(finding, Confidence::certain, {inserting(place.begin + 1, " ")});
    });
}

// There is text after the last column read, and it is not in a comment.
void check_line_long(const Subject& subject, Findings& findings) {
    constexpr std::size_t columns = notation::record_columns;
    for_each_record(subject, [&](Index record) {
        const std::string_view line = line_of(subject, record);
        if (line.size() <= columns) return;
        const std::string_view read = line.substr(0, line.find(notation::description_mark));
        const std::size_t size = read.find_last_not_of(" \t") + 1;
        if (size <= columns) return;
        Finding& finding =
            warn(subject, findings, part_of(subject, record, columns, size),
                 {{"count", std::to_string(size)}, {"limit", std::to_string(columns)}});
        fix_length(subject, record, finding);
    });
}

}  // namespace orvex::frontend
