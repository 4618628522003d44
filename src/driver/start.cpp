#include "driver/start.h"

#include "driver/files.h"
#include "input/textops.h"
#include "notation/records.h"
#include "preproc.h"
#include "text/numbers.h"
#include "unit.h"

#include <initializer_list>

namespace orvex {

namespace {

// These lines are not records: they are neither counted nor echoed.
bool next_model_name(Line& name) {
    View read;
    while (read_line(kinp, read)) {
        Line line = read;
        stripup(line);
        if (!line.view().starts_with(notation::model_keyword)) continue;
        name = line.from(length_of(notation::model_keyword) + 1);
        lftjst(name);
        return true;
    }
    return false;
}

bool find_model() {
    Line name;
    while (next_model_name(name)) {
        if (model.is_blank()) {
            model = name.view();
            return true;
        }
        if (model == name) return true;
    }
    return false;
}

void write_lines(int unit_number, std::initializer_list<View> lines) {
    for (const View line : lines) write_line(unit_number, {line});
}

void open_files() {
    ffopen(kgen, joined<maxline>({scrdir, model, ".GEN"}), Status::replace);
    ffopen(khdr, hdrfil.is_blank() ? joined<maxline>({model, ".HDR"}) : hdrfil, Status::replace);
    for (const int scratch : {klst, klvl, kdum, kmdl, kcon}) open_scratch(scratch);
    depend_on(kgen, {kctl, kinp});
    depend_on(khdr, {kgen, klst, klvl, kdum, kmdl, kcon});
}

// The put file of a later model has a number in its name, to differ from the first one's.
void name_put_file() {
    unit = nmodel == 1 ? View("  ORV") : View(joined<5>({"ORV", zero_filled<2>(nmodel)}));
}

void write_generator_head() {
    write_lines(kgen, {"$OFFLISTING", "", "* ORVEX MODEL GENERATOR FILE", "", "$OFFINLINE",
                       "$INLINECOM { }"});
    write_line(kgen, {"PUT ", unit, ",'$MODEL:", model, "'/;"});
    write_line(kgen, {});
}

void write_header_head() {
    write_lines(khdr, {"$OFFLISTING", "", "*  ORVEX MODEL DECLARATION FILE",
                       "SCALAR ORVEPS; ORVEPS=1.E-8;", "SCALAR ORVREPORT; ORVREPORT=1;"});
    write_line(khdr, {"FILE ", unit, " /\"", scrfil, "\"/;"});
    for (const View setting :
         {".ND = 8;", ".NW =15;", ".NR = 2;", ".LW = 0;", ".CASE = 1;", ".PDIR = 1;"}) {
        write_line(khdr, {unit, setting});
    }
    write_lines(khdr, {"", "", "POSITIVE VARIABLES"});
}

// The lines that begin what the blocks extend and the copy step closes.
void write_scratch_heads() {
    const auto number = zero_filled<2>(nmodel);
    write_line(klst, {versn});
    write_lines(klvl, {"*       Default initial values:", ""});
    write_line(kdum, {"EQUATION DUMMY", number, "  Artificial equation for model: ", model, ";"});
    write_line(kdum, {});
    write_line(kdum, {"DUMMY", number, ".."});
    write_line(kmdl, {"MODEL ", model, "/DUMMY", number});
}

}  // namespace

int start() {
    if (!find_model()) return 1;
    ++nmodel;
    open_files();
    reset_model();
    name_put_file();
    write_generator_head();
    write_header_head();
    write_scratch_heads();
    return 0;
}

}  // namespace orvex
