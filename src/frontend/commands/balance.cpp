#include "frontend/commands/balance.h"

#include "frontend/accounts/comparison.h"
#include "frontend/base/files.h"
#include "frontend/base/streams.h"
#include "frontend/cli/inputs.h"
#include "frontend/cli/levels.h"
#include "frontend/findings/failure.h"
#include "frontend/findings/place.h"
#include "frontend/session/balance_output.h"
#include "frontend/session/command_data.h"
#include "frontend/session/model_balance.h"
#include "frontend/session/printed_balance.h"
#include "frontend/session/printed_text.h"
#include "frontend/session/session.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

namespace orvex::frontend {

namespace {

// All models so far, and their data.
struct Work {
    const Options& options;
    CommandData data;
    AccountTable table;  // of --against
    bool has_table = false;
    std::size_t models = 0;
};

// Reads the table of --against.
void read_against(Work& work) {
    DataText& file = work.table.file;
    file.path = work.options.against;
    if (file.path.empty()) return;
    if (read_file(file.path, file.bytes)) {
        work.has_table = read_table(work.table, work.data.findings);
        return;
    }
    const int error = errno;
    work.data.findings.push_back(failure("file-unreadable",
                                         {{"path", file.path}, {"reason", system_message(error)}},
                                         whole_file(file.path)));
}

void read_files(Work& work) {
    read_command_data(work.options, work.data);
    read_against(work);
}

void move_to(std::vector<Finding>& findings, std::vector<Finding>& from) {
    findings.insert(findings.end(), std::make_move_iterator(from.begin()),
                    std::make_move_iterator(from.end()));
    from.clear();
}

// Shows the accounts of a model that could be read.
void take_accounts(Work& work, const std::string& path, const ModelAccounts& model,
                   std::string& output, std::vector<Finding>& findings) {
    if (work.models == 0) output += balance_head(work.options);
    if (work.models == 1 && !work.options.against.empty())
        throw UsageError{"`--against` is for one model, and there are more",
                         "name one with `--model`"};
    if (work.has_table) {
        std::vector<Finding> found =
            compare(work.table, model.books, model.matrix, work.options.tolerance);
        move_to(findings, found);
    }
    output += shown_accounts(work.options, path, work.models, model);
    ++work.models;
}

void take_model(Work& work, const GeneratedModel& generated, File& file) {
    std::vector<Finding> findings;
    const auto model = balance_model(generated, work.data.files, work.options, findings);
    apply_levels(work.options, findings);
    move_to(file.checked.findings, findings);
    if (model) take_accounts(work, file.source->path, *model, file.output, file.checked.findings);
}

// The start of the closing line.
std::string closing_words(const Work& work, const Summary& summary) {
    return work.models > 0 && summary.errors == 0 ? "all accounts balance" : "";
}

int balance_models(Work& work) {
    Options quiet = work.options;
    // It is an error if there is nothing to balance.
    quiet.levels = {{"all", Severity::off}, {"model-missing", Severity::error}};
    Steps steps;
    steps.wanted.models = true;
    steps.wanted.outputs = true;
    steps.start = [&](const std::vector<File>&) { read_files(work); };
    steps.finish = [&](File& file, const Inputs&) {
        take_models(file, work.data,
                    [&](const GeneratedModel& generated) { take_model(work, generated, file); });
    };
    steps.end = [&](Reporter& reporter, const Inputs&) {
        show_unused_names(work.data, work.options, reporter);
    };
    steps.summarise = [&](const Summary& summary) { return closing_words(work, summary); };
    return run_session(quiet, steps);
}

void take_printed(Work& work, const std::string& given, Reporter& reporter) {
    const std::string path = given == "-" ? work.options.stdin_filename : given;
    begin_file(reporter, path);
    std::vector<Finding> findings = std::move(work.data.findings);
    work.data.findings.clear();
    std::vector<ModelAccounts> models;
    if (work.data.is_whole)
        models = balance_printed(given, path, work.data.files, work.options, findings);
    std::string output;
    apply_levels(work.options, findings);
    for (const ModelAccounts& model : models) take_accounts(work, path, model, output, findings);
    show_all(reporter, findings);
    put_output(reporter, output);
    flush(reporter.out);
}

int balance_printed_files(Work& work, const std::vector<std::string>& files) {
    read_files(work);
    Reporter reporter;
    reporter.options = work.options;
    begin(reporter);
    for (const std::string& file : files) take_printed(work, file, reporter);
    return end(reporter, closing_words(work, reporter.summary));
}

}  // namespace

int run_balance(const Options& options) {
    Work work{options, {}, {}, false, 0};
    const std::vector<std::string> files = expand_patterns(options.files);
    const auto is_printed_file = [&](const std::string& path) {
        return is_printed(path, path == "-" ? options.stdin_filename : path);
    };
    const auto printed = std::count_if(files.begin(), files.end(), is_printed_file);
    if (printed == 0) return balance_models(work);
    if (printed < std::ssize(files)) {
        throw UsageError{"some of the files are models, and some are printed texts",
                         "balance them in two runs"};
    }
    return balance_printed_files(work, files);
}

}  // namespace orvex::frontend
