#include "codegen/reports.h"

#include "codegen/declarations.h"
#include "codegen/loops.h"
#include "codegen/writer.h"
#include "input/fields.h"
#include "input/records.h"
#include "input/values.h"
#include "notation/labels.h"
#include "notation/records.h"
#include "notation/statements.h"
#include "preproc.h"
#include "stop.h"
#include "unit.h"

namespace orvex {

namespace {

void write_statement(View text) {
    output = text;
    wrtzlm();
}

// The report variable: declared in the header file, and added to the artificial equation as a term
// that counts while reports are written. No set is active yet, since every record is its own block.
void report_variable() {
    parse();
    if (label != notation::report_label) pperror(" *** REPBLK: first report field must be V");
    sloop();
    write_line(khdr, {field});
    if (condtn.is_blank()) {
        condtn = "(ORVREPORT)";
    } else {
        const Line own = condtn;
        notation::make_report_condition(condtn, own);
    }
    dumeqn();
    condtn.clear();
    chrfld(label, Put::new_line);
}

void check_second_label() {
    const notation::Label* const row = notation::find_label(label);
    if (row != nullptr && row->reported) return;
    pperror(
        joined<maxline>({"*** REPBLK: 2nd report field must be I:, O:, D: or W:. Find: ", label}));
}

void check_third_label() {
    const notation::Label* const row = notation::find_label(label);
    if (row != nullptr && row->owns) return;
    const auto padded = label.padded();
    pperror(joined<maxline>(
        {" *** REPBLK: 3rd report field ", whole(padded), " is not PROD or DEMAND."}));
}

// Any later field, on the same line of the report.
void report_field(void (*check_label)()) {
    if (record.is_blank()) return;
    parse();
    if (!condtn.is_blank()) pperror(" *** REPBLK: conditionals not permitted in report fields.");
    chkset();
    check_label();
    write_statement("PUT '        ';");
    chrfld(label, Put::same_line);
}

void report_record() {
    report_variable();
    if (record.is_blank()) pperror(" *** REPBLK: syntax error in report record.");
    report_field(check_second_label);
    report_field(check_third_label);
    if (!record.is_blank()) pperror(" *** REPBLK: extra fields in report record.");
}

}  // namespace

int repblk() {
    endblk();
    write_statement("IF (ORVREPORT,");
    write_statement("PUT / '$REPORT:'/;");
    for (;;) {
        const int end = getrec();
        if (end != 0 || notation::record_start(record) == notation::RecordStart::keyword) {
            write_statement(");");
            return end;
        }
        if (notation::record_start(record) == notation::RecordStart::continuation)
            pperror(" *** REPBLK: continuation records not permitted in $REPORT:");
        report_record();
        endblk();
    }
}

}  // namespace orvex
