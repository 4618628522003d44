// An entry of a production or demand block with all its numbers: what a sector makes or uses of a
// commodity, or what a consumer demands or owns of it, and the taxes on it.
#pragma once

#include "frontend/accounts/line_place.h"
#include "notation/labels.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvex::frontend {

// A variable contributes its level to the rate.
struct Tax {
    std::string receiver;
    double rate = 0;
    std::vector<std::string> variables;
};

// A field of a tax: the receiver, the rate, or the variable that is the rate.
struct TaxField {
    enum class Kind { receiver, rate, variable };

    Kind kind = Kind::receiver;
    std::string name;
    double rate = 0;
};

// Names are as printed, with their elements and in capitals: "PY.AGR".
struct Transaction {
    notation::Meaning flow = notation::Meaning::none;  // output, input, demand or endowment
    std::string owner;                                 // the sector or consumer
    std::string commodity;
    std::optional<double> quantity;
    std::string ration;                // the variable that multiplies the quantity, if any
    std::optional<double> price;       // the reference price, including tax
    std::vector<TaxField> tax_fields;  // in order
    LinePlace place = 0;               // of its first field
    LinePlace price_place = 0;         // of the reference price
};

// Does an entry with that label belong to a block of a sector, or of a consumer?
bool is_of_sector(notation::Meaning flow);
bool is_of_consumer(notation::Meaning flow);

// The taxes of an entry. If there are as many receivers as rates, the first rate is for the first
// receiver, and so on. Otherwise a rate belongs to the receiver before it or, if the first such
// field is a rate, to the one after it. Rates for one receiver add up; a rate without a receiver is
// ignored.
std::vector<Tax> taxes_of(const Transaction& entry);

}  // namespace orvex::frontend
