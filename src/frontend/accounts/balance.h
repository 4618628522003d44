// Balancing printed models. A first pass over the text builds the accounts; if some have a gap, a
// second pass looks for the entry that may be wrong. Memory use depends only on the number of
// accounts.
#pragma once

#include "frontend/accounts/books.h"
#include "frontend/accounts/gaps.h"
#include "frontend/accounts/line_place.h"
#include "frontend/accounts/matrix.h"
#include "frontend/accounts/printed.h"

#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace orvex::frontend {

// An entry whose reference price is wrong, and how many more have the same place.
struct PriceGap {
    Transaction entry;
    double expected = 1;
    std::size_t more = 0;
};

struct ModelAccounts {
    std::string name;
    LinePlace line = 0;  // of the line with $MODEL:
    Books books;
    Gaps gaps;
    std::optional<Transaction> likely;     // the entry that may be wrong
    std::map<LinePlace, PriceGap> prices;  // the first ones, by the line of the price
    std::size_t more_prices = 0;           // lines with further ones
    std::vector<PrintedFault> faults;      // the first ones; if any, no account has been judged
    Matrix matrix;                         // if wanted
};

struct BalanceSettings {
    Levels levels;
    double tolerance = usual_tolerance;
    bool wants_matrix = false;
    bool has_rows = false;  // a place is a row, which can be printed for many elements
};

// A pass over the lines of a printed text, each with its line number, or with the place in the
// model that it comes from. False, with errno set, if they cannot be read.
using LineSink = std::function<void(std::string_view text, LinePlace line)>;
using LinePass = std::function<bool(const LineSink& sink)>;

// The accounts of a model whose entries are all in memory.
ModelAccounts balance_transactions(std::span<const Transaction> entries,
                                   const BalanceSettings& settings);

// Appends the accounts of all models of the text. False if a pass failed.
bool balance_text(const LinePass& pass, const BalanceSettings& settings,
                  std::vector<ModelAccounts>& models);

}  // namespace orvex::frontend
