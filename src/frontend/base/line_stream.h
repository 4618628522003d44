// The lines of a text of any length, read piece by piece.
#pragma once

#include <cstddef>
#include <functional>
#include <string_view>

namespace orvex::frontend {

// What a line has beyond these bytes is dropped.
constexpr std::size_t longest_line = std::size_t{1} << 20U;

// Calls work(line) for each line from the descriptor's position on, without its LF. False, with
// errno set, where reading fails.
bool for_each_line(int descriptor, const std::function<void(std::string_view)>& work);

}  // namespace orvex::frontend
