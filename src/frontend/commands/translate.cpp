#include "frontend/commands/translate.h"

#include "frontend/cli/inputs.h"
#include "frontend/findings/failure.h"
#include "frontend/findings/place.h"
#include "frontend/session/depfile.h"
#include "frontend/session/outputs.h"
#include "frontend/session/session.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <iterator>
#include <string>
#include <vector>

namespace orvex::frontend {

namespace {

// One header path can take the header of only one model.
void check_header(const Options& options, const std::vector<File>& files) {
    if (options.header.empty()) return;
    std::size_t models = 0;
    for (const File& file : files) {
        if (file.source != nullptr) models += asked_models(options, *file.source);
    }
    if (models > 1) {
        throw UsageError{
            "`--header` names the file of one model, but there are " + std::to_string(models),
            "name one with `--model`"};
    }
}

void write_depfile(const Options& options, const Placed& placed, Reporter& reporter,
                   const Inputs& inputs) {
    const std::string& path = options.depfile;
    if (path.empty() || reporter.summary.status != 0) return;
    std::vector<std::string> read;
    std::copy_if(inputs.paths.begin(), inputs.paths.end(), std::back_inserter(read),
                 [](const std::string& input) { return input != "-"; });
    const auto has_line_end = [](const std::string& name) {
        return name.find('\n') != std::string::npos;
    };
    if (std::any_of(read.begin(), read.end(), has_line_end) ||
        std::any_of(placed.outputs.begin(), placed.outputs.end(), has_line_end)) {
        show(reporter,
             failure("output-unwritable",
                     {{"path", path}, {"reason", "make cannot read a name with a line end"}},
                     whole_file(path)));
        return;
    }
    bool changed = false;
    if (put_file(path, depfile(placed.outputs, read), changed)) return;
    const int error = errno;
    stop_if_interrupted();
    show(reporter, write_failure(path, error, whole_file(path)));
}

std::string summary_line(const Placed& placed) {
    const std::size_t unchanged = placed.files.unchanged.size();
    std::string text = "wrote " + counted(placed.files.written.size(), "file");
    if (unchanged > 0) text += ", " + std::to_string(unchanged) + " unchanged";
    if (placed.untranslated > 0)
        text += "; " + counted(placed.untranslated, "model") + " not translated";
    return text;
}

}  // namespace

int run_translate(const Options& given) {
    Options options = given;
    // It is an error if there is nothing to translate, unless the user has set its level.
    options.levels.try_emplace("model-missing", Severity::error);
    Placed placed;
    Steps steps;
    steps.wanted.outputs = true;
    steps.needs_names = true;
    steps.needs_all = !options.header.empty();
    steps.start = [&](const std::vector<File>& files) { check_header(options, files); };
    steps.finish = [&](File& file, const Inputs& inputs) {
        place_outputs(file, options, inputs, placed);
    };
    steps.end = [&](Reporter& reporter, const Inputs& inputs) {
        write_depfile(options, placed, reporter, inputs);
    };
    steps.summarise = [&](Summary& summary) {
        summary.outputs = placed.files;
        return summary_line(placed);
    };
    return run_session(options, steps);
}

}  // namespace orvex::frontend
