// How a comment begins that allows findings, after its "*", in letters of either case.
#pragma once

#include <string_view>

namespace orvex::frontend {

constexpr std::string_view allowance_mark = "orvex:";

}  // namespace orvex::frontend
