// Files that are read as a whole, and written as a whole or not at all.
#pragma once

#include "frontend/base/descriptors.h"

#include <set>
#include <string>
#include <string_view>
#include <utility>

namespace orvex::frontend {

// Reads a whole file. False, with errno set, where it cannot be opened or read; EFBIG where it has
// more than `most` bytes.
bool read_file(const std::string& path, std::string& bytes, std::size_t most = no_limit);

// Writes a file for this user alone, in place. False, with errno set, where that cannot be done.
bool write_private_file(const std::string& path, std::string_view text);

// Files that are there, whatever their paths: device and inode of each.
using FileSet = std::set<std::pair<unsigned long long, unsigned long long>>;

// Adds the file at `path`; nothing where there is none.
void add_file(FileSet& files, const std::string& path);
bool has_file(const FileSet& files, const std::string& path);

// A file that is written, but has not its name yet.
struct PendingWrite {
    std::string target;
    std::string temporary;  // empty where nothing is to be renamed
    std::string_view text;
    bool changed = true;
    bool in_place = false;  // a device, a pipe: written at the end
};

// Writes a new file beside the one at `path`, to take its name in commit(). Nothing is written
// where the text would not change. A link is followed. What is no regular file, such as a device,
// is written in place, by commit(); `text` must live until then. A pipe that no program reads is an
// error, ENXIO. Both are false, with errno set,
// if that cannot be done, and leave no file.
bool prepare(const std::string& path, std::string_view text, PendingWrite& pending);
bool commit(PendingWrite& pending);

// Gives up a prepared file. Keeps errno.
void discard(PendingWrite& pending);

// Both at once. `changed` says whether the file had another text before.
bool put_file(const std::string& path, std::string_view text, bool& changed);

}  // namespace orvex::frontend
