#include "frontend/commands/session.h"

#include "frontend/base/bytes.h"
#include "frontend/base/files.h"
#include "frontend/base/interrupts.h"
#include "frontend/base/jobs.h"
#include "frontend/cli/inputs.h"
#include "frontend/cli/reporter.h"
#include "frontend/commands/check.h"
#include "frontend/commands/translate.h"
#include "frontend/findings/failure.h"
#include "frontend/findings/place.h"
#include "frontend/findings/spelling.h"
#include "frontend/model/economy.h"
#include "frontend/views/graph.h"
#include "frontend/views/info.h"
#include "frontend/views/json.h"

#include <algorithm>
#include <cerrno>
#include <memory>

namespace orvex::frontend {

namespace {

// What was made of a file, until it is shown.
struct File {
    std::unique_ptr<Source> source;
    bool unreadable = false;
    Checked checked;
    std::string drawn;                      // by info and graph
    std::size_t pictures = 0;               // in it
    std::vector<std::string> not_focussed;  // names of the models that --focus did not find
};

struct Session {
    Options options;
    std::string program;
    std::vector<std::string> paths;
    std::vector<File> files;
    FileSet inputs;
    std::vector<std::unique_ptr<Workplace>> places;  // of each thread
    Reporter reporter;
    Placed placed;
    std::vector<Finding> unknown_models;  // of the files without the model of --model
    std::size_t known_models = 0;         // files that have it
    std::vector<std::string> focus_names;
    std::size_t pictures = 0;
    std::string svg;  // the one picture, until all files are read
};

// A signal is to end the program: first the temporary folders are removed.
struct Interrupt {};

struct OutputFailure {};

void stop_if_interrupted() {
    if (interrupt_signal() != 0) throw Interrupt();
}

Finding start_failure(const std::string& path, const StartFailure& error) {
    return failure("translator-start", "the translator cannot be run: " + error.reason,
                   whole_file(path));
}

std::string shown_path(const Session& session, std::size_t index) {
    const std::string& path = session.paths[index];
    return path == "-" ? session.options.stdin_filename : path;
}

// Reads a file, once; false with a finding where that cannot be done.
bool read(Session& session, std::size_t index) {
    File& file = session.files[index];
    if (file.source != nullptr || file.unreadable) return !file.unreadable;
    file.source = std::make_unique<Source>();
    if (read_source(session.paths[index], *file.source)) {
        file.source->path = shown_path(session, index);
        return true;
    }
    const int error = errno;
    const std::string path = shown_path(session, index);
    file.source.reset();
    file.unreadable = true;
    file.checked.findings.push_back(failure("file-unreadable",
                                            "cannot read `" + path + "`: " + system_message(error),
                                            whole_file(path)));
    return false;
}

// Adds the picture of a model to the file's output.
void draw_model(const Options& options, const Economy& economy, File& file) {
    if (options.command == Command::info) {
        file.drawn += options.json ? info_json(economy, file.source->path)
                                   : info_text(economy, file.source->path,
                                               use_colour(Stream(), options.colour));
        return;
    }
    Graph graph = make_graph(economy);
    if (!options.focus.empty()) {
        std::vector<std::string> names;
        for (const Node& node : graph.nodes) names.push_back(node.name);
        if (!focus(graph, options.focus, options.depth)) {
            file.not_focussed.insert(file.not_focussed.end(), names.begin(), names.end());
            return;
        }
    }
    ++file.pictures;
    if (options.picture != "svg") {
        file.drawn += draw(graph, options.picture);
        return;
    }
    std::string reason;
    if (!draw_svg(draw(graph, "dot"), file.drawn, reason)) {
        file.checked.findings.push_back(failure("graphviz-run",
                                                "the picture cannot be drawn: " + reason,
                                                whole_file(file.source->path)));
    }
}

// On any thread.
void work_on(Session& session, std::size_t index, std::size_t worker) {
    stop_if_interrupted();
    File& file = session.files[index];
    if (!read(session, index)) return;
    try {
        auto& place = session.places[worker];
        if (place == nullptr) place = std::make_unique<Workplace>();
        file.checked = check(*file.source, session.options, session.program, *place);
    } catch (const StartFailure& error) {
        stop_if_interrupted();
        file.checked.findings.push_back(start_failure(file.source->path, error));
        return;
    }
    const Command command = session.options.command;
    if (command != Command::info && command != Command::graph) return;
    for (const Translated& model : file.checked.models) {
        const Economy economy =
            read_economy(*file.source, model.index, file.checked.left_out, model.output);
        draw_model(session.options, economy, file);
    }
}

// A model that --model asks for need not be in every file.
void keep_unknown_models(Session& session, std::vector<Finding>& findings) {
    const auto unknown = std::stable_partition(
        findings.begin(), findings.end(),
        [](const Finding& finding) { return finding.code != "model-unknown"; });
    if (unknown == findings.end()) ++session.known_models;
    session.unknown_models.insert(session.unknown_models.end(), unknown, findings.end());
    findings.erase(unknown, findings.end());
}

void show_findings(Session& session, const File& file) {
    for (const Finding& finding : file.checked.findings) show(session.reporter, finding);
    session.reporter.summary.more |= file.checked.more;
}

void put_drawn(Reporter& reporter, const std::string& drawn) {
    if (!drawn.empty()) hide_progress(reporter);
    put(reporter.out, drawn);
}

// On one thread, in the order of the files.
void finish(Session& session, std::size_t index) {
    stop_if_interrupted();
    File& file = session.files[index];
    Reporter& reporter = session.reporter;
    ++reporter.summary.files;
    if (!session.options.model.empty() && file.source != nullptr) {
        keep_unknown_models(session, file.checked.findings);
    }
    if (session.options.command == Command::translate && file.source != nullptr) {
        place_outputs(*file.source, file.checked, session.options, session.inputs, session.placed);
        stop_if_interrupted();
    }
    session.pictures += file.pictures;
    session.focus_names.insert(session.focus_names.end(), file.not_focussed.begin(),
                               file.not_focussed.end());
    show_findings(session, file);
    if (session.options.picture == "svg") {
        if (session.pictures > 1) {
            throw UsageError{"an svg picture shows one model, and there are more",
                             "name one with `--model`"};
        }
        session.svg += file.drawn;
    } else {
        put_drawn(reporter, file.drawn);
    }
    file = File();
    if (!flush(reporter.out)) throw OutputFailure();
    flush(reporter.err);
    show_progress(reporter, index + 1, session.files.size());
}

// One header path can take the header of one model only.
void look_at_header(Session& session) {
    std::string name = session.options.model;
    make_upper(name);
    std::size_t models = 0;
    for (std::size_t i = 0; i < session.paths.size(); ++i) {
        if (!read(session, i)) continue;
        for (const ModelText& model : session.files[i].source->models) {
            models += static_cast<std::size_t>(name.empty() || model.name == name);
        }
    }
    if (models > 1) {
        throw UsageError{"`--header` is for one model, and there are " + std::to_string(models),
                         "name one with `--model`"};
    }
}

// A file that is given twice, or by itself and in its folder, is read once.
void take_inputs(Session& session, const std::vector<std::string>& paths) {
    for (const std::string& path : paths) {
        if (path != "-" && has_file(session.inputs, path)) continue;
        session.paths.push_back(path);
        if (path != "-") add_file(session.inputs, path);
    }
    if (std::find(paths.begin(), paths.end(), "-") != paths.end()) {
        add_file(session.inputs, "/dev/stdin");
    }
}

void find_files(Session& session) {
    const Options& options = session.options;
    std::vector<std::string> paths = options.files;
    if (options.command == Command::check) {
        paths = expand_folders(options.files);
    } else {
        for (const std::string& path : paths) {
            if (is_folder(path)) {
                throw UsageError{"`" + path + "` is a folder", "`orvex check` searches folders"};
            }
        }
    }
    take_inputs(session, paths);
    session.files.resize(session.paths.size());
    std::vector<std::string> written;
    for (const auto& [format, path] : options.reports) written.push_back(path);
    if (!options.depfile.empty()) written.push_back(options.depfile);
    for (const std::string& path : written) {
        if (has_file(session.inputs, path)) {
            throw UsageError{"`" + path + "` is an input and would be written over", ""};
        }
        if (!session.placed.reserved.insert(without_detours(path)).second) {
            throw UsageError{"`" + path + "` is given for two files", ""};
        }
    }
}

void write_depfile(Session& session) {
    const std::string& path = session.options.depfile;
    if (path.empty() || session.reporter.summary.status != 0) return;
    std::vector<std::string> inputs;
    std::copy_if(session.paths.begin(), session.paths.end(), std::back_inserter(inputs),
                 [](const std::string& input) { return input != "-"; });
    bool changed = false;
    if (!put_file(path, depfile(session.placed.outputs, inputs), changed)) {
        const int error = errno;
        stop_if_interrupted();
        show(session.reporter,
             failure("output-write", "cannot write `" + path + "`: " + system_message(error),
                     whole_file(path)));
    }
}

std::string news(const Session& session) {
    if (session.options.command != Command::translate) return "";
    const Placed& placed = session.placed;
    const std::size_t unchanged = placed.outputs.size() - placed.written;
    std::string text = "wrote " + counted(placed.written, "file");
    if (unchanged > 0) text += ", " + std::to_string(unchanged) + " unchanged";
    if (placed.behind > 0) {
        text += "; " + counted(placed.behind, "model") + " behind an error not translated";
    }
    return text;
}

void look_at_focus(const Session& session) {
    if (session.focus_names.empty() || session.pictures > 0) return;
    const std::string near = nearest(session.options.focus, session.focus_names);
    throw UsageError{"there is no `" + session.options.focus + "` in the picture",
                     near.empty() ? "" : "did you mean `" + near + "`?"};
}

void run_files(Session& session) {
    Reporter& reporter = session.reporter;
    try {
        session.program = find_translator(session.options.program);
    } catch (const StartFailure& error) {
        show(reporter, start_failure(shown_path(session, 0), error));
        return;
    }
    in_order(
        session.files.size(), session.options.jobs,
        [&](std::size_t index, int worker) {
            work_on(session, index, static_cast<std::size_t>(worker));
        },
        [&](std::size_t index) { finish(session, index); });
    put_drawn(reporter, session.svg);
    if (session.known_models == 0) {
        for (const Finding& finding : session.unknown_models) show(reporter, finding);
    }
    look_at_focus(session);
    write_depfile(session);
}

// Returns the exit status.
int run_and_end(Session& session) {
    try {
        run_files(session);
    } catch (const UsageError& error) {
        show_usage(session.reporter, error.text, error.hint);
    } catch (const OutputFailure&) {
        // Nobody reads on: the end says why.
    }
    stop_if_interrupted();
    const int status = end(session.reporter, news(session));
    stop_if_interrupted();
    return status;
}

}  // namespace

int run_command(const Options& options) {
    Session session;
    session.options = options;
    find_files(session);
    session.options.jobs =
        static_cast<int>(std::min(static_cast<std::size_t>(options.jobs), session.files.size()));
    session.places.resize(static_cast<std::size_t>(session.options.jobs));
    if (options.command == Command::info || options.command == Command::graph) {
        session.options.levels["all"] = Level::off;
    }
    // Until the signals are caught they end the program at once, wherever it waits.
    for (std::size_t i = 0; i < session.paths.size(); ++i) {
        if (may_wait(session.paths[i])) read(session, i);
    }
    if (!options.header.empty()) look_at_header(session);
    session.reporter.options = session.options;
    begin(session.reporter);
    catch_interrupts();
    try {
        return run_and_end(session);
    } catch (const Interrupt&) {
        session.places.clear();
        hide_progress(session.reporter);
        end_by_interrupt();
        return 2;
    }
}

}  // namespace orvex::frontend
