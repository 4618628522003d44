// Rules for make.
#pragma once

#include <string>
#include <vector>

namespace orvex::frontend {

// The text of a depfile: all outputs before the colon, all inputs after it, names escaped as make
// requires.
std::string depfile(const std::vector<std::string>& outputs,
                    const std::vector<std::string>& inputs);

}  // namespace orvex::frontend
