// A file as its user sees it: its bytes, its tree, its models, and places in its lines.
#pragma once

#include "frontend/syntax/tree.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace orvex::frontend {

// A model of the file. Lines count from 1.
struct ModelText {
    std::string name;     // in capitals, at most 31 characters; its outputs are named after it
    int line = 0;         // of the line with $MODEL:
    int last = 0;         // its last line, which is $OFFTEXT if it is closed
    bool closed = false;  // by $OFFTEXT, or a line meant as that
};

struct Source {
    std::string path;  // as given, and as messages show it
    std::string bytes;
    Tree tree;
    std::vector<ModelText> models;
};

// Fills source.tree and source.models from source.bytes.
void parse_source(Source& source);

// Reads a whole file, or standard input for "-", and parses it. False, with errno set, if it cannot
// be read; EFBIG if it is too large for a tree.
bool read_source(const std::string& file, Source& source);

// The number of lines; and a line of the file without its line end.
int line_count(const Source& source);
std::string_view line_text(const Source& source, int line);
Offset line_begin(const Source& source, int line);

// The line of a record of the tree; and the line that contains a byte.
inline int line_of_record(Index record) { return static_cast<int>(record) + 1; }
int line_of(const Tree& tree, Offset offset);

// The token that contains a byte.
Index token_at(const Tree& tree, Offset offset);

// The token before the "(" of the list that contains the argument: usually its name. Precondition:
// the byte is in an argument, or where a blank one would be.
Index owner_of_argument(const Tree& tree, Offset offset);

// The field that contains a byte, or no_index.
Index field_at(const Tree& tree, Offset offset);

// The column, from 1, of the byte at `at` (from 0) in a line: counted in UTF-8 characters, or in
// bytes if the line is not UTF-8.
int column_of(std::string_view line, std::size_t at);

}  // namespace orvex::frontend
