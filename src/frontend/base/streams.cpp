#include "frontend/base/streams.h"

#include "frontend/base/descriptors.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <system_error>
#include <unistd.h>

namespace orvex::frontend {

namespace {

constexpr std::size_t much = std::size_t{1} << 16U;

bool is_set(const char* variable) {
    const char* const value = std::getenv(variable);
    return value != nullptr && *value != '\0';
}

}  // namespace

void put(Stream& stream, std::string_view text) {
    if (stream.error != 0) return;
    stream.pending += text;
    if (stream.pending.size() >= much) flush(stream);
}

bool flush(Stream& stream) {
    if (stream.error == 0 && !write_all(stream.descriptor, stream.pending)) stream.error = errno;
    stream.pending.clear();
    return stream.error == 0;
}

std::string failure_line(const Stream& stream) {
    return "error: cannot write standard output: " + system_message(stream.error) + "\n";
}

bool is_terminal(const Stream& stream) {
    if (::isatty(stream.descriptor) == 0) return false;
    const char* const terminal = std::getenv("TERM");
    return terminal == nullptr || std::string_view(terminal) != "dumb";
}

bool use_colour(const Stream& stream, Colour colour) {
    if (colour != Colour::automatic) return colour == Colour::always;
    return is_terminal(stream) && !is_set("NO_COLOR");
}

void guard_streams() {
    // Placeholders opened in the wrong direction: reading or writing fails as on a closed
    // descriptor.
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (::fcntl(descriptor, F_GETFD) != -1 || errno != EBADF) continue;
        if (::open("/dev/null", descriptor == STDIN_FILENO ? O_WRONLY : O_RDONLY) == -1) return;
    }
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
}

std::string system_message(int error) { return std::generic_category().message(error); }

}  // namespace orvex::frontend
