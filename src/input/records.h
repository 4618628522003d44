// The record reader.
#pragma once

namespace orvex {

// Reads the next record that is neither a comment ("*" in column 1) nor blank. Every line on the
// way is numbered in `lineno` and echoed to the listing. Fills `record` (upper case, TABs as
// blanks, without its "!" comment, which goes to `descrp`) and `lstrec` (the line as read). Returns
// 0 if a record was read, 1 at the end of the input; then `record` is blank if blank lines followed
// the last record, and unchanged otherwise.
// blank lines after the last record, else as the caller left it.
int getrec();

}  // namespace orvex
