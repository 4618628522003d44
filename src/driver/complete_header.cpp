#include "driver/complete_header.h"

#include "preproc.h"
#include "unit.h"

namespace orvex {

void trnscb() {
    filcpy(kdum, khdr);
    write_line(khdr, {"   =E= 0;"});
    filcpy(klvl, khdr);
    if (nconst > 0) {
        write_line(khdr, {});
        write_line(khdr, {"*       Constraints:"});
        filcpy(kcon, khdr);
    }
    write_line(khdr, {});
    write_line(khdr, {"*       The model:"});
    filcpy(kmdl, khdr);
    for (const View line : {"/;", "", "", "", "$ONLISTING", "$ONTEXT", ""})
        write_line(khdr, {line});
    filcpy(klst, khdr);
    for (const View line : {"", "$OFFTEXT", ""}) write_line(khdr, {line});
}

}  // namespace orvex
