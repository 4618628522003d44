// The files of tests/cases.
//
// A case file begins with the reason for it. Then come sections, each opened by one of these lines
// and processed in order:
//
//     == given NAME     a file that is in the folder before the run
//     == setup          shell commands before the run
//     == run            shell commands that make the run; without it, "$ORVEXPP" run.ctl
//     == status N       the exit status; without it, 0
//     == out, == err    everything written to the two streams; without them, nothing
//     == file NAME      a whole file
//     == starts NAME, == ends NAME, == within NAME
//                       the first lines of a file, its last, or consecutive lines in it
//
// A file that the run makes but no section names is a failure. In the text of a section "·" is a
// blank, \t, \r and \0 are these bytes, \(x*9) is nine times x, and a "\" at the end of a line
// removes its line end.
#pragma once

#include <string>
#include <vector>

namespace harness {

struct Section {
    std::string kind;
    std::string name;
    std::string text;
    // The file that contains the section, and its line there.
    std::string origin;
    int line = 0;
};

// Throws if a case file is malformed.
[[noreturn]] void malformed(const std::string& origin, int line, const std::string& fault);
std::vector<Section> read_case(const std::string& path);

// The lines of a text, each with its line end.
std::vector<std::string> lines_with_ends(const std::string& text);

// The names of the files with this extension, or of the folders, in a folder.
std::vector<std::string> names_in(const std::string& folder, const std::string& ending);

}  // namespace harness
