#include "frontend/findings/failure.h"
#include "frontend/findings/place.h"
#include "frontend/rules/checks.h"
#include "frontend/rules/edits.h"
#include "frontend/rules/encoding.h"
#include "frontend/rules/missing_end.h"
#include "frontend/rules/warn.h"
#include "frontend/syntax/expressions.h"
#include "frontend/syntax/reading.h"
#include "notation/limits.h"
#include "notation/records.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace orvex::frontend {

namespace {

// The name as written, which may be longer than the one that the translator uses.
Range whole_name(const Subject& subject, const ModelNode& node) {
    const Tree& tree = subject.source.tree;
    Index token = tree.records[node.record].token;
    while (tree.tokens[token].kind != TokenKind::model_name) ++token;
    return range_of(tree, token);
}

void warn_of_name(const Subject& subject, Findings& findings, Range place, const std::string& name,
                  std::string_view variant) {
    warn(subject, findings, place,
         {{"name", name}, {"limit", std::to_string(notation::model_name_columns)}}, variant);
}

// Is there a line that would end the model, but not in column 1?
bool has_indented_end(const Subject& subject, const ModelNode& node) {
    const Tree& tree = subject.source.tree;
    for (Index record = node.record + 1; record < node.end; ++record) {
        if (tree.records[record].kind == RecordKind::comment) continue;
        const std::string text = capitals(text_in(subject, record_range(tree, record)));
        if (text.starts_with(notation::keyword_mark) && notation::ends_model(text.substr(1)))
            return true;
    }
    return false;
}

}  // namespace

void check_model_none(const Subject& subject, Findings& findings) {
    const Encoding encoding = encoding_of(subject.source.bytes);
    if (!subject.source.models.empty() && encoding != Encoding::carriage_returns) return;
    const std::string_view variant = encoding == Encoding::utf16              ? "utf"
                                     : encoding == Encoding::carriage_returns ? "carriage returns"
                                                                              : "";
    findings.push_back(
        warning(std::string(subject.code), {}, whole_file(subject.source.path), variant));
}

// The name is used in file names and statements.
void check_model_name(const Subject& subject, Findings& findings) {
    const std::string& name = subject.model->name;
    const ModelNode& node = subject.source.tree.models[subject.model->node];
    const Range whole = whole_name(subject, node);
    const bool is_word = std::all_of(name.begin(), name.end(), is_name_byte);
    const bool is_long = whole.end - whole.begin > notation::model_name_columns;
    if (is_word && !is_long && !is_digit(name.front())) return;
    if (is_word && is_long)
        return warn_of_name(subject, findings, whole, as_read(subject, whole), "long");
    const Range cut = {whole.begin, whole.begin + static_cast<Offset>(name.size())};
    warn_of_name(subject, findings, cut, name, is_word ? "digit" : "");
}

void check_model_open(const Subject& subject, Findings& findings) {
    const ModelNode& node = subject.source.tree.models[subject.model->node];
    if (node.closed || subject.model->lost || has_indented_end(subject, node)) return;
    if (first_host_text(subject.source, *subject.model) != no_index) return;
    const Tree& tree = subject.source.tree;
    Finding& finding =
        warn(subject, findings, record_range(tree, node.record), {{"name", subject.model->name}});
    const Offset end = tree.tokens[tree.records[node.end].token].begin;
    const bool is_open = !std::string_view(subject.source.bytes).substr(0, end).ends_with('\n');
    set_fix(finding, Confidence::maybe,
            {inserting(end, std::string(is_open ? "\n" : "") + notation::keyword_mark +
                                std::string(notation::end_keyword) + "\n")});
}

}  // namespace orvex::frontend
