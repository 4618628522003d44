#include "text/characters.h"

#include "frontend/rules/checks.h"
#include "frontend/rules/facts.h"
#include "frontend/rules/rows.h"
#include "frontend/rules/warn.h"
#include "frontend/syntax/lookalikes.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orvex::frontend {

namespace {

// The values of a model in the order of the file: they have their own findings.
std::vector<Range> values_of(const Subject& subject) {
    const Rows& rows = subject.facts->rows;
    std::vector<Range> values;
    for (const Row& row : rows.rows) {
        for (const Field* const field : own_fields_of(rows, row)) {
            if (needs_value(row, *field) && !field->is_name) values.push_back(field->text);
        }
    }
    std::sort(values.begin(), values.end(), [](Range a, Range b) { return a.begin < b.begin; });
    return values;
}

bool is_in(const std::vector<Range>& ranges, Offset at) {
    const auto after =
        std::upper_bound(ranges.begin(), ranges.end(), at,
                         [](Offset offset, Range each) { return offset < each.begin; });
    return after != ranges.begin() && at < std::prev(after)->end;
}

class Checker {
  public:
    Checker(const Subject& subject, Findings& findings)
        : subject_(subject), tree_(subject.source.tree), findings_(findings) {}

    void check(Index record) {
        const RecordKind kind = tree_.records[record].kind;
        const bool is_read = kind != RecordKind::blank && kind != RecordKind::comment &&
                             kind != RecordKind::unknown && kind != RecordKind::end;
        if (!is_read || tree_.records[record].fault != Fault::none) return;
        const Range range = record_range(tree_, record);
        std::vector<Lookalike> found = lookalikes(text_in(subject_, range));
        if (found.empty()) return;
        std::erase_if(found, [&](const Lookalike& each) {
            return has_other_finding(range.begin + static_cast<Offset>(each.begin));
        });
        if (!found.empty()) warn_of(range.begin, found);
    }

  private:
    // Is it in a value, or in a field with an error?
    bool has_other_finding(Offset at) {
        if (!has_values_) values_ = values_of(subject_);
        has_values_ = true;
        const Index field = field_at(tree_, at);
        return is_in(values_, at) || (field != no_index && has_error(*subject_.facts, field));
    }

    void warn_of(Offset begin, const std::vector<Lookalike>& found) {
        const Lookalike& first = found.front();
        const Range place = {begin + static_cast<Offset>(first.begin),
                             begin + static_cast<Offset>(first.end)};
        Finding& finding =
            warn(subject_, findings_, place, {{"character", std::string(first.name)}},
                 first.meant == blank_char ? "blank" : "");
        Fix fix = {Confidence::certain, {}};
        for (const Lookalike& each : found) {
            if (!is_certain(begin + static_cast<Offset>(each.begin), each.meant))
                fix.confidence = Confidence::maybe;
            fix.edits.push_back({begin + each.begin, begin + each.end, std::string(1, each.meant)});
        }
        finding.fix = std::move(fix);
    }

    // Names have no "-", and blanks separate the names of a declaration, so there the meaning is
    // not certain.
    bool is_certain(Offset at, char meant) const {
        const auto record = static_cast<std::size_t>(line_of(tree_, at) - 1);
        if (meant == blank_char) return tree_.records[record].kind != RecordKind::names;
        const auto after = std::upper_bound(
            tree_.tokens.begin(), tree_.tokens.end(), at,
            [](Offset offset, const Token& token) { return offset < token.begin; });
        const TokenKind kind = std::prev(after)->kind;
        return kind != TokenKind::name && kind != TokenKind::label && kind != TokenKind::ignored;
    }

    const Subject& subject_;
    const Tree& tree_;
    Findings& findings_;
    std::vector<Range> values_;
    bool has_values_ = false;
};

}  // namespace

// One finding per line.
void check_character(const Subject& subject, Findings& findings) {
    if (subject.model->lost) return;
    const ModelNode& node = subject.source.tree.models[subject.model->node];
    Checker checker(subject, findings);
    for (Index record = node.record + 1; record < node.end; ++record) checker.check(record);
}

}  // namespace orvex::frontend
