#include "frontend/reading/bytes.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace orvex::frontend {

namespace {

constexpr std::size_t least_room = 4096;

}  // namespace

bool read_all(int descriptor, std::string& bytes) {
    struct stat status {};
    const bool sized = ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
    // One byte more than the file has, so that the second read finds its end.
    bytes.resize(sized ? static_cast<std::size_t>(status.st_size) + 1 : least_room);
    std::size_t used = 0;
    for (;;) {
        if (used == bytes.size()) bytes.resize(2 * bytes.size() + least_room);
        const ssize_t count = ::read(descriptor, bytes.data() + used, bytes.size() - used);
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) {
            bytes.resize(used);
            return count == 0;
        }
        used += static_cast<std::size_t>(count);
    }
}

bool read_file(const std::string& path, std::string& bytes) {
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (file < 0) return false;
    const bool complete = read_all(file, bytes);
    const int reason = errno;
    ::close(file);
    errno = reason;
    return complete;
}

std::vector<std::string_view> lines_of(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) lines.push_back(take_line(text));
    return lines;
}

}  // namespace orvex::frontend
