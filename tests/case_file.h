// The files of tests/cases.
//
// A case file begins with the reason why it is there. What follows are sections, each opened by one
// of these lines and read in their order:
//
//     == given NAME     a file that is in the folder before the run
//     == setup          shell commands before the run
//     == run            shell commands that make the run; without it, "$ORVEXPP" run.ctl
//     == status N       the exit status; without it, 0
//     == out, == err    all that is written on the two streams; without them, nothing
//     == file NAME      a whole file
//     == starts NAME, == ends NAME, == within NAME
//                       the first lines of a file, its last, or lines that follow each other in it
//
// A file that the run makes and no section names is a fault. In the text of a section "·" is a
// blank, \t, \r and \0 are these bytes, \(x*9) is nine times x, and a "\" at the end of a line
// takes away its line end.
#pragma once

#include <string>
#include <vector>

namespace harness {

struct Section {
    std::string kind;
    std::string name;
    std::string text;
    // The file that holds the section, and its line there.
    std::string origin;
    int line = 0;
};

// Throws where a case file breaks the form.
[[noreturn]] void malformed(const std::string& origin, int line, const std::string& fault);
std::vector<Section> read_case(const std::string& path);

// The lines of a text, each with its end.
std::vector<std::string> lines_with_ends(const std::string& text);

// The names of the files with this ending, or of the folders, in a folder.
std::vector<std::string> names_in(const std::string& folder, const std::string& ending);

}  // namespace harness
