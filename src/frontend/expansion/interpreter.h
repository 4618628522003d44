// Runs the program of a generator file.
#pragma once

#include "frontend/expansion/data.h"
#include "frontend/expansion/expand.h"
#include "frontend/expansion/program.h"

#include <cstdint>
#include <string>
#include <vector>

namespace orvex::frontend {

// How often each statement of a program runs; for a loop or a condition, the passes of its body.
using Passes = std::vector<std::uint64_t>;

// Evaluates everything once without printing. Adds values that are not finite to the flaws, once
// per place. Precondition for this and run_program: check_data has found no flaw.
Passes try_program(const GeneratorProgram& program, const Data& data, const Pause& pause,
                   std::vector<Flaw>& flaws);

// Prints the lines. Precondition: try_program has found no flaw.
void run_program(const GeneratorProgram& program, const Data& data, const Pause& pause,
                 const TakeLine& take_line);

// A number as printed: the shortest text that denotes it; never "-0". Precondition: it is finite.
void append_number(std::string& text, double value);

}  // namespace orvex::frontend
