#include "frontend/commands/translate.h"

#include "frontend/commands/diagnose.h"
#include "frontend/streams.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace orvex::frontend {

namespace fs = std::filesystem;

namespace {

// A file that is written, but has not its name yet.
struct Pending {
    std::string target;
    std::string temporary;  // empty where nothing is to be renamed
    std::string_view text;
    bool changed = true;
    bool in_place = false;  // a device, a pipe: written at the end
};

bool write_all(int file, std::string_view text) {
    while (!text.empty()) {
        const ssize_t written = ::write(file, text.data(), text.size());
        if (written >= 0) {
            text.remove_prefix(static_cast<std::size_t>(written));
        } else if (errno != EINTR) {
            return false;
        }
    }
    return true;
}

// Closes the file, whose last writes may fail only now. Keeps an earlier errno.
bool close_written(int file, bool good) {
    const int error = errno;
    if (::close(file) != 0 && good) return false;
    errno = error;
    return good;
}

bool has_text(const std::string& path, std::string_view text) {
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (file == -1) return false;
    char buffer[1U << 16U];
    bool same = true;
    for (;;) {
        const ssize_t count = ::read(file, buffer, sizeof buffer);
        if (count == -1 && errno == EINTR) continue;
        if (count <= 0) {
            same = same && count == 0 && text.empty();
            break;
        }
        const std::string_view read(buffer, static_cast<std::size_t>(count));
        same = text.starts_with(read);
        if (!same) break;
        text.remove_prefix(read.size());
    }
    ::close(file);
    return same;
}

// Where a path leads in the end, even where nothing is there yet.
std::string followed(const std::string& path) {
    constexpr int most_links = 40;
    fs::path target = path;
    std::error_code error;
    for (int links = 0; links < most_links && fs::is_symlink(target, error); ++links) {
        const fs::path next = fs::read_symlink(target, error);
        if (error) break;
        target = target.parent_path() / next;
    }
    return target.string();
}

// A new hidden file in the folder of the target. -1, with errno set, where there can be none.
int open_temporary(Pending& pending) {
    static std::atomic<unsigned> counter = 0;
    const std::size_t slash = pending.target.rfind('/');
    const std::string start = pending.target.substr(0, slash == std::string::npos ? 0 : slash + 1) +
                              ".orvex-" + std::to_string(::getpid()) + "-";
    int file = -1;
    do {
        // One of that name may be left of a killed run that had the same number.
        pending.temporary = start + std::to_string(counter++);
        file = ::open(pending.temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    } while (file == -1 && errno == EEXIST);
    if (file == -1) pending.temporary.clear();
    return file;
}

void discard(Pending& pending) {
    const int error = errno;
    if (!pending.temporary.empty()) ::unlink(pending.temporary.c_str());
    pending.temporary.clear();
    errno = error;
}

bool prepare(const std::string& path, std::string_view text, Pending& pending) {
    struct stat found {};
    pending.text = text;
    pending.target = path;
    const bool exists = ::stat(path.c_str(), &found) == 0;
    if (exists && S_ISDIR(found.st_mode)) {
        errno = EISDIR;
        return false;
    }
    if (exists && !S_ISREG(found.st_mode)) {
        pending.in_place = true;
        return true;
    }
    if (exists && static_cast<std::size_t>(found.st_size) == text.size() && has_text(path, text)) {
        pending.changed = false;
        return true;
    }
    if (exists && ::access(path.c_str(), W_OK) != 0) return false;
    pending.target = followed(path);
    const int file = open_temporary(pending);
    if (file == -1) return false;
    bool good = write_all(file, text);
    if (good && exists) good = ::fchmod(file, found.st_mode & 07777U) == 0;
    good = close_written(file, good);
    if (!good) discard(pending);
    return good;
}

bool commit(Pending& pending) {
    if (!pending.changed) return true;
    if (pending.in_place) {
        const int file = ::open(pending.target.c_str(), O_WRONLY | O_NOCTTY | O_CLOEXEC);
        return file != -1 && close_written(file, write_all(file, pending.text));
    }
    if (::rename(pending.temporary.c_str(), pending.target.c_str()) == 0) return true;
    discard(pending);
    return false;
}

Finding finding_at(const Source& source, int line, std::string code, std::string message) {
    Finding finding;
    finding.code = std::move(code);
    finding.message = std::move(message);
    finding.span = record_span(source, line);
    return finding;
}

// Whether the model has a finding that counts as an error.
bool has_failed(const ModelText& model, const std::vector<Finding>& findings,
                const Options& options) {
    return std::any_of(findings.begin(), findings.end(), [&](const Finding& finding) {
        const bool counts = finding.severity == Severity::error ||
                            (finding.severity == Severity::warning && options.error_on_warnings);
        const int line = finding.span.line;
        return counts && (line == 0 || (line >= model.line && line <= model.last));
    });
}

std::string output_path(const Options& options, const std::string& name) {
    if (options.out == ".") return name;
    return options.out + (options.out.ends_with('/') ? "" : "/") + name;
}

std::string without_detours(const std::string& path) {
    return fs::path(path).lexically_normal().string();
}

// What keeps a path from being an output of the model, as a finding without place; false for nothing.
bool clashes(const std::string& path, const FileSet& inputs, const std::set<std::string>& taken,
             Finding& finding) {
    if (has_file(inputs, path)) {
        finding.code = "output-input";
        finding.message = "output `" + path + "` is an input";
        return true;
    }
    if (taken.count(without_detours(path)) > 0) {
        finding.code = "output-twice";
        finding.message = "output `" + path + "` is written by another model";
        return true;
    }
    return false;
}

// Both files of a model, or none: each is written before one of them gets its name.
bool place(const std::string (&paths)[2], const ModelOutput& output, Placed& placed,
           std::string& failed) {
    Pending generator;
    Pending header;
    failed = paths[0];
    if (!prepare(paths[0], output.generator, generator)) return false;
    failed = paths[1];
    if (!prepare(paths[1], output.header, header)) {
        discard(generator);
        return false;
    }
    failed = paths[0];
    if (!commit(generator)) {
        discard(header);
        return false;
    }
    failed = paths[1];
    if (!commit(header)) return false;
    for (const std::string& path : paths) {
        placed.outputs.push_back(path);
        placed.taken.insert(without_detours(path));
    }
    placed.written +=
        static_cast<std::size_t>(generator.changed) + static_cast<std::size_t>(header.changed);
    return true;
}

void place_model(const Source& source, const Translated& model, const Options& options,
                 const FileSet& inputs, Placed& placed, std::vector<Finding>& findings) {
    const int line = source.models[model.index].line;
    const std::string& name = source.models[model.index].name;
    const std::string paths[2] = {
        output_path(options, name + ".GEN"),
        options.header.empty() ? output_path(options, name + ".HDR") : options.header};
    Finding finding = finding_at(source, line, "", "");
    if (clashes(paths[0], inputs, placed.taken, finding) ||
        clashes(paths[1], inputs, placed.taken, finding) ||
        clashes(paths[1], inputs, {without_detours(paths[0])}, finding)) {
        findings.push_back(std::move(finding));
        return;
    }
    std::string failed;
    if (!place(paths, model.output, placed, failed)) {
        const int error = errno;
        findings.push_back(finding_at(source, line, "output-write",
                                      "cannot write `" + failed + "`: " + system_message(error)));
    }
}

void append_name(std::string& text, std::size_t& column, const std::string& name) {
    constexpr std::size_t last_column = 72;
    std::string escaped;
    for (std::size_t i = 0; i < name.size(); ++i) {
        if (name[i] == ' ' || name[i] == '\t') {
            // Backslashes in front of a blank would be taken for its escape: each is doubled.
            for (std::size_t j = i; j > 0 && name[j - 1] == '\\'; --j) escaped += '\\';
            escaped += '\\';
        } else if (name[i] == '#' || name[i] == ':') {
            escaped += '\\';
        } else if (name[i] == '$') {
            escaped += '$';
        }
        escaped += name[i];
    }
    if (column > 0 && column + 1 + escaped.size() > last_column) {
        text += " \\\n";
        column = 0;
    }
    if (!text.empty()) {
        text += ' ';
        ++column;
    }
    text += escaped;
    column += escaped.size();
}

}  // namespace

void add_file(FileSet& files, const std::string& path) {
    struct stat found {};
    if (::stat(path.c_str(), &found) == 0) files.emplace(found.st_dev, found.st_ino);
}

bool has_file(const FileSet& files, const std::string& path) {
    struct stat found {};
    return ::stat(path.c_str(), &found) == 0 && files.count({found.st_dev, found.st_ino}) > 0;
}

void place_outputs(const Source& source, Checked& checked, const Options& options,
                   const FileSet& inputs, Placed& placed) {
    std::vector<Finding> findings;
    for (const Translated& model : checked.models) {
        if (!model.output.complete ||
            has_failed(source.models[model.index], checked.findings, options)) {
            continue;
        }
        // Where it cannot be made, the outputs say why.
        std::error_code ignored;
        fs::create_directories(options.out, ignored);
        place_model(source, model, options, inputs, placed, findings);
    }
    checked.findings.insert(checked.findings.end(), findings.begin(), findings.end());
}

std::string depfile(const std::vector<std::string>& outputs,
                    const std::vector<std::string>& inputs) {
    std::string text;
    std::size_t column = 0;
    for (const std::string& output : outputs) append_name(text, column, output);
    text += ':';
    ++column;
    for (const std::string& input : inputs) append_name(text, column, input);
    return text + "\n";
}

bool put_file(const std::string& path, std::string_view text, bool& changed) {
    Pending pending;
    if (!prepare(path, text, pending) || !commit(pending)) return false;
    changed = pending.changed;
    return true;
}

}  // namespace orvex::frontend
