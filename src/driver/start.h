// The start of a model.
#pragma once

namespace orvex {

// Reads on to the next line that opens a model ("$MODEL:" in column 1, any case) of the wanted
// name, counts the model, opens its files, writes their heads and resets the model's state. Returns
// 0 when a model was found, 1 when the input ended first; nothing is opened or written then. Ends
// the run when a file cannot be opened.
int start();

}  // namespace orvex
