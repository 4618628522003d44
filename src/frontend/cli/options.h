// What the command line asks for.
#pragma once

#include "frontend/base/streams.h"
#include "frontend/findings/finding.h"
#include "frontend/findings/report.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace orvex::frontend {

enum class Command {
    none,
    translate,
    check,
    fmt,
    info,
    graph,
    expand,
    balance,
    explain,
    codes,
    lsp
};

struct Options {
    Command command = Command::none;
    // As given; for explain, the codes.
    std::vector<std::string> files;

    // How findings are shown.

    Format format = Format::text;
    // --report FORMAT=PATH
    std::vector<std::pair<Format, std::string>> reports;
    Colour colour = Colour::automatic;
    bool quiet = false;
    // Per file; 0: no limit.
    std::size_t max_errors = 20;
    // --warn CODE=LEVEL; "all" for --warn LEVEL.
    std::map<std::string, Severity> levels;
    bool error_on_warnings = false;
    // Counts per code, after the findings.
    bool statistics = false;
    // Status 0 despite findings.
    bool exit_zero = false;

    // What check does to files.

    bool fix = false;
    // Also fixes that may be wrong.
    bool unsafe_fixes = false;
    bool add_allow = false;
    // Shows what would be changed, and changes nothing; also for fmt.
    bool diff = false;

    // fmt: names the files that would be changed, and changes nothing.
    bool check_only = false;

    // How files are read and translated.

    // Files processed at once.
    int jobs = 1;
    std::string stdin_filename = "<stdin>";
    // Only the model with this name.
    std::string model;
    // --translator: path of orvexpp.
    std::string program;
    // Path for the host's FILE statement; empty: the input's name with .scr.
    std::string put_file;
    std::string time;
    int first_model = 0;
    int first_constraint = 0;

    // What translate writes.

    std::string out = ".";
    std::string header;
    std::string depfile;

    // expand, balance.

    // Data files, JSON or CSV.
    std::vector<std::string> data;
    // --set NAME=N, names in capitals.
    std::map<std::string, std::uint64_t> set_sizes;
    // The size of the model instead of its text.
    bool summary = false;

    // lsp: ask about the files instead of serving an editor; the path of the log.

    bool self_check = false;
    std::string log;

    // graph.

    // dot, svg, mermaid, json, table
    std::string picture = "dot";
    std::string focus;
    // -1: no limit.
    int depth = -1;

    // balance.

    // text, json, csv, sam
    std::string table = "text";
    // Relative to the larger of the two numbers.
    double tolerance = 1e-6;
    // Path of a table of accounts to compare with.
    std::string against;
};

}  // namespace orvex::frontend
