// A command over all its files: they are read, checked on several threads, and shown in their
// order.
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

// What a file becomes.
struct Mended {
    std::string text;
    std::string diff;               // from its text before
    std::vector<Finding> findings;  // those that are left
    std::size_t fixed = 0;          // fixes made
    std::size_t allowed = 0;        // findings that a new comment allows
    bool is_changed = false;
    bool is_refused = false;  // the text would have had more errors than before
};

// What was made of a file, until it is shown.
struct File {
    std::unique_ptr<Source> source;  // null where it cannot be read
    bool is_stdin = false;
    Checked checked;
    Mended mended;
    std::string output;  // what the command prints for it
};

// The files of a command line, and what it writes besides.
struct Inputs {
    std::vector<std::string> paths;
    FileSet files;
    // Paths of reports and the depfile, without detours.
    std::set<std::string> reserved;
    // Of several files, where those names are wanted: the models of each name, no more than two and
    // of one file only the first.
    std::map<std::string, std::vector<Span>> models;
};

// What a command does with its files. Steps that are left out do nothing.
struct Steps {
    // Folders are searched for *.zlm files; else they are wrong.
    bool searches_folders = false;
    // Files are judged by their text alone, and the models are there.
    bool reads_only = false;
    Wanted wanted;
    // With all files that can be read, before any is checked: is the command line right for them?
    bool needs_all = false;
    std::function<void(const std::vector<File>&)> start;
    // Must the names of all models be known before any file is checked?
    bool needs_names = false;
    // With a file that has been checked, on any thread.
    std::function<void(File&)> work;
    // The same, with what checks a text in place of the file's.
    std::function<void(File&, const Check&)> mend;
    // With each file in their order, before its findings are shown.
    std::function<void(File&, const Inputs&)> finish;
    // With each file, after its findings are shown and before its output is.
    std::function<void(File&)> before_output;
    // With each file, after its output: prints what is too long to be kept.
    std::function<void(File&, Reporter&)> print;
    // After the last file.
    std::function<void(Reporter&, const Inputs&)> end;
    // Adds what was done to the summary, and returns what begins the closing line.
    std::function<std::string(Summary&)> summarise;
};

// Runs a command. Returns the exit status. Throws UsageError where the command line is seen to be
// wrong before anything is shown.
int run_session(const Options& options, const Steps& steps);

// Ends the session where a signal that ends the program has come.
void stop_if_interrupted();

// A path as it is compared: without "." and "..".
std::string without_detours(const std::string& path);

}  // namespace orvex::frontend
