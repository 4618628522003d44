#include "frontend/findings/wording.h"
#include "frontend/rules/checks.h"
#include "frontend/rules/constraint_bodies.h"
#include "frontend/rules/facts.h"
#include "frontend/rules/warn.h"
#include "frontend/syntax/expression_parts.h"
#include "frontend/syntax/fields.h"

#include <algorithm>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace orvex::frontend {

namespace {

std::string name_of(const Subject& subject, const Body& body) {
    return name_of(*subject.model, body.constraint->symbol);
}

// Adds a finding about the faulty part of an equation.
Finding& warn_of_part(const Subject& subject, const Body& body, Findings& findings,
                      std::string_view variant = {}) {
    const Part& part = body.parts[body.at];
    return warn(subject, findings, part.range,
                {{"mark", part.text}, {"name", name_of(subject, body)}}, variant);
}

// Can the faulty colon only be meant as a ";"?
bool surely_ends(const Body& body) {
    if (body.is_ended || body.at + 1 != body.parts.size()) return false;
    const std::vector<Part> rest(body.parts.begin(), body.parts.end() - 1);
    return fault_of(rest).fault == BodyFault::none;
}

// Is there just a "=" instead of a relation?
bool is_equals(const Body& body) {
    const auto is_other = [&](std::size_t at) {
        return at < body.parts.size() &&
               (is_symbol(body.parts[at], "<") || is_symbol(body.parts[at], ">") ||
                is_symbol(body.parts[at], "="));
    };
    return body.at != no_part && !is_other(body.at + 1) && (body.at == 0 || !is_other(body.at - 1));
}

void warn_of_relation(const Subject& subject, const Body& body, Findings& findings) {
    if (!is_equals(body)) {
        const Range first = body.parts.front().range;
        const Range line = record_range(
            subject.source.tree, static_cast<Index>(line_of(subject.source.tree, first.begin)) - 1);
        warn(subject, findings, {first.begin, line.end}, {{"name", name_of(subject, body)}});
        return;
    }
    Finding& finding = warn_of_part(subject, body, findings, "equals");
    const Range place = body.parts[body.at].range;
    finding.fix = Fix{Confidence::maybe, {{place.begin, place.end, "=E="}}};
}

void check_heading_groups(const Subject& subject, const Body& body, Findings& findings) {
    const Tree& tree = subject.source.tree;
    const Index record = body.constraint->record;
    std::vector<Part> parts;
    add_parts(subject.source.bytes, record_range(tree, record), parts);
    const std::size_t at = unmatched_group(parts);
    if (at == no_part) return;
    warn(subject, findings, parts[at].range,
         {{"mark", parts[at].text}, {"name", name_of(subject, body)}},
         closes_group(parts[at]) ? "closing" : "");
}

// The numbers of sets that variables are used with in constraints.
class Dimensions {
  public:
    explicit Dimensions(const Subject& subject) : subject_(subject) {}

    void add(const Body& body) {
        const Tree& tree = subject_.source.tree;
        const Index record = body.constraint->record;
        const FieldParts heading = parts_of(tree, record, tree.records[record].field);
        add(body.constraint->symbol, static_cast<int>(heading.own.count), body.constraint->name);
        if (!body.is_clear || body.fault == BodyFault::group) return;
        for (std::size_t at = 0; at < body.parts.size(); ++at) {
            if (!is_name(body.parts[at])) continue;
            const Index symbol = subject_.model->names.find(body.parts[at].text);
            if (symbol != no_index)
                add(symbol, count_arguments(body.parts, at), body.parts[at].range);
        }
    }

    void warn_of_all(Findings& findings) const {
        for (const auto& [symbol, use] : wrong_) {
            Finding& finding =
                warn(subject_, findings, use.place,
                     {{"name", name_of(*subject_.model, symbol)},
                      {"declared", declared_text(symbol)},
                      {"count", use.count == 0   ? "no set"
                                : use.count == 1 ? "1 set"
                                                 : std::to_string(use.count) + " sets"}});
            if (use.lines.empty()) continue;
            finding.remarks.insert(finding.remarks.begin(),
                                   {Severity::note, "the same in " + line_list(use.lines), {}});
        }
    }

  private:
    struct Wrong {
        Range place;
        int count;
        std::vector<int> lines;  // of further places
    };

    void add(Index index, int count, Range place) {
        const Symbol& symbol = subject_.model->symbols[index];
        const bool is_known = symbol.is_declared && symbol.entered && is_variable(symbol.kind) &&
                              symbol.dimension >= 0 && !symbol.touched &&
                              !has(*subject_.facts, index, is_odd);
        if (!is_known || count < 0 || count == symbol.dimension) return;
        const auto [known, is_new] = wrong_.emplace(index, Wrong{place, count, {}});
        const int line = line_of(subject_.source.tree, place.begin);
        std::vector<int>& lines = known->second.lines;
        const int last =
            lines.empty() ? line_of(subject_.source.tree, known->second.place.begin) : lines.back();
        if (!is_new && line != last) lines.push_back(line);
    }

    std::string declared_text(Index symbol) const {
        std::string text = name_of(*subject_.model, symbol);
        std::string_view before = "(";
        for (const std::string& argument : subject_.model->symbols[symbol].arguments) {
            text.append(before).append(argument);
            before = ",";
        }
        return before == "(" ? text : text + ")";
    }

    const Subject& subject_;
    std::map<Index, Wrong> wrong_;
};

}  // namespace

void check_auxiliary_constraint(const Subject& subject, Findings& findings) {
    if (subject.facts->any_constrained) return;
    for (const Index index : subject.facts->judged) {
        const Symbol& symbol = subject.model->symbols[index];
        if (symbol.kind != Kind::auxiliary || !is_used(*subject.model, symbol)) continue;
        if (has(*subject.facts, index, has_constraint)) continue;
        warn(subject, findings, symbol.declaration, {{"name", name_of(*subject.model, index)}});
    }
}

void check_constraint_twice(const Subject& subject, Findings& findings) {
    std::vector<bool> is_known(subject.model->symbols.size());
    for (const Constraint& constraint : subject.model->constraints) {
        if (constraint.symbol == no_index || subject.model->symbols[constraint.symbol].touched)
            continue;
        if (is_known[constraint.symbol]) {
            warn(subject, findings, constraint.name,
                 {{"name", name_of(*subject.model, constraint.symbol)}});
        }
        is_known[constraint.symbol] = true;
    }
}

void check_constraint_empty(const Subject& subject, Findings& findings) {
    for (const Body& body : subject.facts->bodies) {
        if (body.fault == BodyFault::empty)
            warn(subject, findings, body.constraint->name, {{"name", name_of(subject, body)}});
    }
}

void check_constraint_end(const Subject& subject, Findings& findings) {
    for (const Body& body : subject.facts->bodies) {
        if (body.fault != BodyFault::colon) continue;
        Finding& finding = warn_of_part(subject, body, findings);
        const Range place = body.parts[body.at].range;
        finding.fix = Fix{surely_ends(body) ? Confidence::certain : Confidence::maybe,
                          {{place.begin, place.end, ";"}}};
    }
}

// The translator ends such an equation where the next block begins.
void check_constraint_open(const Subject& subject, Findings& findings) {
    for (const Body& body : subject.facts->bodies) {
        if (!body.is_clear || body.is_ended || body.fault != BodyFault::none) continue;
        const Range last = body.parts.back().range;
        Finding& finding = warn(subject, findings, last, {{"name", name_of(subject, body)}});
        finding.fix = Fix{Confidence::certain, {{last.end, last.end, ";"}}};
    }
}

void check_constraint_groups(const Subject& subject, Findings& findings) {
    for (const Body& body : subject.facts->bodies) {
        check_heading_groups(subject, body, findings);
        if (body.fault == BodyFault::group)
            warn_of_part(subject, body, findings,
                         closes_group(body.parts[body.at]) ? "closing" : "");
    }
}

void check_constraint_relation(const Subject& subject, Findings& findings) {
    for (const Body& body : subject.facts->bodies) {
        if (body.fault == BodyFault::no_relation) warn_of_relation(subject, body, findings);
    }
}

void check_constraint_relations(const Subject& subject, Findings& findings) {
    for (const Body& body : subject.facts->bodies) {
        if (body.fault == BodyFault::many_relations) warn_of_part(subject, body, findings);
    }
}

void check_constraint_text(const Subject& subject, Findings& findings) {
    for (const Body& body : subject.facts->bodies) {
        if (!body.rest.empty())
            warn(subject, findings, body.rest, {{"name", name_of(subject, body)}});
    }
}

// One finding per variable.
void check_constraint_dimension(const Subject& subject, Findings& findings) {
    Dimensions dimensions(subject);
    for (const Body& body : subject.facts->bodies) dimensions.add(body);
    dimensions.warn_of_all(findings);
}

}  // namespace orvex::frontend
