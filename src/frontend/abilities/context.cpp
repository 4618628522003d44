#include "frontend/abilities/context.h"

#include "frontend/syntax/expressions.h"
#include "frontend/syntax/reading.h"

#include <algorithm>
#include <cstddef>
#include <span>

namespace orvex::frontend {

namespace {

Index record_at(const Tree& tree, Offset offset) {
    return static_cast<Index>(line_of(tree, offset)) - 1;
}

const Model* model_at(const Document& document, Index record) {
    for (const Model& model : document.models) {
        const ModelNode& node = document.source.tree.models[model.node];
        if (node.record <= record && record < node.end) return &model;
    }
    return nullptr;
}

const notation::Keyword* keyword_at(const Tree& tree, const Model& model, Index record) {
    const notation::Keyword* keyword = nullptr;
    const Index end = tree.models[model.node + 1].block;
    for (Index block = tree.models[model.node].block; block < end; ++block) {
        if (tree.blocks[block].record <= record) keyword = tree.blocks[block].keyword;
    }
    return keyword;
}

const Block* block_at(const Model& model, Index record) {
    const auto after =
        std::upper_bound(model.blocks.begin(), model.blocks.end(), record,
                         [](Index at, const Block& block) { return at < block.record; });
    return after == model.blocks.begin() ? nullptr : &*(after - 1);
}

// A new row that has only been started is not an entry yet.
const Entry* entry_at(const Tree& tree, const Model& model, const Block& block, Index record) {
    const auto entries = entries_of(model, block);
    const auto after =
        std::upper_bound(entries.begin(), entries.end(), record,
                         [](Index at, const Entry& entry) { return at < entry.head.record; });
    if (after == entries.begin()) return nullptr;
    const Entry& entry = *(after - 1);
    const bool continues = tree.records[record].kind == RecordKind::continuation;
    return entry.head.record == record || continues ? &entry : nullptr;
}

void add_loops(const Document& document, const Field& field, std::vector<std::string>& loops,
               const Model& model) {
    const std::string_view bytes = document.source.bytes;
    for (const auto& list :
         {arguments_of(model, field.reference), extras_of(model, field.reference)}) {
        for (const Argument& argument : list) {
            if (argument.kind != notation::ArgumentKind::set || argument.range.empty()) continue;
            const std::string name = capitals(text_of(bytes, argument.range));
            if (std::find(loops.begin(), loops.end(), name) == loops.end()) loops.push_back(name);
        }
    }
}

}  // namespace

Context context_at(const Document& document, Offset offset) {
    const Tree& tree = document.source.tree;
    Context context;
    if (line_count(tree) == 0) return context;
    context.record = record_at(tree, offset);
    const Range line = line_range(tree, context.record);
    // After the last line end another line begins, which is not a record yet.
    if (offset <= line.end) context.before = text_of(document.source.bytes, {line.begin, offset});
    context.model = model_at(document, context.record);
    if (context.model == nullptr) return context;
    context.keyword = keyword_at(tree, *context.model, context.record);
    context.block = block_at(*context.model, context.record);
    if (context.block != nullptr)
        context.entry = entry_at(tree, *context.model, *context.block, context.record);
    return context;
}

std::vector<std::string> loops_at(const Document& document, const Context& context) {
    std::vector<std::string> loops;
    if (context.block == nullptr) return loops;
    add_loops(document, context.block->head, loops, *context.model);
    if (context.entry != nullptr) add_loops(document, context.entry->head, loops, *context.model);
    return loops;
}

std::string label_before(const Document& document, Index record, Offset offset) {
    const Tree& tree = document.source.tree;
    std::string label;
    for (Index token = tree.records[record].token; token < tree.records[record + 1].token;
         ++token) {
        if (tree.tokens[token].begin >= offset) break;
        if (tree.tokens[token].kind == TokenKind::label)
            label = capitals(text_of(document.source.bytes, range_of(tree, token)));
    }
    return label;
}

OpenList open_list_at(const Document& document, const Context& context, Offset offset) {
    const Offset begin = line_range(document.source.tree, context.record).begin;
    std::vector<OpenList> open;
    Range word;
    for (std::size_t at = 0; at < context.before.size();) {
        const Lexeme next = next_lexeme(context.before, at);
        const std::string_view text = context.before.substr(at, next.end - at);
        const Range range = {begin + static_cast<Offset>(at),
                             begin + static_cast<Offset>(next.end)};
        at = next.end;
        if (range.end > offset) break;
        if (text == "(") {
            open.push_back({word, 0});
        } else if (text == ")" && !open.empty()) {
            open.pop_back();
        } else if (text == "," && !open.empty()) {
            ++open.back().argument;
        }
        word = next.kind == TokenKind::word ? range : Range{range.end, range.end};
    }
    return open.empty() ? OpenList() : open.back();
}

}  // namespace orvex::frontend
