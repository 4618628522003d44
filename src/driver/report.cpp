#include "driver/report.h"

#include "driver/complete_header.h"
#include "driver/files.h"
#include "preproc.h"
#include "symbols/listing.h"
#include "unit.h"

namespace orvex {

namespace {

void write_error_file(View message) {
    if (errfil.is_blank()) return;
    ffopen(kerr, errfil, Status::replace);
    depend_on(kerr, {kctl, kinp});  // a failed read causes faults that the model does not have
    write_line(kerr, {});
    write_line(kerr, {" Error preprocessing: ", model});
    for (const View line :
         {View(), message, View(), View(" Last input record:"), View(), lstrec.view(), View()}) {
        write_line(kerr, {line});
    }
    write_line(kerr, {" See file ", model, ".HDR for details."});
}

void write_error_block(View message) {
    for (const View line : {"$ERROR  ERROR ENCOUNTERED IN PREPROCESSOR ",
                            "$LOG  ERROR DETECTED BY ORVEX PREPROCESSOR ", "", "$ONTEXT", "", "",
                            "ORVEX PREPROCESSOR - ERROR", ""}) {
        write_line(khdr, {line});
    }
    write_line(khdr, {" Error preprocessing model:", model});
    for (const View line :
         {View(), message, View(), View(" Last input record:"), View(), lstrec.view(), View(),
          View("$OFFTEXT"), View("$ABORT Compilation aborted.")}) {
        write_line(khdr, {line});
    }
}

}  // namespace

void report(const ErrorStop& stop) {
    symlst();
    trnscb();
    write_error_file(stop.message);
    write_error_block(stop.message);
}

void report(const OverflowStop& stop) {
    write_error_file(stop.message);
    restart_output(khdr);
    write_error_block(stop.message);
}

}  // namespace orvex
