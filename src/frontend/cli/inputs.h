// The files of a command line.
#pragma once

#include <string>
#include <vector>

namespace orvex::frontend {

// Something that was asked for and cannot be done as it was asked for.
struct UsageError {
    std::string text;
    std::string hint;
};

// The paths with those that match in place of one that is no file but has "*", "?" or "[", as a
// shell has them that is not kept from it by quotes. Throws UsageError where nothing matches. A
// pattern of a folder that cannot be read is kept as it is, to be reported as unreadable.
std::vector<std::string> expand_patterns(const std::vector<std::string>& paths);

// The files as given, with all *.zlm files of its folders, sorted by path, in place of a folder;
// the case of "zlm" does not matter. Hidden files and folders are passed over, and links to folders
// are not followed. Throws UsageError for a folder without such a file. A folder that cannot be
// read is kept as it is, to be reported as unreadable.
std::vector<std::string> expand_folders(const std::vector<std::string>& paths);

bool is_folder(const std::string& path);

// Can reading the file wait for somebody, as with standard input ("-"), a pipe or a terminal?
bool may_wait(const std::string& path);

}  // namespace orvex::frontend
