#include "frontend/rules/rows.h"

#include "frontend/syntax/lookalikes.h"
#include "frontend/syntax/reading.h"
#include "notation/records.h"

#include <algorithm>
#include <string>
#include <unordered_set>

namespace orvex::frontend {

namespace {

using notation::Meaning;
using notation::Opens;

bool has_no_label(const Tree& tree, Index record) {
    const Fault fault = tree.fields[tree.records[record].field].fault;
    return fault == Fault::getfld_label || fault == Fault::getfld_blank;
}

// Groups the entries of a model into rows.
class Collector {
  public:
    Collector(const Source& source, const Model& model, Rows& rows)
        : source_(source), model_(model), rows_(rows) {}

    void take(const Block& block) {
        if (is_function(block)) {
            open(block.head, *block.keyword);
            add_fields(block.record, block.unclear, fields_of(model_, block));
        } else if (is_opened_by(block, Opens::option)) {
            outside_ = true;
        } else if (!is_opened_by(block, Opens::constraint)) {
            owner_ = nullptr;
        }
        if (owner_ == nullptr) return;
        if (block.unclear) rows_.unclear_owners.push_back(owner_);
        for (const Entry& entry : entries_of(model_, block)) take(entry, block.unclear);
    }

  private:
    void open(const Field& head, const notation::Keyword& keyword) {
        owner_ = &head;
        keyword_ = &keyword;
        outside_ = false;
        opened_.clear();
        add_row(nullptr);
    }

    void take(const Entry& entry, bool unclear) {
        if (const notation::Keyword* const keyword = keyword_of(entry.head)) {
            open(entry.head, *keyword);
            if (unclear) rows_.unclear_owners.push_back(owner_);
        } else if (entry.head.is_name) {
            add_entry(entry);
        } else {
            add_field(entry.head);
        }
        add_fields(entry.head.record, unclear, fields_of(model_, entry));
    }

    // A keyword that is not in column 1 begins an entry. The host still takes that for a block.
    static const notation::Keyword* keyword_of(const Field& head) {
        if (head.row == nullptr || !head.row->text.starts_with(notation::keyword_mark))
            return nullptr;
        return notation::find_keyword(head.row->text.substr(1));
    }

    void add_row(const Entry* entry) {
        Row& row = rows_.rows.emplace_back(Row{owner_, keyword_, entry});
        row.first_field = static_cast<Index>(rows_.fields.size());
        row.outside = outside_;
    }

    // With its "+" in column 1, an indented line would have continued the previous row.
    void add_entry(const Entry& entry) {
        const bool indented =
            is_indented(text_of(source_.bytes, line_range(source_.tree, entry.head.record)));
        const bool stray = !outside_ && is_stray(entry.head);
        const bool lost_plus = stray && !indented && continues(entry.head);
        if (indented || lost_plus) rows_.rows.back().unclear = true;
        add_row(&entry);
        Row& row = rows_.rows.back();
        row.indented = indented;
        row.stray = stray;
        row.lost_plus = lost_plus;
        row.unclear = indented || lost_plus || is_cut(entry.head.record);
    }

    // Does a row that begins with that field lack its "+"? Its label has a meaning only after an
    // entry's name, or is that of a nest.
    bool continues(const Field& head) {
        if (head.row != nullptr) return head.row->full && head.row->begins == notation::nothing;
        const bool is_empty = head.text.empty() && !head.faulty;
        return is_empty && opened().contains(capitals(text_of(source_.bytes, head.label)));
    }

    // The nests that the block opens.
    const std::unordered_set<std::string>& opened() {
        if (!opened_.empty()) return opened_;
        const auto opening = std::find_if(rows_.rows.rbegin(), rows_.rows.rend(),
                                          [](const Row& row) { return row.entry == nullptr; });
        for (const Field* const field : fields_of(rows_, *opening))
            opened_.insert(nest_name(*field));
        opened_.insert("");
        return opened_;
    }

    // Is the record longer than the part that is read? A comment at its end may be.
    bool is_cut(Index record) const {
        const Tree& tree = source_.tree;
        Index last = tree.records[record + 1].token;
        while (last > tree.records[record].token &&
               tree.tokens[last - 1].kind == TokenKind::line_end)
            --last;
        return last >= tree.records[record].token + 2 &&
               tree.tokens[last - 1].kind == TokenKind::unread &&
               tree.tokens[last - 2].kind != TokenKind::description;
    }

    bool is_stray(const Field& head) const {
        if (head.faulty || is_made_by_host(source_, head)) return false;
        unsigned wanted = keyword_->opens == Opens::production ? notation::production_entry
                                                               : notation::demand_entry;
        if (is_refused(*owner_)) wanted = notation::production_entry | notation::demand_entry;
        return head.row == nullptr || (head.row->begins & wanted) == 0;
    }

    // Is the name of the block something else? Then the keyword may be wrong.
    bool is_refused(const Field& owner) const {
        const Index symbol = owner.reference.symbol;
        return symbol != no_index && owner.row != nullptr && model_.symbols[symbol].entered &&
               model_.symbols[symbol].kind != kind_of_type(owner.row->type);
    }

    void add_field(const Field& field) {
        Row& row = rows_.rows.back();
        const bool joins = row.entry != nullptr && begins_entry(field);
        if (row.own_count == row.field_count && !joins) ++row.own_count;
        ++row.field_count;
        row.unclear = row.unclear || has_joined_plus(source_, field) || is_cut(field.record) ||
                      has_lookalike(source_, field);
        rows_.fields.push_back(&field);
    }

    // A line without labels may have begun another entry, so its continuations do not belong to
    // this row.
    void add_fields(Index record, bool unclear, std::span<const Field> fields) {
        const Index end = unclear ? end_of_row(record) : no_index;
        for (const Field& field : fields) {
            if (field.record < end) add_field(field);
        }
    }

    Index end_of_row(Index record) {
        const Tree& tree = source_.tree;
        for (++record; record < line_count(tree); ++record) {
            const RecordKind kind = tree.records[record].kind;
            if (kind == RecordKind::blank || kind == RecordKind::comment) continue;
            if (kind != RecordKind::continuation) break;
            if (has_no_label(tree, record)) rows_.rows.back().unclear = true;
        }
        return record;
    }

    // VA of "VA" and of "VA(S)".
    std::string nest_name(const Field& field) const {
        const std::string label = capitals(text_of(source_.bytes, field.label));
        return label.substr(0, label.find('('));
    }

    const Source& source_;
    const Model& model_;
    Rows& rows_;
    const Field* owner_ = nullptr;
    const notation::Keyword* keyword_ = nullptr;
    bool outside_ = false;
    std::unordered_set<std::string> opened_;  // filled on demand
};

}  // namespace

Rows read_rows(const Source& source, const Model& model) {
    Rows rows;
    rows.fields.reserve(model.fields.size());
    Collector collector(source, model, rows);
    for (const Block& block : model.blocks) collector.take(block);
    return rows;
}

std::span<const Field* const> fields_of(const Rows& rows, const Row& row) {
    return {rows.fields.data() + row.first_field, row.field_count};
}

std::span<const Field* const> own_fields_of(const Rows& rows, const Row& row) {
    return fields_of(rows, row).first(row.own_count);
}

const Field* joined_field(const Rows& rows, const Row& row) {
    return row.own_count == row.field_count ? nullptr : fields_of(rows, row)[row.own_count];
}

bool needs_value(const Row& row, const Field& field) {
    return row.entry == nullptr || (field.row != nullptr && field.row->full);
}

const Field& head_of(const Row& row) { return row.entry == nullptr ? *row.owner : row.entry->head; }

bool is_after_other(const std::vector<Row>& rows, std::size_t row) {
    const auto is_other = [&](std::size_t at) {
        return rows[at].stray && begins_entry(rows[at].entry->head);
    };
    return row > 0 && is_other(row) && is_other(row - 1);
}

const Field* quantity_of(const Rows& rows, const Row& row) {
    const auto fields = own_fields_of(rows, row);
    const auto quantity = std::find_if(fields.begin(), fields.end(), [](const Field* field) {
        return field->row != nullptr && field->row->text == notation::quantity_label;
    });
    return quantity == fields.end() ? nullptr : *quantity;
}

Meaning meaning_of(const Field& field) {
    return field.row == nullptr ? Meaning::none : field.row->meaning;
}

bool begins_entry(const Field& field) {
    if (field.text.empty()) return false;
    const Meaning meaning = meaning_of(field);
    return meaning == Meaning::output || meaning == Meaning::input || meaning == Meaning::demand ||
           meaning == Meaning::endowment;
}

bool is_indented(std::string_view line) {
    const std::size_t at = line.find_first_not_of(" \t");
    return at != std::string_view::npos && at != 0 &&
           (line[at] == notation::keyword_mark || line[at] == notation::continuation_mark);
}

bool has_joined_plus(const Source& source, const Field& field) {
    return field.label.end - field.label.begin > 1 &&
           source.bytes[field.label.begin] == notation::continuation_mark &&
           field.label.begin == line_range(source.tree, field.record).begin;
}

bool has_lookalike(const Source& source, const Field& field) {
    return !lookalikes(text_of(source.bytes, field.label)).empty();
}

bool is_made_by_host(const Source& source, const Field& field) {
    if (field.row != nullptr) return false;
    return capitals(text_of(source.bytes, field.label)).find(notation::element_label) !=
           std::string::npos;
}

bool is_function(const Block& block) {
    return is_opened_by(block, Opens::production) || is_opened_by(block, Opens::demand);
}

}  // namespace orvex::frontend
