#include "input/fields.h"

#include "input/arguments.h"
#include "input/conditions.h"
#include "notation/fields.h"
#include "stop.h"
#include "symbols/table.h"

namespace orvex {

namespace {

[[noreturn]] void stop(notation::Fault fault) {
    if (fault == notation::Fault::getfld_blank) pperror(" *** GETFLD: Blank record.");
    pperror(" *** GETFLD: Unlabelled entry.");
}

}  // namespace

LabelledField leftmost_field(const Line& rec) {
    const View text = rec;
    const notation::FieldCut cut = notation::cut_field(text);
    if (cut.fault != notation::Fault::none) stop(cut.fault);
    return {trimmed(cut.label.in(text)), cut.value.in(text), static_cast<int>(cut.end)};
}

void getfld(Line& rec, Text<20>& lab, Line& val) {
    const LabelledField found = leftmost_field(rec);
    lab = found.label;
    val = found.value;
    rec.blank(1, found.end);
}

void parse() {
    getfld(record, label, field);
    rdcond();
    extarg();
    rdarg();
    chkref();
}

void freefd() {
    const View text = record;
    const notation::EntryCut cut = notation::cut_entry(text);
    if (cut.fault != notation::Fault::none) pperror(" *** FREEFD: unexpected EOL.");
    field = cut.entry.in(text);
    record.blank(1, static_cast<int>(cut.entry.end) + 1);
}

}  // namespace orvex
