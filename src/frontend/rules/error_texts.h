// The contents of the finding for each error. Each routine gets one that has the place of the error
// and, among its values, the error's own text, and adds what is wrong there.
#pragma once

#include "frontend/rules/error_case.h"

namespace orvex::frontend {

// keyword_errors.cpp
void say_keyword(const ErrorCase& at, Said& said);
void say_late_declaration(const ErrorCase& at, Said& said);

// row_errors.cpp
void say_comment(const ErrorCase& at, Said& said);
void say_unlabelled(const ErrorCase& at, Said& said);
void say_long_statement(const ErrorCase& at, Said& said);

// list_errors.cpp
void say_open_declaration(const ErrorCase& at, Said& said);
void say_open_expression(const ErrorCase& at, Said& said);
void say_open_condition(const ErrorCase& at, Said& said);
void say_open_arguments(const ErrorCase& at, Said& said);
void say_open_indices(const ErrorCase& at, Said& said);
void say_text_after_arguments(const ErrorCase& at, Said& said);
void say_text_after_indices(const ErrorCase& at, Said& said);
void say_bare_indices(const ErrorCase& at, Said& said);
void say_quoted_index(const ErrorCase& at, Said& said);
void say_many_arguments(const ErrorCase& at, Said& said);
void say_broken_quotes(const ErrorCase& at, Said& said);

// name_errors.cpp
void say_kind(const ErrorCase& at, Said& said);
void say_dimension(const ErrorCase& at, Said& said);
void say_undeclared(const ErrorCase& at, Said& said);
void say_constrained_kind(const ErrorCase& at, Said& said);
void say_constrained_name(const ErrorCase& at, Said& said);
void say_long_name(const ErrorCase& at, Said& said);

// loop_errors.cpp
void say_lead_and_lag(const ErrorCase& at, Said& said);
void say_shifted_set(const ErrorCase& at, Said& said);
void say_unlooped_set(const ErrorCase& at, Said& said);

// report_errors.cpp
void say_report_start(const ErrorCase& at, Said& said);
void say_nothing_reported(const ErrorCase& at, Said& said);
void say_reported_condition(const ErrorCase& at, Said& said);
void say_report_field(const ErrorCase& at, Said& said);
void say_extra_field(const ErrorCase& at, Said& said);

}  // namespace orvex::frontend
