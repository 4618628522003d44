#include "frontend/syntax/fields.h"

namespace orvex::frontend {

namespace {

void extend(Range& range, Range token) {
    if (range.empty()) range.begin = token.begin;
    range.end = token.end;
}

void start_list(ArgumentList& list, Range open) {
    list.count = 1;
    list.ranges[0] = {open.end, open.end};
}

void next_argument(ArgumentList& list, Range comma) {
    if (list.count == list.ranges.size()) return;
    list.ranges[list.count++] = {comma.end, comma.end};
}

// Assigns the tokens of one field to its parts, in order.
class Reader {
  public:
    explicit Reader(FieldParts& parts) : parts_(parts) {}

    void take(TokenKind kind, Range range) {
        switch (kind) {
        case TokenKind::blank:
        case TokenKind::plus:
        case TokenKind::keyword: break;
        case TokenKind::label: parts_.label = range; break;
        case TokenKind::colon: in_value_ = true; break;
        case TokenKind::open: start_list(*list_, range); break;
        case TokenKind::argument: list_->ranges[list_->count - 1] = range; break;
        case TokenKind::comma: next_argument(*list_, range); break;
        case TokenKind::list: list_ = &parts_.extra; break;
        case TokenKind::condition: parts_.has_condition = true; break;
        case TokenKind::ignored: extend(in_value_ ? parts_.ignored : parts_.before, range); break;
        default: break;
        }
        if (kind != TokenKind::blank) take_text(kind, range);
    }

    void start_value() { in_value_ = true; }

  private:
    void take_text(TokenKind kind, Range range) {
        const bool is_before = kind == TokenKind::colon || kind == TokenKind::plus ||
                               kind == TokenKind::label || kind == TokenKind::keyword;
        if (!in_value_ || is_before) return;
        extend(parts_.all, range);
        if (kind == TokenKind::condition || kind == TokenKind::list) return;
        if (parts_.has_condition) {
            extend(parts_.condition, range);
        } else if (list_ == &parts_.own) {
            extend(parts_.value, range);
            if (parts_.own.count == 0) extend(parts_.root, range);
        }
    }

    FieldParts& parts_;
    ArgumentList* list_ = &parts_.own;
    bool in_value_ = false;
};

// Does a field begin with its value? One that belongs to a keyword has no label of its own.
bool begins_with_value(const Tree& tree, Index record, Index field) {
    const RecordNode& node = tree.records[record];
    return node.kind == RecordKind::names ||
           (node.kind == RecordKind::opening && field == node.field);
}

}  // namespace

FieldParts parts_of(const Tree& tree, Index record, Index field) {
    FieldParts parts;
    parts.first = tree.fields[field].token;
    parts.end = end_of_field(tree, record, field);
    Reader reader(parts);
    if (begins_with_value(tree, record, field)) reader.start_value();
    for (Index token = parts.first; token < parts.end; ++token)
        reader.take(tree.tokens[token].kind, range_of(tree, token));
    return parts;
}

}  // namespace orvex::frontend
