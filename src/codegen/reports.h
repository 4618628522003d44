// Report blocks: extra result values, one report variable a record.
//
//     $REPORT:
//     V:RY(S)   O:PY(S)   PROD:Y(S)
//
// The first field names the variable, the second what is reported (a commodity or a consumer), the
// third, which may be missing, the sector or consumer concerned.
#pragma once

namespace orvex {

// Translates the records of the report block up to the next one that begins with "$". Returns 0
// with that record in `record`, or 1 at the end of the input. Stops: " *** REPBLK: continuation
// records not permitted in $REPORT:", " *** REPBLK: first report field must be V", " *** REPBLK:
// syntax error in report record.", " *** REPBLK: conditionals not permitted in report fields.",
// "*** REPBLK: 2nd report field must be I:, O:, D: or W:. Find: ",
// " *** REPBLK: 3rd report field ", " *** REPBLK: extra fields in report record.",
// and those of parse, sloop, chkset and chrfld.
int repblk();

}  // namespace orvex
