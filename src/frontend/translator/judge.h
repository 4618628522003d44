// The translator as the judge of a file: what it makes of the models, beside what the tree says of
// them.
#pragma once

#include "frontend/model/model.h"
#include "frontend/syntax/source.h"
#include "frontend/translator/translator.h"

#include <future>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace orvex::frontend {

// A model that came through a run. Those of the first run, with which nothing was changed in the
// input, are what translate puts into place.
struct Translated {
    Index model = 0;  // in the tree
    ModelOutput output;
};

// A stop that the tree does not know.
struct UnknownStop {
    Index model = 0;  // in the tree
    int line = 0;     // the last one read
    std::string message;
};

struct Verdict {
    std::string cause;                  // why nobody can tell; the rest is empty then
    std::vector<std::string> messages;  // lines that the runs have written to standard error
    std::vector<Translated> outputs;
    std::vector<Translated> later_outputs;  // of models without an error that come after one
    std::vector<UnknownStop> stops;
    std::vector<Index> accepted;  // models with errors in the tree that the translator takes
};

// What the tree says of a model.
struct Expectation {
    Index model = 0;  // in the tree
    // The first of its errors, and the last line read when the translator stops there.
    Fault fault = Fault::none;
    Index read = 0;
};

Expectation expectation_of(const Model& model);

// What a run needs beside the file. All of it must outlive the run.
struct Court {
    const Source& source;
    const std::vector<Index>& selected;  // the models that are not left out, in their order
    const std::string& program;
    const TempDir& place;
    RunSettings settings;
};

// The file without the models that are not selected.
std::string first_input(const Source& source, const std::vector<Index>& selected);

// That with nothing but comments in those of the models that have errors. Numbers of lines and
// models stay what they are.
std::string second_input(const Source& source, const std::vector<Index>& selected,
                         std::span<const Expectation> models);

// Is the first error of the model what a run has stopped with?
bool is_known(const Source& source, const Expectation& model, const RunResult& result);

// Starts to translate the file as it is. That of a large file goes on while this program does
// something else; the result throws StartFailure where the program cannot be run.
std::future<RunResult> start_judging(const Court& court);

// What the run has made of the models, which are those that are selected. Where it stops and models
// after the failing one have no error, a second run, in which the lines of all models with errors
// are comments, confirms these. Throws StartFailure.
Verdict judge(const Court& court, std::span<const Expectation> models,
              std::future<RunResult> first);

}  // namespace orvex::frontend
