#include "frontend/commands/warnings.h"

#include "frontend/findings/messages.h"
#include "frontend/findings/place.h"
#include "frontend/findings/spelling.h"
#include "frontend/findings/wording.h"

#include <algorithm>
#include <set>
#include <string>
#include <string_view>

namespace orvex::frontend {

namespace {

constexpr std::size_t columns_read = 255;

void warn(std::vector<Finding>& findings, std::string code, std::string message, Span span) {
    Finding finding{Severity::warning, std::move(code), std::move(message), std::move(span), {}};
    finding.remarks.push_back({Severity::help, as_help(find_code(finding.code)->cure), {}});
    findings.push_back(std::move(finding));
}

std::string quoted(std::string_view text) { return "`" + std::string(text) + "`"; }

// Something is behind the last column that is read, and it is not a comment.
void warn_of_length(const Source& source, int line, std::vector<Finding>& findings) {
    const std::string_view text = line_at(source, line).text;
    if (text.size() <= columns_read) return;
    if (text.find_first_not_of(" \t", columns_read) == std::string_view::npos) return;
    if (text.substr(0, columns_read).find('!') != std::string_view::npos) return;
    warn(findings, "line-long",
         "line has " + std::to_string(text.size()) + " columns, and only 255 are read",
         span_of(source, line, columns_read, text.size()));
}

// A "$" or "+" begins the line, but not in column 1.
void warn_of_indent(const Source& source, int line, std::vector<Finding>& findings) {
    const std::string_view text = line_at(source, line).text;
    const std::size_t at = text.find_first_not_of(" \t");
    if (at == std::string_view::npos || at == 0 || (text[at] != '$' && text[at] != '+')) return;
    const std::size_t size = text[at] == '$' ? first_word(text.substr(at)).size() : 1;
    warn(findings, "line-indent", quoted(text.substr(at, size)) + " does not stand in column 1",
         span_of(source, line, at, at + size));
}

// A "+" stands directly in front of a label, and so becomes a part of it.
void warn_of_plus(const Source& source, int line, std::vector<Finding>& findings) {
    const std::string record = record_of(line_at(source, line).text);
    const std::string_view label = first_word(record);
    if (label.size() < 2 || label.size() == record.size() || record[label.size()] != ':') return;
    warn(findings, "line-plus", "the label is " + quoted(label) + ", with the plus sign",
         span_of(source, line, 0, label.size()));
}

// A model that the translator passes over because its line is not in column 1.
void warn_of_hidden_model(const Source& source, int line, std::vector<Finding>& findings) {
    const std::string record = record_of(line_at(source, line).text);
    const std::size_t at = record.find_first_not_of(' ');
    if (at == std::string::npos || at == 0 || record.compare(at, 7, "$MODEL:") != 0) return;
    warn_of_indent(source, line, findings);
}

void warn_of_line(const Source& source, int line, std::vector<Finding>& findings) {
    switch (line_at(source, line).kind) {
    case LineKind::outside: warn_of_hidden_model(source, line, findings); break;
    case LineKind::entry:
        warn_of_indent(source, line, findings);
        warn_of_length(source, line, findings);
        break;
    case LineKind::continuation:
        warn_of_plus(source, line, findings);
        warn_of_length(source, line, findings);
        break;
    case LineKind::keyword:
    case LineKind::algebra: warn_of_length(source, line, findings); break;
    case LineKind::model:
    case LineKind::blank:
    case LineKind::comment: break;
    }
}

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

// Whether a name stands anywhere but in its declaration.
bool is_used(const Economy& economy, const Name& name) {
    const auto& constraints = economy.constraints;
    return name.references.size() > 1 || name.references.empty() ||
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
        const std::string called = std::string(kind_name(name.kind)) + " " + quoted(name.name);
        warn(findings, std::move(code), called + " " + std::string(what), span);
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

void warn_of_lines(const Source& source, const std::vector<bool>& left_out,
                   std::vector<Finding>& findings) {
    if (source.models.empty()) {
        warn(findings, "model-none", "file has no `$MODEL:` line", span_of(source, 0, 0, 0));
    }
    std::size_t model = 0;
    for (std::size_t i = 0; i < source.lines.size(); ++i) {
        const int line = static_cast<int>(i) + 1;
        while (model < source.models.size() && source.models[model].last < line) ++model;
        const bool inside = model < source.models.size() && source.models[model].line <= line;
        if (inside && left_out[model]) continue;
        warn_of_line(source, line, findings);
    }
    for (std::size_t i = 0; i < source.models.size(); ++i) {
        const ModelText& open = source.models[i];
        if (open.closed || left_out[i]) continue;
        warn(findings, "model-open", "model " + quoted(open.name) + " has no `$OFFTEXT`",
             record_span(source, open.line));
    }
}

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
