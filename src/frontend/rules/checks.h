// The functions of the rules, grouped by the files that define them.
#pragma once

#include "frontend/rules/rule.h"

#include <vector>

namespace orvex::frontend {

using Findings = std::vector<Finding>;

// models.cpp
void check_model_none(const Subject& subject, Findings& findings);
void check_model_name(const Subject& subject, Findings& findings);
void check_model_open(const Subject& subject, Findings& findings);

// host_comments.cpp
void check_comment_missing(const Subject& subject, Findings& findings);
void check_model_end(const Subject& subject, Findings& findings);

// lines.cpp
void check_line_indent_outside(const Subject& subject, Findings& findings);
void check_line_indent(const Subject& subject, Findings& findings);
void check_line_plus(const Subject& subject, Findings& findings);
void check_line_long(const Subject& subject, Findings& findings);

// keywords.cpp
void check_keyword_auxiliary(const Subject& subject, Findings& findings);
void check_keyword_text(const Subject& subject, Findings& findings);
void check_option_empty(const Subject& subject, Findings& findings);

// names.cpp
void check_name_undeclared(const Subject& subject, Findings& findings);
void check_name_unknown(const Subject& subject, Findings& findings);
void check_name_unused(const Subject& subject, Findings& findings);

// flows.cpp
void check_commodity_unused(const Subject& subject, Findings& findings);
void check_commodity_unmade(const Subject& subject, Findings& findings);
void check_sector_output(const Subject& subject, Findings& findings);
void check_sector_input(const Subject& subject, Findings& findings);
void check_consumer_demand(const Subject& subject, Findings& findings);
void check_consumer_endowment(const Subject& subject, Findings& findings);

// blocks.cpp
void check_block_missing(const Subject& subject, Findings& findings);

// repeated.cpp
void check_block_repeated(const Subject& subject, Findings& findings);
void check_entry_repeated(const Subject& subject, Findings& findings);

// descriptions.cpp
void check_description_unmarked(const Subject& subject, Findings& findings);

// lost_rows.cpp
void check_entry_lost(const Subject& subject, Findings& findings);

// constraints.cpp
void check_auxiliary_constraint(const Subject& subject, Findings& findings);
void check_constraint_twice(const Subject& subject, Findings& findings);
void check_constraint_empty(const Subject& subject, Findings& findings);
void check_constraint_end(const Subject& subject, Findings& findings);
void check_constraint_open(const Subject& subject, Findings& findings);
void check_constraint_groups(const Subject& subject, Findings& findings);
void check_constraint_relation(const Subject& subject, Findings& findings);
void check_constraint_relations(const Subject& subject, Findings& findings);
void check_constraint_dimension(const Subject& subject, Findings& findings);
void check_constraint_text(const Subject& subject, Findings& findings);

// statements.cpp
void check_statement_cut(const Subject& subject, Findings& findings);

// operators.cpp
void check_operator_missing(const Subject& subject, Findings& findings);
void check_name_operator(const Subject& subject, Findings& findings);

// declarations.cpp
void check_name_missing(const Subject& subject, Findings& findings);
void check_name_twice(const Subject& subject, Findings& findings);

// invalid_names.cpp
void check_name_invalid(const Subject& subject, Findings& findings);

// entries.cpp
void check_entry_text(const Subject& subject, Findings& findings);
void check_entry_outside(const Subject& subject, Findings& findings);
void check_entry_label(const Subject& subject, Findings& findings);
void check_entry_joined(const Subject& subject, Findings& findings);

// fields.cpp
void check_field_empty(const Subject& subject, Findings& findings);
void check_label_unknown(const Subject& subject, Findings& findings);
void check_label_twice(const Subject& subject, Findings& findings);

// values.cpp
void check_value_invalid(const Subject& subject, Findings& findings);

// nests.cpp
void check_nest_undeclared(const Subject& subject, Findings& findings);
void check_nest_set(const Subject& subject, Findings& findings);
void check_nest_unused(const Subject& subject, Findings& findings);

// taxes.cpp
void check_tax_rate(const Subject& subject, Findings& findings);
void check_tax_receiver(const Subject& subject, Findings& findings);
void check_tax_demand(const Subject& subject, Findings& findings);

// quantities.cpp
void check_quantity_missing(const Subject& subject, Findings& findings);
void check_quantity_suspicious(const Subject& subject, Findings& findings);

// accounts.cpp
void check_accounts(const Subject& subject, Findings& findings);

// characters.cpp
void check_character(const Subject& subject, Findings& findings);

// sets.cpp
void check_index_list(const Subject& subject, Findings& findings);
void check_set_order(const Subject& subject, Findings& findings);
void check_set_other(const Subject& subject, Findings& findings);

// arguments.cpp
void check_argument_blank(const Subject& subject, Findings& findings);
void check_argument_invalid(const Subject& subject, Findings& findings);
void check_argument_quotes(const Subject& subject, Findings& findings);

// allow.cpp
void check_allow_unknown(const Subject& subject, Findings& findings);
void check_allow_invalid(const Subject& subject, Findings& findings);

}  // namespace orvex::frontend
