#include "frontend/rules/warnings.h"

#include "frontend/findings/failure.h"
#include "frontend/findings/place.h"
#include "frontend/findings/spelling.h"
#include "frontend/findings/wording.h"

#include <algorithm>
#include <cstddef>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orvex::frontend {

namespace {

// What the rows of the blocks do with each name: "makes PX", "RA is taxed to", ...
struct Uses {
    std::set<std::string, std::less<>> supplied;     // commodities with a row O or E
    std::set<std::string, std::less<>> wanted;       // commodities with a row I or D
    std::set<std::string, std::less<>> made;         // those with a row O
    std::set<std::string, std::less<>> taken;        // those with a row E that may be negative
    std::set<std::string, std::less<>> with_output;  // sectors
    std::set<std::string, std::less<>> with_input;
    std::set<std::string, std::less<>> with_demand;  // consumers
    std::set<std::string, std::less<>> with_income;  // an endowment, or a tax
};

// Who has an endowment of less than nothing takes what others make. That of a parameter may be so.
bool may_take(const Entry& entry) {
    return std::any_of(entry.fields.begin(), entry.fields.end(), [](const Field& field) {
        const std::size_t first = field.text.find_first_not_of("( ");
        return field.label == "Q" && first != std::string::npos &&
               (field.text[first] < '0' || field.text[first] > '9') && field.text[first] != '.';
    });
}

void add_uses(const Block& block, Uses& uses) {
    for (const Entry& entry : block.entries) {
        const bool supplies = entry.label == "O" || entry.label == "E";
        if (supplies) uses.supplied.insert(entry.name);
        if (entry.label == "I" || entry.label == "D") uses.wanted.insert(entry.name);
        if (entry.label == "O") uses.made.insert(entry.name);
        if (entry.label == "E" && may_take(entry)) uses.taken.insert(entry.name);
        if (entry.label == "O") uses.with_output.insert(block.name);
        if (entry.label == "I") uses.with_input.insert(block.name);
        if (entry.label == "D") uses.with_demand.insert(block.name);
        if (entry.label == "E") uses.with_income.insert(block.name);
        for (const Field& field : entry.fields) {
            if (field.label == "A") uses.with_income.insert(field.name);
        }
    }
}

Uses read_uses(const Economy& economy) {
    Uses uses;
    for (const Block& block : economy.blocks) {
        if (block.label != "REPORT") add_uses(block, uses);
    }
    return uses;
}

bool has_constraint(const Economy& economy, std::string_view name) {
    const auto& constraints = economy.constraints;
    return std::find(constraints.begin(), constraints.end(), name) != constraints.end();
}

// Whether a name stands anywhere but in its declaration, as far as that can be told.
bool is_used(const Economy& economy, const Name& name) {
    return economy.references_lost || name.references.size() > 1 || name.references.empty() ||
           name.references.front() != name.declared || has_constraint(economy, name.name) ||
           find_word(economy.free_text, name.name) != std::string_view::npos;
}

// Where a finding about a name is shown: at its declaration, or where it first stands.
Span place_of(const Source& source, const Economy& economy, const Name& name) {
    int line = name.declared;
    if (line == 0) line = name.references.empty() ? economy.line : name.references.front();
    return name_span(source, line, name.name);
}

// At the block of a sector or consumer, where it has one.
Span block_of(const Source& source, const Economy& economy, const Name& name) {
    const std::string_view label = name.kind == Kind::sector ? "PROD" : "DEMAND";
    for (const Block& block : economy.blocks) {
        if (block.label == label && block.name == name.name) {
            return name_span(source, block.line, name.name);
        }
    }
    return place_of(source, economy, name);
}

// A name that was not meant to be one: a row in a block of declarations, a comma, a "+".
bool is_odd(const Name& name) {
    return name.is_declared && name.name.find_first_of(":,;+=*/'\"") != std::string::npos;
}

// A declared name of the same kind that may have been meant.
void suggest(const Economy& economy, const Name& name, Finding& finding) {
    std::vector<std::string> declared;
    for (const Name& other : economy.names) {
        const bool fits = other.kind == name.kind && other.is_declared && !is_odd(other);
        if (fits) declared.push_back(other.name);
    }
    const std::string near = nearest(name.name, declared);
    if (near.empty()) return;
    finding.remarks.insert(finding.remarks.begin(),
                           {Severity::help, "did you mean `" + near + "`?", {}});
}

// What the findings about a name are made from.
struct Case {
    const Source& source;
    const Economy& economy;
    const Uses& uses;
    const Name& name;
    std::vector<Finding>& findings;

    // `what` goes on behind "sector `X` ".
    void warn_at(const Span& span, std::string code, std::string_view what) const {
        const std::string called = std::string(kind_name(name.kind)) + " " + back_quoted(name.name);
        findings.push_back(warning(std::move(code), called + " " + std::string(what), span));
    }
    Span place() const { return place_of(source, economy, name); }
    Span block() const { return block_of(source, economy, name); }
};

void warn_of_commodity(const Case& it) {
    const bool supplied = it.uses.supplied.contains(it.name.name);
    const bool wanted = it.uses.wanted.contains(it.name.name);
    const bool taken = it.uses.made.contains(it.name.name) && it.uses.taken.contains(it.name.name);
    if (supplied && !wanted && !taken) {
        it.warn_at(it.place(), "commodity-unused", "is made or owned, and never used or demanded");
    }
    if (wanted && !supplied) {
        it.warn_at(it.place(), "commodity-unmade", "is used or demanded, and never made or owned");
    }
}

bool has_block(const Economy& economy, std::string_view label, const std::string& name) {
    return std::any_of(economy.blocks.begin(), economy.blocks.end(), [&](const Block& block) {
        return block.label == label && block.name == name;
    });
}

void warn_of_sector(const Case& it) {
    if (!has_block(it.economy, "PROD", it.name.name)) {
        return it.warn_at(it.place(), "block-missing", "has no `$PROD` block");
    }
    if (!it.uses.with_output.contains(it.name.name)) {
        it.warn_at(it.block(), "sector-output", "has no output");
    }
    if (!it.uses.with_input.contains(it.name.name)) {
        it.warn_at(it.block(), "sector-input", "has no input");
    }
}

void warn_of_consumer(const Case& it) {
    if (!has_block(it.economy, "DEMAND", it.name.name)) {
        return it.warn_at(it.place(), "block-missing", "has no `$DEMAND` block");
    }
    if (!it.uses.with_demand.contains(it.name.name)) {
        it.warn_at(it.block(), "consumer-demand", "demands nothing");
    }
    if (!it.uses.with_income.contains(it.name.name)) {
        it.warn_at(it.block(), "consumer-endowment", "owns nothing and receives no tax");
    }
}

void warn_of_auxiliary(const Case& it) {
    if (has_constraint(it.economy, it.name.name)) return;
    it.warn_at(it.place(), "auxiliary-constraint", "has no `$CONSTRAINT`");
}

void warn_of_odd_names(const Source& source, const Economy& economy,
                       std::vector<Finding>& findings) {
    std::set<int> lines;
    for (const Name& name : economy.names) {
        if (!is_odd(name) || !lines.insert(name.declared).second) continue;
        findings.push_back(warning("name-odd", back_quoted(name.name) + " is declared as a name",
                                   place_of(source, economy, name)));
    }
}

// An undeclared name is mostly a misspelt one, and that nobody makes or uses it only follows.
void warn_of_name(const Case& it) {
    if (!it.name.is_declared) {
        it.warn_at(it.place(), "name-undeclared", "is used and not declared");
        suggest(it.economy, it.name, it.findings.back());
    } else if (!is_used(it.economy, it.name)) {
        it.warn_at(it.place(), "name-unused", "is declared and never used");
    } else if (it.name.kind == Kind::commodity) {
        warn_of_commodity(it);
    } else if (it.name.kind == Kind::sector) {
        warn_of_sector(it);
    } else if (it.name.kind == Kind::consumer) {
        warn_of_consumer(it);
    } else if (it.name.kind == Kind::auxiliary) {
        warn_of_auxiliary(it);
    }
}

// The translator does not look up whose row a report names.
void warn_of_report(const Source& source, const Economy& economy, const Field& field,
                    std::vector<Finding>& findings) {
    if (field.label != "PROD" && field.label != "DEMAND") return;
    const Kind kind = field.label == "PROD" ? Kind::sector : Kind::consumer;
    const std::string written = field.text.substr(0, field.text.find('('));
    const Name* const known = find_name(economy, written);
    if (known != nullptr && known->kind == kind) return;
    Name missing;
    missing.name = written;
    missing.kind = kind;
    findings.push_back(warning(
        "name-undeclared",
        std::string(kind_name(kind)) + " " + back_quoted(written) + " is used and not declared",
        name_span(source, field.line, written)));
    suggest(economy, missing, findings.back());
}

void warn_of_reports(const Source& source, const Economy& economy, std::vector<Finding>& findings) {
    for (const Block& block : economy.blocks) {
        if (block.label != "REPORT") continue;
        for (const Entry& entry : block.entries) {
            for (const Field& field : entry.fields)
                warn_of_report(source, economy, field, findings);
        }
    }
}

void warn_of_constraints(const Source& source, const Economy& economy,
                         std::vector<Finding>& findings) {
    std::set<std::string_view> names;
    for (std::size_t i = 0; i < economy.constraints.size(); ++i) {
        const std::string& name = economy.constraints[i];
        if (names.insert(name).second) continue;
        findings.push_back(warning("constraint-twice",
                                   back_quoted(name) + " has a constraint already",
                                   name_span(source, economy.constraint_lines[i], name)));
    }
}

}  // namespace

void warn_of_names(const Source& source, const Economy& economy, std::vector<Finding>& findings) {
    const Uses uses = read_uses(economy);
    for (const Name& name : economy.names) {
        if (is_variable(name.kind) && !is_odd(name)) {
            warn_of_name({source, economy, uses, name, findings});
        }
    }
    warn_of_odd_names(source, economy, findings);
    for (const int line : economy.nameless) {
        findings.push_back(
            warning("name-missing", "a declaration has no name", record_span(source, line)));
    }
    for (const Place& place : economy.repeated) {
        const Name* const name = find_name(economy, place.name);
        if (name == nullptr || is_odd(*name)) continue;
        findings.push_back(warning("name-twice", back_quoted(place.name) + " is declared already",
                                   name_span(source, place.line, place.name)));
    }
    warn_of_reports(source, economy, findings);
    warn_of_constraints(source, economy, findings);
}

void apply_levels(const Options& options, std::vector<Finding>& findings) {
    const auto level_of = [&](const Finding& finding) {
        for (const std::string& key : {finding.code, std::string("all")}) {
            if (const auto found = options.levels.find(key); found != options.levels.end()) {
                return found->second;
            }
        }
        return Level::warning;
    };
    std::erase_if(findings, [&](const Finding& finding) {
        return finding.severity == Severity::warning && level_of(finding) == Level::off;
    });
    for (Finding& finding : findings) {
        if (finding.severity == Severity::warning && level_of(finding) == Level::error) {
            finding.severity = Severity::error;
        }
    }
}

}  // namespace orvex::frontend
