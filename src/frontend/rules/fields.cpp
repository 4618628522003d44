#include "frontend/syntax/fields.h"

#include "frontend/rules/checks.h"
#include "frontend/rules/edits.h"
#include "frontend/rules/facts.h"
#include "frontend/rules/rows.h"
#include "frontend/rules/warn.h"
#include "frontend/syntax/lookalikes.h"
#include "frontend/syntax/reading.h"
#include "notation/labels.h"
#include "notation/records.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace orvex::frontend {

namespace {

// Calls work(row, field) for each field of each row after the first, except those of an entry that
// begins in the middle of a line, and those with an error.
template <typename Work>
void for_each_field(const Subject& subject, const Work& work) {
    const Rows& rows = subject.facts->rows;
    for (const Row& row : rows.rows) {
        for (const Field* const field : own_fields_of(rows, row)) {
            if (!field->faulty) work(row, *field);
        }
    }
}

// The labels of a row so far. An opening record may have each label once, an entry only some
// labels.
class Labels {
  public:
    void start_row() {
        ++row_;
        in_opening_.clear();
    }

    // Notes the label of a field. Returns the field that already has it, or null.
    const Field* earlier(const Subject& subject, const Row& row, const Field& field) {
        if (row.entry != nullptr)
            return field.row == nullptr ? nullptr : first_of(*field.row, field);
        if (is_made_by_host(subject.source, field)) return nullptr;
        const auto [first, is_new] =
            in_opening_.emplace(capitals(text_in(subject, field.label)), &field);
        return is_new ? nullptr : first->second;
    }

  private:
    const Field* first_of(const notation::Label& label, const Field& field) {
        if (!label.single) return nullptr;
        First& first = first_[static_cast<std::size_t>(&label - notation::labels().data())];
        if (first.row == row_) return first.field;
        first = {row_, &field};
        return nullptr;
    }

    struct First {
        Index row = 0;
        const Field* field = nullptr;
    };

    Index row_ = 0;
    std::vector<First> first_ = std::vector<First>(notation::labels().size());
    std::unordered_map<std::string, const Field*> in_opening_;
};

// The label that a longer one means, such as Q for QU or QUANTITY; empty if there is none.
std::string_view meant_label(std::string_view label) {
    constexpr std::pair<std::string_view, std::string_view> words[] = {
        {"QUANTITY", notation::quantity_label}, {"PRICE", "P"}, {"TAX", "T"}, {"RATE", "T"}};
    constexpr std::size_t least = 2;
    for (const auto& [word, meant] : words) {
        if (label.size() >= least && word.starts_with(label)) return meant;
    }
    return {};
}

// The field without its label, as it is read.
std::string value_of(const Subject& subject, const Field& field) {
    return as_read(subject, parts_of(subject.source.tree, field.record, field.node).all);
}

void check_owner_empty(const Subject& subject, const Field& field, Findings& findings) {
    const bool names_owner = field.row != nullptr && field.row->owns && !field.faulty;
    if (!names_owner || !field.text.empty()) return;
    warn(subject, findings, label_place(subject, field), {{"label", label_text(subject, field)}});
}

// Is the value part of the next label because of a non-ASCII blank?
bool is_in_next_label(const Subject& subject, const Field& field) {
    const Tree& tree = subject.source.tree;
    if (field.node + 1 == tree.records[field.record + 1].field) return false;
    const FieldParts next = parts_of(tree, field.record, field.node + 1);
    return !lookalikes(text_in(subject, next.label)).empty();
}

// The first fields of entries, which must name something.
void check_heads(const Subject& subject, Findings& findings) {
    for (const Row& row : subject.facts->rows.rows) {
        if (row.entry == nullptr || row.stray || row.indented) continue;
        const Field& head = row.entry->head;
        if (head.faulty || !head.text.empty() || is_in_next_label(subject, head)) continue;
        warn(subject, findings, label_place(subject, head), {{"label", label_text(subject, head)}},
             "name");
    }
}

}  // namespace

void check_field_empty(const Subject& subject, Findings& findings) {
    for_each_field(subject, [&](const Row& row, const Field& field) {
        if (!needs_value(row, field) || !field.text.empty()) return;
        if (is_in_next_label(subject, field)) return;
        warn(subject, findings, label_place(subject, field),
             {{"label", label_text(subject, field)}});
    });
    check_heads(subject, findings);
    for (const Block& block : subject.model->blocks) {
        if (!is_opened_by(block, notation::Opens::report)) continue;
        for (const Entry& entry : entries_of(*subject.model, block)) {
            for (const Field& field : fields_of(*subject.model, entry))
                check_owner_empty(subject, field, findings);
        }
    }
}

// An unknown label is that of a nest, which has no value in an entry.
void check_label_unknown(const Subject& subject, Findings& findings) {
    for_each_field(subject, [&](const Row& row, const Field& field) {
        if (needs_value(row, field) || field.text.empty()) return;
        const bool is_explained = is_made_by_host(subject.source, field) ||
                                  has_joined_plus(subject.source, field) ||
                                  has_lookalike(subject.source, field);
        if (is_explained) return;
        const std::string_view meant = meant_label(capitals(text_in(subject, field.label)));
        Finding& finding =
            warn(subject, findings, label_place(subject, field),
                 {{"label", label_text(subject, field)}, {"meant", std::string(meant)}},
                 meant.empty() ? "" : "long");
        if (!meant.empty())
            set_fix(finding, Confidence::maybe,
                    {{field.label.begin, field.label.end, std::string(meant)}});
    });
}

void check_label_twice(const Subject& subject, Findings& findings) {
    const Rows& rows = subject.facts->rows;
    Labels labels;
    for (const Row& row : rows.rows) {
        if (joined_field(rows, row) != nullptr) continue;
        labels.start_row();
        for (const Field* const field : fields_of(rows, row)) {
            if (field->faulty) continue;
            const Field* const first = labels.earlier(subject, row, *field);
            if (first == nullptr) continue;
            Finding& finding = warn(subject, findings, label_place(subject, *field),
                                    {{"label", label_text(subject, *field)}});
            const auto edit = removing_field(subject.source, field->record, field->node);
            if (edit && value_of(subject, *first) == value_of(subject, *field))
                set_fix(finding, Confidence::certain, {*edit});
        }
    }
}

}  // namespace orvex::frontend
