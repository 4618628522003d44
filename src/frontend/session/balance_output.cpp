#include "frontend/session/balance_output.h"

#include "frontend/accounts/matrix.h"
#include "frontend/base/streams.h"
#include "frontend/views/statement.h"

#include <utility>

namespace orvex::frontend {

BalanceSettings settings_of(const Options& options, Levels levels) {
    const bool wants_matrix = options.table == "sam" || !options.against.empty();
    return {std::move(levels), options.tolerance, wants_matrix};
}

std::string balance_head(const Options& options) {
    return options.table == "csv" ? statement_csv_head() : "";
}

std::string shown_accounts(const Options& options, std::string_view path, std::size_t number,
                           const ModelAccounts& model) {
    const AccountStatement statement{model.name, path, model.line, model.books, model.gaps};
    if (options.table == "json") return statement_json(statement);
    if (options.table == "csv") return statement_csv(statement);
    const std::string between = number == 0 ? "" : "\n";
    if (options.table == "sam") return between + matrix_csv(model.books, model.matrix, model.name);
    return between + statement_text(statement, use_colour(Stream(), options.colour));
}

}  // namespace orvex::frontend
