#include "frontend/syntax/source.h"

#include "frontend/base/bytes.h"
#include "frontend/base/files.h"
#include "frontend/syntax/parse.h"

#include <algorithm>
#include <unistd.h>

namespace orvex::frontend {

namespace {

ModelText model_text(const Source& source, Index model) {
    const ModelNode& node = source.tree.models[model];
    ModelText text;
    text.name = model_name(source.bytes, source.tree, model);
    text.line = line_of_record(node.record);
    text.last = static_cast<int>(node.end);
    text.closed = node.closed;
    return text;
}

}  // namespace

void parse_source(Source& source) {
    source.tree = parse(source.bytes);
    source.models.clear();
    for (Index model = 0; model < model_count(source.tree); ++model)
        source.models.push_back(model_text(source, model));
}

bool read_source(const std::string& file, Source& source) {
    const bool complete = file == "-" ? read_all(STDIN_FILENO, source.bytes, largest_file)
                                      : read_file(file, source.bytes, largest_file);
    if (!complete) return false;
    parse_source(source);
    return true;
}

int line_count(const Source& source) { return static_cast<int>(line_count(source.tree)); }

std::string_view line_text(const Source& source, int line) {
    return text_of(source.bytes, line_range(source.tree, static_cast<Index>(line) - 1));
}

Offset line_begin(const Source& source, int line) {
    return line_range(source.tree, static_cast<Index>(line) - 1).begin;
}

int line_of(const Tree& tree, Offset offset) {
    const auto after = std::upper_bound(
        tree.records.begin(), tree.records.end() - 1, offset,
        [&](Offset at, const RecordNode& record) { return at < tree.tokens[record.token].begin; });
    return std::max(static_cast<int>(after - tree.records.begin()), 1);
}

Index token_at(const Tree& tree, Offset offset) {
    const auto after =
        std::upper_bound(tree.tokens.begin(), tree.tokens.end() - 1, offset,
                         [](Offset byte, const Token& token) { return byte < token.begin; });
    return static_cast<Index>(std::max(after, tree.tokens.begin() + 1) - tree.tokens.begin()) - 1;
}

Index owner_of_argument(const Tree& tree, Offset offset) {
    Index token = token_at(tree, offset);
    while (token > 1 && tree.tokens[token].kind != TokenKind::open) --token;
    return token - 1;
}

Index field_at(const Tree& tree, Offset offset) {
    const auto record = static_cast<Index>(line_of(tree, offset) - 1);
    Index field = tree.records[record + 1].field;
    while (field > tree.records[record].field &&
           tree.tokens[tree.fields[field - 1].token].begin > offset) {
        --field;
    }
    return field == tree.records[record].field ? no_index : field - 1;
}

int column_of(std::string_view line, std::size_t at) {
    int column = 1;
    std::size_t end = 0;
    for (const std::string_view character : characters_of(line)) {
        end += character.size();
        if (end > at) break;
        ++column;
    }
    return column;
}

}  // namespace orvex::frontend
