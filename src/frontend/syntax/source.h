// A file as its user sees it: lines, columns, and where its models stand. This is all that the
// front end knows of the notation by itself: which lines begin and end a model, and what column 1
// says.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace orvex::frontend {

// What a line is to the translator.
enum class LineKind {
    outside,       // not in a model
    model,         // the line $MODEL:
    blank,         // blanks and TABs only
    comment,       // "*" in column 1
    keyword,       // "$" in column 1
    continuation,  // "+" in column 1
    entry,         // any other record of a declaration, a function or a report
    algebra,       // the body of a $CONSTRAINT: block, up to its first ";"
};

struct SourceLine {
    std::string_view text;   // without its line end (LF, CR LF)
    std::size_t offset = 0;  // of its first byte in the file
    LineKind kind = LineKind::outside;
    int block = 0;  // line of the keyword record whose block it is in; 0 where there is none
};

// A model of the file. Lines count from 1.
struct ModelText {
    std::string name;     // upper case, at most 31 characters: what its outputs are named after
    int line = 0;         // of $MODEL:
    int last = 0;         // its last line, which is $OFFTEXT when it is closed
    bool closed = false;  // with $OFFTEXT
};

struct Source {
    Source() = default;
    Source(const Source&) = delete;  // lines point into bytes
    Source(Source&&) = delete;
    Source& operator=(const Source&) = delete;
    Source& operator=(Source&&) = delete;
    ~Source() = default;

    std::string path;  // as it was given; what messages show
    std::string bytes;
    std::vector<SourceLine> lines;  // line n is lines[n - 1]
    std::vector<ModelText> models;
};

// The record that the translator makes of a line: its first 255 bytes, upper case, without a "!"
// comment, TABs and carriage returns as blanks, trailing blanks cut.
std::string record_of(std::string_view line);

// Does a "$" or "+" begin the line, but not in column 1?
bool is_indented(std::string_view line);

// The first word of a text: up to a blank, a TAB or a colon.
std::string_view first_word(std::string_view text);

// Fills source.lines and source.models from source.bytes.
void split_source(Source& source);

// Reads a whole file, or standard input for "-", into source.bytes and splits it. False, with errno
// set, where it cannot be read.
bool read_source(const std::string& file, Source& source);

// A line of the file, which is there.
const SourceLine& line_at(const Source& source, int line);

// How many lines a run has counted when it comes to that model. `left_out` says for each model of
// the file whether the run passed it over; an empty one stands for none.
int lines_before(const Source& source, std::size_t model, const std::vector<bool>& left_out);

// The line of the file that the translator counts as `number` within the run: it counts from the
// line behind each $MODEL: and goes on from model to model. 0 where there is none.
int file_line(const Source& source, int number, const std::vector<bool>& left_out);

// Column, from 1, of the byte at `at` (from 0) of a line: characters of UTF-8, or bytes where the
// line is not UTF-8.
int column_of(std::string_view line, std::size_t at);

// Can the byte be part of a name: a letter, a digit or "_"?
bool is_name_byte(char c);

// Position (from 0) of `word` in `line` as a whole name, whatever its case, at or after `from` and
// in front of a "!" comment; npos where it is not there. A name is bounded by what cannot be part
// of one: anything but letters, digits and "_".
std::size_t find_word(std::string_view line, std::string_view word, std::size_t from = 0);

}  // namespace orvex::frontend
