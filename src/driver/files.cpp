#include "driver/files.h"

#include "preproc.h"
#include "stop.h"
#include "text/numbers.h"
#include "unit.h"

namespace orvex {

void ffopen(int unit_number, const Text<255>& file, Status status) {
    const auto name = file.padded();
    if (status == Status::replace) {
        if (open_output(unit_number, file)) return;
        write_standard_output({"FFOPEN: error opening file ", whole(name)});
    } else {
        if (open_input(unit_number, file)) return;
        write_standard_output({"FFOPEN: error opening file", whole(name), " with status OLD"});
    }
    end_run();
}

void report_scratch_failure(int unit_number) {
    write_standard_output(
        {"FFOPEN: error opening unit", right_aligned<4>(unit_number), " with status SCRATCH"});
    discard_output(kgen);
    discard_output(khdr);
}

}  // namespace orvex
