// The meaning of a tree: the names of a model and each place where they are used, its blocks,
// entries, nests, constraints and reports, and every error for which the translator would stop. It
// is built even for a broken text, from the parts that are intact: after a fault the rest is read
// as if that place were correct.
#pragma once

#include "frontend/model/names.h"
#include "frontend/syntax/tree.h"
#include "notation/arguments.h"
#include "notation/keywords.h"
#include "notation/labels.h"

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace orvex::frontend {

// The host's names are those of its own program, which the model only mentions in expressions.
enum class Kind { sector, commodity, consumer, auxiliary, parameter, report, set, host };

constexpr int kind_count = 8;

// "sector", "commodity", ...: the name in messages; or with an article, "a sector", "an auxiliary
// variable".
std::string_view kind_name(Kind kind);
std::string_view kind_with_article(Kind kind);

// A sector, commodity, consumer or auxiliary variable.
bool is_variable(Kind kind);

Kind kind_of_type(notation::TypeCode type);

// What a name is used as.
enum class Role {
    declared,      // in a declaration
    block,         // as the owner of a block
    produced,      // O:
    used,          // I:
    demanded,      // D:
    endowed,       // E:
    receives_tax,  // A:
    rate,          // N:
    ration,        // R:
    value,         // in a value
    condition,     // in a condition
    set,           // as an argument
    lead,          // as the set of a lead or lag
    constraint,    // a constraint's variable, or a name in its body
    report,        // in a report
    other,         // in a field whose label names nothing
};

// "declared", "receives_tax", ...
std::string_view role_name(Role role);

struct Use {
    Index symbol;
    Range range;
    Index record;
    Index listed;  // the record under whose number the translator lists it, or no_index
    Index next;    // the next use of the symbol, or no_index
    Role role;
};

struct Symbol {
    Kind kind = Kind::host;
    int dimension = -1;    // number of arguments; -1 if unknown
    bool entered = false;  // in the translator's table of symbols
    bool is_declared = false;
    bool touched = false;  // it is in a part of the text that has a fault: less is known about it
    Range declaration;     // its name there; for a report variable, in its record
    Index declared_record = no_index;
    Range description;                   // the text after "!", without surrounding blanks
    std::vector<std::string> arguments;  // as declared, or as first used, in capitals
    Index first_use = no_index;
    Index last_use = no_index;
};

struct Argument {
    Range range;
    Index symbol;  // of its whole text, as the translator enters it
    Index use;     // of its name, or no_index for an element or a blank argument
    notation::ArgumentKind kind;
};

// A name with its arguments.
struct Reference {
    Index symbol = no_index;  // no_index for a value that is an expression or a number
    Index use = no_index;
    Range name;
    Index first_argument = 0;  // in Model::arguments
    Index argument_count = 0;
    Index first_extra = 0;  // the extra indices after "#"
    Index extra_count = 0;
};

struct Field {
    const notation::Label* row = nullptr;  // of a label that the notation knows; null for a nest
    Range label;
    Range text;     // the value: "Y0(S)", "GOVT"
    Range ignored;  // dropped text after the arguments of a name
    Range before;   // dropped text before the label
    Reference reference;
    Index record = 0;
    Index node = 0;        // in Tree::fields
    bool is_name = false;  // gives a name; otherwise a value
    bool faulty = false;
    bool unlooped = false;  // has an argument without a loop over it
};

struct Entry {
    Field head;
    Index first_field = 0;  // of the other fields, in Model::fields
    Index field_count = 0;
    bool refused = false;  // its name cannot be used like this
};

struct Block {
    const notation::Keyword* keyword = nullptr;  // as it was meant; null if unknown
    Field head;                                  // of a production or demand block
    Index record = 0;
    Index first_field = 0;  // of the opening record
    Index field_count = 0;
    Index first_entry = 0;  // of a report: its records
    Index entry_count = 0;
    bool unclear = false;  // it has a record that cannot be read
};

// A nest of a block. An entry belongs to a nest by its label.
struct Nest {
    std::string name;  // in capitals, with ".TL" if it ranges over a set
    Range label;       // empty for one that every block has
    Index block;
    Index parent;  // the nest in its parentheses, or no_index
};

struct Constraint {
    Index symbol = no_index;
    Range name;
    Index record = 0;
};

// Something for which the translator stops, or would stop if it got that far.
struct Error {
    Fault fault = Fault::none;
    Range place;
    Index record = 0;
    Index read = 0;    // the last line that the translator has read when it stops
    std::string text;  // the name, argument, label or keyword in its message
    Index symbol = no_index;
    Kind expected = Kind::host;  // what the name is used as
    int dimension = -1;          // and the number of its arguments
    std::vector<Range> also;     // further places with the same cause
};

// A statement of the generator file that passes its last column and so loses its end.
struct CutStatement {
    enum class Part { value, condition, sets, levels };  // what makes it long

    Field field;
    Part part;
    Range place;
    std::size_t columns;  // needed, including its indentation
    int levels;           // that it is in
};

struct Model {
    std::string name;   // in capitals, cut as the translator cuts it
    Index node = 0;     // in Tree::models
    bool lost = false;  // its end is missing, or a table is full: the rest is not checked
    NameTable names;    // the number of a name is that of its symbol
    std::vector<Symbol> symbols;
    std::vector<Use> uses;
    std::vector<Argument> arguments;
    std::vector<Field> fields;
    std::vector<Entry> entries;
    std::vector<Block> blocks;
    std::vector<Nest> nests;
    NameTable nest_keys;  // block and name of each nest
    std::vector<Constraint> constraints;
    std::vector<Field> repeated;  // further declarations of names
    std::vector<Field> nameless;  // declarations without a name
    std::vector<CutStatement> cut;
    std::vector<Error> errors;     // in the order of the translator's steps
    std::vector<Index> declared;   // symbols in the order of their declarations
    bool opening_is_open = false;  // its last fields belong to a block's opening record
};

std::span<const Field> fields_of(const Model& model, const Block& block);
std::span<const Field> fields_of(const Model& model, const Entry& entry);
std::span<const Entry> entries_of(const Model& model, const Block& block);
std::span<const Argument> arguments_of(const Model& model, const Reference& reference);
std::span<const Argument> extras_of(const Model& model, const Reference& reference);

inline const std::string& name_of(const Model& model, Index symbol) {
    return model.names.text(symbol);
}

// The symbol with that name, or null.
const Symbol* find_symbol(const Model& model, std::string_view name);

// Is a declared name used anywhere except in declarations?
bool is_used(const Model& model, const Symbol& symbol);

bool is_opened_by(const Block& block, notation::Opens opens);

// "PY(S,"US")" in capitals; only the name if it has no arguments.
std::string reference_text(const Model& model, std::string_view bytes, const Reference& reference);

}  // namespace orvex::frontend
