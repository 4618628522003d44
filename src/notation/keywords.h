// The keywords that begin a record, after a "$" in column 1.
#pragma once

#include "text/characters.h"

#include <cstddef>
#include <span>

namespace orvex::notation {

// What a keyword opens or does.
enum class Opens { declaration, production, demand, constraint, report, option, end };

// The code for a kind of name: A sector, P commodity, C consumer, V auxiliary variable, D
// parameter, R report variable, S set.
using TypeCode = char;
constexpr TypeCode no_type = '\0';
constexpr TypeCode set_type = 'S';

// Must a name of that type be declared before the first report?
constexpr bool is_variable(TypeCode type) { return View("ACPV").find(type) != View::npos; }

struct Keyword {
    View word;           // as usually written
    View level;          // the default level of the names that it declares, if any
    std::size_t prefix;  // how many leading characters identify it; 0: the whole word
    Opens opens;
    TypeCode type;    // of the names that it declares
    bool only_whole;  // with another ending it declares names without type and level
};

std::span<const Keyword> keywords();

// The row of a keyword as read, without its "$" and colon; null for an unknown one.
const Keyword* find_keyword(View word);

// Does the text after the "$" of a record end the model? It needs no colon.
bool ends_model(View text);

// Does the keyword give type and level to the names that it declares?
constexpr bool gives_type(const Keyword& row, View word) {
    return row.type != no_type && (!row.only_whole || word == row.word);
}

}  // namespace orvex::notation
