#include "driver/prepare.h"

#include "companion/palmf9def.h"
#include "driver/control.h"
#include "driver/files.h"
#include "input/textops.h"
#include "preproc.h"
#include "stop.h"
#include "unit.h"

namespace orvex {

namespace {

using AuditLine = Text<75>;

// Answers the argument "AUDIT", in upper or lower case, and ends the run.
void auditrun(const AuditLine& line, Text<255> argument) {
    upper(argument);
    if (argument != "AUDIT") return;
    write_standard_output({whole(line.padded())});
    end_run();
}

// Registers with the companion library. The object is freed right afterwards, except with the
// argument AUDIT: then the run ends with the audit line, and the object is released when the
// process exits.
void register_system(const Text<255>& argument) {
    Handle handle = 0;
    Text<256> message;
    if (palcreate(handle, message) == 0) {
        write_standard_output({" *** Could not create PAL object: ", whole(message.padded())});
        end_run();
    }
    palsetsystemname(handle, "ORVEX-Prep");
    Text<255> line;
    palgetauditline(line, handle);
    auditrun(line.view(), argument);
    palfree(handle);
}

void open_control_file(const Text<255>& path) {
    if (open_input(kctl, path)) return;
    write_standard_output({" *** Internal ORVEX preprocessor error "});
    write_standard_output({" *** Cannot access scratch file: ", path});
    write_standard_output({" *** possible cause: internal path names too long"});
    end_run();
}

[[noreturn]] void report_missing_input(const Line& with_ending) {
    if (errfil.is_blank()) {
        ffopen(khdr, hdrfil, Status::replace);
        write_line(khdr, {"$ERROR Preprocessor failure."});
        write_line(khdr, {"$ABORT Check your ZELM installation"});
    } else {
        ffopen(kerr, errfil, Status::replace);
        write_line(kerr, {" *** Cannot find file: ", inpfil});
        write_line(kerr, {" *** Nor can I find  : ", with_ending});
    }
    end_run();
}

// The input file may be named without its extension.
void find_input() {
    if (file_exists(inpfil)) return;
    const auto with_ending = joined<maxline>({inpfil, ".zlm"});
    if (!file_exists(with_ending)) report_missing_input(with_ending);
    inpfil = with_ending;
}

// Searches for the file only if the name as given cannot be opened.
void open_input_file() {
    if (open_input(kinp, inpfil)) return;
    find_input();
    ffopen(kinp, inpfil, Status::old);
}

}  // namespace

void prepare_run(const Text<255>& argument) {
    register_system(argument);
    open_control_file(argument);
    read_control_file();
    open_input_file();
}

}  // namespace orvex
