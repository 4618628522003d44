#include "frontend/session/rewriting.h"

#include "frontend/base/files.h"
#include "frontend/base/streams.h"
#include "frontend/findings/failure.h"
#include "frontend/findings/place.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <string>
#include <system_error>

namespace orvex::frontend {

namespace {

// Why a file cannot be written, in the system's words; empty on success. A file that is not
// regular, such as a pipe, has been read to its end and cannot be rewritten.
std::string write_text(const std::string& path, std::string_view text) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error)) return "not a regular file";
    bool changed = false;
    return put_file(path, text, changed) ? "" : system_message(errno);
}

}  // namespace

bool rewrite(File& file, std::string_view text) {
    const std::string& path = file.source->path;
    const std::string reason = write_text(path, text);
    if (reason.empty()) return true;
    file.checked.findings.push_back(
        failure("output-unwritable", {{"path", path}, {"reason", reason}}, whole_file(path)));
    return false;
}

void set_diff_status(const Options& options, std::size_t files, Reporter& reporter) {
    const bool differs = options.diff && files > 0;
    if (differs) reporter.summary.status = std::max(reporter.summary.status, 1);
}

}  // namespace orvex::frontend
