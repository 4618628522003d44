// Declaration blocks: the names of the model's variables.
//
//     $SECTORS:
//      Y(S,T)   X$(ORD(T) GT 1)   ! description of the last name
//
// The generator file gets
//
//     PUT'$SECTORS:'/;
//     LOOP((S,T),
//       PUT /,'Y''.'S.TL'.'T.TL;
//     );
//     IF ((ORD(T) GT 1),
//       PUT /,'X';
//     );
//
// and the header file, in its variable list, artificial equation and default levels:
//
//     Y(S,T)
//     X     description of the last name
//
//     +SUM((S,T),Y(S,T))
//     +X$(ORD(T) GT 1)
//
//     Y.L(S,T) = 1;
//     X.L = 1;
#pragma once

namespace orvex {

// Reads the records of the declaration block of `keywrd`, up to the next one that begins with "$".
// Each name goes to the symbol table, to the header file's variable list, to the default levels, to
// the artificial equation and, in a LOOP over its sets, to the generator file. Returns 0 with that
// "$" record in `record`, or 1 at the end of the input.
// Stops: those of freefd, chkcnd, rdarg, sloop, addsym and chrfld.
int decblk();

// Adds the term of the current `field` (arg, narg, condtn) to the artificial equation: summed over
// its sets, under its condition.
void dumeqn();

}  // namespace orvex
