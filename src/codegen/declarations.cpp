#include "codegen/declarations.h"

#include "codegen/loops.h"
#include "codegen/writer.h"
#include "input/arguments.h"
#include "input/conditions.h"
#include "input/fields.h"
#include "input/records.h"
#include "input/values.h"
#include "notation/arguments.h"
#include "notation/keywords.h"
#include "notation/records.h"
#include "notation/statements.h"
#include "preproc.h"
#include "symbols/table.h"
#include "unit.h"

#include <algorithm>

namespace orvex {

namespace {

// The row that gives type and level, or null: a keyword such as AUXILIARIES opens a block without
// them.
const notation::Keyword* find_declaration(View keyword) {
    const notation::Keyword* const row = notation::find_keyword(keyword);
    return row != nullptr && notation::gives_type(*row, keyword) ? row : nullptr;
}

// The field's entry in the header file's variable list. The description belongs to the record's
// last name and ends before its first ";", which would end the list.
void write_name() {
    if (descrp.is_blank() || !record.is_blank()) {
        write_line(khdr, {field});
        return;
    }
    if (const int semicolon = descrp.find(';'); semicolon != 0) descrp.blank_from(semicolon);
    write_line(khdr, {field, "    ", descrp});
}

// The field's line in the header, and its default level if the keyword gives one.
void wrtlvl(const notation::Keyword* row) {
    write_name();
    if (row == nullptr || row->level.empty()) return;
    const int open = field.find('(');
    const int name_end = open == 0 ? maxline : open - 1;
    write_line(klvl,
               {field.slice(1, name_end), ".L", field.from(name_end + 1), " = ", row->level, ";"});
}

void close_levels() {
    while (nloop > 0) {
        closel(Level::loop);
        nset = 0;
    }
    while (nblkif > 0) closel(Level::block_if);
}

// One name with its set arguments and condition.
void declare_field(const notation::Keyword* row) {
    freefd();
    condtn.clear();
    if (const int mark = field.find('$'); mark != 0) chkcnd(mark);
    wrtlvl(row);
    root.clear();
    rdarg();
    nxarg = 0;
    sloop();
    dumeqn();
    condtn.clear();
    if (row != nullptr) addsym(row->type);
    chrfld("", Put::new_line);
    close_levels();
}

// The distinct sets among the field's arguments, as "(S,T,".
Line distinct_sets() {
    const auto first = arg.begin() + 1;
    Line list = "(";
    for (auto name = first; name != first + narg; ++name) {
        if (notation::is_element(*name) || std::find(first, name, *name) != name) continue;
        list.append(*name, ",");
    }
    return list;
}

}  // namespace

int decblk() {
    endblk();
    output = joined<maxline>({"PUT'$", keywrd, ":'/;"});
    wrtzlm();
    const notation::Keyword* const row = find_declaration(keywrd);
    for (;;) {
        if (getrec() != 0) return 1;
        if (notation::record_start(record) == notation::RecordStart::keyword) return 0;
        while (!record.is_blank()) declare_field(row);
    }
}

void dumeqn() {
    const Line list = distinct_sets();
    const View sets = list.slice(1, list.length() - 1);  // without the last comma
    if (length_of(sets) < 2) {
        write_line(kdum, {"+", field, condtn.is_blank() ? "" : "$", condtn});
        return;
    }
    Line sum;
    notation::make_sum(sum, sets, condtn);
    write_line(kdum, {sum, field, ")"});
}

}  // namespace orvex
