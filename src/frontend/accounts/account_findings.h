// The results of balancing a model, as findings.
#pragma once

#include "frontend/accounts/balance.h"
#include "frontend/accounts/gaps.h"
#include "frontend/accounts/line_place.h"
#include "frontend/findings/finding.h"
#include "frontend/findings/pattern.h"

#include <cstddef>
#include <functional>
#include <string_view>
#include <vector>

namespace orvex::frontend {

// The codes of the findings about accounts and entries.
constexpr std::string_view gap_code = "account-unbalanced";
constexpr std::string_view open_demands_code = "demand-quantity-missing";
constexpr std::string_view price_code = "price-mismatch";

// The words of a finding: the variant of its message and the values for its placeholders.
struct FindingWords {
    std::string_view variant;
    Values values;
};

FindingWords words_of_gap(const Account& account);
FindingWords words_of_open_demands(const Account& consumer);
FindingWords words_of_price(const PriceGap& price);

// The text of a note at the likely entry.
constexpr std::string_view likely_note =
    "this may be the wrong entry: no other belongs to all unbalanced accounts";

// Where accounts and transactions are.
struct Places {
    std::function<Span(LinePlace place)> of;
    std::function<Span(const Account& account)> of_account;
};

// The places of a model's findings.
std::vector<LinePlace> places_in(const ModelAccounts& model);

std::vector<Finding> findings_of(const ModelAccounts& model, const Places& places);

}  // namespace orvex::frontend
