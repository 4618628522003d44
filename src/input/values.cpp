#include "input/values.h"

#include "codegen/writer.h"
#include "notation/labels.h"
#include "notation/statements.h"
#include "preproc.h"
#include "stop.h"
#include "symbols/table.h"

#include <cstddef>

namespace orvex {

void chrfld(View text, Put mode) {
    const View head = trimmed(text);
    notation::begin_name(output, condtn, mode, head, root);
    for (int i = 1; i <= narg; ++i) {
        if (!notation::append_argument(output, arg[static_cast<std::size_t>(i)]))
            pperror(" *** CHRFLD: statement exceeds 255 characters.");
    }
    notation::end_name(output, condtn);
    wrtzlm();
    const notation::TypeCode type = notation::type_of_name(head);
    if (type != notation::no_type) addsym(type);
}

void numfld() {
    if (!notation::make_value(output, condtn, label, field))
        pperror(" *** NUMFLD: statement exceeds 255 characters.");
    wrtzlm();
    if (!notation::is_numeric(field)) addsym('D');
}

}  // namespace orvex
