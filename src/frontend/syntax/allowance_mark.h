// How a comment that allows findings begins, after its "*", in upper or lower case.
#pragma once

#include <string_view>

namespace orvex::frontend {

constexpr std::string_view allowance_mark = "orvex:";

}  // namespace orvex::frontend
