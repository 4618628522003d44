#include "frontend/commands/graph.h"

#include "frontend/base/graphviz.h"
#include "frontend/base/spelling.h"
#include "frontend/cli/inputs.h"
#include "frontend/findings/failure.h"
#include "frontend/findings/place.h"
#include "frontend/session/session.h"
#include "frontend/views/graph.h"

#include <cstddef>
#include <string>
#include <vector>

namespace orvex::frontend {

namespace {

struct Pictures {
    std::size_t count = 0;
    std::vector<std::string> names;  // of the models in which --focus finds nothing
    std::string svg;                 // the one picture, until all files are read
};

// The graph of a model, or of what is around the name of --focus; false where that is not in it.
bool draw_model(const Options& options, File& file, const Model& model) {
    Graph graph = make_graph(*file.source, model);
    if (!options.focus.empty() && !focus(graph, options.focus, options.depth)) return false;
    if (options.picture != "svg") {
        file.output += draw(graph, options.picture);
        return true;
    }
    std::string reason;
    if (!draw_svg(draw(graph, "dot"), file.output, reason)) {
        file.checked.findings.push_back(
            failure("graphviz-failed", {{"reason", reason}}, whole_file(file.source->path)));
    }
    return true;
}

void add_names(const File& file, const Model& model, std::vector<std::string>& names) {
    for (const Node& node : make_graph(*file.source, model).nodes) names.push_back(node.name);
}

void draw_file(const Options& options, File& file, Pictures& pictures) {
    for (const Model& model : file.checked.models) {
        if (!model.errors.empty()) continue;
        if (draw_model(options, file, model)) {
            ++pictures.count;
        } else {
            add_names(file, model, pictures.names);
        }
    }
}

// An svg picture is the only text on its stream.
void hold_back(File& file, Pictures& pictures) {
    if (pictures.count > 1) {
        throw UsageError{"an svg picture shows one model, and there are more",
                         "name one with `--model`"};
    }
    pictures.svg += file.output;
    file.output.clear();
}

void check_focus(const Options& options, const Pictures& pictures) {
    if (pictures.names.empty() || pictures.count > 0) return;
    const std::string near = nearest(options.focus, pictures.names);
    throw UsageError{"there is no `" + options.focus + "` in the picture",
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
        if (options.picture == "svg") hold_back(file, pictures);
    };
    steps.end = [&](Reporter& reporter, const Inputs&) {
        put_output(reporter, pictures.svg);
        check_focus(options, pictures);
    };
    return run_session(quiet, steps);
}

}  // namespace orvex::frontend
