#include "frontend/rules/checks.h"
#include "frontend/rules/facts.h"
#include "frontend/rules/rows.h"
#include "frontend/rules/warn.h"

#include <string>
#include <unordered_set>

namespace orvex::frontend {

namespace {

using Names = std::unordered_set<std::string>;

// VA is opened by "VA", and by "VA(S)", which says what it is a part of.
Names opened_nests(const Subject& subject, const Row& opening) {
    Names names;
    for (const Field* const field : fields_of(subject.facts->rows, opening)) {
        const std::string label = capitals(text_in(subject, field->label));
        names.insert(label.substr(0, label.find('(')));
    }
    return names;
}

bool names_nest(const Subject& subject, const Field& field) {
    const bool has_meaning = field.row != nullptr && field.row->full;
    return !has_meaning && field.text.empty() && !field.faulty &&
           !is_made_by_host(subject.source, field) && !has_joined_plus(subject.source, field) &&
           !has_lookalike(subject.source, field);
}

}  // namespace

// An entry gets into a nest by its label alone; the opening record is to say how the nest is put
// together.
void check_nest_undeclared(const Subject& subject, Findings& findings) {
    const Rows& rows = subject.facts->rows;
    Names opened;
    bool unclear = false;
    for (const Row& row : rows.rows) {
        if (row.entry == nullptr) {
            opened = opened_nests(subject, row);
            unclear = row.unclear;
            continue;
        }
        for (const Field* const field : own_fields_of(rows, row)) {
            if (unclear || !names_nest(subject, *field)) continue;
            const std::string label = capitals(text_in(subject, field->label));
            if (opened.contains(label)) continue;
            warn(subject, findings, label_place(subject, *field),
                 {{"label", as_read(subject, field->label)}});
        }
    }
}

}  // namespace orvex::frontend
