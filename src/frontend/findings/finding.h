// What the front end has to say about a file. Every format shows the same findings.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace orvex::frontend {

enum class Severity { help, note, warning, error };

std::string severity_name(Severity severity);

// A place in a file. Lines and columns count from 1, columns in characters; offsets count bytes
// from 0. The ends are exclusive. Line 0 means the whole file.
struct Span {
    std::string path;
    int line = 0;
    int column = 1;
    int end_column = 1;
    std::size_t begin = 0;
    std::size_t end = 0;
    // The line, without its end.
    std::string text;
};

// A further remark: a note, mostly with a second place, or help.
struct Remark {
    Severity severity = Severity::note;
    std::string message;
    // Without a path where there is no place.
    Span span;
};

struct Finding {
    Severity severity = Severity::error;
    // Of docs/messages.md.
    std::string code;
    // Lower case, no full stop, names in back quotes.
    std::string message;
    Span span;
    std::vector<Remark> remarks;
};

}  // namespace orvex::frontend
