#include "input/records.h"

#include "input/textops.h"
#include "preproc.h"
#include "unit.h"

namespace orvex {

namespace {

bool next_line() {
    View line;
    if (!read_line(kinp, line)) return false;
    lstrec = line;
    strip(lstrec);
    ++lineno;
    return true;
}

void echo_line() {
    std::array<char, 7> mark = {' ', ' ', ' ', ' ', ' ', ' ', ' '};  // the number, two blanks
    write_number<5>(mark.data(), lineno, Fill::blanks);
    write_line(klst, {whole(mark), lstrec});
}

// The comment keeps its small letters.
void split_comment() {
    descrp.clear();
    const int mark = record.find('!');
    if (mark == 0) return;
    descrp = lstrec.from(mark + 1);
    notab(descrp);
    record.blank_from(mark);
}

}  // namespace

int getrec() {
    do {
        if (!next_line()) return 1;
        echo_line();
        if (lstrec[1] == '*') continue;
        record = lstrec;
        uppernotab(record);
    } while (lstrec[1] == '*' || record.is_blank());
    split_comment();
    return 0;
}

}  // namespace orvex
