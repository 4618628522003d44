#include "frontend/session/session.h"

#include "frontend/base/interrupts.h"
#include "frontend/base/jobs.h"
#include "frontend/base/streams.h"
#include "frontend/cli/inputs.h"
#include "frontend/findings/failure.h"
#include "frontend/findings/place.h"
#include "frontend/syntax/parse.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <filesystem>
#include <new>
#include <string>
#include <string_view>

namespace orvex::frontend {

namespace {

struct Session {
    const Options& options;
    const Steps& steps;
    std::string program;
    Inputs inputs;
    std::vector<File> files;
    std::vector<bool> is_read;
    std::vector<std::unique_ptr<TempDir>> places;  // one for each thread
    Reporter reporter;
    std::vector<Finding> unknown_models;  // about files without the model of --model
    std::size_t known_models = 0;         // files that have it
};

// Thrown when a signal ends the program: first the temporary folders are removed.
struct Interrupt {};

struct OutputFailure {};

Finding start_failure(const std::string& path, const StartFailure& error) {
    return failure("translator-failed", {{"reason", error.reason}}, whole_file(path));
}

Finding folder_failure(const std::string& path, const FolderFailure& error) {
    return failure("temporary-folder-unusable",
                   {{"path", error.folder}, {"reason", system_message(error.error)}},
                   whole_file(path));
}

Finding memory_failure(const std::string& path) {
    return failure("memory-exhausted", {{"path", path}}, whole_file(path));
}

std::string shown_path(const Session& session, std::size_t index) {
    const std::string& path = session.inputs.paths[index];
    return path == "-" ? session.options.stdin_filename : path;
}

// Why a file cannot be read.
std::string reading_failure(int error) {
    constexpr unsigned to_mebibytes = 20;
    if (error != EFBIG) return system_message(error);
    return "it is larger than " + std::to_string(largest_file >> to_mebibytes) + " MiB";
}

// Reads a file, once; false, with a finding, if that fails.
bool read(Session& session, std::size_t index) {
    File& file = session.files[index];
    if (session.is_read[index]) return file.source != nullptr;
    session.is_read[index] = true;
    const std::string path = shown_path(session, index);
    file.is_stdin = session.inputs.paths[index] == "-";
    int error = 0;
    try {
        file.source = std::make_unique<Source>();
        if (read_source(session.inputs.paths[index], *file.source)) {
            file.source->path = path;
            return true;
        }
        error = errno;
    } catch (const std::bad_alloc&) {
        error = ENOMEM;
    }
    file.source.reset();
    if (error == ENOMEM) {
        file.checked.findings.push_back(memory_failure(path));
        return false;
    }
    file.checked.findings.push_back(failure(
        "file-unreadable", {{"path", path}, {"reason", reading_failure(error)}}, whole_file(path)));
    return false;
}

void check(Session& session, File& file, std::size_t worker) {
    if (session.steps.reads_only) {
        file.checked = check_text(*file.source, session.options);
        return session.steps.work(file);
    }
    auto& place = session.places[worker];
    if (place == nullptr) place = std::make_unique<TempDir>();
    const auto check_text = [&](const Source& source) {
        stop_if_interrupted();
        return check_file(source, session.options, session.steps.wanted, session.program, *place);
    };
    file.checked = check_text(*file.source);
    if (session.steps.work) session.steps.work(file);
    if (!session.steps.mend) return;
    session.steps.mend(file, [&](const Source& source) { return check_text(source).findings; });
}

// Runs on any thread.
void work_on(Session& session, std::size_t index, std::size_t worker) {
    stop_if_interrupted();
    File& file = session.files[index];
    if (!read(session, index)) return;
    const std::string path = file.source->path;
    try {
        check(session, file, worker);
    } catch (const StartFailure& error) {
        stop_if_interrupted();
        file.checked.findings.push_back(start_failure(path, error));
    } catch (const FolderFailure& error) {
        stop_if_interrupted();
        file.checked.findings.push_back(folder_failure(path, error));
    } catch (const std::bad_alloc&) {
        file = File();
        file.checked.findings.push_back(memory_failure(path));
    }
}

// The model of --model need not be in every file.
void keep_unknown_models(Session& session, std::vector<Finding>& findings) {
    const auto unknown = std::stable_partition(
        findings.begin(), findings.end(),
        [](const Finding& finding) { return finding.code != "model-unknown"; });
    if (unknown == findings.end()) ++session.known_models;
    session.unknown_models.insert(session.unknown_models.end(), unknown, findings.end());
    findings.erase(unknown, findings.end());
}

void finish_file(Session& session, File& file) {
    Reporter& reporter = session.reporter;
    if (!session.options.model.empty() && file.source != nullptr)
        keep_unknown_models(session, file.checked.findings);
    if (session.steps.finish && file.source != nullptr) {
        session.steps.finish(file, session.inputs);
        stop_if_interrupted();
    }
    show_all(reporter, file.checked.findings);
    if (session.steps.before_output) session.steps.before_output(file);
    put_output(reporter, file.output);
    if (session.steps.print) session.steps.print(file, reporter);
}

// Runs on one thread, in the order of the files.
void finish(Session& session, std::size_t index) {
    stop_if_interrupted();
    Reporter& reporter = session.reporter;
    const std::string path = shown_path(session, index);
    begin_file(reporter, path);
    try {
        finish_file(session, session.files[index]);
    } catch (const std::bad_alloc&) {
        session.files[index] = File();
        show(reporter, memory_failure(path));
    }
    session.files[index] = File();
    if (!flush(reporter.out)) throw OutputFailure();
    flush(reporter.err);
    show_progress(reporter, index + 1, session.files.size());
}

// A file that is given twice, or by itself and in its folder, is read once.
void take_paths(Inputs& inputs, const std::vector<std::string>& paths) {
    for (const std::string& path : paths) {
        if (path != "-" && has_file(inputs.files, path)) continue;
        inputs.paths.push_back(path);
        if (path != "-") add_file(inputs.files, path);
    }
    if (std::find(paths.begin(), paths.end(), "-") != paths.end())
        add_file(inputs.files, "/dev/stdin");
}

void refuse_folders(const std::vector<std::string>& paths) {
    for (const std::string& path : paths) {
        if (is_folder(path))
            throw UsageError{"`" + path + "` is a folder", "`orvex check` searches folders"};
    }
}

// Files that the command writes besides its outputs must not be inputs, nor be given twice.
void reserve_paths(const Options& options, Inputs& inputs) {
    std::vector<std::string> written;
    for (const auto& [format, path] : options.reports) written.push_back(path);
    if (!options.depfile.empty()) written.push_back(options.depfile);
    for (const std::string& path : written) {
        if (has_file(inputs.files, path))
            throw UsageError{"`" + path + "` is an input file and would be overwritten", ""};
        if (!inputs.reserved.insert(without_detours(path)).second)
            throw UsageError{"`" + path + "` is given for two outputs", ""};
    }
}

void find_files(Session& session) {
    const std::vector<std::string> given = expand_patterns(session.options.files);
    if (!session.steps.searches_folders) refuse_folders(given);
    take_paths(session.inputs, session.steps.searches_folders ? expand_folders(given) : given);
    reserve_paths(session.options, session.inputs);
    session.files.resize(session.inputs.paths.size());
    session.is_read.resize(session.files.size());
}

void add_names(const Source& source, Inputs& inputs) {
    std::set<std::string_view> of_file;
    for (const ModelText& model : source.models) {
        std::vector<Span>& places = inputs.models[model.name];
        if (of_file.insert(model.name).second && places.size() < 2)
            places.push_back(record_span(source, model.line));
    }
}

// Reads the files one by one, so that only one is in memory. An unreadable file is reported when it
// is checked.
void find_names(Session& session) {
    const std::size_t count = session.files.size();
    for (std::size_t i = 0; i < count && count > 1; ++i) {
        if (session.is_read[i]) {
            if (session.files[i].source) add_names(*session.files[i].source, session.inputs);
            continue;
        }
        Source source;
        try {
            if (!read_source(session.inputs.paths[i], source)) continue;
            source.path = shown_path(session, i);
            add_names(source, session.inputs);
        } catch (const std::bad_alloc&) {
            // The check of the file will fail in the same way, and report it.
        }
    }
}

// Files whose reading may block are read before the signals are caught: until then, signals end the
// program at once.
void read_first(Session& session) {
    for (std::size_t i = 0; i < session.files.size(); ++i) {
        if (session.steps.needs_all || may_wait(session.inputs.paths[i])) read(session, i);
    }
    if (session.steps.start) session.steps.start(session.files);
    if (session.steps.needs_names) find_names(session);
}

void run_files(Session& session) {
    try {
        if (!session.steps.reads_only) session.program = find_translator(session.options.program);
    } catch (const StartFailure& error) {
        show(session.reporter, start_failure(shown_path(session, 0), error));
        return;
    }
    in_order(
        session.files.size(), static_cast<int>(session.places.size()),
        [&](std::size_t index, int worker) {
            work_on(session, index, static_cast<std::size_t>(worker));
        },
        [&](std::size_t index) { finish(session, index); });
    if (session.known_models == 0) {
        for (const Finding& finding : session.unknown_models) show(session.reporter, finding);
    }
    if (session.steps.end) session.steps.end(session.reporter, session.inputs);
}

// Returns the exit status.
int run_and_end(Session& session) {
    try {
        run_files(session);
    } catch (const UsageError& error) {
        show_usage(session.reporter, error.text, error.hint);
    } catch (const OutputFailure&) {
        // Nobody reads the output: end() reports why.
    }
    stop_if_interrupted();
    Reporter& reporter = session.reporter;
    const std::string summary_line =
        session.steps.summarise ? session.steps.summarise(reporter.summary) : "";
    const int status = end(reporter, summary_line);
    stop_if_interrupted();
    return status;
}

}  // namespace

void stop_if_interrupted() {
    if (interrupt_signal() != 0) throw Interrupt();
}

std::string without_detours(const std::string& path) {
    return std::filesystem::path(path).lexically_normal().string();
}

int run_session(const Options& options, const Steps& steps) {
    Session session{options, steps, {}, {}, {}, {}, {}, {}, {}, 0};
    find_files(session);
    session.places.resize(std::min(static_cast<std::size_t>(options.jobs), session.files.size()));
    read_first(session);
    session.reporter.options = options;
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
