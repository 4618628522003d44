#include "frontend/rules/operators.h"

#include "frontend/rules/checks.h"
#include "frontend/rules/facts.h"
#include "frontend/rules/warn.h"
#include "frontend/syntax/expression_parts.h"
#include "frontend/syntax/expressions.h"
#include "frontend/syntax/fields.h"
#include "frontend/syntax/reading.h"

#include <cstddef>

namespace orvex::frontend {

namespace {

class Reader {
  public:
    Reader(const Source& source, const Model& model, Operators& found)
        : source_(source), model_(model), found_(found) {}

    void read(const std::vector<Body>& bodies) {
        const ModelNode& node = source_.tree.models[model_.node];
        for (Index record = node.record + 1; record < node.end; ++record) {
            const RecordKind kind = source_.tree.records[record].kind;
            if (kind != RecordKind::body && kind != RecordKind::unknown) take_record(record);
        }
        for (const Body& body : bodies) take(body);
    }

  private:
    void take_record(Index record) {
        const Tree& tree = source_.tree;
        const Index end = tree.records[record + 1].field;
        for (Index field = tree.records[record].field; field < end; ++field) {
            if (tree.fields[field].fault == Fault::none && has_expression(record, field))
                take(parts_of(tree, record, field));
        }
    }

    bool has_expression(Index record, Index field) const {
        const Tree& tree = source_.tree;
        const Index end = end_of_field(tree, record, field);
        for (Index token = tree.fields[field].token; token < end; ++token) {
            const TokenKind kind = tree.tokens[token].kind;
            if (kind == TokenKind::condition || kind == TokenKind::symbol) return true;
        }
        return false;
    }

    // Takes the condition, and the expression in parentheses.
    void take(const FieldParts& field) {
        if (text_of(source_.bytes, field.root).starts_with('(')) {
            parts_.clear();
            add_parts(source_.bytes, field.root, parts_);
            parts_.resize(end_of_group(parts_, 0));
            take_expression();
        }
        parts_.clear();
        add_parts(source_.bytes, field.condition, parts_);
        take_expression();
    }

    void take_expression() {
        const std::size_t gap = missing_operator(parts_);
        if (gap != no_part) add_gap(parts_, gap);
        add_names(parts_);
    }

    void take(const Body& body) {
        if (body.fault == BodyFault::no_operator) add_gap(body.parts, body.at);
        if (body.is_clear) add_names(body.parts);
    }

    void add_gap(const std::vector<Part>& parts, std::size_t at) {
        const Part& last = parts[at - 1];
        const Part& next = parts[at];
        if (last.kind == TokenKind::number && last.range.end == next.range.begin) {
            found_.gaps.push_back(
                {{last.range.begin, next.range.end}, last.text + next.text, {}, true});
            return;
        }
        const Range left = {parts[begin_of_operand(parts, at)].range.begin, last.range.end};
        const bool is_in_line =
            line_of(source_.tree, left.begin) == line_of(source_.tree, next.range.begin);
        found_.gaps.push_back({{is_in_line ? left.begin : next.range.begin, next.range.end},
                               is_in_line ? capitals(text_of(source_.bytes, left)) : last.text,
                               next.text});
    }

    void add_names(const std::vector<Part>& parts) {
        for (std::size_t at = 0; at < parts.size(); ++at) {
            if (!is_operator_as_name(parts, at)) continue;
            const Range place = parts[at].range;
            const auto known = found_.names.emplace(parts[at].text, place).first;
            if (place.begin < known->second.begin) known->second = place;
        }
    }

    const Source& source_;
    const Model& model_;
    Operators& found_;
    std::vector<Part> parts_;  // of the current expression
};

// A variable that is not declared, or not used, has another finding.
bool is_misnamed(const Subject& subject, Index index) {
    const Symbol& symbol = subject.model->symbols[index];
    if (!is_operator_word(name_of(*subject.model, index)) || symbol.touched) return false;
    const bool is_known = !is_variable(symbol.kind) || symbol.is_declared;
    return is_known && is_used(*subject.model, symbol) && !has(*subject.facts, index, is_excused);
}

}  // namespace

Operators read_operators(const Source& source, const Model& model,
                         const std::vector<Body>& bodies) {
    Operators found;
    Reader(source, model, found).read(bodies);
    return found;
}

void check_operator_missing(const Subject& subject, Findings& findings) {
    for (const OperatorGap& gap : subject.facts->operators.gaps) {
        warn(subject, findings, gap.place, {{"left", gap.left}, {"right", gap.right}},
             gap.is_word ? "word" : "");
    }
}

void check_name_operator(const Subject& subject, Findings& findings) {
    std::map<std::string, Range> names = subject.facts->operators.names;
    for (Index symbol = 0; symbol < subject.model->symbols.size(); ++symbol) {
        if (!is_misnamed(subject, symbol)) continue;
        const Index use = subject.model->symbols[symbol].first_use;
        const Range place = subject.model->uses[use].range;
        if (is_no_name(*subject.facts, place.begin)) continue;
        const auto known = names.emplace(name_of(*subject.model, symbol), place).first;
        if (place.begin < known->second.begin) known->second = place;
    }
    for (const auto& [name, place] : names) warn(subject, findings, place, {{"name", name}});
}

}  // namespace orvex::frontend
