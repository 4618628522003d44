#include "frontend/findings/wording.h"
#include "frontend/rules/checks.h"
#include "frontend/rules/constraint_bodies.h"
#include "frontend/rules/facts.h"
#include "frontend/rules/warn.h"
#include "frontend/syntax/expression_parts.h"
#include "frontend/syntax/expressions.h"
#include "frontend/syntax/fields.h"

#include <map>
#include <string>
#include <vector>

namespace orvex::frontend {

namespace {

bool has_expression(const Tree& tree, Index first, Index end) {
    for (Index token = first; token < end; ++token) {
        const TokenKind kind = tree.tokens[token].kind;
        if (kind == TokenKind::condition || kind == TokenKind::symbol) return true;
    }
    return false;
}

// Calls work(parts) for the condition and the expression in parentheses of each field of a record.
template <typename Work>
void for_each_expression(const Subject& subject, Index record, const Work& work) {
    const Tree& tree = subject.source.tree;
    for (Index field = tree.records[record].field; field < tree.records[record + 1].field;
         ++field) {
        const bool is_faulty = tree.fields[field].fault != Fault::none;
        if (is_faulty ||
            !has_expression(tree, tree.fields[field].token, end_of_field(tree, record, field)))
            continue;
        const FieldParts cut = parts_of(tree, record, field);
        std::vector<Part> parts;
        if (text_in(subject, cut.root).starts_with('(')) {
            add_parts(subject.source.bytes, cut.root, parts);
            parts.resize(end_of_group(parts, 0));
            work(parts);
        }
        parts.clear();
        add_parts(subject.source.bytes, cut.condition, parts);
        work(parts);
    }
}

// The same for all records of the model but the bodies of its constraints.
template <typename Work>
void for_each_expression(const Subject& subject, const Work& work) {
    const Tree& tree = subject.source.tree;
    const ModelNode& node = tree.models[subject.model->node];
    for (Index record = node.record + 1; record < node.end; ++record) {
        const RecordKind kind = tree.records[record].kind;
        if (kind != RecordKind::body && kind != RecordKind::unknown)
            for_each_expression(subject, record, work);
    }
}

// The two operands with nothing between them, as they are written in one line.
void warn_of_gap(const Subject& subject, const std::vector<Part>& parts, std::size_t at,
                 Findings& findings) {
    const Part& last = parts[at - 1];
    if (last.kind == TokenKind::number && last.range.end == parts[at].range.begin) {
        warn(subject, findings, {last.range.begin, parts[at].range.end},
             {{"word", last.text + parts[at].text}}, "joined");
        return;
    }
    const std::size_t left = begin_of_operand(parts, at);
    const Range before = {parts[left].range.begin, last.range.end};
    const Range after = parts[at].range;
    const bool is_in_line =
        line_of(subject.source.tree, before.begin) == line_of(subject.source.tree, after.begin);
    warn(subject, findings, {is_in_line ? before.begin : after.begin, after.end},
         {{"left", as_read(subject, is_in_line ? before : last.range)}, {"right", parts[at].text}});
}

// The first use of each operator as a name.
class Misnamed {
  public:
    void add(const std::string& name, Range place) {
        const auto [known, is_new] = places_.emplace(name, place);
        if (!is_new && place.begin < known->second.begin) known->second = place;
    }

    void add_all(const std::vector<Part>& parts) {
        for (std::size_t at = 0; at < parts.size(); ++at) {
            if (is_operator_as_name(parts, at)) add(parts[at].text, parts[at].range);
        }
    }

    const std::map<std::string, Range>& places() const { return places_; }

  private:
    std::map<std::string, Range> places_;
};

// A variable that is not declared, or not used, has another finding.
bool is_misnamed(const Subject& subject, Index index) {
    const Symbol& symbol = subject.model->symbols[index];
    if (!is_operator_word(name_of(*subject.model, index)) || symbol.touched) return false;
    const bool is_known = !is_variable(symbol.kind) || symbol.is_declared;
    return is_known && is_used(*subject.model, symbol) && !has(*subject.facts, index, is_excused);
}

}  // namespace

void check_operator_missing(const Subject& subject, Findings& findings) {
    for_each_expression(subject, [&](const std::vector<Part>& parts) {
        const std::size_t at = missing_operator(parts);
        if (at != no_part) warn_of_gap(subject, parts, at, findings);
    });
    for (const Body& body : subject.facts->bodies) {
        if (body.fault == BodyFault::no_operator)
            warn_of_gap(subject, body.parts, body.at, findings);
    }
}

void check_name_operator(const Subject& subject, Findings& findings) {
    Misnamed misnamed;
    for (Index symbol = 0; symbol < subject.model->symbols.size(); ++symbol) {
        if (is_misnamed(subject, symbol))
            misnamed.add(name_of(*subject.model, symbol),
                         subject.model->uses[subject.model->symbols[symbol].first_use].range);
    }
    for_each_expression(subject, [&](const std::vector<Part>& parts) { misnamed.add_all(parts); });
    for (const Body& body : subject.facts->bodies) {
        if (body.is_clear) misnamed.add_all(body.parts);
    }
    for (const auto& [name, place] : misnamed.places())
        warn(subject, findings, place, {{"name", name}});
}

}  // namespace orvex::frontend
