// Makes the findings of rules, with their places and the words that they quote.
#pragma once

#include "frontend/findings/pattern.h"
#include "frontend/rules/rule.h"

#include <string>
#include <string_view>
#include <vector>

namespace orvex::frontend {

// Adds a finding of the subject's rule about a part of a line, with the message of its code, or of
// a variant of it. The values fill the placeholders.
Finding& warn(const Subject& subject, std::vector<Finding>& findings, Range place,
              const Values& values = {}, std::string_view variant = {});

std::string_view text_in(const Subject& subject, Range range);

// The text as it is read, in capitals.
std::string as_read(const Subject& subject, Range range);

// The label of a field with its colon.
Range label_place(const Subject& subject, const Field& field);

// The same as it is read: "Q:".
std::string label_text(const Subject& subject, const Field& field);

}  // namespace orvex::frontend
