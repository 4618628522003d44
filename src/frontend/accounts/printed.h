// The printed form of models, as a solver reads it: one field per line, with "+" before the labels
// of all fields of an entry but the first. A host prints blanks around names and numbers.
#pragma once

#include "frontend/accounts/books.h"
#include "frontend/accounts/line_place.h"
#include "frontend/accounts/transaction.h"
#include "notation/keywords.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace orvex::frontend {

// The variant of a fault for a text that is a model.
constexpr std::string_view model_fault = "model";

// A line that cannot be read: "number", "name", "line", "label" (no block is open there), "long" or
// "model" (the text is a model, not a printed one).
struct PrintedFault {
    std::string_view variant;
    std::string text;
    LinePlace line = 0;
};

// The functions called with the parts of the text, in order.
struct PrintedParts {
    std::function<void(std::string_view name, LinePlace line)> model;
    std::function<void(AccountKind kind, std::string_view name, LinePlace line)> declaration;
    std::function<void(const Transaction& entry)> entry;
    std::function<void(const PrintedFault& fault)> fault;
};

struct PrintedReader {
    const PrintedParts& parts;
    bool in_model = false;
    notation::Opens section = notation::Opens::end;  // of the last keyword read
    std::optional<AccountKind> declares = {};        // in a declaration; none for other variables
    std::string owner = {};                          // of the block
    std::optional<Transaction> entry = {};           // until its last field has been read
};

// Takes one line, without its line end.
void read_printed(PrintedReader& reader, std::string_view text, LinePlace line);

// Call after the last line.
void end_printed(PrintedReader& reader);

// A name with its elements, in capitals and without blanks around its parts.
std::string printed_name(std::string_view text);

// A number as hosts and this program print it; EPS is 0. None for any other text.
std::optional<double> printed_number(std::string_view text);

}  // namespace orvex::frontend
