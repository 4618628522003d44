#include "unit.h"

#include "text/bytes.h"
#include "text/numbers.h"
#include "text/text.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#ifdef __linux__
#include <sys/sendfile.h>
#endif

namespace orvex {

namespace {

constexpr std::size_t buffer_size = std::size_t{256} * 1024;
constexpr std::size_t longest_path = 255;
// A unit's descriptor is never a standard one, so 0 can mean none: units start as zero bytes.
constexpr int no_descriptor = 0;

constexpr mode_t new_file_mode = 0666;  // reduced by the user's umask
constexpr mode_t all_permissions = 0777;

// A path as the system calls need it.
using Path = std::array<char, longest_path + 1>;

enum class Kind : char { closed, input, output, scratch };

struct Unit {
    Kind kind = Kind::closed;
    // Output: written under its own name from the start.
    bool in_place = false;
    // Reading: no more will come.
    bool at_end = false;
    int descriptor = no_descriptor;
    // errno of the first failure; kept when the unit is closed.
    int error = 0;
    // Output: the units that must not have failed.
    unsigned needed = 0;
    // Buffered bytes not yet read.
    std::size_t begin = 0;
    // End of the buffered bytes.
    std::size_t end = 0;
    // Output: together with the attempt, makes its temporary name.
    int process = 0;
    int attempt = 0;
    Path name{};
};

// No reset touches the units: the end of the run closes them, and opening a unit starts it afresh.
// Until then it keeps its error, for the outputs that depend on it.
//
// Each page touched costs time. Few are touched when units and buffers are page-aligned.
constexpr std::size_t page_size = 4096;
alignas(page_size) std::array<Unit, last_unit - first_unit + 1> units;
alignas(page_size) char buffers[last_unit - first_unit + 1][buffer_size];

Unit& unit_of(int number) { return units[static_cast<std::size_t>(number - first_unit)]; }
char* buffer_of(int number) { return buffers[number - first_unit]; }
char* buffer_of(const Unit& unit) { return buffers[&unit - units.data()]; }

unsigned bit_of(int number) { return 1U << static_cast<unsigned>(number - first_unit); }

// False for an unusable file name: blank, too long, or with a NUL byte in it.
bool to_path(View name, Path& path) {
    name = trimmed(name);
    if (name.empty() || name.size() > longest_path || name.find('\0') != View::npos) return false;
    *std::copy(name.begin(), name.end(), path.begin()) = '\0';
    return true;
}

// Opens a file on a descriptor other than the three standard ones: a message must not end up in a
// file. If the caller has closed those, the first file opened, which is only read, occupies their
// numbers as well.
int open_descriptor(const char* path, int flags, mode_t mode = new_file_mode) {
    int opened = no_descriptor;
    do {
        opened = ::open(path, flags | O_CLOEXEC, mode);
    } while (opened >= 0 && opened <= STDERR_FILENO);
    return std::max(opened, no_descriptor);
}

// Returns 0, or the errno of the failure.
int write_all(int descriptor, View bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(descriptor, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return written < 0 ? errno : EIO;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return 0;
}

bool is_directory(int descriptor) {
    struct stat status;
    return ::fstat(descriptor, &status) == 0 && S_ISDIR(status.st_mode);
}

// A private unnamed file, for a scratch text that has outgrown its buffer.
int open_unnamed() {
#ifdef O_TMPFILE
    const int unnamed = ::open(P_tmpdir, O_RDWR | O_TMPFILE | O_CLOEXEC, 0600);
    if (unnamed >= 0) return unnamed;  // else the file system does not support it
#endif
    char path[] = P_tmpdir "/orvexpp-XXXXXX";
    const int made = ::mkstemp(path);
    ::unlink(path);
    return std::max(made, no_descriptor);
}

// Only the first failure counts.
void note_failure(Unit& unit, int error) {
    if (unit.error == 0) unit.error = error;
}

// Writes the buffered bytes to the file. After a failure the rest of the file is given up.
void flush(Unit& unit) {
    if (unit.kind == Kind::scratch && unit.descriptor == no_descriptor) {
        unit.descriptor = open_unnamed();
        if (unit.descriptor == no_descriptor) {
            throw ScratchFailure{static_cast<int>(&unit - units.data()) + first_unit};
        }
    }
    if (unit.error == 0) unit.error = write_all(unit.descriptor, {buffer_of(unit), unit.end});
    unit.end = 0;
}

void report_failure(const Unit& unit, View what) {
    write_standard_error({what, unit.name.data(), ": ", std::strerror(unit.error)});
}

constexpr View cannot_read = " *** Cannot read file: ";

// An unreadable file counts as ended, but this is reported.
void fail_reading(Unit& unit, int error) {
    note_failure(unit, error);
    if (unit.kind == Kind::input) report_failure(unit, cannot_read);
}

// Writes bytes unchanged, in pieces that fill the buffer.
void write_bytes(Unit& unit, View bytes) {
    while (!bytes.empty()) {
        if (unit.end == buffer_size) flush(unit);
        const std::size_t fitting = bytes.copy(buffer_of(unit) + unit.end, buffer_size - unit.end);
        unit.end += fitting;
        bytes.remove_prefix(fitting);
    }
}

// The end of a scratch file's line (from `start` to `end`) in the form in which it is copied.
char* copied_form_end(char* start, const char* end) {
    constexpr std::ptrdiff_t columns = 255;
    const View line =
        trimmed(View(start, static_cast<std::size_t>(std::min(end - start, columns))));
    if (line.empty()) *start = blank_char;
    return start + std::max<std::size_t>(line.size(), 1);
}

// Reads the available bytes, at most `room`. Returns 0 at the end of the file.
std::size_t read_some(Unit& unit, char* to, std::size_t room) {
    ssize_t count = 0;
    do {
        count = ::read(unit.descriptor, to, room);
    } while (count < 0 && errno == EINTR);
    if (count < 0) fail_reading(unit, errno);
    return static_cast<std::size_t>(std::max<ssize_t>(count, 0));
}

// Lets the system copy the rest of a scratch file, avoiding a copy through user space. If it
// cannot, or fails, the rest is read and written, which then reports any error.
void send_file([[maybe_unused]] Unit& unit, [[maybe_unused]] const Unit& scratch) {
#ifdef __linux__
    constexpr std::size_t most = std::size_t{1} << 30U;
    flush(unit);
    while (unit.error == 0 && ::sendfile(unit.descriptor, scratch.descriptor, nullptr, most) > 0) {
    }
#endif
}

// Writes the rest of a scratch file, which never passes through the scratch file's own buffer.
void write_file(Unit& unit, Unit& scratch) {
    send_file(unit, scratch);
    std::size_t count = 0;
    do {
        if (unit.end == buffer_size) flush(unit);
        count = read_some(scratch, buffer_of(unit) + unit.end, buffer_size - unit.end);
        unit.end += count;
    } while (count != 0);
}

// Reads more bytes after the unread ones. Returns false at the end of the file.
bool refill(Unit& unit) {
    if (unit.at_end || unit.descriptor == no_descriptor) return false;
    char* const buffer = buffer_of(unit);
    // Of a line without a line end so far, only the first bytes are ever used.
    const std::size_t kept = std::min(unit.end - unit.begin, std::size_t{longest_line});
    std::memmove(buffer, buffer + unit.begin, kept);
    unit.begin = 0;
    unit.end = kept;
    const std::size_t count = read_some(unit, buffer + kept, buffer_size - kept);
    unit.end += count;
    unit.at_end = count == 0;
    return !unit.at_end;
}

// The file that an output replaces, if there is one.
struct Replaced {
    bool can_be = false;
    bool is_there = false;
    mode_t mode = new_file_mode;
};

// Can a file with that name be replaced by renaming another to it? True also if there is none.
Replaced find_replaced(const char* path) {
    struct stat status;
    if (::lstat(path, &status) != 0) return {errno == ENOENT, false};
    const bool can_be =
        S_ISREG(status.st_mode) && status.st_nlink == 1 && ::access(path, W_OK) == 0;
    return {can_be, true, status.st_mode & all_permissions};
}

// The path of the temporary file next to the unit's own: same directory, so that renaming moves no
// bytes. It may be longer than the path it replaces, and ends with a zero byte.
using TemporaryPath = Text<longest_path + 64>;
TemporaryPath temporary_path(const Unit& unit) {
    const View name = unit.name.data();
    const View directory = name.substr(0, name.rfind('/') + 1);
    const int number = static_cast<int>(&unit - units.data()) + first_unit;
    return TemporaryPath({directory, ".orvexpp-", decimal(unit.process), "-", decimal(number), "-",
                          decimal(unit.attempt), View("\0", 1)});
}

void remove_temporary(const Unit& unit) { ::unlink(temporary_path(unit).view().data()); }

int open_temporary(Unit& unit, mode_t mode) {
    constexpr int attempts = 100;  // a name can be left over from a run that was killed
    unit.process = ::getpid();
    for (unit.attempt = 0; unit.attempt < attempts; ++unit.attempt) {
        const TemporaryPath path = temporary_path(unit);
        const int opened = open_descriptor(path.view().data(), O_WRONLY | O_CREAT | O_EXCL, mode);
        if (opened != no_descriptor || errno != EEXIST) return opened;
    }
    return no_descriptor;
}

// Gives the new file the mode of the one that it replaces, whatever the umask.
bool keep_mode(const Unit& unit, const Replaced& replaced) {
    return !replaced.is_there || ::fchmod(unit.descriptor, replaced.mode) == 0;
}

// Opens the temporary file and removes any file with the final name; false if either fails.
bool open_replacement(Unit& unit) {
    const Replaced replaced = find_replaced(unit.name.data());
    if (!replaced.can_be) return false;
    unit.descriptor = open_temporary(unit, replaced.mode);
    if (unit.descriptor == no_descriptor) return false;
    const bool is_free =
        keep_mode(unit, replaced) && (::unlink(unit.name.data()) == 0 || errno == ENOENT);
    if (is_free) return true;
    ::close(unit.descriptor);
    remove_temporary(unit);
    return false;
}

// The error of one of the units that the output depends on, or 0.
int failure_of_needed(const Unit& unit) {
    for (int number = first_unit; number <= last_unit; ++number) {
        const int error = unit_of(number).error;
        if ((unit.needed & bit_of(number)) != 0 && error != 0) return error;
    }
    return 0;
}

void close_output(Unit& unit) {
    flush(unit);
    if (::close(unit.descriptor) != 0) note_failure(unit, errno);
    note_failure(unit, failure_of_needed(unit));
    if (!unit.in_place) {
        const TemporaryPath path = temporary_path(unit);
        if (unit.error == 0 && ::rename(path.view().data(), unit.name.data()) != 0)
            unit.error = errno;
        if (unit.error != 0) remove_temporary(unit);
    }
    if (unit.error != 0) report_failure(unit, " *** Cannot write file: ");
}

// The unit, closed and with all its fields reset.
Unit& fresh_unit(int number) {
    close_unit(number);
    return unit_of(number) = Unit{};
}

void write_console(int descriptor, std::initializer_list<View> pieces) {
    std::array<char, longest_line + 1> line;
    std::size_t length = 0;
    for (const View piece : pieces)
        length += piece.copy(line.data() + length, longest_line - length);
    line[length++] = '\n';
    write_all(descriptor, {line.data(), length});
}

}  // namespace

bool file_exists(View path) {
    Path name;
    struct stat status;
    return to_path(path, name) && ::stat(name.data(), &status) == 0 && !S_ISDIR(status.st_mode);
}

bool open_input(int number, View path) {
    Unit& unit = fresh_unit(number);
    if (!to_path(path, unit.name)) return false;
    unit.descriptor = open_descriptor(unit.name.data(), O_RDONLY);
    if (unit.descriptor == no_descriptor) return false;
    refill(unit);  // only reading shows that it is a directory
    if (unit.error == EISDIR && is_directory(unit.descriptor)) {
        fresh_unit(number);
        return false;
    }
    unit.kind = Kind::input;
    if (unit.error != 0) report_failure(unit, cannot_read);
    return true;
}

bool open_output(int number, View path) {
    Unit& unit = fresh_unit(number);
    if (!to_path(path, unit.name)) return false;
    unit.in_place = !open_replacement(unit);
    if (unit.in_place)
        unit.descriptor = open_descriptor(unit.name.data(), O_WRONLY | O_CREAT | O_TRUNC);
    if (unit.descriptor == no_descriptor) return false;
    unit.kind = Kind::output;
    return true;
}

void open_scratch(int number) { fresh_unit(number).kind = Kind::scratch; }

bool read_line(int number, View& line) {
    Unit& unit = unit_of(number);
    const char* const buffer = buffer_of(number);
    std::size_t scanned = 0;  // bytes from `begin` on without a line end
    do {
        const char* const start = buffer + unit.begin;
        const void* const found =
            std::memchr(start + scanned, '\n', unit.end - unit.begin - scanned);
        if (found != nullptr) {
            line = View(start, static_cast<std::size_t>(static_cast<const char*>(found) - start));
            unit.begin += line.size() + 1;
            return true;
        }
        scanned = std::min(unit.end - unit.begin, std::size_t{longest_line});
    } while (refill(unit));
    line = View(buffer + unit.begin, unit.end - unit.begin);
    unit.begin = unit.end;
    return !line.empty();
}

bool line_was_ended(int number) {
    const Unit& unit = unit_of(number);
    return unit.begin > 0 && buffer_of(unit)[unit.begin - 1] == '\n';
}

void write_line(int number, std::initializer_list<View> pieces) {
    Unit& unit = unit_of(number);
    if (unit.end + longest_line + 1 > buffer_size) flush(unit);
    char* const start = buffer_of(number) + unit.end;
    char* next = start;
    for (const View piece : pieces) {
        copy_piece(next, piece);
        next += piece.size();
    }
    if (unit.kind == Kind::scratch) next = copied_form_end(start, next);
    *next++ = '\n';
    unit.end += static_cast<std::size_t>(next - start);
}

void filcpy(int from, int to) {
    Unit& scratch = unit_of(from);
    if (scratch.descriptor == no_descriptor) {
        write_bytes(unit_of(to), View(buffer_of(scratch), scratch.end));
    } else {
        flush(scratch);
        if (::lseek(scratch.descriptor, 0, SEEK_SET) != 0) note_failure(scratch, errno);
        write_file(unit_of(to), scratch);
    }
    close_unit(from);
}

void restart_output(int number) {
    Unit& unit = unit_of(number);
    unit.end = 0;
    const bool emptied =
        ::ftruncate(unit.descriptor, 0) == 0 && ::lseek(unit.descriptor, 0, SEEK_SET) == 0;
    if (!emptied && !unit.in_place) note_failure(unit, errno);
}

void depend_on(int number, std::initializer_list<int> others) {
    for (const int other : others) unit_of(number).needed |= bit_of(other);
}

void discard_output(int number) {
    Unit& unit = unit_of(number);
    if (unit.kind != Kind::output) return;
    ::close(unit.descriptor);
    if (!unit.in_place) remove_temporary(unit);
    unit = Unit{};
}

void close_unit(int number) {
    Unit& unit = unit_of(number);
    if (unit.kind == Kind::output) {
        close_output(unit);
    } else if (unit.descriptor != no_descriptor) {
        ::close(unit.descriptor);
    }
    unit.kind = Kind::closed;
    unit.descriptor = no_descriptor;
}

void close_all_units() {
    for (int number = first_unit; number <= last_unit; ++number) close_unit(number);
}

void write_standard_output(std::initializer_list<View> pieces) {
    write_console(STDOUT_FILENO, pieces);
}

void write_standard_error(std::initializer_list<View> pieces) {
    write_console(STDERR_FILENO, pieces);
}

}  // namespace orvex
