#include "frontend/commands/graph.h"

#include "frontend/base/graphviz.h"
#include "frontend/base/spelling.h"
#include "frontend/cli/inputs.h"
#include "frontend/findings/failure.h"
#include "frontend/findings/place.h"
#include "frontend/session/session.h"
#include "frontend/views/graph.h"

#include <chrono>
#include <cstddef>
#include <string>
#include <vector>

namespace orvex::frontend {

namespace {

// A picture that takes longer to draw is too large to be read.
constexpr std::chrono::seconds time_limit(20);

struct Pictures {
    std::size_t count = 0;
    std::vector<std::string> names;  // of nodes in models without the --focus name
    std::string single;              // the only picture, until all files are read
};

void put_svg(const std::string& dot, File& file) {
    std::string reason;
    const Drawing drawing = draw_svg(dot, time_limit, file.output, reason);
    if (drawing == Drawing::done) return;
    const Span span = whole_file(file.source->path);
    const std::string seconds = std::to_string(time_limit.count());
    file.checked.findings.push_back(
        drawing == Drawing::failed ? failure("graphviz-failed", {{"reason", reason}}, span)
                                   : failure("graphviz-timeout", {{"seconds", seconds}}, span));
}

// Draws the graph of a model, or of the surroundings of the --focus name; false if the model does
// not have that name. A second svg picture will be refused, so Graphviz does not draw it.
bool draw_model(const Options& options, bool is_first, File& file, const Model& model) {
    Graph graph = make_graph(*file.source, model);
    if (!options.focus.empty() && !focus(graph, options.focus, options.depth)) return false;
    if (options.picture == "svg") {
        if (is_first) put_svg(draw(graph, "dot"), file);
    } else {
        file.output += draw(graph, options.picture);
    }
    return true;
}

void add_names(const File& file, const Model& model, std::vector<std::string>& names) {
    for (const Node& node : make_graph(*file.source, model).nodes) names.push_back(node.name);
}

void draw_file(const Options& options, File& file, Pictures& pictures) {
    for (const Model& model : file.checked.models) {
        if (!model.errors.empty()) continue;
        if (draw_model(options, pictures.count == 0, file, model)) {
            ++pictures.count;
        } else {
            add_names(file, model, pictures.names);
        }
    }
}

// Viewers of these formats expect one picture per file.
bool is_single(const std::string& picture) { return picture == "svg" || picture == "mermaid"; }

void hold_back(const Options& options, File& file, Pictures& pictures) {
    if (pictures.count > 1) {
        throw UsageError{"`--format " + options.picture + "` draws one model, but there are more",
                         "name one with `--model`"};
    }
    pictures.single += file.output;
    file.output.clear();
}

void check_focus(const Options& options, const Pictures& pictures) {
    if (pictures.names.empty() || pictures.count > 0) return;
    const std::string near = nearest(options.focus, pictures.names);
    throw UsageError{
        "no sector, commodity, consumer or auxiliary variable is named `" + options.focus + "`",
        near.empty() ? "" : "did you mean `" + near + "`?"};
}

}  // namespace

int run_graph(const Options& options) {
    Options quiet = options;
    quiet.levels["all"] = Severity::off;
    Pictures pictures;
    Steps steps;
    steps.wanted.models = true;
    steps.finish = [&](File& file, const Inputs&) { draw_file(options, file, pictures); };
    steps.before_output = [&](File& file) {
        if (is_single(options.picture)) hold_back(options, file, pictures);
    };
    steps.end = [&](Reporter& reporter, const Inputs&) {
        put_output(reporter, pictures.single);
        check_focus(options, pictures);
    };
    return run_session(quiet, steps);
}

}  // namespace orvex::frontend
