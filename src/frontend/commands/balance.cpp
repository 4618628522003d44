#include "frontend/commands/balance.h"

#include "frontend/accounts/account_findings.h"
#include "frontend/accounts/balance.h"
#include "frontend/base/bytes.h"
#include "frontend/base/streams.h"
#include "frontend/cli/inputs.h"
#include "frontend/cli/levels.h"
#include "frontend/cli/reporter.h"
#include "frontend/findings/failure.h"
#include "frontend/findings/place.h"
#include "frontend/session/printed_text.h"
#include "frontend/syntax/source.h"
#include "frontend/views/statement.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace orvex::frontend {

namespace {

BalanceSettings settings_of(const Options& options) {
    return {{}, options.tolerance, options.table == "sam"};
}

std::string capitals_of(std::string text) {
    make_upper(text);
    return text;
}

// A model as --format asks for it.
std::string shown_model(const Options& options, const Statement& statement,
                        const ModelAccounts& model) {
    if (options.table == "json") return statement_json(statement);
    if (options.table == "csv") return statement_csv(statement);
    if (options.table == "sam") return matrix_csv(model.books, model.matrix, model.name) + "\n";
    return statement_text(statement, use_colour(Stream(), options.colour));
}

// The whole line of a printed text.
Span span_of_line(const std::string& path, std::size_t line, const std::string& text) {
    Span span;
    const std::string_view shown = trim_end(text);
    const std::size_t first = std::min(shown.find_first_not_of(white_space), shown.size());
    span.path = path;
    span.line = static_cast<int>(line);
    span.text = shown;
    span.begin = first;
    span.end = shown.size();
    span.column = column_of(shown, first);
    span.end_column = column_of(shown, shown.size());
    return span;
}

// Only the model of --model.
void select_model(const Options& options, std::vector<ModelAccounts>& models) {
    if (options.model.empty()) return;
    const std::string name = capitals_of(options.model);
    std::erase_if(models, [&](const ModelAccounts& model) { return model.name != name; });
}

std::vector<Finding> findings_in(const std::string& path, PrintedText& text,
                                 const std::vector<ModelAccounts>& models) {
    std::vector<std::size_t> lines;
    for (const ModelAccounts& model : models) {
        const std::vector<std::size_t> of_model = lines_of(model);
        lines.insert(lines.end(), of_model.begin(), of_model.end());
    }
    const auto texts = text.texts_of(lines);
    const PlaceOf place_of = [&](std::size_t line) {
        return span_of_line(path, line, texts.at(line));
    };
    std::vector<Finding> findings;
    for (const ModelAccounts& model : models) {
        const std::vector<Finding> of_model = findings_of(model, place_of);
        findings.insert(findings.end(), of_model.begin(), of_model.end());
    }
    return findings;
}

// What there is to say where no model was found.
Finding no_model(const Options& options, const std::string& path) {
    if (options.model.empty()) return failure("model-missing", {}, whole_file(path));
    return failure("model-unknown", {{"name", options.model}}, whole_file(path));
}

// Balances one printed text, and shows what was found.
void balance_printed(const Options& options, const std::string& given, Reporter& reporter) {
    const std::string path = given == "-" ? options.stdin_filename : given;
    begin_file(reporter, path);
    PrintedText text(given);
    std::vector<ModelAccounts> models;
    const LinePass pass = [&](const LineSink& sink) { return text.pass(sink); };
    std::vector<Finding> findings;
    std::string output;
    if (!balance_text(pass, settings_of(options), models)) {
        findings.push_back(failure("file-unreadable",
                                   {{"path", path}, {"reason", system_message(text.error())}},
                                   whole_file(path)));
        models.clear();
    } else {
        select_model(options, models);
        findings = findings_in(path, text, models);
        if (models.empty()) findings.push_back(no_model(options, path));
    }
    apply_levels(options, findings);
    show_all(reporter, findings);
    for (const ModelAccounts& model : models) {
        if (!model.faults.empty()) continue;
        const Statement statement{model.name, path, model.line, model.books, model.gaps};
        put_output(reporter, shown_model(options, statement, model));
    }
}

}  // namespace

int run_balance(const Options& options) {
    const std::vector<std::string> files = expand_patterns(options.files);
    Reporter reporter;
    reporter.options = options;
    begin(reporter);
    if (options.table == "csv") put_output(reporter, statement_csv_head());
    for (const std::string& file : files) balance_printed(options, file, reporter);
    return end(reporter, "");
}

}  // namespace orvex::frontend
