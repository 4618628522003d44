#include "driver/run.h"

#include "driver/files.h"
#include "driver/pass.h"
#include "driver/prepare.h"
#include "driver/report.h"
#include "preproc.h"
#include "stop.h"
#include "unit.h"

namespace orvex {

namespace {

// Translates, and reports the fault that stopped the translation.
void translate(const Text<255>& argument) {
    try {
        prepare_run(argument);
        translate_models();
    } catch (const ErrorStop& stop) {
        report(stop);
    } catch (const OverflowStop& stop) {
        report(stop);
    }
}

}  // namespace

int run(View argument) {
    int status = 0;
    reset_run();
    try {
        translate(argument);
    } catch (const RunEnd& end) {
        status = end.status;
    } catch (const ScratchFailure& failure) {
        report_scratch_failure(failure.unit);
    }
    close_all_units();
    return status;
}

}  // namespace orvex
