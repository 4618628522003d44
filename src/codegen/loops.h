// Set loops and lead/lag: the LOOPs, guards and checks that a field's set arguments need. The
// active sets are those that open LOOPs control.
#pragma once

namespace orvex {

// Opens one LOOP over the sets among the field's arguments and extra indices that are not active
// yet, with the field's condition attached. If there is no such set, opens a block IF for the
// condition, if any. Moves the extra indices of `arg` directly after its own arguments. Quoted
// elements, leads and lags open no loop.
// Stops (overflow): set-name-too-long, too-many-sets.
void sloop();

// Opens a block IF for each lead or lag among the own arguments. It holds when the shifted position
// is within the set. Circular ones ("++", "--") need none.
// Stops: lead-and-lag, lead-set-not-looped.
void leadlg();

// Returns only when every own argument that is not quoted is an active set.
// Stops: set-not-looped.
void chkset();

}  // namespace orvex
