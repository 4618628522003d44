#include "input/records.h"

#include "input/textops.h"
#include "notation/records.h"
#include "preproc.h"
#include "text/numbers.h"
#include "unit.h"

#include <array>

namespace orvex {

namespace {

// The number of the last line read, and two blanks. Needs no reset: each line read overwrites it.
std::array<char, 7> line_mark = {' ', ' ', ' ', ' ', ' ', ' ', ' '};

bool next_line() {
    View line;
    if (!read_line(kinp, line)) return false;
    ++lineno;
    // Done here, not when echoing: copying bytes just written one by one is slow.
    write_number<5>(line_mark.data(), lineno, Fill::blanks);
    lstrec = line;
    strip(lstrec);
    return true;
}

void echo_line() { write_line(klst, {whole(line_mark), lstrec}); }

// The comment keeps its lower-case letters.
void split_comment() {
    descrp.clear();
    const int mark = record.find(notation::description_mark);
    if (mark == 0) return;
    descrp = lstrec.from(mark + 1);
    notab(descrp);
    record.blank_from(mark);
}

}  // namespace

int getrec() {
    while (next_line()) {
        echo_line();
        if (lstrec[1] == notation::comment_mark) continue;
        record = lstrec;
        uppernotab(record);
        if (record.is_blank()) continue;
        split_comment();
        return 0;
    }
    return 1;
}

}  // namespace orvex
