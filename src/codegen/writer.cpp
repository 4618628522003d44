#include "codegen/writer.h"

#include "notation/statements.h"
#include "preproc.h"
#include "text/numbers.h"
#include "unit.h"

#include <array>
#include <cstddef>

namespace orvex {

namespace {

// Columns before the text of the current line, at most all of them.
int indentation() { return notation::indent_of(nif + nloop + nblkif); }

// "{   12}  " and the indentation, made once for all statements of an input line. Both statics
// survive a reset: `start` always shows `number`, and is rewritten when the number changes.
View line_start(int indent) {
    constexpr int mark_length = 9;
    static int number = 0;
    static std::array<char, mark_length + maxline> start = [] {
        std::array<char, mark_length + maxline> blank{};
        blank.fill(blank_char);
        blank[0] = '{';
        blank[6] = '}';
        return blank;
    }();
    if (number != lineno) write_number<5>(&start[1], lineno, Fill::blanks);
    number = lineno;
    const int length = mark_length + indent;
    return whole(start).substr(0, static_cast<std::size_t>(length));
}

void write_numbered(int indent, View text) { write_line(kgen, {line_start(indent), text}); }

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
    notation::make_guard(output, cond);
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
    write_line(kgen, {line_start(0), "PUT /,'", record, "'"});
}

}  // namespace orvex
