#include "frontend/abilities/nest_labels.h"

#include "frontend/syntax/expressions.h"
#include "frontend/syntax/reading.h"

#include <algorithm>
#include <cstddef>

namespace orvex::frontend {

namespace {

using std::string_view;

// A nest and, in parentheses, its parent nest.
void add_opened(string_view bytes, Range label, std::vector<NestLabel>& labels) {
    const string_view text = text_of(bytes, label);
    const std::size_t open = std::min(text.find('('), text.size());
    if (open > 0) labels.push_back({{label.begin, label.begin + static_cast<Offset>(open)}, true});
    if (open == text.size()) return;
    const std::size_t close = std::min(text.find(')', open), text.size());
    if (close > open + 1)
        labels.push_back({{label.begin + static_cast<Offset>(open) + 1,
                           label.begin + static_cast<Offset>(close)}});
}

bool enters_nest(const Field& field) {
    const bool has_meaning = field.row != nullptr && field.row->full;
    return !has_meaning && field.text.empty() && !field.label.empty();
}

}  // namespace

std::vector<NestLabel> nest_labels_of(const Document& document, const Model& model, Index block) {
    std::vector<NestLabel> labels;
    const Block& owner = model.blocks[block];
    const bool is_function = is_opened_by(owner, notation::Opens::production) ||
                             is_opened_by(owner, notation::Opens::demand);
    if (!is_function) return labels;
    for (const Field& field : fields_of(model, owner))
        add_opened(document.source.bytes, field.label, labels);
    for (const Entry& entry : entries_of(model, owner)) {
        for (const Field& field : fields_of(model, entry))
            if (enters_nest(field)) labels.push_back({field.label});
    }
    return labels;
}

Range set_in_label(std::string_view bytes, Range label) {
    const std::size_t dot = text_of(bytes, label).find('.');
    if (dot == string_view::npos) return {};
    const Range set = {label.begin, label.begin + static_cast<Offset>(dot)};
    return is_plain_name(text_of(bytes, set)) ? set : Range();
}

std::vector<Range> labels_of_set(const Document& document, const Model& model,
                                 std::string_view set) {
    const Tree& tree = document.source.tree;
    const string_view bytes = document.source.bytes;
    const ModelNode& node = tree.models[model.node];
    std::vector<Range> places;
    const Index end = tree.records[node.end].token;
    for (Index token = tree.records[node.record].token; token < end; ++token) {
        if (tree.tokens[token].kind != TokenKind::label) continue;
        const Range place = set_in_label(bytes, range_of(tree, token));
        if (!place.empty() && same_when_read(text_of(bytes, place), set)) places.push_back(place);
    }
    return places;
}

}  // namespace orvex::frontend
