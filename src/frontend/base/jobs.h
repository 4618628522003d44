// Work on many files at once, with results in the order of the files.
#pragma once

#include <cstddef>
#include <functional>

namespace orvex::frontend {

// Calls work(index, worker) for 0 <= index < count, on `jobs` threads numbered from 0, and
// done(index) for each when it and all before it are ready; never two calls of done at once. No
// thread runs ahead of done by more than a few results. An exception out of either ends the work
// and is thrown on.
void in_order(std::size_t count, int jobs, const std::function<void(std::size_t, int)>& work,
              const std::function<void(std::size_t)>& done);

}  // namespace orvex::frontend
