#include "frontend/rules/lost_rows.h"

#include "frontend/rules/checks.h"
#include "frontend/rules/facts.h"
#include "frontend/rules/warn.h"
#include "frontend/syntax/reading.h"
#include "notation/records.h"

#include <string>

namespace orvex::frontend {

namespace {

using notation::Opens;

constexpr unsigned any_entry = notation::production_entry | notation::demand_entry;

class Reader {
  public:
    Reader(const Source& source, const Model& model)
        : source_(source), tree_(source.tree), node_(tree_.models[model.node]), model_(model) {}

    std::vector<LostRows> read() {
        read_before_blocks();
        for (const Block& block : model_.blocks) {
            if (is_opened_by(block, Opens::declaration)) read_declarations(block.record + 1);
        }
        return std::move(found_);
    }

  private:
    RecordKind kind_of(Index record) const { return tree_.records[record].kind; }

    std::string text(Index record) const {
        return capitals(text_of(source_.bytes, record_range(tree_, record)));
    }

    void read_before_blocks() {
        LostRows rows{no_index, node_.record + 1, any_entry, false};
        for (Index record = node_.record + 1; record < node_.end; ++record) {
            if (kind_of(record) == RecordKind::opening || kind_of(record) == RecordKind::end) break;
            if (kind_of(record) != RecordKind::entry || has_no_label(record)) continue;
            if (rows.record == no_index) rows.record = record;
            rows.end = record + 1;
        }
        if (rows.record == no_index) return;
        rows.begins = begins_of(text(rows.record));
        found_.push_back(rows);
    }

    // Such a line has an error.
    bool has_no_label(Index record) const {
        const Fault fault = tree_.fields[tree_.records[record].field].fault;
        return fault == Fault::getfld_label || fault == Fault::getfld_blank;
    }

    void read_declarations(Index record) {
        bool is_open = false;
        for (; record < node_.end && kind_of(record) != RecordKind::opening; ++record) {
            if (kind_of(record) != RecordKind::names) continue;
            const std::string line = text(record);
            if (const notation::Keyword* const keyword = indented_keyword(line)) {
                found_.push_back({record, record + 1, begins_of(*keyword), true, true});
                is_open = keyword->opens == Opens::production || keyword->opens == Opens::demand;
            } else if (is_open && goes_on(line)) {
                found_.back().end = record + 1;
            } else {
                is_open = begins_of(line) != notation::nothing;
                if (is_open) found_.push_back({record, record + 1, begins_of(line), true});
            }
        }
    }

    // In column 1 it would not be a declaration.
    static const notation::Keyword* indented_keyword(const std::string& line) {
        const std::size_t colon = line.find(':');
        if (!line.starts_with(notation::keyword_mark) || colon == std::string::npos) return nullptr;
        return notation::find_keyword(line.substr(1, colon - 1));
    }

    static unsigned begins_of(const notation::Keyword& keyword) {
        if (keyword.opens == Opens::production) return notation::production_entry;
        return keyword.opens == Opens::demand ? notation::demand_entry : notation::nothing;
    }

    // What a row begins according to its label, which comes first in its line.
    static unsigned begins_of(const std::string& line) {
        const std::size_t end = line.find_first_of(" :");
        if (end == std::string::npos || line[end] != ':') return notation::nothing;
        const notation::Label* const label = notation::find_label(line.substr(0, end));
        return label == nullptr ? notation::nothing : label->begins & any_entry;
    }

    // After a row, a line with a label is also a row.
    static bool goes_on(const std::string& line) {
        const std::size_t end = line.find_first_of(" :");
        return line.starts_with(notation::continuation_mark) ||
               (end != std::string::npos && line[end] == ':');
    }

    const Source& source_;
    const Tree& tree_;
    const ModelNode& node_;
    const Model& model_;
    std::vector<LostRows> found_;
};

// The label of a line with its colon.
Range label_of_line(const Subject& subject, Index record) {
    const Range line = record_range(subject.source.tree, record);
    const std::size_t colon = text_in(subject, line).find(':');
    return {line.begin, line.begin + static_cast<Offset>(colon) + 1};
}

}  // namespace

std::vector<LostRows> read_lost_rows(const Source& source, const Model& model) {
    return Reader(source, model).read();
}

void check_entry_lost(const Subject& subject, Findings& findings) {
    for (const LostRows& rows : subject.facts->lost_rows) {
        if (rows.is_found) continue;
        const Range label = label_of_line(subject, rows.record);
        warn(subject, findings, label, {{"label", as_read(subject, label)}},
             rows.is_declared ? "declarations" : "");
    }
}

}  // namespace orvex::frontend
