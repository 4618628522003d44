// Constraint blocks: an equation in the host's algebra, paired with an auxiliary variable.
//
//     $CONSTRAINT:TAU(S)$X0(S)
//        TAU(S) =E= 0.1*Y(S);
//
// The equation reaches the header file through one scratch file, and its place in the model
// statement through another:
//
//     EQUATION EQ_001(S) Complementary equation(s) for TAU;
//
//     EQ_001(S)$X0(S)..
//        TAU(S) =E= 0.1*Y(S);
//
//          EQ_001.TAU
#pragma once

namespace orvex {

// Writes the constraint of the keyword record in `record` to the constraint and model-statement
// scratch files. The body is copied unchanged, up to and including the first record with a ";", or
// up to the next record that begins with "$". Returns 0 with the next record in `record`, or 1 at
// the end of the input.
// Stops: constraint-colon-missing, and those of chksym.
int conblk();

}  // namespace orvex
