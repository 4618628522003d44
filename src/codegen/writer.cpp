#include "codegen/writer.h"

#include "preproc.h"
#include "unit.h"

namespace orvex {

namespace {

// Columns before the text of the current line, at most all of them.
int indentation() { return std::min(2 * (nif + nloop + nblkif), maxline); }

// "{   12}  ", made once for all the statements of an input line.
View line_mark() {
    static int number = 0;
    static std::array<char, 9> mark = {'{', ' ', ' ', ' ', ' ', ' ', '}', ' ', ' '};
    if (number != lineno) write_number(&mark[1], 5, lineno, Fill::blanks);
    number = lineno;
    return whole(mark);
}

void write_numbered(int indent, View text) {
    write_line(kgen, {line_mark(), repeated<' '>(indent), text});
}

int& counter_of(Level kind) {
    switch (kind) {
    case Level::condition: return nif;
    case Level::loop: return nloop;
    case Level::block_if: break;
    }
    return nblkif;
}

}  // namespace

void wrtzlm() {
    const int indent = indentation();
    const View text = trimmed(output.slice(1, maxline - indent));
    if (!text.empty()) write_numbered(indent, text);
    output.clear();
}

void closel(Level kind) {
    int& counter = counter_of(kind);
    if (counter < 1) return;
    --counter;
    const int indent = indentation();
    write_numbered(indent, View(");").substr(0, static_cast<std::size_t>(maxline - indent)));
}

void ifblck(View cond) {
    cond = trimmed(cond);
    if (cond.empty()) return;
    output = joined<maxline>({"IF(ABS(", cond, ") GT ORVEPS, "});
    wrtzlm();
    ++nif;
}

void endblk() {
    while (nif > 0) closel(Level::condition);
    while (nloop > 0) closel(Level::loop);
    while (nblkif > 0) closel(Level::block_if);
    nset = 0;
    mset = 0;
    mblkif = 0;
    mloop = 0;
    nblkif = 0;
    write_line(kgen, {});
}

void putrec() {
    endblk();
    write_line(kgen, {line_mark(), "PUT /,'", record, "'"});
}

}  // namespace orvex
