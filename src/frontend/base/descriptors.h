// System calls on descriptors, repeated if they do less than they were asked to. All of them
// continue after an interruption, unless it was by a signal that ends the program: then they fail
// with EINTR.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <sys/types.h>

namespace orvex::frontend {

// As open(2), closed on exec. -1, with errno set, if the file cannot be opened.
int open_file(const std::string& path, int flags, mode_t mode = 0);

// At most `size` bytes; 0 at the end; -1, with errno set, if reading fails.
ssize_t read_some(int descriptor, char* to, std::size_t size);

// Everything up to the end. False, with errno set, if reading fails; EFBIG if there are more than
// `most` bytes.
constexpr std::size_t no_limit = static_cast<std::size_t>(-1);
bool read_all(int descriptor, std::string& bytes, std::size_t most = no_limit);

// False, with errno set, if writing fails.
bool write_all(int descriptor, std::string_view text);

// Closes a file that was written, since its last writes may fail only now. `good` says whether
// everything succeeded so far. False, with the errno of the first failure, if anything failed.
bool close_written(int descriptor, bool good);

}  // namespace orvex::frontend
