// The parts of the text around an error.
#pragma once

#include "frontend/rules/error_case.h"
#include "frontend/syntax/fields.h"

#include <string>
#include <string_view>

namespace orvex::frontend {

// The text of a part of the file; and the same as it is read, in capitals.
std::string_view text_in(const ErrorCase& at, Range range);
std::string as_read(const ErrorCase& at, Range range);

// The field of the error, split into its parts. Precondition: it has one.
FieldParts parts_at(const ErrorCase& at);

// The label before a byte of a field, with its colon, "Q:"; for the name in an opening record, its
// keyword, "$PROD:". Empty if there is none.
std::string label_before(const ErrorCase& at, Offset offset);

// The keyword of a block as written, "$PROD"; empty for a record without one.
std::string keyword_of_record(const ErrorCase& at, Index record);

// The block that contains the error, or null.
const Block* block_of(const ErrorCase& at);

// The entry of the block that contains the error; null in an opening record.
const Entry* entry_of(const ErrorCase& at, const Block& block);

// Does the model have a block that declares names of that kind?
bool declares(const Model& model, Kind kind);

// The usual keyword to declare names of that kind, "$SECTORS:". Precondition: they are variables.
std::string declaring_keyword(Kind kind);

// Breaks the line of the error before the byte, and indents the rest like the line.
Edit breaking_row(const ErrorCase& at, Offset offset);

// A part of the file without blanks at its ends.
Range without_blanks(const ErrorCase& at, Range range);

}  // namespace orvex::frontend
