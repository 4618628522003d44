#include "frontend/base/graphviz.h"

#include "frontend/base/process.h"
#include "frontend/base/streams.h"

#include <cerrno>
#include <cstdio>
#include <memory>
#include <utility>

namespace orvex::frontend {

namespace {

struct Closer {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, Closer>;

}  // namespace

Drawing draw_svg(const std::string& dot, std::chrono::milliseconds limit, std::string& svg,
                 std::string& reason) {
    const File in(std::tmpfile());
    if (!in || std::fwrite(dot.data(), 1, dot.size(), in.get()) != dot.size() ||
        std::fflush(in.get()) != 0) {
        reason = "no temporary file: " + system_message(errno);
        return Drawing::failed;
    }
    std::rewind(in.get());
    try {
        Ended ended = run_process({{"dot", "-Tsvg"}, "", fileno(in.get()), limit, true});
        if (ended.is_too_slow) return Drawing::too_slow;
        svg = std::move(ended.out);
        if (ended.status == 0 && !svg.empty()) return Drawing::done;
        reason = "Graphviz's `dot` failed: " + ended.err.substr(0, ended.err.find('\n'));
    } catch (const StartFailure& failure) {
        reason = failure.error == ENOENT ? "Graphviz's `dot` is not installed"
                                         : "Graphviz's `dot`: " + failure.reason;
    }
    return Drawing::failed;
}

}  // namespace orvex::frontend
