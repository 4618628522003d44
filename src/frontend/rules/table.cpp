#include "frontend/rules/checks.h"
#include "frontend/rules/encoding.h"
#include "frontend/rules/facts.h"
#include "frontend/rules/rule.h"

#include <cstddef>

namespace orvex::frontend {

namespace {

constexpr Severity level = Severity::warning;

constexpr Rule table[] = {
    {"model-missing", level, Scope::file, check_model_none},
    {"line-indented", level, Scope::file, check_line_indent_outside},
    {"line-indented", level, Scope::model, check_line_indent},
    {"plus-joined", level, Scope::model, check_line_plus},
    {"ontext-missing", level, Scope::model, check_comment_missing},
    {"model-ended-early", level, Scope::model, check_model_end},
    {"auxiliary-misspelt", level, Scope::model, check_keyword_auxiliary},
    {"keyword-text-ignored", level, Scope::model, check_keyword_text},
    {"option-value-missing", level, Scope::model, check_option_empty},
    {"text-ignored", level, Scope::model, check_entry_text},
    {"statement-cut", Severity::error, Scope::model, check_statement_cut},
    {"line-too-long", level, Scope::model, check_line_long},
    {"model-name-invalid", level, Scope::model, check_model_name},
    {"model-unclosed", level, Scope::model, check_model_open},
    {"name-undeclared", level, Scope::model, check_name_undeclared},
    {"name-unknown", level, Scope::model, check_name_unknown},
    {"name-unused", level, Scope::model, check_name_unused},
    {"commodity-unused", level, Scope::model, check_commodity_unused},
    {"commodity-unsupplied", level, Scope::model, check_commodity_unmade},
    {"block-missing", level, Scope::model, check_block_missing},
    {"block-repeated", level, Scope::model, check_block_repeated},
    {"sector-output-missing", level, Scope::model, check_sector_output},
    {"sector-input-missing", level, Scope::model, check_sector_input},
    {"consumer-demand-missing", level, Scope::model, check_consumer_demand},
    {"consumer-income-missing", level, Scope::model, check_consumer_endowment},
    {"constraint-missing", level, Scope::model, check_auxiliary_constraint},
    {"constraint-repeated", level, Scope::model, check_constraint_twice},
    {"description-unmarked", level, Scope::model, check_description_unmarked},
    {"entry-before-block", level, Scope::model, check_entry_lost},
    {"name-invalid", level, Scope::model, check_name_invalid},
    {"constraint-empty", level, Scope::model, check_constraint_empty},
    {"constraint-end-misspelt", level, Scope::model, check_constraint_end},
    {"constraint-end-missing", Severity::note, Scope::model, check_constraint_open},
    {"constraint-unbalanced", level, Scope::model, check_constraint_groups},
    {"constraint-relation-missing", level, Scope::model, check_constraint_relation},
    {"constraint-relation-repeated", level, Scope::model, check_constraint_relations},
    {"constraint-dimension-mismatch", level, Scope::model, check_constraint_dimension},
    {"constraint-text-extra", Severity::note, Scope::model, check_constraint_text},
    {"operator-missing", level, Scope::model, check_operator_missing},
    {"name-is-operator", level, Scope::model, check_name_operator},
    {"name-missing", level, Scope::model, check_name_missing},
    {"name-redeclared", level, Scope::model, check_name_twice},
    {"entry-outside-block", level, Scope::model, check_entry_outside},
    {"entry-label-invalid", level, Scope::model, check_entry_label},
    {"entry-joined", level, Scope::model, check_entry_joined},
    {"entry-repeated", level, Scope::model, check_entry_repeated},
    {"value-missing", level, Scope::model, check_field_empty},
    {"value-invalid", level, Scope::model, check_value_invalid},
    {"nest-undeclared", level, Scope::model, check_nest_undeclared},
    {"nest-set-mismatch", Severity::off, Scope::model, check_nest_set},
    {"label-unknown", level, Scope::model, check_label_unknown},
    {"label-repeated", level, Scope::model, check_label_twice},
    {"tax-rate-missing", level, Scope::model, check_tax_rate},
    {"tax-receiver-missing", level, Scope::model, check_tax_receiver},
    {"tax-on-demand", Severity::note, Scope::model, check_tax_demand},
    {"argument-blank", level, Scope::model, check_argument_blank},
    {"argument-invalid", level, Scope::model, check_argument_invalid},
    {"argument-misquoted", level, Scope::model, check_argument_quotes},
    {"index-list-ignored", level, Scope::model, check_index_list},
    {"character-invalid", level, Scope::model, check_character},
    {"allow-unknown", level, Scope::file, check_allow_unknown},
    {"allow-invalid", level, Scope::file, check_allow_invalid},
    {"allow-unused", level, Scope::comments, nullptr},
    {"set-order-differs", Severity::off, Scope::model, check_set_order},
    {"set-differs", Severity::off, Scope::model, check_set_other},
    {"quantity-suspicious", Severity::note, Scope::model, check_quantity_suspicious},
    {"quantity-missing", Severity::note, Scope::model, check_quantity_missing},
    {"nest-unused", Severity::note, Scope::model, check_nest_unused},
    // After all others: they are silent about a model with another finding.
    {"demand-quantity-missing", level, Scope::model, check_accounts},
    {"price-mismatch", level, Scope::model, check_accounts},
    {"account-unbalanced", level, Scope::model, check_accounts},
    {"element-unknown", level, Scope::data, nullptr},
    {"data-name-unused", level, Scope::data, nullptr},
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

void run_model_rules(const Source& source, const HostText& host, const Model& model,
                     std::vector<Finding>& findings) {
    if (encoding_of(source.bytes) == Encoding::carriage_returns) return;
    const Facts facts = read_facts(source, host, model);
    run_scope(Scope::model, {source, &model, &facts, {}}, findings);
}

}  // namespace orvex::frontend
