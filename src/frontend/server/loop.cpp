#include "frontend/server/loop.h"

#include "frontend/base/descriptors.h"
#include "frontend/base/interrupts.h"
#include "frontend/base/streams.h"
#include "frontend/server/server.h"
#include "frontend/session/check_file.h"
#include "frontend/translator/translator.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <exception>
#include <fcntl.h>
#include <memory>
#include <poll.h>
#include <thread>
#include <unistd.h>
#include <utility>

namespace orvex::frontend {

namespace {

using std::chrono::milliseconds;

// A run of the translator on a version of a text, on its own thread. It signals through a pipe that
// it is ready.
class Run {
  public:
    Run(const Server& server, const Document& document, const std::string& program,
        const TempDir& place, int ready)
        : uri_(document.uri), version_(document.version) {
        source_.path = document.source.path;
        source_.bytes = document.source.bytes;
        const Options& options = server.options;
        const InterruptsHeld held;
        thread_ = std::thread([this, &options, &program, &place, ready] {
            work(options, program, place);
            is_ready_ = true;
            write_all(ready, ".");
        });
    }
    ~Run() {
        stop();
        thread_.join();
    }
    Run(const Run&) = delete;
    Run(Run&&) = delete;
    Run& operator=(const Run&) = delete;
    Run& operator=(Run&&) = delete;

    void stop() { stop_ = true; }
    bool is_ready() const { return is_ready_; }
    const std::string& uri() const { return uri_; }
    std::int64_t version() const { return version_; }
    // Once it is ready. If there is no result, there is a reason.
    std::optional<std::vector<Finding>>& result() { return result_; }
    const std::string& reason() const { return reason_; }

  private:
    void work(const Options& options, const std::string& program, const TempDir& place) {
        try {
            parse_source(source_);
            Wanted wanted;
            wanted.stop = &stop_;
            result_ = check_file(source_, options, wanted, program, place).findings;
        } catch (const StartFailure& error) {
            reason_ = error.reason;
        } catch (const FolderFailure& error) {
            reason_ = text_of(error);
        } catch (const std::exception& error) {
            reason_ = error.what();
        }
    }

    std::string uri_;
    std::int64_t version_;
    Source source_;
    std::optional<std::vector<Finding>> result_;
    std::string reason_;
    std::atomic<bool> stop_ = false;
    std::atomic<bool> is_ready_ = false;
    std::thread thread_;
};

// The server's state while it works on descriptors.
struct Loop {
    Server& server;
    MessageReader reader = {};
    bool input_has_ended = false;
    int ready[2] = {-1, -1};  // a pipe through which a run signals that it is ready
    std::string program = {};
    std::unique_ptr<TempDir> place = {};
    std::unique_ptr<Run> run = {};
};

void read_input(Loop& loop) {
    char bytes[65536];
    const ssize_t count = read_some(STDIN_FILENO, bytes, sizeof bytes);
    if (count <= 0) {
        loop.input_has_ended = true;
        return;
    }
    loop.reader.feed({bytes, static_cast<std::size_t>(count)});
    for (;;) {
        try {
            const std::optional<std::string> message = loop.reader.next();
            if (!message) return;
            take_message(loop.server, *message);
        } catch (const RequestError& error) {
            loop.server.send(error_answer_to(nullptr, error));
        }
    }
}

// The text that has waited longest for the translator; null if none waits.
Open* next_to_judge(Server& server) {
    Open* next = nullptr;
    for (auto& [uri, open] : server.open) {
        if (open.is_judged) continue;
        if (next == nullptr || open.judge_at < next->judge_at) next = &open;
    }
    return next;
}

// Is the run about an outdated version?
bool is_stale(const Server& server, const Run& run) {
    const auto found = server.open.find(run.uri());
    return found == server.open.end() || found->second.document.version != run.version();
}

void take_run(Loop& loop) {
    char byte = 0;
    read_some(loop.ready[0], &byte, 1);
    const std::unique_ptr<Run> run = std::move(loop.run);
    if (is_stale(loop.server, *run)) return;
    if (!run->result()) {
        loop.server.log("the translator cannot be run: " + run->reason());
        loop.server.open.at(run->uri()).is_judged = true;
        return;
    }
    take_verdict(loop.server, run->uri(), run->version(), std::move(*run->result()));
}

// The findings of the tree stay.
void give_up(Loop& loop, Open& open, const std::string& reason) {
    loop.server.log("the translator cannot be run: " + reason);
    open.is_judged = true;
}

void start_run(Loop& loop, Open& open) {
    try {
        if (loop.program.empty()) loop.program = find_translator(loop.server.options.program);
        if (loop.place == nullptr) loop.place = std::make_unique<TempDir>();
        loop.run = std::make_unique<Run>(loop.server, open.document, loop.program, *loop.place,
                                         loop.ready[1]);
    } catch (const StartFailure& error) {
        give_up(loop, open, error.reason);
    } catch (const FolderFailure& error) {
        give_up(loop, open, text_of(error));
    }
}

// Starts the next run if it is due. Returns how long to wait for it, or -1.
int judge_next(Loop& loop) {
    if (loop.run != nullptr) {
        if (is_stale(loop.server, *loop.run)) loop.run->stop();
        return -1;
    }
    Open* const open = next_to_judge(loop.server);
    if (open == nullptr) return -1;
    const auto wait = std::chrono::ceil<milliseconds>(open->judge_at - Clock::now());
    if (wait.count() > 0) return static_cast<int>(wait.count());
    start_run(loop, *open);
    return loop.run == nullptr ? 0 : -1;
}

// Waits for input or for the end of a run, at most this many milliseconds; -1 means no limit.
void wait_and_read(Loop& loop, int time) {
    pollfd ends[] = {{loop.input_has_ended ? -1 : STDIN_FILENO, POLLIN, 0},
                     {loop.ready[0], POLLIN, 0}};
    if (::poll(ends, 2, time) < 0) return;
    if (ends[1].revents != 0 && loop.run != nullptr) take_run(loop);
    if (ends[0].revents != 0) read_input(loop);
}

void serve(Loop& loop) {
    Server& server = loop.server;
    while (!server.exit_status && interrupt_signal() == 0) {
        wait_and_read(loop, 0);
        if (!server.queue.empty()) {
            work_on_message(server);
        } else if (loop.input_has_ended) {
            server.exit_status = server.is_shut_down ? 0 : 1;
        } else {
            show_changed(server);
            wait_and_read(loop, judge_next(loop));
        }
    }
}

}  // namespace

int run_server(const Options& options) {
    Stream out;
    Stream err{2, {}, 0};
    Server server{options, {}, {}};
    server.send = [&](const Json& message) {
        put(out, framed(message));
        if (!flush(out)) server.exit_status = 1;
    };
    if (!options.log.empty()) {
        err.descriptor = open_file(options.log, O_WRONLY | O_CREAT | O_APPEND, 0600);
        if (err.descriptor < 0)
            throw StartFailure{"cannot write `" + options.log + "`: " + system_message(errno)};
    }
    server.log = [&](std::string_view text) {
        put(err, "orvex lsp: " + std::string(text) + "\n");
        flush(err);
    };
    Loop loop{server};
    if (::pipe(loop.ready) != 0) throw StartFailure{"cannot make a pipe: " + system_message(errno)};
    for (const int end : loop.ready) ::fcntl(end, F_SETFD, FD_CLOEXEC);
    catch_interrupts();
    serve(loop);
    loop.run.reset();
    loop.place.reset();
    for (const int end : loop.ready) ::close(end);
    if (interrupt_signal() != 0) end_by_interrupt();
    return server.exit_status.value_or(1);
}

}  // namespace orvex::frontend
