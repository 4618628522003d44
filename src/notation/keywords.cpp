#include "notation/keywords.h"

#include "notation/records.h"

#include <algorithm>
#include <iterator>

namespace orvex::notation {

namespace {

constexpr std::size_t whole = 0;
constexpr std::size_t six = 6;

constexpr Keyword table[] = {
    {"PROD", "", whole, Opens::production, no_type, false},
    {"DEMAND", "", whole, Opens::demand, no_type, false},
    {"CONSTRAINT", "", whole, Opens::constraint, no_type, false},
    {"REPORT", "", whole, Opens::report, no_type, false},
    {end_keyword, "", end_keyword.size(), Opens::end, no_type, false},
    {"SECTORS", "1", six, Opens::declaration, 'A', false},
    {"COMMODITIES", "1", six, Opens::declaration, 'P', false},
    {"CONSUMERS", "", six, Opens::declaration, 'C', false},
    {"AUXILIARY", "0", six, Opens::declaration, 'V', true},
    {"ACTIVITIES", "1", six, Opens::declaration, 'A', false},
    {"PRICES", "1", six, Opens::declaration, 'P', false},
    {"MARKETS", "1", six, Opens::declaration, 'P', false},
    {"INCOME", "", six, Opens::declaration, 'C', false},
    {"PEPS", "", whole, Opens::option, no_type, false},
    {"EULCHK", "", whole, Opens::option, no_type, false},
    {"WALCHK", "", whole, Opens::option, no_type, false},
    {"DATECH", "", whole, Opens::option, no_type, false},
    {"FUNLOG", "", whole, Opens::option, no_type, false},
    {"DIAGNL", "", whole, Opens::option, no_type, false},
    {"ECHOP", "", whole, Opens::option, no_type, false},
};

}  // namespace

std::span<const Keyword> keywords() { return table; }

bool ends_model(View text) { return text.starts_with(end_keyword); }

const Keyword* find_keyword(View word) {
    const auto* const found =
        std::find_if(std::begin(table), std::end(table), [word](const Keyword& row) {
            return row.prefix == whole
                       ? row.word == word
                       : word.substr(0, row.prefix) == row.word.substr(0, row.prefix);
        });
    return found == std::end(table) ? nullptr : found;
}

}  // namespace orvex::notation
