#include "frontend/session/outputs.h"

#include "frontend/base/bytes.h"
#include "frontend/findings/failure.h"
#include "frontend/findings/place.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <iterator>
#include <optional>
#include <set>
#include <string_view>
#include <system_error>

namespace orvex::frontend {

namespace fs = std::filesystem;

namespace {

// Does the model have a finding that counts as an error?
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

// Why a path cannot be an output of the model, if it cannot.
std::optional<Finding> clash(const std::string& path, const Span& span, const Inputs& inputs) {
    if (has_file(inputs.files, path)) {
        return failure("output-is-input", {{"path", path}}, span);
    }
    if (inputs.reserved.contains(without_detours(path))) {
        return failure("output-repeated", {{"path", path}}, span, "reserved");
    }
    return {};
}

// A model with the same name in another file: its outputs have the same paths.
std::optional<Finding> namesake(const std::string& name, const std::string& path, const Span& span,
                                const Inputs& inputs) {
    const auto found = inputs.models.find(name);
    if (found == inputs.models.end() || found->second.size() < 2) return {};
    const std::vector<Span>& places = found->second;
    Finding finding = failure("output-repeated", {{"path", path}}, span);
    const Span& other = places.front().path == span.path ? places.back() : places.front();
    finding.remarks.insert(finding.remarks.begin(),
                           {Severity::note, "this model has the same name", other});
    return finding;
}

// Names used by more than one model of the file.
std::set<std::string_view> shared_names(const Source& source) {
    std::set<std::string_view> names;
    std::set<std::string_view> shared;
    for (const ModelText& model : source.models) {
        if (!names.insert(model.name).second) shared.insert(model.name);
    }
    return shared;
}

// Makes the folder of an output. Returns 0 or an errno.
int make_folder(const std::string& path) {
    const fs::path folder = fs::path(path).parent_path();
    std::error_code error;
    if (!folder.empty()) fs::create_directories(folder, error);
    // Standard libraries differ in what they say of a file where a folder must be.
    return error == std::errc::file_exists ? ENOTDIR : error.value();
}

void note_output(const std::string& path, bool changed, OutputFiles& files) {
    (changed ? files.written : files.unchanged).push_back(path);
}

// Writes both files of a model, or none: both are written before either is renamed into place, and
// one that is written in place, such as a device, comes first.
bool place(const std::string (&paths)[2], const ModelOutput& output, Placed& placed,
           std::string& failed) {
    PendingWrite files[2];  // generator, header
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
    placed.outputs.insert(placed.outputs.end(), std::begin(paths), std::end(paths));
    return true;
}

// Why these paths cannot be the outputs of the model, if they cannot.
std::optional<Finding> refusal(const std::string (&paths)[2], const std::string& name,
                               const Span& span, const Inputs& inputs) {
    for (const std::string& path : paths) {
        if (std::optional<Finding> finding = clash(path, span, inputs)) return finding;
    }
    if (std::optional<Finding> finding = namesake(name, paths[0], span, inputs)) return finding;
    if (without_detours(paths[0]) == without_detours(paths[1]))
        return failure("output-repeated", {{"path", paths[1]}}, span);
    for (const std::string& path : paths) {
        if (const int error = make_folder(path); error != 0)
            return write_failure(path, error, span);
    }
    return {};
}

// False, with a finding, if there is no output.
bool place_model(const Source& source, const Translated& model, const Options& options,
                 const Inputs& inputs, Placed& placed, std::vector<Finding>& findings) {
    const Span span = record_span(source, source.models[model.model].line);
    const std::string& name = source.models[model.model].name;
    const std::string paths[2] = {
        output_path(options, name + ".GEN"),
        options.header.empty() ? output_path(options, name + ".HDR") : options.header};
    if (std::optional<Finding> finding = refusal(paths, name, span, inputs)) {
        findings.push_back(*std::move(finding));
        return false;
    }
    std::string failed;
    if (place(paths, model.output, placed, failed)) return true;
    findings.push_back(write_failure(failed, errno, span));
    return false;
}

}  // namespace

std::size_t asked_models(const Options& options, const Source& source) {
    if (options.model.empty()) return source.models.size();
    std::string name = options.model;
    make_upper(name);
    return static_cast<std::size_t>(
        std::count_if(source.models.begin(), source.models.end(),
                      [&](const ModelText& model) { return model.name == name; }));
}

void place_outputs(File& file, const Options& options, const Inputs& inputs, Placed& placed) {
    const Source& source = *file.source;
    Checked& checked = file.checked;
    std::vector<Finding> findings;
    std::size_t placed_models = 0;
    const std::set<std::string_view> shared = shared_names(source);
    for (const Translated& model : checked.outputs) {
        const ModelText& text = source.models[model.model];
        if (has_failed(text, checked.findings, options) || shared.contains(text.name)) continue;
        if (place_model(source, model, options, inputs, placed, findings)) ++placed_models;
    }
    placed.untranslated += asked_models(options, source) - placed_models;
    checked.findings.insert(checked.findings.end(), findings.begin(), findings.end());
}

}  // namespace orvex::frontend
