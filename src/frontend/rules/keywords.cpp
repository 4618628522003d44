#include "notation/keywords.h"

#include "frontend/rules/checks.h"
#include "frontend/rules/warn.h"

namespace orvex::frontend {

namespace {

using notation::Opens;

// Calls work(block) for each keyword record of the model whose keyword is known.
template <typename Work>
void for_each_keyword(const Subject& subject, const Work& work) {
    const Tree& tree = subject.source.tree;
    const Index model = subject.model->node;
    for (Index block = tree.models[model].block; block < tree.models[model + 1].block; ++block) {
        if (tree.blocks[block].keyword != nullptr) work(tree.blocks[block]);
    }
}

Range keyword_place(const Tree& tree, Index record) {
    return range_of(tree, tree.records[record].token);
}

// What is ignored after the keyword of a record.
Range ignored_text(const Tree& tree, Index record) {
    Range text;
    for (Index token = tree.records[record].token; token < tree.records[record + 1].token;
         ++token) {
        if (tree.tokens[token].kind != TokenKind::ignored) continue;
        if (text.empty()) text.begin = tree.tokens[token].begin;
        text.end = range_of(tree, token).end;
    }
    return text;
}

}  // namespace

// Of auxiliary variables, only the whole keyword opens a block that makes its names such.
void check_keyword_auxiliary(const Subject& subject, Findings& findings) {
    for_each_keyword(subject, [&](const BlockNode& block) {
        if (!block.keyword->only_whole || block.gives_type) return;
        const Range place = keyword_place(subject.source.tree, block.record);
        warn(subject, findings, place, {{"keyword", as_read(subject, place)}});
    });
}

void check_keyword_text(const Subject& subject, Findings& findings) {
    const Tree& tree = subject.source.tree;
    for_each_keyword(subject, [&](const BlockNode& block) {
        const Opens opens = block.keyword->opens;
        const bool is_whole = opens == Opens::declaration || opens == Opens::report;
        if (!is_whole || tree.records[block.record].fault != Fault::none) return;
        const Range text = ignored_text(tree, block.record);
        if (!text.empty()) warn(subject, findings, text);
    });
}

}  // namespace orvex::frontend
