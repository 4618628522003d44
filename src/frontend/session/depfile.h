// Rules for make.
#pragma once

#include <string>
#include <vector>

namespace orvex::frontend {

// The text of a depfile: all outputs left of the colon, all inputs right of it, names escaped as
// make reads them.
std::string depfile(const std::vector<std::string>& outputs,
                    const std::vector<std::string>& inputs);

}  // namespace orvex::frontend
