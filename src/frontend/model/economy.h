// A translated model as data, for info, graph and the warnings. All of it comes from the
// translator's two files; lines are those of the user's file.
#pragma once

#include "frontend/syntax/source.h"
#include "frontend/translator/header.h"
#include "frontend/translator/translator.h"

#include <string>
#include <vector>

namespace orvex::frontend {

struct Name {
    std::string name;
    Kind kind = Kind::set;
    int dimension = -1;                  // number of arguments; -1 where it is not known
    std::vector<std::string> arguments;  // as declared, or as first used in a statement
    std::string description;
    int declared =
        0;  // line of the declaration, or of a report variable's record; 0: none, or not known
    std::vector<int>
        references;  // lines, ascending, repeated as listed; the declaration is one of them
    bool is_declared = false;  // also on a line that is not known
};

// A field behind the first of its row: a value, or a name.
struct Field {
    std::string label;
    std::string text;  // "Y0(S)", "GOVT"
    std::string name;  // of a field with a name, else empty
    int line = 0;
};

// A row of a block: its first field and those that follow.
struct Entry {
    std::string label;  // "O", "I", "D", "E", ...; "V" in a report
    std::string name;
    std::string reference;  // "PY(S)"
    std::vector<Field> fields;
    int line = 0;
    bool outside = false;  // an option has ended its block
};

struct Block {
    std::string label;  // "PROD", "DEMAND"; "REPORT" for all report records of the model
    std::string name;
    std::string reference;
    std::vector<Field> fields;  // of the opening line
    std::vector<Entry> entries;
    int line = 0;
};

// A name, and a line where it stands.
struct Place {
    std::string name;
    int line = 0;
};

// The sets over which a declaration or a row is looped.
struct Loop {
    std::vector<std::string> sets;
    int line = 0;
};

struct Economy {
    std::string model;
    int line = 0;  // of $MODEL:
    std::vector<Name> names;
    std::vector<Block> blocks;
    std::vector<Loop> loops;
    std::vector<int> nameless;             // lines of declarations without a name
    std::vector<Place> repeated;           // further declarations of names
    std::vector<std::string> constraints;  // auxiliary variables that have one
    std::vector<int> constraint_lines;     // the line of each
    std::string
        free_text;  // all expressions and constraint bodies, in which names can stand unlisted
    bool references_lost = false;  // names may have more references than are listed
};

// The economy of the model that stands at `index` in the source. `left_out` as for file_line.
Economy read_economy(const Source& source, std::size_t index, const std::vector<bool>& left_out,
                     const ModelOutput& output);

const Name* find_name(const Economy& economy, std::string_view name);

}  // namespace orvex::frontend
