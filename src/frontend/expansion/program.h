// The contents of a generator file as a tree: the statements that print, loop and test, and the
// expressions in them. It does not depend on data: names are numbers in a table, and a set that is
// looped over is identified by the number of its loop, counted from the outermost one.
#pragma once

#include "frontend/findings/pattern.h"
#include "frontend/model/names.h"
#include "frontend/syntax/tree.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace orvex::frontend {

enum class Operation : std::uint8_t {
    number,
    reference,  // a parameter, or whether elements belong to a set
    ordinal,
    cardinal,
    only_if,  // A$B
    power,    // A**B
    times,
    over,
    plus,
    minus,
    negative,
    equal,
    unequal,
    less,
    less_equal,
    greater,
    greater_equal,
    negation,
    conjunction,
    disjunction,
    exclusive,
    absolute,
    least,
    greatest,
    root,
    exponential,
    logarithm,
    raised,  // POWER
    sum,
};

// An expression. Its operands are other expressions, in GeneratorProgram::operands.
struct Expression {
    Operation operation = Operation::number;
    Range place;  // in the generator text
    double value = 0;
    Index name = 0;   // of a reference or CARD
    Index loop = 0;   // of ORD
    Index first = 0;  // the operands; of a reference the arguments; of SUM the sets
    Index count = 0;
    Index condition = no_index;  // of SUM
    Index body = no_index;
};

// An argument of a name.
struct ElementArgument {
    enum class Kind : std::uint8_t { element, looped, shifted, circular };

    Kind kind = Kind::element;
    bool is_lag = false;
    Index name = 0;  // of an element, in GeneratorProgram::names
    Index loop = 0;
    Index offset = no_index;  // of a lead or lag: the expression after its operator
};

// A set that is looped over, and the number of its loop.
struct LoopedSet {
    Index name = 0;
    Index loop = 0;
};

// An item that a PUT statement prints.
struct Item {
    enum class Kind : std::uint8_t { text, line_end, element, value };

    Kind kind = Kind::text;
    Range text;             // without its quotes
    Index node = no_index;  // of a value
    ElementArgument element;
};

// A statement, followed by the statements inside it.
struct Statement {
    enum class Kind : std::uint8_t { put, loop, condition };
    // What kind of line a PUT statement begins.
    enum class Part : std::uint8_t { other, head, entry, field };

    Kind kind = Kind::put;
    Part part = Part::other;
    Index first =
        0;  // of a PUT statement in GeneratorProgram::items, of a loop in GeneratorProgram::sets
    Index count = 0;
    Index condition = no_index;
    Index end = 0;           // after the statements inside it
    Index block = no_index;  // of a PUT statement, in GeneratorProgram::blocks
};

// A block of the model, which may be printed for many elements.
struct PrintedBlock {
    std::string name;  // "$PROD:Y"
    Range place;
};

// How a program uses a name.
struct NameUse {
    bool is_set = false;  // it is looped over or counted
    bool is_looped = false;
    int arguments = -1;  // -1 if there is no reference to it
    Range place;         // the first one
};

// An element named in the model.
struct UsedElement {
    Index name = 0;
    Range place;
};

// Something wrong with a program or its values; the code is one of docs/messages.md.
struct Flaw {
    std::string_view code;
    std::string_view variant;
    Values values;
    Range place;
};

struct GeneratorProgram {
    std::string_view text;      // the generator file
    NameTable names;            // of sets, parameters and elements
    std::vector<NameUse> uses;  // of the names; an element's use is empty
    std::vector<Expression> nodes;
    std::vector<Index> operands;
    std::vector<ElementArgument> arguments;
    std::vector<LoopedSet> sets;
    std::vector<Item> items;
    std::vector<Statement> statements;
    std::vector<PrintedBlock> blocks;
    std::vector<UsedElement> elements;
    Index loops = 0;  // the largest number open at once
};

// Reads a generator file. Adds flaws for what cannot be run. The text must outlive the program.
GeneratorProgram read_program(std::string_view generator, std::vector<Flaw>& flaws);

// The number of the model's line, as written before the line of the generator file that contains
// the place; 0 if unknown.
int listed_line(std::string_view generator, Offset place);

}  // namespace orvex::frontend
