#include "frontend/commands/translate.h"

#include "frontend/base/streams.h"
#include "frontend/findings/failure.h"
#include "frontend/findings/place.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <optional>

namespace orvex::frontend {

namespace fs = std::filesystem;

namespace {

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

// What keeps a path from being an output of the model; nothing where it can be one.
std::optional<Finding> clash(const std::string& path, const Span& span, const FileSet& inputs,
                             const Placed& placed) {
    if (has_file(inputs, path)) {
        return failure("output-input", "output `" + path + "` is an input", span);
    }
    if (placed.reserved.contains(without_detours(path))) {
        return failure("output-twice", "output `" + path + "` is a report or the depfile, too",
                       span);
    }
    const auto taken = placed.taken.find(without_detours(path));
    if (taken == placed.taken.end()) return {};
    Finding finding =
        failure("output-twice", "output `" + path + "` is written by another model", span);
    finding.remarks.insert(finding.remarks.begin(),
                           {Severity::note, "this model writes it", taken->second});
    return finding;
}

// Both files of a model, or none: each is written before one of them gets its name, and one that is
// written in its place, such as a device, is the first to be.
bool place(const std::string (&paths)[2], const ModelOutput& output, Placed& placed,
           const Span& span, std::string& failed) {
    Pending files[2];  // generator, header
    const std::string_view texts[2] = {output.generator, output.header};
    for (int i = 0; i < 2; ++i) {
        failed = paths[i];
        if (prepare(paths[i], texts[i], files[i])) continue;
        if (i == 1) discard(files[0]);
        return false;
    }
    const int first = files[1].in_place ? 1 : 0;
    const int second = 1 - first;
    failed = paths[first];
    if (!commit(files[first])) {
        discard(files[second]);
        return false;
    }
    failed = paths[second];
    if (!commit(files[second])) return false;
    for (const std::string& path : paths) {
        placed.outputs.push_back(path);
        placed.taken.emplace(without_detours(path), span);
    }
    placed.written +=
        static_cast<std::size_t>(files[0].changed) + static_cast<std::size_t>(files[1].changed);
    return true;
}

Finding write_failure(const std::string& path, int error, const Span& span) {
    return failure("output-write", "cannot write `" + path + "`: " + system_message(error), span);
}

void place_model(const Source& source, const Translated& model, const Options& options,
                 const FileSet& inputs, Placed& placed, std::vector<Finding>& findings) {
    const Span span = record_span(source, source.models[model.index].line);
    const std::string& name = source.models[model.index].name;
    const std::string paths[2] = {
        output_path(options, name + ".GEN"),
        options.header.empty() ? output_path(options, name + ".HDR") : options.header};
    for (const std::string& path : paths) {
        if (std::optional<Finding> finding = clash(path, span, inputs, placed)) {
            findings.push_back(*std::move(finding));
            return;
        }
    }
    if (without_detours(paths[0]) == without_detours(paths[1])) {
        findings.push_back(
            failure("output-twice", "output `" + paths[1] + "` is written by another model", span));
        return;
    }
    std::string failed;
    if (!place(paths, model.output, placed, span, failed)) {
        findings.push_back(write_failure(failed, errno, span));
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

// Models without an error of their own that the translator did not come to.
std::size_t count_behind(const Source& source, const Checked& checked, const Options& options) {
    std::size_t count = 0;
    for (std::size_t i = 0; i < checked.left_out.size(); ++i) {
        const bool translated =
            std::any_of(checked.models.begin(), checked.models.end(),
                        [i](const Translated& model) { return model.index == i; });
        const bool failed = has_failed(source.models[i], checked.findings, options);
        if (!checked.left_out[i] && !translated && !failed) ++count;
    }
    return count;
}

}  // namespace

std::string without_detours(const std::string& path) {
    return fs::path(path).lexically_normal().string();
}

void place_outputs(const Source& source, Checked& checked, const Options& options,
                   const FileSet& inputs, Placed& placed) {
    std::vector<Finding> findings;
    for (const Translated& model : checked.models) {
        if (!model.output.complete ||
            has_failed(source.models[model.index], checked.findings, options)) {
            continue;
        }
        std::error_code error;
        fs::create_directories(options.out, error);
        if (error) {
            findings.push_back(
                write_failure(output_path(options, source.models[model.index].name + ".GEN"),
                              error.value(), record_span(source, source.models[model.index].line)));
            continue;
        }
        place_model(source, model, options, inputs, placed, findings);
    }
    placed.behind += count_behind(source, checked, options);
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

}  // namespace orvex::frontend
