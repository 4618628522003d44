#include "frontend/base/jobs.h"

#include "frontend/base/interrupts.h"

#include <condition_variable>
#include <exception>
#include <mutex>
#include <system_error>
#include <thread>
#include <vector>

namespace orvex::frontend {

namespace {

// Results per thread that may wait for an earlier one. This bounds the memory of a long run.
constexpr std::size_t ahead = 4;

// The data shared by the threads. Everything is guarded by the mutex.
struct Line {
    std::mutex mutex;
    std::condition_variable changed;
    std::size_t next = 0;     // the first index that no thread has taken
    std::size_t taken = 0;    // done() was called for all indices below
    std::vector<char> ready;  // a ring of the indices from `taken` on
    std::exception_ptr failure;
};

void work_on(Line& line, std::size_t count, int worker,
             const std::function<void(std::size_t, int)>& work) {
    std::unique_lock lock(line.mutex);
    for (;;) {
        line.changed.wait(lock, [&] {
            return line.failure || line.next == count || line.next < line.taken + line.ready.size();
        });
        if (line.failure || line.next == count) return;
        const std::size_t index = line.next++;
        lock.unlock();
        std::exception_ptr failure;
        try {
            work(index, worker);
        } catch (...) {
            failure = std::current_exception();
        }
        lock.lock();
        if (failure && !line.failure) line.failure = failure;
        line.ready[index % line.ready.size()] = 1;
        line.changed.notify_all();
    }
}

// Runs on the calling thread.
void hand_over(Line& line, std::size_t count, const std::function<void(std::size_t)>& done) {
    std::unique_lock lock(line.mutex);
    while (line.taken < count) {
        char& ready = line.ready[line.taken % line.ready.size()];
        line.changed.wait(lock, [&] { return line.failure || ready != 0; });
        if (line.failure) return;
        const std::size_t index = line.taken;
        lock.unlock();
        std::exception_ptr failure;
        try {
            done(index);
        } catch (...) {
            failure = std::current_exception();
        }
        lock.lock();
        if (failure && !line.failure) line.failure = failure;
        ready = 0;
        ++line.taken;
        line.changed.notify_all();
    }
}

void join(std::vector<std::thread>& threads) {
    for (std::thread& thread : threads) thread.join();
}

void one_by_one(std::size_t count, const std::function<void(std::size_t, int)>& work,
                const std::function<void(std::size_t)>& done) {
    for (std::size_t i = 0; i < count; ++i) {
        work(i, 0);
        done(i);
    }
}

}  // namespace

void in_order(std::size_t count, int jobs, const std::function<void(std::size_t, int)>& work,
              const std::function<void(std::size_t)>& done) {
    if (jobs <= 1 || count <= 1) {
        one_by_one(count, work, done);
        return;
    }
    Line line;
    line.ready.resize(static_cast<std::size_t>(jobs) * ahead);
    std::vector<std::thread> threads;
    try {
        const InterruptsHeld held;
        for (int worker = 0; worker < jobs; ++worker) {
            threads.emplace_back([&, worker] { work_on(line, count, worker, work); });
        }
    } catch (const std::system_error&) {
        // The system provides no more threads: those that exist do the work.
        if (threads.empty()) {
            one_by_one(count, work, done);
            return;
        }
    }
    hand_over(line, count, done);
    join(threads);
    if (line.failure) std::rethrow_exception(line.failure);
}

}  // namespace orvex::frontend
