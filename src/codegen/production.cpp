#include "codegen/production.h"

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

namespace orvex {

namespace {

// Closes the levels that the previous entry opened, down to the block's own levels.
void return_to_block_level() {
    for (;;) {
        while (nif > 0) closel(Level::condition);
        while (nloop > mloop) closel(Level::loop);
        nset = mset;
        if (nblkif < mblkif) pperror(" *** ORVPP: logical error with NBLKIF");
        if (nblkif == mblkif) return;
        closel(Level::block_if);
    }
}

// Opens the guard of an entry whose second field, the next one in `record`, is a quantity.
void guard_by_quantity() {
    const LabelledField next = leftmost_field(record);
    if (next.label == notation::quantity_label) ifblck(next.value);
}

// Opens the entry's guard, if it has one. For an entry with one field the quantity may be in a
// continuation record, so the next record may be read.
EntryEnd guard_entry() {
    if (label == notation::guard_label) {
        ifblck(field);
    } else if (!record.is_blank()) {
        guard_by_quantity();
    } else if (getrec() != 0) {
        return EntryEnd::input_end;
    } else if (notation::record_start(record) != notation::RecordStart::continuation) {
        return EntryEnd::read_ahead;
    } else {
        guard_by_quantity();
    }
    return EntryEnd::done;
}

// A label such as R.TL ranges over a set. With arguments, the value opens its own loop, which stays
// open; without, only this field is looped. Returns whether to close that loop after the field.
bool open_label_loop() {
    const int mark = label.find(notation::element_label);
    if (mark == 0) return false;
    if (narg > 0) {
        sloop();
        return false;
    }
    if (field.is_blank()) return false;
    notation::make_label_loop(output, label.slice(1, mark - 1));
    wrtzlm();
    ++nloop;
    return true;
}

}  // namespace

void newblk() {
    endblk();
    parse();
    sloop();
    condtn.clear();
    output = "PUT /;";
    wrtzlm();
    mset = nset;
    mblkif = nblkif;
    mloop = nloop;
    const auto keyword = joined<maxline>({"$", keywrd});
    chrfld(keyword, Put::new_line);
    oldrec();
}

EntryEnd newrec() {
    return_to_block_level();
    parse();
    leadlg();
    sloop();
    const EntryEnd end = guard_entry();
    condtn.clear();
    if (label == notation::guard_label) {
        numfld();
    } else {
        chrfld(label, Put::new_line);
    }
    if (end == EntryEnd::done) oldrec();
    return end;
}

void oldrec() {
    while (!record.is_blank()) {
        parse();
        const bool loop_is_open = open_label_loop();
        chkset();
        if (!funrec && notation::names_later(label)) {
            chrfld(label, Put::continuation);
        } else {
            numfld();
        }
        if (loop_is_open) closel(Level::loop);
    }
}

}  // namespace orvex
