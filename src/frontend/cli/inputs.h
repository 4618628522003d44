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

// The files as given, with all *.zlm files of its folders, sorted by path, in place of a folder.
// Hidden files and folders are passed over, and links to folders are not followed. Throws
// UsageError for a folder without such a file. A folder that cannot be read is kept as it is, to be
// reported as unreadable.
std::vector<std::string> expand_folders(const std::vector<std::string>& paths);

bool is_folder(const std::string& path);

// Can reading the file wait for somebody, as with standard input ("-"), a pipe or a terminal?
bool may_wait(const std::string& path);

}  // namespace orvex::frontend
