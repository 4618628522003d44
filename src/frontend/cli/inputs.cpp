#include "frontend/cli/inputs.h"

#include "frontend/base/bytes.h"

#include <algorithm>
#include <filesystem>
#include <glob.h>
#include <system_error>

namespace orvex::frontend {

namespace fs = std::filesystem;

namespace {

bool is_model_file(const fs::path& path) {
    std::string extension = path.extension().string();
    make_upper(extension);
    return extension == ".ZLM";
}

// Adds the files of one folder to `found`, and its folders to `folders`. An unreadable folder is
// added to `found`, too: reading it later reports why.
void list_folder(const fs::path& folder, std::vector<fs::path>& folders,
                 std::vector<std::string>& found) {
    std::error_code error;
    fs::directory_iterator entry(folder, error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
        const fs::path& path = entry->path();
        if (path.filename().string().starts_with('.')) continue;
        std::error_code ignored;
        if (entry->is_directory(ignored)) {
            if (!entry->is_symlink(ignored)) folders.push_back(path);
        } else if (is_model_file(path) && !fs::is_other(path, ignored)) {
            found.push_back(path.string());
        }
    }
    if (error) found.push_back(folder.string());
}

// Empty if no path matches; the pattern itself if that is unknown because a folder cannot be read.
std::vector<std::string> matches(const std::string& pattern) {
    glob_t found{};
    std::vector<std::string> paths;
    int result = ::glob(pattern.c_str(), 0, nullptr, &found);
    if (result == 0) paths.assign(found.gl_pathv, found.gl_pathv + found.gl_pathc);
    ::globfree(&found);
    if (result == GLOB_NOMATCH) {
        result = ::glob(pattern.c_str(), GLOB_ERR, nullptr, &found);
        ::globfree(&found);
    }
    if (result == GLOB_ABORTED) paths.push_back(pattern);
    return paths;
}

std::vector<std::string> search(const std::string& path) {
    std::vector<fs::path> folders = {path};
    std::vector<std::string> found;
    while (!folders.empty()) {
        const fs::path folder = folders.back();
        folders.pop_back();
        list_folder(folder, folders, found);
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

std::vector<std::string> expand_patterns(const std::vector<std::string>& paths) {
    std::vector<std::string> files;
    for (const std::string& path : paths) {
        std::error_code ignored;
        if (path.find_first_of("*?[") == std::string::npos || fs::exists(path, ignored)) {
            files.push_back(path);
            continue;
        }
        const std::vector<std::string> found = matches(path);
        if (found.empty()) throw UsageError{"no file matches `" + path + "`", ""};
        files.insert(files.end(), found.begin(), found.end());
    }
    return files;
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
