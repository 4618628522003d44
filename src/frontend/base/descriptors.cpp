#include "frontend/base/descriptors.h"

#include "frontend/base/interrupts.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace orvex::frontend {

int open_file(const std::string& path, int flags, mode_t mode) {
    int file = -1;
    do {
        file = ::open(path.c_str(), flags | O_CLOEXEC, mode);
    } while (file == -1 && is_passing_interruption());
    return file;
}

ssize_t read_some(int descriptor, char* to, std::size_t size) {
    ssize_t count = 0;
    do {
        count = ::read(descriptor, to, size);
    } while (count == -1 && is_passing_interruption());
    return count;
}

bool read_all(int descriptor, std::string& bytes, std::size_t most) {
    constexpr std::size_t least_room = 4096;
    struct stat status {};
    const bool sized = ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
    const std::size_t enough = most == no_limit ? most : most + 1;
    // One byte more than the size of the file, so that the second read finds its end.
    const auto room = sized ? static_cast<std::uintmax_t>(status.st_size) + 1 : least_room;
    bytes.resize(static_cast<std::size_t>(std::min<std::uintmax_t>(room, enough)));
    std::size_t used = 0;
    for (;;) {
        if (used == enough) {
            errno = EFBIG;
            return false;
        }
        if (used == bytes.size()) bytes.resize(std::min(2 * bytes.size() + least_room, enough));
        const ssize_t count = read_some(descriptor, bytes.data() + used, bytes.size() - used);
        if (count <= 0) {
            bytes.resize(used);
            return count == 0;
        }
        used += static_cast<std::size_t>(count);
    }
}

bool write_all(int descriptor, std::string_view text) {
    while (!text.empty()) {
        const ssize_t count = ::write(descriptor, text.data(), text.size());
        if (count == 0) errno = EIO;
        if (count == 0 || (count == -1 && !is_passing_interruption())) return false;
        if (count > 0) text.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

bool close_written(int descriptor, bool good) {
    const int error = errno;
    // Even if close() was interrupted, the descriptor is closed and nothing is lost.
    if (::close(descriptor) != 0 && good && errno != EINTR) return false;
    errno = error;
    return good;
}

}  // namespace orvex::frontend
