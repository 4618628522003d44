// Files read as a whole, and written as a whole or not at all.
#pragma once

#include "frontend/base/descriptors.h"

#include <set>
#include <string>
#include <string_view>
#include <utility>

namespace orvex::frontend {

// Reads a whole file. False, with errno set, if it cannot be opened or read; EFBIG if it has more
// than `most` bytes.
bool read_file(const std::string& path, std::string& bytes, std::size_t most = no_limit);

// Writes a file readable only by this user, in place. False, with errno set, if that fails.
bool write_private_file(const std::string& path, std::string_view text);

// Existing files, whatever their paths: device and inode of each.
using FileSet = std::set<std::pair<unsigned long long, unsigned long long>>;

// Adds the file at `path`, if there is one.
void add_file(FileSet& files, const std::string& path);
bool has_file(const FileSet& files, const std::string& path);

// A file written but not yet renamed into place.
struct PendingWrite {
    std::string target;
    std::string temporary;  // empty if nothing is to be renamed
    std::string_view text;
    bool changed = true;
    bool in_place = false;  // a device or a pipe: written at the end
};

// Writes a new file next to the one at `path`, which commit() renames into place. Nothing is
// written if the text would not change. Links are followed. Anything but a regular file, such as a
// device, is written in place by commit(); `text` must live until then. A pipe without a reader is
// an error, ENXIO. If either function fails, it returns false, with errno set, and leaves no file.
bool prepare(const std::string& path, std::string_view text, PendingWrite& pending);
bool commit(PendingWrite& pending);

// Gives up a prepared file. Keeps errno.
void discard(PendingWrite& pending);

// Both in one call. `changed` says whether the file had another text before.
bool put_file(const std::string& path, std::string_view text, bool& changed);

}  // namespace orvex::frontend
