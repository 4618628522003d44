#include "frontend/cli/inputs.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace orvex::frontend {

namespace fs = std::filesystem;

namespace {

// The files of one folder go to `found`, and its folders to `folders`. What cannot be read is
// found, too: the reading of it then says why.
void look_into(const fs::path& folder, std::vector<fs::path>& folders,
               std::vector<std::string>& found) {
    std::error_code error;
    fs::directory_iterator entry(folder, error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
        const fs::path& path = entry->path();
        if (path.filename().string().starts_with('.')) continue;
        std::error_code ignored;
        if (entry->is_directory(ignored)) {
            if (!entry->is_symlink(ignored)) folders.push_back(path);
        } else if (path.extension() == ".zlm") {
            found.push_back(path.string());
        }
    }
    if (error) found.push_back(folder.string());
}

std::vector<std::string> search(const std::string& path) {
    std::vector<fs::path> folders = {path};
    std::vector<std::string> found;
    while (!folders.empty()) {
        const fs::path folder = folders.back();
        folders.pop_back();
        look_into(folder, folders, found);
    }
    return found;
}

}  // namespace

bool is_folder(const std::string& path) {
    std::error_code ignored;
    return path != "-" && fs::is_directory(path, ignored);
}

bool may_wait(const std::string& path) {
    std::error_code ignored;
    return path == "-" || fs::is_other(path, ignored);
}

std::vector<std::string> expand_folders(const std::vector<std::string>& paths) {
    std::vector<std::string> files;
    for (const std::string& path : paths) {
        if (!is_folder(path)) {
            files.push_back(path);
            continue;
        }
        std::vector<std::string> found = search(path);
        if (found.empty()) throw UsageError{"no *.zlm file in `" + path + "`", ""};
        for (std::string& file : found) {
            if (path == "." && file.starts_with("./")) file.erase(0, 2);
        }
        std::sort(found.begin(), found.end());
        files.insert(files.end(), found.begin(), found.end());
    }
    return files;
}

}  // namespace orvex::frontend
