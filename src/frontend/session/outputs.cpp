#include "frontend/session/outputs.h"

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
std::optional<Finding> clash(const std::string& path, const Span& span, const Inputs& inputs,
                             const Placed& placed) {
    if (has_file(inputs.files, path)) {
        return failure("output-is-input", {{"path", path}}, span);
    }
    if (inputs.reserved.contains(without_detours(path))) {
        return failure("output-repeated", {{"path", path}}, span, "reserved");
    }
    const auto taken = placed.taken.find(without_detours(path));
    if (taken == placed.taken.end()) return {};
    Finding finding = failure("output-repeated", {{"path", path}}, span);
    finding.remarks.insert(finding.remarks.begin(),
                           {Severity::note, "this model writes it", taken->second});
    return finding;
}

void note_output(const std::string& path, bool changed, OutputFiles& files) {
    (changed ? files.written : files.unchanged).push_back(path);
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
    note_output(paths[first], files[first].changed, placed.files);
    failed = paths[second];
    if (!commit(files[second])) return false;
    note_output(paths[second], files[second].changed, placed.files);
    for (const std::string& path : paths) {
        placed.outputs.push_back(path);
        placed.taken.emplace(without_detours(path), span);
    }
    return true;
}

Finding write_failure(const std::string& path, int error, const Span& span) {
    return failure("output-unwritable", {{"path", path}, {"reason", system_message(error)}}, span);
}

void place_model(const Source& source, const Translated& model, const Options& options,
                 const Inputs& inputs, Placed& placed, std::vector<Finding>& findings) {
    const Span span = record_span(source, source.models[model.model].line);
    const std::string& name = source.models[model.model].name;
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
        findings.push_back(failure("output-repeated", {{"path", paths[1]}}, span));
        return;
    }
    std::string failed;
    if (!place(paths, model.output, placed, span, failed)) {
        findings.push_back(write_failure(failed, errno, span));
    }
}

}  // namespace

void place_outputs(File& file, const Options& options, const Inputs& inputs, Placed& placed) {
    const Source& source = *file.source;
    Checked& checked = file.checked;
    std::vector<Finding> findings;
    std::size_t placed_models = 0;
    for (const Translated& model : checked.outputs) {
        if (has_failed(source.models[model.model], checked.findings, options)) continue;
        ++placed_models;
        std::error_code error;
        fs::create_directories(options.out, error);
        if (error) {
            findings.push_back(
                write_failure(output_path(options, source.models[model.model].name + ".GEN"),
                              error.value(), record_span(source, source.models[model.model].line)));
            continue;
        }
        place_model(source, model, options, inputs, placed, findings);
    }
    placed.untranslated += checked.model_count - placed_models;
    checked.findings.insert(checked.findings.end(), findings.begin(), findings.end());
}

}  // namespace orvex::frontend
