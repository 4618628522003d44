// A command over all its files: they are read, checked on several threads, and shown in order.
#pragma once

#include "frontend/base/files.h"
#include "frontend/cli/options.h"
#include "frontend/cli/reporter.h"
#include "frontend/fixes/draft.h"
#include "frontend/session/check_file.h"

#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace orvex::frontend {

// The result of fixing a file.
struct Mended {
    std::string text;
    std::string diff;               // from its original text
    std::vector<Finding> findings;  // those left
    std::size_t fixed = 0;          // fixes made
    std::size_t allowed = 0;        // findings that a new comment allows
    bool is_changed = false;
    bool is_refused = false;  // the text would have had more errors than before
};

// A file and its results, until it is shown.
struct File {
    std::unique_ptr<Source> source;  // null if it cannot be read
    bool is_stdin = false;
    Checked checked;
    Mended mended;
    std::string output;  // the command's output for it
};

// The files of a command line, and the other files that it writes.
struct Inputs {
    std::vector<std::string> paths;
    FileSet files;
    // Paths of reports and the depfile, without "." and "..".
    std::set<std::string> reserved;
    // If names are needed and there are several files: the models with each name, at most two, and
    // only the first one of each file.
    std::map<std::string, std::vector<Span>> models;
};

// What a command does with its files. Omitted steps do nothing.
struct Steps {
    // Folders are searched for *.zlm files; otherwise folders are usage errors.
    bool searches_folders = false;
    // Only the text of the files is checked, without the translator; the models are built.
    bool reads_only = false;
    Wanted wanted;
    // Called with all readable files, before any is checked: is the command line right for them?
    bool needs_all = false;
    std::function<void(const std::vector<File>&)> start;
    // Must the names of all models be known before any file is checked?
    bool needs_names = false;
    // Called with a checked file, on any thread.
    std::function<void(File&)> work;
    // The same, with a function that checks another text instead of the file's.
    std::function<void(File&, const Check&)> mend;
    // Called with each file in order, before its findings are shown.
    std::function<void(File&, const Inputs&)> finish;
    // Called with each file, after its findings are shown and before its output is.
    std::function<void(File&)> before_output;
    // Called with each file, after its output: prints what is too long to keep in memory.
    std::function<void(File&, Reporter&)> print;
    // Called after the last file.
    std::function<void(Reporter&, const Inputs&)> end;
    // Adds the work done to the summary, and returns the start of the closing line.
    std::function<std::string(Summary&)> summarise;
};

// Runs a command. Returns the exit status. Throws UsageError if the command line turns out to be
// wrong before anything is shown.
int run_session(const Options& options, const Steps& steps);

// Ends the session if a signal that ends the program has come.
void stop_if_interrupted();

// A path for comparisons: without "." and "..".
std::string without_detours(const std::string& path);

}  // namespace orvex::frontend
