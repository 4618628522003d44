#include "frontend/rules/checks.h"
#include "frontend/rules/warn.h"
#include "notation/limits.h"

#include <string>
#include <string_view>
#include <unordered_set>

namespace orvex::frontend {

namespace {

std::string_view variant_of(CutStatement::Part part) {
    switch (part) {
    case CutStatement::Part::condition: return "condition";
    case CutStatement::Part::sets: return "sets";
    case CutStatement::Part::levels: return "levels";
    case CutStatement::Part::value: break;
    }
    return "";
}

// A field is named by its label; the owner of a block and declared names by their name.
std::string name_of(const Subject& subject, const Field& field) {
    return field.label.empty() ? as_read(subject, field.reference.name)
                               : label_text(subject, field);
}

}  // namespace

// The host cannot read a statement without its end. An error on the same line may have the same
// cause: a long name.
void check_statement_cut(const Subject& subject, Findings& findings) {
    if (subject.model->lost) return;
    std::unordered_set<Index> faulty;
    for (const Error& error : subject.model->errors) faulty.insert(error.record);
    for (const CutStatement& cut : subject.model->cut) {
        if (faulty.contains(cut.field.record)) continue;
        warn(subject, findings, cut.place,
             {{"field", name_of(subject, cut.field)},
              {"count", std::to_string(cut.columns)},
              {"levels", std::to_string(cut.levels)},
              {"limit", std::to_string(notation::record_columns)}},
             variant_of(cut.part));
    }
}

}  // namespace orvex::frontend
