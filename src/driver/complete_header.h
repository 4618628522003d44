// Completing the header file of a model from the scratch files.
#pragma once

namespace orvex {

// Appends to the header file, which so far has its head and the declared names: the artificial
// equation, the default levels, any constraints, the model statement and the listing. Then the
// scratch files are closed.
void trnscb();

}  // namespace orvex
