#include "frontend/rules/checks.h"
#include "frontend/rules/facts.h"
#include "frontend/rules/rule.h"

#include <cstddef>

namespace orvex::frontend {

namespace {

constexpr Severity level = Severity::warning;

constexpr Rule table[] = {
    {"model-none", level, Scope::file, check_model_none},
    {"line-indent", level, Scope::file, check_line_indent_outside},
    {"line-indent", level, Scope::model, check_line_indent},
    {"line-plus", level, Scope::model, check_line_plus},
    {"keyword-auxiliary", level, Scope::model, check_keyword_auxiliary},
    {"keyword-text", level, Scope::model, check_keyword_text},
    {"entry-text", level, Scope::model, check_entry_text},
    {"line-long", level, Scope::model, check_line_long},
    {"model-name", level, Scope::model, check_model_name},
    {"model-open", level, Scope::model, check_model_open},
    {"name-undeclared", level, Scope::model, check_name_undeclared},
    {"name-unused", level, Scope::model, check_name_unused},
    {"commodity-unused", level, Scope::model, check_commodity_unused},
    {"commodity-unmade", level, Scope::model, check_commodity_unmade},
    {"block-missing", level, Scope::model, check_block_missing},
    {"sector-output", level, Scope::model, check_sector_output},
    {"sector-input", level, Scope::model, check_sector_input},
    {"consumer-demand", level, Scope::model, check_consumer_demand},
    {"consumer-endowment", level, Scope::model, check_consumer_endowment},
    {"auxiliary-constraint", level, Scope::model, check_auxiliary_constraint},
    {"constraint-twice", level, Scope::model, check_constraint_twice},
    {"name-odd", level, Scope::model, check_name_odd},
    {"name-missing", level, Scope::model, check_name_missing},
    {"name-twice", level, Scope::model, check_name_twice},
    {"entry-outside", level, Scope::model, check_entry_outside},
    {"entry-label", level, Scope::model, check_entry_label},
    {"entry-joined", level, Scope::model, check_entry_joined},
    {"field-empty", level, Scope::model, check_field_empty},
    {"value-odd", level, Scope::model, check_value_odd},
    {"nest-undeclared", level, Scope::model, check_nest_undeclared},
    {"label-unknown", level, Scope::model, check_label_unknown},
    {"label-twice", level, Scope::model, check_label_twice},
    {"tax-rate", level, Scope::model, check_tax_rate},
    {"tax-receiver", level, Scope::model, check_tax_receiver},
    {"argument-blank", level, Scope::model, check_argument_blank},
    {"argument-quotes", level, Scope::model, check_argument_quotes},
};

void run_scope(Scope scope, Subject subject, std::vector<Finding>& findings) {
    for (const Rule& rule : table) {
        if (rule.scope != scope) continue;
        subject.code = rule.code;
        const std::size_t before = findings.size();
        rule.check(subject, findings);
        for (std::size_t i = before; i < findings.size(); ++i) findings[i].severity = rule.level;
    }
}

}  // namespace

std::span<const Rule> rules() { return table; }

void run_file_rules(const Source& source, std::vector<Finding>& findings) {
    run_scope(Scope::file, {source, nullptr, nullptr, {}}, findings);
}

void run_model_rules(const Source& source, const Model& model, std::vector<Finding>& findings) {
    const Facts facts = read_facts(source, model);
    run_scope(Scope::model, {source, &model, &facts, {}}, findings);
}

}  // namespace orvex::frontend
