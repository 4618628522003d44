#include "codegen/constraints.h"

#include "codegen/writer.h"
#include "input/records.h"
#include "input/textops.h"
#include "preproc.h"
#include "stop.h"
#include "symbols/table.h"
#include "unit.h"

namespace orvex {

namespace {

// Cuts the text from the first such character to the end off `name`, and returns it.
Line cut_from(Line& name, char mark) {
    const int position = name.find(mark);
    if (position == 0) return {};
    const Line tail = name.from(position);
    name.blank_from(position);
    return tail;
}

void write_equation_head(View number, const Line& variable, View arguments, View condition) {
    const auto equation = joined<maxline>({number, arguments});
    write_line(kcon, {});
    write_line(kcon, {"EQUATION ", equation, " Complementary equation(s) for ", variable, ";"});
    write_line(kcon, {});
    const auto definition = joined<maxline>({equation, condition});
    write_line(kcon, {definition, ".."});
}

// Without a ";" of its own the equation is closed where the block ends.
int copy_body() {
    for (;;) {
        if (getrec() != 0) {
            write_line(kcon, {";"});
            return 1;
        }
        if (record.contains(';')) {
            write_line(kcon, {record});
            return getrec();
        }
        if (record[1] == '$') {
            write_line(kcon, {";"});
            return 0;
        }
        write_line(kcon, {record});
    }
}

}  // namespace

int conblk() {
    endblk();
    ++nconst;
    const auto number = joined<6>({"EQ_", zero_filled<3>(nconst)});
    const int colon = record.find(':');
    if (colon == 0) pperror(" *** CONBLK: SYNTAX ERROR IN $CONSTRAINT.");

    Line variable = record.from(colon + 1);
    if (const int start = firstnonblank(variable); start != 0) variable = variable.from(start);
    const Line condition = cut_from(variable, '$');
    const Line arguments = cut_from(variable, '(');
    chksym(variable, 'V');

    write_line(kmdl, {"     ", number, ".", variable});
    write_equation_head(number, variable, arguments, condition);
    return copy_body();
}

}  // namespace orvex
