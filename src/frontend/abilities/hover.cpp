#include "frontend/abilities/hover.h"

#include "frontend/abilities/annotations.h"
#include "frontend/abilities/context.h"
#include "frontend/abilities/guide.h"
#include "frontend/findings/wording.h"
#include "frontend/model/nests.h"
#include "frontend/syntax/reading.h"
#include "frontend/syntax/source.h"
#include "frontend/views/listed_names.h"

#include <algorithm>
#include <string_view>
#include <vector>

namespace orvex::frontend {

namespace {

// The lines of the records that loop over a set.
std::vector<int> lines_of_loops(const Document& document, const Model& model, Index set) {
    std::vector<int> lines;
    for (Index use = model.symbols[set].first_use; use != no_index; use = model.uses[use].next) {
        const Index record = model.uses[use].record;
        const RecordKind kind = document.source.tree.records[record].kind;
        const bool loops = kind == RecordKind::opening || kind == RecordKind::names ||
                           kind == RecordKind::entry || kind == RecordKind::report;
        const int line = line_of_record(record);
        if (loops && model.uses[use].role == Role::set &&
            std::find(lines.begin(), lines.end(), line) == lines.end())
            lines.push_back(line);
    }
    std::sort(lines.begin(), lines.end());
    return lines;
}

// What the label before a use means for it.
std::string text_of_label(const Document& document, const Use& use) {
    const std::string label = label_before(document, use.record, use.range.begin);
    const std::string row = label.empty() ? std::string() : guide_row(label);
    return row.empty() ? row : "\n`" + label + ":` here:\n\n" + row;
}

std::string text_of_nest(const Document& document, const Context& context,
                         const std::string& label) {
    if (context.block == nullptr) return {};
    const auto block = static_cast<Index>(context.block - context.model->blocks.data());
    const Nest* const nest = find_nest(*context.model, block, label);
    if (nest == nullptr || nest->label.empty()) return {};
    const int line = line_of(document.source.tree, nest->label.begin);
    std::string text =
        "nest " + back_quoted(nest->name) + ", declared in line " + std::to_string(line);
    if (nest->parent != no_index)
        text += ", within " + back_quoted(context.model->nests[nest->parent].name);
    return text + "\n";
}

std::optional<Hover> hover_on_token(const Document& document, Offset offset) {
    const Context context = context_at(document, offset);
    const Tree& tree = document.source.tree;
    if (context.model == nullptr) return {};
    for (Index token = tree.records[context.record].token;
         token < tree.records[context.record + 1].token; ++token) {
        const Range range = range_of(tree, token);
        if (offset < range.begin || range.end < offset) continue;
        const std::string text = capitals(text_of(document.source.bytes, range));
        std::string found;
        if (tree.tokens[token].kind == TokenKind::label) {
            found = text_of_nest(document, context, text);
            if (found.empty()) found = guide_row(text);
        } else if (tree.tokens[token].kind == TokenKind::keyword) {
            found = guide_row(text);
        }
        if (!found.empty()) return Hover{range, found};
    }
    return {};
}

}  // namespace

std::string name_text(const Document& document, const Model& model, Index symbol) {
    const Symbol& known = model.symbols[symbol];
    std::string text = "**" + std::string(kind_name(known.kind)) + "** " +
                       back_quoted(name_with_arguments(model, symbol)) + "\n";
    const std::string_view description = description_of(model, document.source.bytes, symbol);
    if (!description.empty()) text += "\n" + std::string(description) + "\n";
    const int line = declared_line(known);
    const std::string place =
        line > 0 ? "declared in line " + std::to_string(line) : "not declared in the model";
    text += "\n" + place + "; " + uses_text(model, known) + "\n";
    if (known.kind != Kind::set) return text;
    const std::vector<int> lines = lines_of_loops(document, model, symbol);
    return lines.empty() ? text : text + "\nlooped over in " + line_list(lines) + "\n";
}

std::optional<Hover> hover_at(const Document& document, Offset offset) {
    const UsePlace* const place = use_at(document, offset);
    if (place == nullptr) return hover_on_token(document, offset);
    const Use& use = use_of(document, *place);
    return Hover{use.range, name_text(document, model_of(document, *place), use.symbol) +
                                text_of_label(document, use)};
}

}  // namespace orvex::frontend
