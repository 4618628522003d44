// A model as the host prints it for the solver: runs its generator file with the data.
#pragma once

#include "frontend/expansion/data.h"
#include "frontend/expansion/data_files.h"
#include "frontend/expansion/model_data.h"
#include "frontend/expansion/program.h"
#include "frontend/findings/finding.h"
#include "frontend/model/model.h"
#include "frontend/syntax/source.h"

#include <cstdint>
#include <functional>
#include <string_view>
#include <vector>

namespace orvex::frontend {

// A model of a file, and the translator's output for it.
struct GeneratedModel {
    const Source& source;
    const Model& model;
    std::string_view generator;
    // The lines that the translator read before this model.
    int lines_before = 0;
};

// A model with its data, ready to be printed. It refers to the generator text and the data files.
struct Expansion {
    GeneratorProgram program;
    Data data;
    // How often each statement runs.
    std::vector<std::uint64_t> passes;
};

// Called between passes of a long run. An exception from it ends the run.
using Pause = std::function<void()>;

// Takes one line, without its line end, and the place in the generator text of whatever begins it.
// An exception from it ends the run.
using TakeLine = std::function<void(std::string_view line, Range place)>;

// Reads the generator text, finds its data in the files, and evaluates everything once without
// printing. Adds findings with places in the model and in the data files. False if the model cannot
// be printed.
bool prepare_expansion(const GeneratedModel& generated, DataFiles& files, const Pause& pause,
                       Expansion& expansion, std::vector<Finding>& findings);

// Prints the model, line by line. Memory use does not grow with the number of lines. Precondition:
// prepare_expansion has returned true.
void expand(const Expansion& expansion, const Pause& pause, const TakeLine& take_line);

// What a flaw of the program means for the model: an error, or a warning if that is the level of
// its code.
Finding finding_of(const GeneratedModel& generated, const Flaw& flaw);

// Adds a finding for each flaw, without duplicates.
void add_findings(const GeneratedModel& generated, const std::vector<Flaw>& flaws,
                  std::vector<Finding>& findings);

// The part of the file that a place of the generator file comes from: the same text or, if that is
// not found, the whole record.
Span span_of_place(const GeneratedModel& generated, Range place);

// The line of the file that a place of the generator file comes from.
int line_of_place(const GeneratedModel& generated, Range place);

// The variables that a model declares.
Variables variables_of(const Model& model);

// Counts the names in a model's constraints as used, though only the host evaluates those.
void note_names_in_constraints(const Model& model, DataFiles& files);

}  // namespace orvex::frontend
