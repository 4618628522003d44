// An entry of a production or demand block with all its numbers: what a sector makes or uses of a
// commodity, or what a consumer demands or owns of it, and the taxes on that.
#pragma once

#include "frontend/accounts/line_place.h"
#include "notation/labels.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvex::frontend {

// The rates of variables are their levels.
struct Tax {
    std::string receiver;
    double rate = 0;
    std::vector<std::string> variables;
};

// A field of a tax: who receives it, its rate, or the variable that is its rate.
struct TaxField {
    enum class Kind { receiver, rate, variable };

    Kind kind = Kind::receiver;
    std::string name;
    double rate = 0;
};

// Names are printed ones, with their elements and in capitals: "PY.AGR".
struct Transaction {
    notation::Meaning flow = notation::Meaning::none;  // output, input, demand or endowment
    std::string owner;                                 // the sector or consumer
    std::string commodity;
    std::optional<double> quantity;
    std::string ration;                // the variable that multiplies the quantity, or nothing
    std::optional<double> price;       // the reference price, with tax
    std::vector<TaxField> tax_fields;  // in their order
    LinePlace place = 0;  // of its first field: the number of its line, or what its maker likes
    LinePlace price_place = 0;  // of the reference price
};

// Does an entry with that label belong to a sector's block, or to a consumer's?
bool is_of_sector(notation::Meaning flow);
bool is_of_consumer(notation::Meaning flow);

// The taxes of an entry. With as many receivers as rates, the first rate is for the first receiver,
// and so on. Otherwise a rate is for the receiver before it or, where the first such field is a
// rate, for the one after it. Rates for one receiver add up; one without a receiver is left out.
std::vector<Tax> taxes_of(const Transaction& entry);

}  // namespace orvex::frontend
