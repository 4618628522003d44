// How much the translator reads and keeps. Anything longer is cut, or stops it.
#pragma once

namespace orvex::notation {

constexpr int record_columns = 255;     // of a line, and of a generated statement
constexpr int label_columns = 20;       // of a label: the last ones count
constexpr int keyword_columns = 12;     // of a keyword with its colon, "$" not counted
constexpr int model_name_columns = 31;  // of a model's name
constexpr int argument_columns = 80;    // of an argument
constexpr int name_columns = 65;        // of a symbol or set; a longer one stops the run
constexpr int most_arguments = 7;       // own arguments of a field
constexpr int most_symbols = 1000;      // of a model
constexpr int most_active_sets = 1000;  // at one time

}  // namespace orvex::notation
