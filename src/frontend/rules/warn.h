// The findings of rules, with their places and the words that they quote.
#pragma once

#include "frontend/rules/rule.h"

#include <string>
#include <string_view>
#include <vector>

namespace orvex::frontend {

// Adds a finding of the subject's rule about a part of a line.
Finding& warn(const Subject& subject, std::vector<Finding>& findings, Range place,
              std::string message);

std::string_view text_in(const Subject& subject, Range range);

// The text as it is read, in back quotes.
std::string quoted(const Subject& subject, Range range);

// The label of a field with its colon.
Range label_place(const Subject& subject, const Field& field);

// The same in back quotes: `Q:`.
std::string quoted_label(const Subject& subject, const Field& field);

}  // namespace orvex::frontend
