// The information in a header file: its model's variables and constraints, the numbered lines of
// the input and the symbol listing.
#pragma once

#include "frontend/model/model.h"

#include <string>
#include <string_view>
#include <vector>

namespace orvex::frontend {

// A line of the list of variables, in the order of the declarations and report records.
struct Variable {
    // Name and arguments as written, "Y(S)".
    std::string entry;
    // Without surrounding blanks.
    std::string description;
};

// A row of the symbol listing.
struct ListedSymbol {
    std::string name;
    Kind kind = Kind::set;
    // Lines in the translator's count, ascending, repeated as listed.
    std::vector<int> references;
};

struct Header {
    std::vector<Variable> variables;
    // The auxiliary variable of each constraint, from the MODEL statement.
    std::vector<std::string> constraints;
    // The text under "Constraints:", equations and bodies.
    std::string constraint_text;
    // The first and the last numbered line of the listing, in the translator's count; 0 and 0 if
    // there is none.
    int first_line = 0;
    int last_line = 0;
    std::vector<ListedSymbol> symbols;
    // There are more than the translator can list, or numbers too wide for it.
    bool references_lost = false;
};

// Reads a header file, complete or with an error block at its end. A file with only an error block
// gives an empty Header. `lines_before` is the number of lines that the run had read before this
// model: it gives the line numbers above 99999, which the listing shows as asterisks. References
// above 99999 are left out.
Header read_header(std::string_view text, int lines_before);

// The symbol with that name, or null.
const ListedSymbol* find_symbol(const Header& header, std::string_view name);

}  // namespace orvex::frontend
