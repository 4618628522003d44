#include "driver/pass.h"

#include "codegen/constraints.h"
#include "codegen/declarations.h"
#include "codegen/production.h"
#include "codegen/reports.h"
#include "codegen/writer.h"
#include "driver/complete_header.h"
#include "driver/start.h"
#include "input/records.h"
#include "notation/keywords.h"
#include "notation/records.h"
#include "preproc.h"
#include "stop.h"
#include "symbols/listing.h"
#include "text/numbers.h"
#include "unit.h"

namespace orvex {

namespace {

// What the pass does next. Block writers read ahead, so the next record may already be there.
enum class Next { read, dispatch, end_of_model };

Next after_block(int end_of_input) {
    return end_of_input == 1 ? Next::end_of_model : Next::dispatch;
}

void write_empty_put() {
    output = "PUT /;";
    wrtzlm();
}

// Cuts the keyword at the colon that must end it.
void cut_keyword_at_colon() {
    const int colon = keywrd.find(':');
    if (colon == 0) {
        pperror(joined<maxline>(
            {R"( *** ORVPP: invalid record - no ":" following keyword: )", keywrd}));
    }
    keywrd.blank_from(colon);
}

Next dispatch_declaration() {
    if (startf) pperror(" *** MAIN: Function definitions must follow declarations");
    write_empty_put();
    return after_block(decblk());
}

Next dispatch_report() {
    funrec = false;
    startf = true;
    write_empty_put();
    return after_block(repblk());
}

Next dispatch_constraint() {
    funrec = false;
    return after_block(conblk());
}

Next dispatch_function() {
    funrec = true;
    newblk();
    return Next::read;
}

Next dispatch_option() {
    putrec();
    return Next::read;
}

Next dispatch_keyword() {
    keywrd = record.from(2);
    if (notation::ends_model(keywrd)) return Next::end_of_model;
    cut_keyword_at_colon();
    const notation::Keyword* const row = notation::find_keyword(keywrd);
    if (row == nullptr) pperror(joined<maxline>({" *** Unrecognized keyword: ", keywrd}));
    switch (row->opens) {
    case notation::Opens::declaration: return dispatch_declaration();
    case notation::Opens::production:
    case notation::Opens::demand: return dispatch_function();
    case notation::Opens::constraint: return dispatch_constraint();
    case notation::Opens::report: return dispatch_report();
    case notation::Opens::option:
    case notation::Opens::end: break;  // an option: ends_model() has taken the end
    }
    return dispatch_option();
}

Next dispatch_entry() {
    funrec = false;
    switch (newrec()) {
    case EntryEnd::read_ahead: return Next::dispatch;
    case EntryEnd::input_end: return Next::end_of_model;
    case EntryEnd::done: break;
    }
    return Next::read;
}

Next dispatch_record() {
    switch (notation::record_start(record)) {
    case notation::RecordStart::keyword: return dispatch_keyword();
    case notation::RecordStart::other: return dispatch_entry();
    case notation::RecordStart::continuation: break;
    }
    oldrec();
    return Next::read;
}

void translate_records() {
    Next next = Next::read;
    while (next != Next::end_of_model) {
        if (next == Next::read && getrec() != 0) return;
        next = dispatch_record();
    }
}

// Makes the generated program solve the model, and refuse to run with another time stamp.
void write_trailer() {
    for (const View line :
         {"OPTION LIMROW=0;", "OPTION LIMCOL=0;", "PUT / '$PEPS:1.E-6'/;", "PUT / '$SOLVE'/;"}) {
        write_line(kgen, {line});
    }
    write_line(kgen, {"PUTCLOSE ", unit, ";"});
    write_line(kgen, {model, ".INTEGER1 = ", model, ".INTEGER1 + 1;"});
    if (time.is_blank()) return;
    write_line(kgen, {"$IF %", model, "%==\"", time, "\" $EXIT"});
    write_line(kgen, {"$error model.gen file is inconsistent"});
    write_line(kgen, {"$abort preprocessor must be reinvoked"});
}

void write_header_end() {
    write_line(khdr, {"$setglobal  n_models", right_aligned<4>(nmodel)});
    write_line(khdr, {"$setglobal  n_constr", right_aligned<4>(nconst)});
    write_line(khdr, {model, ".INTEGER1=1;"});
}

void finish_model() {
    symlst();
    endblk();
    write_trailer();
    close_unit(kgen);
    trnscb();
    write_header_end();
    close_unit(khdr);
}

}  // namespace

void translate_models() {
    while (start() == 0) {
        translate_records();
        finish_model();
        if (errfil.is_blank()) return;
        model.clear();
    }
}

}  // namespace orvex
