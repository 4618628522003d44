// System calls on descriptors, and what is to be done when they do less than they were asked for.
// All of them go on after an interruption, but for that of a signal which ends the program: they
// fail then, with EINTR.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <sys/types.h>

namespace orvex::frontend {

// As open(2), closed on exec. -1, with errno set, where the file cannot be opened.
int open_file(const std::string& path, int flags, mode_t mode = 0);

// At most `size` bytes; 0 at the end; -1, with errno set, where reading fails.
ssize_t read_some(int descriptor, char* to, std::size_t size);

// Everything up to the end. False, with errno set, where reading fails; EFBIG where there is more
// than `most` bytes.
constexpr std::size_t no_limit = static_cast<std::size_t>(-1);
bool read_all(int descriptor, std::string& bytes, std::size_t most = no_limit);

// False, with errno set, where writing fails.
bool write_all(int descriptor, std::string_view text);

// Closes a file that was written, whose last writes may fail only now. `good` says how they went so
// far. False, with the errno of the first failure, where the file is not good.
bool close_written(int descriptor, bool good);

}  // namespace orvex::frontend
