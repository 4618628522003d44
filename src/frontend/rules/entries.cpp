#include "frontend/findings/wording.h"
#include "frontend/rules/arguments.h"
#include "frontend/rules/checks.h"
#include "frontend/rules/edits.h"
#include "frontend/rules/facts.h"
#include "frontend/rules/rows.h"
#include "frontend/rules/warn.h"
#include "frontend/syntax/reading.h"
#include "notation/records.h"
#include "text/characters.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

namespace orvex::frontend {

namespace {

using notation::Opens;

// The text of a record before its first label, which begins after the last blank before its colon;
// empty if there is no text, or no colon.
Range text_before_label(const Subject& subject, Index record) {
    const Tree& tree = subject.source.tree;
    Range text;
    Offset last = 0;  // the end of the non-blank text
    for (Index token = tree.records[record].token; token < tree.records[record + 1].token;
         ++token) {
        const Range range = range_of(tree, token);
        switch (tree.tokens[token].kind) {
        case TokenKind::label:
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

// A "+" in column 1 that is joined to a label does not count as text.
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

// If an argument is wrong, the text after the arguments may be a part of them.
bool has_invalid_set(const Subject& subject, const Field& field) {
    const auto arguments = arguments_of(*subject.model, field.reference);
    return std::any_of(arguments.begin(), arguments.end(), [&](const Argument& argument) {
        return argument.kind == notation::ArgumentKind::set &&
               is_invalid_set(text_in(subject, argument.range));
    });
}

void add_note_first(Finding& finding, std::string message) {
    finding.remarks.insert(finding.remarks.begin(), {Severity::note, std::move(message), {}});
}

// Is the block that of a name declared as something else?
bool has_wrong_owner(const Model& model, const Row& row) {
    const Index owner = row.owner->reference.symbol;
    if (owner == no_index || !model.symbols[owner].is_declared) return false;
    const Kind kind = row.keyword->opens == Opens::production ? Kind::sector : Kind::consumer;
    return model.symbols[owner].kind != kind;
}

// The contents of rows that become one row when the "+" is put back: the row before them, and the
// following rows that have lost their "+".
class Joined {
  public:
    Joined(const Subject& subject, std::size_t row) : rows_(subject.facts->rows) {
        const std::vector<Row>& rows = rows_.rows;
        while (rows[row].lost_plus) --row;
        base_ = &rows[row];
        add_fields(*base_);
        for (++row; row < rows.size() && rows[row].lost_plus; ++row) {
            add(rows[row].entry->head);
            add_fields(rows[row]);
        }
    }

    // Is it clear that they are one row: an entry with each label at most once, and with as many
    // taxes as rates?
    bool is_sure() const {
        const bool is_entry = base_->entry != nullptr && !base_->stray &&
                              !base_->entry->head.faulty && !base_->outside;
        const bool is_taxed = receivers_ + rates_ > 0;
        const bool may_be_taxed =
            is_entry && meaning_of(base_->entry->head) != notation::Meaning::demand;
        return is_entry && is_clear_ && receivers_ == rates_ && (!is_taxed || may_be_taxed);
    }

  private:
    void add_fields(const Row& row) {
        for (const Field* const field : fields_of(rows_, row)) add(*field);
    }

    void add(const Field& field) {
        is_clear_ = is_clear_ && !field.faulty;
        receivers_ += meaning_of(field) == notation::Meaning::tax_receiver ? 1 : 0;
        rates_ += meaning_of(field) == notation::Meaning::tax_rate ? 1 : 0;
        const bool is_single = field.row != nullptr && field.row->single;
        if (is_single && !labels_.insert(field.row).second) is_clear_ = false;
    }

    const Rows& rows_;
    const Row* base_;
    std::unordered_set<const notation::Label*> labels_;
    int receivers_ = 0;
    int rates_ = 0;
    bool is_clear_ = true;
};

// Puts a "+" into column 1, with a blank after it.
Edit plus_before(const Subject& subject, const Row& row) {
    const Range line = line_range(subject.source.tree, row.entry->head.record);
    const std::string_view text = text_in(subject, line);
    const std::size_t blanks = std::min(text.find_first_not_of(blank_char), text.size());
    const bool has_room = blanks > 1;
    const bool has_blank = blanks > 0 || text.starts_with(tab);
    if (has_room) return replacing({line.begin, line.begin + 1}, "+");
    return inserting(line.begin, has_blank ? "+" : "+ ");
}

// Is the field a variable that was refused as a value?
bool is_refused(const Model& model, const Field& field) {
    const Index symbol = field.reference.symbol;
    return !field.is_name && symbol != no_index && is_variable(model.symbols[symbol].kind);
}

}  // namespace

// Text before the first label of a line, or after the sets of the name of a block or an entry.
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

// One finding for all rows after an option: they have one cause.
void check_entry_outside(const Subject& subject, Findings& findings) {
    const Row* first = nullptr;
    std::vector<int> others;
    const auto finish = [&] {
        if (first == nullptr) return;
        Finding& finding = warn(subject, findings, label_place(subject, first->entry->head));
        if (!others.empty()) add_note_first(finding, "the same in " + line_list(others));
        first = nullptr;
        others.clear();
    };
    for (const Row& row : subject.facts->rows.rows) {
        if (row.entry == nullptr) finish();
        if (row.entry == nullptr || row.entry->head.faulty || !row.outside) continue;
        if (first != nullptr) others.push_back(line_of_record(row.entry->head.record));
        if (first == nullptr) first = &row;
    }
    finish();
}

// A "$" or "+" in a wrong column has its own finding, and so has text before the label, which may
// contain the label of the entry. A block with a wrong keyword has an error.
void check_entry_label(const Subject& subject, Findings& findings) {
    const std::vector<Row>& rows = subject.facts->rows.rows;
    bool is_sure = false;  // of the current rows without "+"
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const Row& row = rows[i];
        if (row.lost_plus && !rows[i - 1].lost_plus) is_sure = Joined(subject, i).is_sure();
        if (row.entry == nullptr || row.entry->head.faulty) continue;
        const Field& head = row.entry->head;
        const bool is_explained = !row.stray || row.indented || !head.before.empty() ||
                                  has_wrong_owner(*subject.model, row);
        if (is_explained || is_after_other(rows, i)) continue;
        const bool begins_run = i + 1 < rows.size() && is_after_other(rows, i + 1);
        Finding& finding =
            warn(subject, findings, label_place(subject, head),
                 {{"block", std::string(row.keyword->word)}, {"label", label_text(subject, head)}},
                 row.lost_plus ? "plus"
                 : begins_run  ? "block"
                               : "");
        if (!row.lost_plus) continue;
        set_fix(finding, is_sure ? Confidence::certain : Confidence::maybe,
                {plus_before(subject, row)});
    }
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
