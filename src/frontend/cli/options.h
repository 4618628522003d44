// What the command line asks for.
#pragma once

#include "frontend/base/streams.h"
#include "frontend/findings/report.h"

#include <cstddef>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace orvex::frontend {

enum class Command { none, translate, check, info, graph, explain, codes };

// What becomes of a warning.
enum class Level { off, warning, error };

struct Options {
    Command command = Command::none;
    std::vector<std::string> files;  // as given; explain: the codes

    // How findings are shown.
    Format format = Format::text;
    std::vector<std::pair<Format, std::string>> reports;  // --report FORMAT=PATH
    Colour colour = Colour::automatic;
    bool quiet = false;
    std::size_t max_errors = 20;          // for each file; 0: no limit
    std::map<std::string, Level> levels;  // --warn CODE=LEVEL; "all" for --warn LEVEL
    bool error_on_warnings = false;

    // How files are read and translated.
    int jobs = 1;  // at once
    std::string stdin_filename = "<stdin>";
    std::string model;     // only the model of this name
    std::string program;   // --translator: path of orvexpp
    std::string put_file;  // path for the host's FILE statement; empty: the input's name with .scr
    std::string time;
    int first_model = 0;
    int first_constraint = 0;

    // What translate writes.
    std::string out = ".";
    std::string header;
    std::string depfile;

    // info and graph.
    bool json = false;
    std::string picture = "dot";  // dot, svg, mermaid, json, table
    std::string focus;
    int depth = -1;  // -1: no limit
};

}  // namespace orvex::frontend
