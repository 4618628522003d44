// Works on many files at once, with results in the order of the files.
#pragma once

#include <cstddef>
#include <functional>

namespace orvex::frontend {

// Calls work(index, worker) for 0 <= index < count, on `jobs` threads numbered from 0, and
// done(index) for each once it and all earlier ones are ready; calls of done never overlap. No
// thread runs more than a few results ahead of done. An exception from either ends the work and is
// rethrown.
void in_order(std::size_t count, int jobs, const std::function<void(std::size_t, int)>& work,
              const std::function<void(std::size_t)>& done);

}  // namespace orvex::frontend
