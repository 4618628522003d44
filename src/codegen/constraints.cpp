#include "codegen/constraints.h"

#include "codegen/writer.h"
#include "input/records.h"
#include "notation/constraints.h"
#include "notation/records.h"
#include "notation/statements.h"
#include "preproc.h"
#include "stop.h"
#include "symbols/table.h"
#include "text/numbers.h"
#include "unit.h"

namespace orvex {

namespace {

void write_equation_head(View number, const Line& variable, View arguments, View condition) {
    const auto equation = joined<maxline>({number, arguments});
    write_line(kcon, {});
    Line declaration;
    notation::make_equation(declaration, equation, variable);
    write_line(kcon, {declaration});
    write_line(kcon, {});
    const auto definition = joined<maxline>({equation, condition});
    write_line(kcon, {definition, ".."});
}

// Copies the body. An equation that has no ";" is closed at the end of the block.
int copy_body() {
    for (;;) {
        if (getrec() != 0) {
            write_line(kcon, {";"});
            return 1;
        }
        const notation::BodyRecord kind = notation::body_record(record);
        if (kind == notation::BodyRecord::outside) {
            write_line(kcon, {";"});
            return 0;
        }
        write_line(kcon, {record});
        if (kind == notation::BodyRecord::last) return getrec();
    }
}

}  // namespace

int conblk() {
    endblk();
    ++nconst;
    const auto number = joined<6>({"EQ_", zero_filled<3>(nconst)});
    const int colon = record.find(':');
    if (colon == 0) pperror(" *** CONBLK: SYNTAX ERROR IN $CONSTRAINT.");
    const notation::ConstraintCut cut =
        notation::cut_constraint(record, static_cast<std::size_t>(colon));
    const Line variable = cut.variable.in(record);
    const Line arguments = cut.arguments.in(record);
    const Line condition = cut.condition.in(record);
    chksym(variable, 'V');
    write_line(kmdl, {"     ", number, ".", variable});
    write_equation_head(number, variable, arguments, condition);
    return copy_body();
}

}  // namespace orvex
