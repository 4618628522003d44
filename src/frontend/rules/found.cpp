#include "frontend/rules/found.h"

#include <algorithm>

namespace orvex::frontend {

// The findings about the model are the last ones: the models of a file are checked in order.
FoundLines::FoundLines(const Subject& subject, const Findings& findings) {
    const ModelNode& node = subject.source.tree.models[subject.model->node];
    const auto is_outside = [&node](const Finding& finding) {
        const int line = finding.span.line;
        return line < line_of_record(node.record) || line >= line_of_record(node.end);
    };
    const auto before = std::find_if(findings.rbegin(), findings.rend(), is_outside);
    std::for_each(before.base(), findings.end(), [this](const Finding& finding) {
        if (finding.severity != Severity::off) lines_.insert(finding.span.line);
    });
}

bool FoundLines::touch(const Rows& rows, const Row& row) const {
    const auto is_found = [this](const Field* field) {
        return lines_.contains(line_of_record(field->record));
    };
    const auto fields = fields_of(rows, row);
    return is_found(&head_of(row)) || std::any_of(fields.begin(), fields.end(), is_found);
}

}  // namespace orvex::frontend
