#include "frontend/findings/faults.h"

#include <cstddef>

namespace orvex::frontend {

namespace {

// In the order of the faults.
constexpr std::string_view codes[] = {
    "",
    "keyword-colon",
    "keyword-order",
    "keyword-unknown",
    "getfld-blank",
    "getfld-label",
    "freefd-end",
    "extarg-left",
    "extarg-right",
    "extarg-many",
    "extarg-close",
    "extarg-invalid",
    "rdarg-parentheses",
    "rdarg-many",
    "rdarg-close",
    "rdarg-seven",
    "rdarg-invalid",
    "rdcond-close",
    "chkcnd-parentheses",
    "chrfld-long",
    "numfld-long",
    "addsym-type",
    "addsym-dimension",
    "addsym-undeclared",
    "addsym-length",
    "addsym-full",
    "chksym-unknown",
    "chksym-type",
    "sloop-length",
    "sloop-full",
    "leadlg-both",
    "leadlg-inactive",
    "chkset-inactive",
    "conblk-colon",
    "repblk-continuation",
    "repblk-first",
    "repblk-single",
    "repblk-condition",
    "repblk-second",
    "repblk-third",
    "repblk-extra",
};

constexpr auto last_fault = notation::Fault::repblk_extra;
static_assert(sizeof codes / sizeof *codes == static_cast<std::size_t>(last_fault) + 1);

}  // namespace

std::string_view code_of(notation::Fault fault) { return codes[static_cast<std::size_t>(fault)]; }

}  // namespace orvex::frontend
