// Completing the header file of a model from the scratch files.
#pragma once

namespace orvex {

// Appends to the header file, which so far holds its head and the declared names: the artificial
// equation, the default levels, the constraints if there are any, the model statement and the
// listing. The scratch files are closed then.
void trnscb();

}  // namespace orvex
