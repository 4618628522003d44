#include "frontend/rules/constraint_bodies.h"

#include "notation/records.h"

#include <algorithm>

namespace orvex::frontend {

namespace {

bool is_part_of_body(RecordKind kind) {
    return kind == RecordKind::body || kind == RecordKind::blank || kind == RecordKind::comment;
}

// Is the line longer than the part that is read? Its comment may be.
bool is_cut(const Tree& tree, Index record) {
    for (Index token = tree.records[record].token; token < tree.records[record + 1].token;
         ++token) {
        const TokenKind kind = tree.tokens[token].kind;
        if (kind == TokenKind::description) return false;
        if (kind == TokenKind::unread) return true;
    }
    return false;
}

bool is_unclear(const Part& part) {
    const bool is_open = part.kind == TokenKind::string &&
                         (part.text.size() == 1 || part.text.front() != part.text.back());
    return is_open || part.kind == TokenKind::macro;
}

class Reader {
  public:
    Reader(const Source& source, const Model& model) : source_(source), model_(model) {}

    Body read(const Constraint& constraint) {
        Body body;
        body.constraint = &constraint;
        const Tree& tree = source_.tree;
        const ModelNode& node = tree.models[model_.node];
        Index record = constraint.record + 1;
        for (; record < node.end && is_part_of_body(tree.records[record].kind); ++record) {
            if (tree.records[record].kind == RecordKind::body) take(body, record);
        }
        if (!body.is_ended && record == node.end && !node.closed) body.is_clear = false;
        return body;
    }

  private:
    // A line that begins with "$" belongs to the host.
    void take(Body& body, Index record) const {
        const Range range = record_range(source_.tree, record);
        const bool is_of_host =
            source_.bytes[line_range(source_.tree, record).begin] == notation::keyword_mark;
        if (is_of_host || is_cut(source_.tree, record)) body.is_clear = false;
        const std::size_t before = body.parts.size();
        add_parts(source_.bytes, range, body.parts);
        const auto first = body.parts.begin() + static_cast<std::ptrdiff_t>(before);
        if (std::any_of(first, body.parts.end(), is_unclear)) body.is_clear = false;
        const auto end = std::find_if(first, body.parts.end(),
                                      [](const Part& part) { return is_symbol(part, ";"); });
        if (end == body.parts.end()) return;
        body.is_ended = true;
        if (end + 1 != body.parts.end()) body.rest = {(end + 1)->range.begin, range.end};
        body.parts.erase(end, body.parts.end());
    }

    const Source& source_;
    const Model& model_;
};

struct Relations {
    std::size_t count = 0;
    std::size_t second = no_part;
    std::size_t equals = no_part;  // a "=" instead of a relation
};

// The relations outside parentheses. Precondition: parentheses match.
Relations read_relations(const std::vector<Part>& parts) {
    Relations found;
    for (std::size_t at = 0; at < parts.size(); ++at) {
        if (opens_group(parts[at])) at = end_of_group(parts, at) - 1;
        if (is_symbol(parts[at], "=") && found.equals == no_part) found.equals = at;
        if (is_relation(parts[at]) && ++found.count == 2) found.second = at;
    }
    return found;
}

}  // namespace

FaultPlace fault_of(const std::vector<Part>& parts) {
    if (parts.empty()) return {BodyFault::empty, no_part};
    for (std::size_t at = 0; at < parts.size(); ++at) {
        if (is_symbol(parts[at], ":")) return {BodyFault::colon, at};
    }
    const std::size_t unmatched = unmatched_group(parts);
    if (unmatched != no_part) return {BodyFault::group, unmatched};
    const Relations relations = read_relations(parts);
    if (relations.count == 0) return {BodyFault::no_relation, relations.equals};
    if (relations.count > 1) return {BodyFault::many_relations, relations.second};
    const std::size_t gap = missing_operator(parts);
    return {gap == no_part ? BodyFault::none : BodyFault::no_operator, gap};
}

std::vector<Body> read_bodies(const Source& source, const Model& model) {
    std::vector<Body> bodies;
    Reader reader(source, model);
    for (const Constraint& constraint : model.constraints) {
        const bool is_refused =
            constraint.symbol == no_index || model.symbols[constraint.symbol].touched;
        if (is_refused || model.lost) continue;
        Body& body = bodies.emplace_back(reader.read(constraint));
        if (!body.is_clear) continue;
        const FaultPlace found = fault_of(body.parts);
        body.fault = found.fault;
        body.at = found.at;
    }
    return bodies;
}

}  // namespace orvex::frontend
