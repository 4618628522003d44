// The front end's findings about a file. Every format shows the same findings.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace orvex::frontend {

// A finding that is off is shown only if --warn gives it a level.
enum class Severity { off, help, note, warning, error };

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
    // The line, without its line end.
    std::string text;
};

// A further remark: a note, usually with a second place, or help.
struct Remark {
    Severity severity = Severity::note;
    std::string message;
    // Its path is empty if there is no place.
    Span span;
};

// Replaces bytes of the file by a text; the end is exclusive. An empty range inserts. Lines and
// columns are those of both ends.
struct Edit {
    std::size_t begin = 0;
    std::size_t end = 0;
    std::string text;
    int line = 0;
    int column = 0;
    int end_line = 0;
    int end_column = 0;
};

// How sure it is that edits do what the author means: certain, maybe wrong, or with placeholders
// that the author has to fill in.
enum class Confidence { certain, maybe, placeholders };

// "machine-applicable", "maybe-incorrect" or "has-placeholders": the name in formats for programs.
std::string confidence_name(Confidence confidence);

// The correction of a finding: edits in the order of the file that do not touch one another.
struct Fix {
    Confidence confidence = Confidence::maybe;
    std::vector<Edit> edits;
};

struct Finding {
    Severity severity = Severity::error;
    // One of docs/messages.md.
    std::string code;
    // Lower case, no full stop, names in backticks.
    std::string message;
    Span span;
    std::vector<Remark> remarks;
    std::optional<Fix> fix = {};
};

}  // namespace orvex::frontend
