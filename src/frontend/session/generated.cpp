#include "frontend/session/generated.h"

#include <algorithm>
#include <string_view>

namespace orvex::frontend {

namespace {

bool has_error(const File& file, const Model& model) {
    const ModelText& text = file.source->models[model.node];
    const auto& findings = file.checked.findings;
    return std::any_of(findings.begin(), findings.end(), [&](const Finding& finding) {
        return finding.severity == Severity::error && finding.span.line >= text.line &&
               finding.span.line <= text.last;
    });
}

// The lines that the translator counts: all of the model except the first.
int counted_lines(const File& file, const Model& model) {
    const ModelText& text = file.source->models[model.node];
    return text.last - text.line;
}

// The generator file of a model; empty if the translator has not reached it.
std::string_view generator_of(const File& file, const Model& model) {
    for (const auto* outputs : {&file.checked.outputs, &file.checked.later_outputs}) {
        for (const Translated& made : *outputs) {
            if (made.model == model.node) return made.output.generator;
        }
    }
    return {};
}

}  // namespace

std::vector<GeneratedModel> good_models(const File& file) {
    std::vector<GeneratedModel> good;
    int lines_before = 0;
    for (const Model& model : file.checked.models) {
        const std::string_view generator = generator_of(file, model);
        if (!generator.empty() && !has_error(file, model))
            good.push_back({*file.source, model, generator, lines_before});
        lines_before += counted_lines(file, model);
    }
    return good;
}

}  // namespace orvex::frontend
