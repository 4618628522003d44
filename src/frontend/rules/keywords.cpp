#include "notation/keywords.h"

#include "frontend/rules/checks.h"
#include "frontend/rules/edits.h"
#include "frontend/rules/warn.h"
#include "frontend/syntax/reading.h"
#include "notation/records.h"

#include <algorithm>
#include <string>
#include <string_view>

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

// The ignored text after the keyword of a record.
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

// Is a constraint refused because of a name declared between two records? Its error says what is
// wrong with their keyword.
bool has_refused_constraint(const Model& model, Index begin, Index end) {
    return std::any_of(model.errors.begin(), model.errors.end(), [&](const Error& error) {
        if (error.fault != Fault::chksym_unknown) return false;
        const Symbol& symbol = model.symbols[error.symbol];
        return symbol.is_declared && symbol.declared_record > begin && symbol.declared_record < end;
    });
}

// Is it a name that the model uses as one of the kind, but does not declare?
bool is_missing(const Model& model, std::string_view name, Kind kind) {
    const Symbol* const symbol = find_symbol(model, name);
    return symbol != nullptr && symbol->kind == kind && !symbol->is_declared;
}

// Is the ignored text certainly meant as contents of the block? Words after the keyword of a
// declaration may be a comment.
bool is_meant(const Subject& subject, const BlockNode& block, std::string_view text) {
    if (block.keyword->opens == Opens::report) return text.find(':') != std::string_view::npos;
    const Kind kind = kind_of_type(block.keyword->type);
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of(" \t"), text.size());
        const std::string word = capitals(text.substr(0, end));
        if (!is_missing(*subject.model, word.substr(0, word.find('(')), kind)) return false;
        text.remove_prefix(std::min(text.find_first_not_of(" \t", end), text.size()));
    }
    return true;
}

}  // namespace

// Only the whole keyword opens a block that makes its names auxiliary variables.
void check_keyword_auxiliary(const Subject& subject, Findings& findings) {
    for_each_keyword(subject, [&](const BlockNode& block) {
        if (!block.keyword->only_whole || block.gives_type) return;
        if (has_refused_constraint(*subject.model, block.record, (&block + 1)->record)) return;
        const Range place = keyword_place(subject.source.tree, block.record);
        Finding& finding = warn(subject, findings, place, {{"keyword", as_read(subject, place)}});
        const std::string keyword = notation::keyword_mark + std::string(block.keyword->word);
        set_fix(finding, Confidence::certain,
                {replacing(place, cased_like(text_in(subject, place), keyword))});
    });
}

// Options are passed on to the solver unchanged.
void check_option_empty(const Subject& subject, Findings& findings) {
    const Tree& tree = subject.source.tree;
    for_each_keyword(subject, [&](const BlockNode& block) {
        const bool is_option = block.keyword->opens == Opens::option;
        if (!is_option || tree.records[block.record].fault != Fault::none) return;
        const Range record = record_range(tree, block.record);
        if (text_in(subject, record).back() != ':') return;
        warn(subject, findings, record, {{"keyword", as_read(subject, record)}});
    });
}

void check_keyword_text(const Subject& subject, Findings& findings) {
    const Tree& tree = subject.source.tree;
    for_each_keyword(subject, [&](const BlockNode& block) {
        const Opens opens = block.keyword->opens;
        const bool is_whole = opens == Opens::declaration || opens == Opens::report;
        if (!is_whole || tree.records[block.record].fault != Fault::none) return;
        const Range text = ignored_text(tree, block.record);
        if (text.empty()) return;
        const Range keyword = keyword_place(tree, block.record);
        const bool is_certain = is_meant(subject, block, text_in(subject, text));
        Finding& finding = warn(subject, findings, text,
                                {{"text", std::string(text_in(subject, text))},
                                 {"keyword", as_read(subject, keyword)}});
        set_fix(finding, is_certain ? Confidence::certain : Confidence::maybe,
                {breaking_line(subject.source.bytes, text.begin, "  ")});
    });
}

}  // namespace orvex::frontend
