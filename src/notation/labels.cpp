#include "notation/labels.h"

#include <algorithm>
#include <iterator>

namespace orvex::notation {

namespace {

constexpr unsigned any_entry = production_entry | demand_entry;

constexpr Label table[] = {
    // text type  later  begins            full   single reported owns  meaning
    {"O", 'P', true, production_entry, false, false, true, false, Meaning::output},
    {"I", 'P', true, production_entry, false, false, true, false, Meaning::input},
    {"D", 'P', false, demand_entry, false, false, true, false, Meaning::demand},
    {"E", 'P', false, demand_entry, false, false, false, false, Meaning::endowment},
    {"A", 'C', true, nothing, true, false, false, false, Meaning::tax_receiver},
    {"N", 'V', true, nothing, true, false, false, false, Meaning::tax_rate},
    {"R", 'V', true, nothing, true, false, false, false, Meaning::ration},
    {"S", 'D', false, nothing, true, true, false, false, Meaning::none},
    {report_label, 'R', false, report_record, false, false, false, false, Meaning::none},
    {"W", 'C', false, nothing, false, false, true, false, Meaning::none},
    {"Z", no_type, true, any_entry, true, false, false, false, Meaning::none},
    {"T", no_type, false, nothing, true, false, false, false, Meaning::tax_rate},
    {quantity_label, no_type, false, nothing, true, true, false, false, Meaning::none},
    {"P", no_type, false, nothing, true, true, false, false, Meaning::price},
    {guard_label, no_type, false, nothing, true, false, false, false, Meaning::none},
    {"PROD", no_type, true, nothing, false, false, false, true, Meaning::none},
    {"DEMAND", no_type, false, nothing, false, false, false, true, Meaning::none},
    {"$PROD", 'A', false, nothing, false, false, false, false, Meaning::none},
    {"$DEMAND", 'C', false, nothing, false, false, false, false, Meaning::none},
};

}  // namespace

std::span<const Label> labels() { return table; }

// Nearly all labels have one letter, which decides before any function is called.
const Label* find_label(View text) {
    if (text.empty()) return nullptr;
    const auto* const found = std::find_if(
        std::begin(table), std::end(table),
        [text](const Label& row) { return row.text.front() == text.front() && row.text == text; });
    return found == std::end(table) ? nullptr : found;
}

TypeCode type_of_name(View label) {
    const Label* const row = find_label(label);
    return row == nullptr ? no_type : row->type;
}

bool names_later(View label) {
    const Label* const row = find_label(label);
    return row != nullptr && row->names_later;
}

}  // namespace orvex::notation
