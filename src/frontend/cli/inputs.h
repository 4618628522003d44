// The files on a command line.
#pragma once

#include <string>
#include <vector>

namespace orvex::frontend {

// A request that cannot be fulfilled as given.
struct UsageError {
    std::string text;
    std::string hint;
};

// The paths, each one that is not a file but contains "*", "?" or "[" replaced by the paths that
// match it, as in a shell. Throws UsageError if nothing matches. If the pattern's folder cannot be
// read, the pattern is kept, to be reported as unreadable.
std::vector<std::string> expand_patterns(const std::vector<std::string>& paths);

// The files as given, with each folder replaced by all *.zlm files in it, sorted by path; the case
// of "zlm" does not matter. Hidden files and folders are skipped, and links to folders are not
// followed. Throws UsageError for a folder without such files. A folder that cannot be read is
// kept, to be reported as unreadable.
std::vector<std::string> expand_folders(const std::vector<std::string>& paths);

bool is_folder(const std::string& path);

// Can reading the file block, as for standard input ("-"), a pipe or a terminal?
bool may_wait(const std::string& path);

}  // namespace orvex::frontend
