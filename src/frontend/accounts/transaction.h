// An entry of a production or demand block with all its numbers: what a sector makes or uses of a
// commodity, or what a consumer demands or owns of it, and the taxes on that.
#pragma once

#include "notation/labels.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvex::frontend {

// Rates add up; those of variables are their levels. Without a receiver, or without a rate, nothing
// is paid.
struct Tax {
    std::string receiver;
    double rate = 0;
    std::vector<std::string> variables;
};

// Names are printed ones, with their elements and in capitals: "PY.AGR".
struct Transaction {
    notation::Meaning flow = notation::Meaning::none;  // output, input, demand or endowment
    std::string owner;                                 // the sector or consumer
    std::string commodity;
    std::optional<double> quantity;
    std::string ration;           // the variable that multiplies the quantity, or nothing
    std::optional<double> price;  // the reference price, with tax
    std::vector<Tax> taxes;
    bool rates_first = false;  // each rate comes before its receiver
    std::size_t place = 0;  // of its first field: the number of its line, or what its maker likes
    std::size_t price_place = 0;  // of the reference price
};

// Does an entry with that label belong to a sector's block, or to a consumer's?
bool is_of_sector(notation::Meaning flow);
bool is_of_consumer(notation::Meaning flow);

// Take the fields of taxes in their order. A rate goes to the receiver before it, or to the one
// after it where the entry's first such field is a rate.
void add_receiver(Transaction& entry, std::string_view name);
void add_rate(Transaction& entry, double rate);
void add_variable_rate(Transaction& entry, std::string_view variable);

}  // namespace orvex::frontend
