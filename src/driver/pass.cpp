#include "driver/pass.h"

#include "codegen/constraints.h"
#include "codegen/declarations.h"
#include "codegen/production.h"
#include "codegen/reports.h"
#include "codegen/writer.h"
#include "driver/files.h"
#include "driver/start.h"
#include "input/records.h"
#include "preproc.h"
#include "stop.h"
#include "symbols/listing.h"
#include "unit.h"

#include <algorithm>
#include <iterator>

namespace orvex {

namespace {

// What the pass does next: block writers read ahead, so the record to go on with may be there
// already.
enum class Next { read, dispatch, end_of_model };

constexpr View options[] = {"PEPS", "EULCHK", "WALCHK", "DATECH", "FUNLOG", "DIAGNL", "ECHOP"};

bool is_option() {
    return std::any_of(std::begin(options), std::end(options),
                       [](View option) { return keywrd == option; });
}

Next after_block(int end_of_input) {
    return end_of_input == 1 ? Next::end_of_model : Next::dispatch;
}

void write_empty_put() {
    output = "PUT /;";
    wrtzlm();
}

// Leaves the keyword without the colon that must end it.
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

Next dispatch_keyword() {
    keywrd = record.slice(2, 13);
    if (keywrd.slice(1, 7) == "OFFTEXT") return Next::end_of_model;
    cut_keyword_at_colon();
    if (is_declaration(keywrd)) return dispatch_declaration();
    if (keywrd == "PROD" || keywrd == "DEMAND") {
        funrec = true;
        newblk();
        return Next::read;
    }
    if (keywrd == "CONSTRAINT") {
        funrec = false;
        return after_block(conblk());
    }
    if (keywrd == "REPORT") return dispatch_report();
    if (!is_option()) pperror(joined<maxline>({" *** Unrecognized keyword: ", keywrd}));
    putrec();
    return Next::read;
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
    if (record[1] == '$') return dispatch_keyword();
    if (record[1] != '+') return dispatch_entry();
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

// Makes the generated program solve the model, and refuse to run for another time stamp.
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
