// The generator-file writer: every line of the file's body carries the input line's number in a
// comment and is indented by two blanks for each open level. Three kinds of levels are counted:
// condition levels (nif), LOOPs (nloop) and block IFs (nblkif).
//
// The headers of the block writers show the generated lines without that comment.
#pragma once

#include "text/text.h"

namespace orvex {

// Writes `output` as one numbered and indented line (nothing if it is blank), then clears it. Text
// past column 255 is cut.
void wrtzlm();

enum class Level { condition, loop, block_if };

// Closes one level of that kind with a line ");". Does nothing if none is open.
void closel(Level kind);

// Opens a condition level that holds when `cond` is not zero. A blank `cond` opens none.
void ifblck(View cond);

// Closes all levels, conditions before loops before block IFs, resets the active sets and the block
// marks, and writes an empty line.
void endblk();

// Closes all levels and passes `record` through as a PUT line.
void putrec();

}  // namespace orvex
