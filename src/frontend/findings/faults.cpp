#include "frontend/findings/faults.h"

#include <cstddef>

namespace orvex::frontend {

namespace {

// In the order of the faults.
constexpr std::string_view codes[] = {
    "",
    "keyword-colon-missing",
    "keyword-after-report",
    "keyword-unknown",
    "line-without-fields",
    "label-missing",
    "declaration-unclosed",
    "index-parenthesis-missing",
    "index-list-unclosed",
    "index-too-many",
    "index-after-list",
    "index-quotes-invalid",
    "argument-list-unclosed",
    "argument-too-many",
    "argument-after-list",
    "argument-eighth",
    "argument-quotes-invalid",
    "expression-unclosed",
    "condition-unbalanced",
    "name-field-too-long",
    "value-field-too-long",
    "kind-mismatch",
    "dimension-mismatch",
    "report-name-undeclared",
    "name-too-long",
    "too-many-names",
    "constraint-name-unknown",
    "constraint-kind-mismatch",
    "set-name-too-long",
    "too-many-sets",
    "lead-and-lag",
    "lead-set-not-looped",
    "set-not-looped",
    "constraint-colon-missing",
    "report-continued",
    "report-name-missing",
    "report-item-missing",
    "report-condition",
    "report-item-invalid",
    "report-block-invalid",
    "report-field-extra",
};

constexpr auto last_fault = notation::Fault::repblk_extra;
static_assert(sizeof codes / sizeof *codes == static_cast<std::size_t>(last_fault) + 1);

}  // namespace

std::string_view code_of(notation::Fault fault) { return codes[static_cast<std::size_t>(fault)]; }

}  // namespace orvex::frontend
