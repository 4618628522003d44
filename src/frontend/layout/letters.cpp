#include "frontend/layout/letters.h"

#include "frontend/syntax/reading.h"
#include "text/characters.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>

namespace orvex::frontend {

namespace {

void replace(Range range, std::string text, std::vector<Edit>& edits) {
    Edit edit;
    edit.begin = range.begin;
    edit.end = range.end;
    edit.text = std::move(text);
    edits.push_back(std::move(edit));
}

void capitalise(const Text& text, Range range, std::vector<Edit>& edits) {
    std::string word(text_of(text.bytes, range));
    std::transform(word.begin(), word.end(), word.begin(), upper_letter);
    if (word != text_of(text.bytes, range)) replace(range, std::move(word), edits);
}

void capitalise_record(const Text& text, Index record, std::vector<Edit>& edits) {
    const Tree& tree = text.tree;
    for (Index token = tree.records[record].token; token < tree.records[record + 1].token;
         ++token) {
        const TokenKind kind = tree.tokens[token].kind;
        if (kind == TokenKind::keyword || kind == TokenKind::label)
            capitalise(text, range_of(tree, token), edits);
    }
}

// Writes the uses of a name as in its declaration.
void set_uses(const Text& text, const Model& model, const Symbol& symbol,
              std::vector<Edit>& edits) {
    const std::string_view name = text_of(text.bytes, symbol.declaration);
    for (Index use = symbol.first_use; use != no_index; use = model.uses[use].next) {
        const Range range = model.uses[use].range;
        const std::string_view word = text_of(text.bytes, range);
        const bool is_other = word != name && same_when_read(word, name);
        if (is_other && !is_too_long(text, model.uses[use].record))
            replace(range, std::string(name), edits);
    }
}

}  // namespace

void set_letters(const Text& text, const Model& model, std::vector<Edit>& edits) {
    const ModelNode& node = text.tree.models[model.node];
    for (Index record = node.record; record < node.end; ++record) {
        if (!is_too_long(text, record)) capitalise_record(text, record, edits);
    }
    for (const Symbol& symbol : model.symbols) {
        if (symbol.is_declared) set_uses(text, model, symbol, edits);
    }
}

}  // namespace orvex::frontend
