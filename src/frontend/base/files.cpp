#include "frontend/base/files.h"

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace orvex::frontend {

namespace fs = std::filesystem;

namespace {

bool has_text(const std::string& path, std::string_view text) {
    const int file = open_file(path, O_RDONLY);
    if (file == -1) return false;
    char buffer[1U << 16U];
    bool same = true;
    ssize_t count = 0;
    while (same && (count = read_some(file, buffer, sizeof buffer)) > 0) {
        const std::string_view read(buffer, static_cast<std::size_t>(count));
        same = text.starts_with(read);
        if (same) text.remove_prefix(read.size());
    }
    ::close(file);
    return same && count == 0 && text.empty();
}

// Where a path finally leads, even if there is no file yet.
std::string followed(const std::string& path) {
    constexpr int most_links = 40;
    fs::path target = path;
    std::error_code error;
    for (int links = 0; links < most_links && fs::is_symlink(target, error); ++links) {
        const fs::path next = fs::read_symlink(target, error);
        if (error) break;
        target = target.parent_path() / next;
    }
    return target.string();
}

// Opens a device, or a pipe that already has a reader. -1, with errno set, if it cannot be opened.
// Writes to it block as usual.
int open_at_once(const std::string& path) {
    const int file = open_file(path, O_WRONLY | O_NOCTTY | O_NONBLOCK);
    if (file == -1) return -1;
    const int flags = ::fcntl(file, F_GETFL);
    if (flags != -1 && ::fcntl(file, F_SETFL, flags & ~O_NONBLOCK) != -1) return file;
    ::close(file);
    return -1;
}

// Makes a hidden file in the folder of the target, with at most this mode. -1, with errno set, if
// that fails.
int open_temporary(PendingWrite& pending, mode_t mode) {
    static std::atomic<unsigned> counter = 0;
    const std::size_t slash = pending.target.rfind('/');
    const std::string start = pending.target.substr(0, slash == std::string::npos ? 0 : slash + 1) +
                              ".orvex-" + std::to_string(::getpid()) + "-";
    int file = -1;
    do {
        // A killed run with the same process number may have left a file with that name.
        pending.temporary = start + std::to_string(counter++);
        file = open_file(pending.temporary, O_WRONLY | O_CREAT | O_EXCL, mode);
    } while (file == -1 && errno == EEXIST);
    if (file == -1) pending.temporary.clear();
    return file;
}

}  // namespace

bool read_file(const std::string& path, std::string& bytes, std::size_t most) {
    const int file = open_file(path, O_RDONLY);
    if (file == -1) return false;
    const bool complete = read_all(file, bytes, most);
    const int error = errno;
    ::close(file);
    errno = error;
    return complete;
}

bool write_private_file(const std::string& path, std::string_view text) {
    const int file = open_file(path, O_WRONLY | O_CREAT | O_TRUNC, 0600);
    return file != -1 && close_written(file, write_all(file, text));
}

void add_file(FileSet& files, const std::string& path) {
    struct stat found {};
    if (::stat(path.c_str(), &found) == 0) files.emplace(found.st_dev, found.st_ino);
}

bool has_file(const FileSet& files, const std::string& path) {
    struct stat found {};
    return ::stat(path.c_str(), &found) == 0 && files.contains({found.st_dev, found.st_ino});
}

void discard(PendingWrite& pending) {
    const int error = errno;
    if (!pending.temporary.empty()) ::unlink(pending.temporary.c_str());
    pending.temporary.clear();
    errno = error;
}

bool prepare(const std::string& path, std::string_view text, PendingWrite& pending) {
    struct stat found {};
    pending.text = text;
    pending.target = path;
    const bool exists = ::stat(path.c_str(), &found) == 0;
    if (!exists && errno != ENOENT) return false;
    if (exists && S_ISDIR(found.st_mode)) {
        errno = EISDIR;
        return false;
    }
    if (exists && !S_ISREG(found.st_mode)) {
        pending.in_place = true;
        return true;
    }
    if (exists && static_cast<std::size_t>(found.st_size) == text.size() && has_text(path, text)) {
        pending.changed = false;
        return true;
    }
    if (exists && ::access(path.c_str(), W_OK) != 0) return false;
    pending.target = followed(path);
    // Even while being written, the text is not readable by more users than the old file.
    const int file = open_temporary(pending, exists ? found.st_mode & 0777U : 0666U);
    if (file == -1) return false;
    bool good = write_all(file, text);
    if (good && exists) good = ::fchmod(file, found.st_mode & 07777U) == 0;
    good = close_written(file, good);
    if (!good) discard(pending);
    return good;
}

bool commit(PendingWrite& pending) {
    if (!pending.changed) return true;
    if (pending.in_place) {
        const int file = open_at_once(pending.target);
        return file != -1 && close_written(file, write_all(file, pending.text));
    }
    if (::rename(pending.temporary.c_str(), pending.target.c_str()) == 0) return true;
    discard(pending);
    return false;
}

bool put_file(const std::string& path, std::string_view text, bool& changed) {
    PendingWrite pending;
    if (!prepare(path, text, pending) || !commit(pending)) return false;
    changed = pending.changed;
    return true;
}

}  // namespace orvex::frontend
