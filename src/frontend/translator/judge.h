// The translator as the judge of a file: compares its results for the models with the tree's.
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

// A model that the translator accepted. Those of the first run, whose input is unchanged, are the
// ones that translate puts into place.
struct Translated {
    Index model = 0;  // in the tree
    ModelOutput output;
};

// A stop that the tree does not explain.
struct UnknownStop {
    Index model = 0;  // in the tree
    int line = 0;     // the last line read
    std::string message;
};

struct Verdict {
    std::string cause;                  // why the result is unknown; the rest is empty then
    std::vector<std::string> messages;  // lines that the runs wrote to standard error
    std::vector<Translated> outputs;
    std::vector<Translated> later_outputs;  // of good models after one with an error
    std::vector<UnknownStop> stops;
    std::vector<Index> accepted;  // models with errors in the tree that the translator accepts
};

// The tree's prediction for a model.
struct Expectation {
    Index model = 0;  // in the tree
    // The first of its errors, and the last line read if the translator stops there.
    Fault fault = Fault::none;
    Index read = 0;
};

Expectation expectation_of(const Model& model);

// What a run needs in addition to the file. All of it must outlive the run.
struct Court {
    const Source& source;
    const std::vector<Index>& selected;  // the models that are not left out, in order
    const std::string& program;
    const TempDir& place;
    RunSettings settings;
};

// The file without the models that are not selected.
std::string first_input(const Source& source, const std::vector<Index>& selected);

// The same, but the contents of models that have errors become comments. The numbers of lines and
// models do not change.
std::string second_input(const Source& source, const std::vector<Index>& selected,
                         std::span<const Expectation> models);

// Is the error at which a run stopped the first error of the model?
bool is_known(const Source& source, const Expectation& model, const RunResult& result);

// Starts translating the file unchanged. For a large file this runs in parallel with this program;
// the result throws StartFailure if the program cannot be run.
std::future<RunResult> start_judging(const Court& court);

// The verdict on the selected models. If the run stops and later models have no error, a second run
// confirms these: in it, the lines of all models with errors are comments. Throws StartFailure.
Verdict judge(const Court& court, std::span<const Expectation> models,
              std::future<RunResult> first);

}  // namespace orvex::frontend
