// The start of a model.
#pragma once

namespace orvex {

// Reads on to the next line that opens a model ("$MODEL:" in column 1, any case) with the wanted
// name, counts the model, opens its files, writes their heads and resets the model's state. Returns
// 0 if a model was found, or 1 if the input ended first; then nothing is opened or written. Ends
// the run if a file cannot be opened.
int start();

}  // namespace orvex
