// The labels of fields: which symbols they name, and where they may be.
#pragma once

#include "notation/keywords.h"
#include "text/characters.h"

#include <span>

namespace orvex::notation {

// What a label can begin.
enum Begins : unsigned {
    nothing = 0,
    production_entry = 1U << 0U,
    demand_entry = 1U << 1U,
    report_record = 1U << 2U,
};

// The economic meaning of a labelled field: what is made, used, demanded or owned; who receives a
// tax, at which rate and at which price including tax; and which variable multiplies the quantity.
enum class Meaning {
    none,
    output,
    input,
    demand,
    endowment,
    tax_receiver,
    tax_rate,
    price,
    ration
};

struct Label {
    View text;
    TypeCode type;     // of the name in a name field, or no_type
    bool names_later;  // in a later field of an entry it gives a name; other labels give a value
                       // there
    unsigned begins;   // what it usually begins, as bits of Begins; the translator accepts any
    bool full;         // meaningless without a value or a name
    bool single;       // at most one in an entry
    bool reported;     // may be the second field of a report record
    bool owns;         // may be the third
    Meaning meaning;
};

std::span<const Label> labels();

// The row of a label, or of "$PROD" and "$DEMAND", which name a block; null for other texts.
const Label* find_label(View text);

// The type under which the name of a name field with that label is registered, or no_type.
TypeCode type_of_name(View label);

bool names_later(View label);

constexpr View guard_label = "K";     // as the first field of an entry: its value guards the entry
constexpr View quantity_label = "Q";  // as the second field of an entry: its value guards the entry
constexpr View report_label = "V";    // first field of a report record
constexpr View element_label = ".TL";  // makes a label range over the set named before it

}  // namespace orvex::notation
