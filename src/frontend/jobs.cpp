#include "frontend/jobs.h"

namespace orvex::frontend {

void in_order(std::size_t count, int jobs, const std::function<void(std::size_t, int)>& work,
              const std::function<void(std::size_t)>& done) {
    (void)jobs;
    for (std::size_t i = 0; i < count; ++i) {
        work(i, 0);
        done(i);
    }
}

}  // namespace orvex::frontend
