// The lines of a text of any length, read in pieces.
#pragma once

#include <cstddef>
#include <functional>
#include <string_view>

namespace orvex::frontend {

// Bytes of a line after this many are dropped.
constexpr std::size_t longest_line = std::size_t{1} << 20U;

// Calls work(line) for each line from the descriptor's position on, without its LF. False, with
// errno set, if reading fails.
bool for_each_line(int descriptor, const std::function<void(std::string_view)>& work);

}  // namespace orvex::frontend
