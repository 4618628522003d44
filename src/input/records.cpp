#include "input/records.h"

#include "input/textops.h"
#include "preproc.h"
#include "unit.h"

namespace orvex {

namespace {

bool next_line() {
    View line;
    if (!read_line(kinp, line)) return false;
    record = line;
    strip(record);
    lstrec = record;
    ++lineno;
    return true;
}

// The echo shows the line before TABs and letters are changed.
void echo_line() {
    std::array<char, 7> mark = {' ', ' ', ' ', ' ', ' ', ' ', ' '};  // the number, two blanks
    write_number<5>(mark.data(), lineno, Fill::blanks);
    write_line(klst, {whole(mark), record});
}

void split_comment() {
    descrp.clear();
    const int mark = record.find('!');
    if (mark == 0) return;
    descrp = record.from(mark + 1);
    record.blank_from(mark);
}

}  // namespace

int getrec() {
    do {
        if (!next_line()) return 1;
        echo_line();
        if (record[1] != '*') notab(record);
    } while (record[1] == '*' || record.is_blank());
    split_comment();
    upper(record);
    return 0;
}

}  // namespace orvex
