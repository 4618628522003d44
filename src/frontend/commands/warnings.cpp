#include "frontend/commands/warnings.h"

#include "frontend/findings/failure.h"
#include "frontend/findings/place.h"
#include "frontend/findings/spelling.h"
#include "frontend/findings/wording.h"

#include <algorithm>
#include <set>
#include <string>
#include <string_view>

namespace orvex::frontend {

namespace {

bool is_variable(Kind kind) {
    return kind == Kind::sector || kind == Kind::commodity || kind == Kind::consumer ||
           kind == Kind::auxiliary;
}

// What the rows of the blocks do with each name: "makes PX", "RA is taxed to", ...
struct Uses {
    std::set<std::string, std::less<>> supplied;     // commodities with a row O or E
    std::set<std::string, std::less<>> wanted;       // commodities with a row I or D
    std::set<std::string, std::less<>> with_output;  // sectors
    std::set<std::string, std::less<>> with_input;
    std::set<std::string, std::less<>> with_demand;  // consumers
    std::set<std::string, std::less<>> with_income;  // an endowment, or a tax
};

void add_uses(const Block& block, Uses& uses) {
    for (const Entry& entry : block.entries) {
        const bool supplies = entry.label == "O" || entry.label == "E";
        if (supplies) uses.supplied.insert(entry.name);
        if (entry.label == "I" || entry.label == "D") uses.wanted.insert(entry.name);
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

// Whether a name stands anywhere but in its declaration, as far as that can be told.
bool is_used(const Economy& economy, const Name& name) {
    const auto& constraints = economy.constraints;
    return economy.references_lost || name.references.size() > 1 || name.references.empty() ||
           std::find(constraints.begin(), constraints.end(), name.name) != constraints.end() ||
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

// A declared name of the same kind that may have been meant.
void suggest(const Economy& economy, const Name& name, Finding& finding) {
    std::vector<std::string> declared;
    for (const Name& other : economy.names) {
        if (other.kind == name.kind && other.declared != 0) declared.push_back(other.name);
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
    if (supplied && !wanted) {
        it.warn_at(it.place(), "commodity-unused", "is made or owned, and never used or demanded");
    }
    if (wanted && !supplied) {
        it.warn_at(it.place(), "commodity-unmade", "is used or demanded, and never made or owned");
    }
}

void warn_of_sector(const Case& it) {
    if (!it.uses.with_output.contains(it.name.name)) {
        it.warn_at(it.block(), "sector-output", "has no output");
    }
    if (!it.uses.with_input.contains(it.name.name)) {
        it.warn_at(it.block(), "sector-input", "has no input");
    }
}

void warn_of_consumer(const Case& it) {
    if (!it.uses.with_demand.contains(it.name.name)) {
        it.warn_at(it.block(), "consumer-demand", "demands nothing");
    }
    if (!it.uses.with_income.contains(it.name.name)) {
        it.warn_at(it.block(), "consumer-endowment", "owns nothing and receives no tax");
    }
}

// An undeclared name is mostly a misspelt one, and that nobody makes or uses it only follows.
void warn_of_name(const Case& it) {
    if (it.name.declared == 0) {
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
    }
}

}  // namespace

void warn_of_names(const Source& source, const Economy& economy, std::vector<Finding>& findings) {
    const Uses uses = read_uses(economy);
    for (const Name& name : economy.names) {
        if (is_variable(name.kind)) warn_of_name({source, economy, uses, name, findings});
    }
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
