// Balances a fuzzed printed text, and compares the accounts with a fuzzed table: the data are the
// text up to the first zero byte, followed by the table. All accounts together receive what they
// pay, and the sum of a row in the table of accounts is what its account receives.
#include "frontend/accounts/account_findings.h"
#include "frontend/accounts/balance.h"
#include "frontend/accounts/comparison.h"
#include "frontend/base/bytes.h"
#include "frontend/views/statement.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

using namespace orvex::frontend;

void require(bool holds) {
    if (!holds) std::abort();
}

// Sums of numbers near the largest one are infinite.
bool is_near(double one, double other, double turnover) {
    return !std::isfinite(turnover) || std::fabs(one - other) <= 1e-9 * turnover;
}

void check_sums(const ModelAccounts& model) {
    std::vector<double> rows(model.books.accounts.size());
    for (const auto& [place, value] : model.matrix) rows[place.first] += value;
    double received = 0;
    double paid = 0;
    double turnover = 0;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const Account& account = model.books.accounts[i];
        require(is_near(rows[i], account.received, account.turnover));
        received += account.received;
        paid += account.paid;
        turnover += account.turnover;
    }
    require(is_near(received, paid, turnover));
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string input(data, data + size);
    const std::size_t zero = input.find('\0');
    const std::string text = input.substr(0, zero);
    const LinePass pass = [&](const LineSink& sink) {
        std::size_t line = 0;
        for (const std::string_view row : lines_of(text)) sink(row, ++line);
        return true;
    };
    AccountTable table;
    table.file = {"table", zero == std::string::npos ? "" : input.substr(zero + 1)};
    std::vector<Finding> findings;
    read_table(table, findings);
    std::vector<ModelAccounts> models;
    require(balance_text(pass, {{}, usual_tolerance, true}, models));
    const auto of = [](std::size_t) { return Span(); };
    const auto of_account = [](const Account&) { return Span(); };
    for (const ModelAccounts& model : models) {
        check_sums(model);
        findings_of(model, {of, of_account});
        compare(table, model.books, model.matrix, usual_tolerance);
        const AccountStatement statement{model.name, "text", model.line, model.books, model.gaps};
        require(!statement_text(statement, false).empty());
        require(!statement_json(statement).empty());
    }
    return 0;
}
