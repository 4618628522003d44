#include "frontend/session/printed_balance.h"

#include "frontend/accounts/account_findings.h"
#include "frontend/accounts/printed.h"
#include "frontend/base/bytes.h"
#include "frontend/base/streams.h"
#include "frontend/findings/failure.h"
#include "frontend/findings/place.h"
#include "frontend/session/balance_output.h"
#include "frontend/session/printed_text.h"
#include "frontend/syntax/source.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace orvex::frontend {

namespace {

using LevelTable = std::unordered_map<std::string, double, TextHash, std::equal_to<>>;

// The printed name for a row: its name and elements.
std::string name_of_row(const DataFiles& files, const DataRow& row) {
    std::string name = files.names.text(row.name);
    for (Index i = 0; i < row.cell_count; ++i)
        name.append(".").append(files.names.text(files.cells[row.first_cell + i]));
    return name;
}

// The rows that can be levels; CSV rows may have any meaning.
LevelTable levels_in(DataFiles& files) {
    LevelTable levels;
    for (const DataRow& row : files.rows) {
        std::optional<double> value;
        if (row.kind == DataRow::Kind::level) value = row.value;
        if (row.kind == DataRow::Kind::csv) value = printed_number(row.last);
        if (!value) continue;
        files.used.insert(row.name);
        levels[name_of_row(files, row)] = *value;
    }
    return levels;
}

// The whole line of a printed text.
Span span_of_line(const std::string& path, LinePlace line, const std::string& text) {
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

void keep_model(const std::string& wanted, std::vector<ModelAccounts>& models) {
    if (wanted.empty()) return;
    std::string name = wanted;
    make_upper(name);
    std::erase_if(models, [&](const ModelAccounts& model) { return model.name != name; });
}

Finding no_model(const Options& options, const std::string& path) {
    if (options.model.empty()) return failure("model-missing", {}, whole_file(path));
    return failure("model-unknown", {{"name", options.model}}, whole_file(path));
}

// Adds the findings of all models, with the lines of the text, which is read once more.
void add_findings(const std::string& path, PrintedText& text,
                  const std::vector<ModelAccounts>& models, std::vector<Finding>& findings) {
    std::vector<LinePlace> lines;
    for (const ModelAccounts& model : models) {
        const std::vector<LinePlace> of_model = places_in(model);
        lines.insert(lines.end(), of_model.begin(), of_model.end());
    }
    const std::map<LinePlace, std::string> texts = text.texts_of(lines);
    const auto of = [&](LinePlace line) { return span_of_line(path, line, texts.at(line)); };
    const auto of_account = [&](const Account& account) { return of(account.place); };
    for (const ModelAccounts& model : models) {
        for (Finding& finding : findings_of(model, {of, of_account}))
            findings.push_back(std::move(finding));
    }
}

}  // namespace

std::vector<ModelAccounts> balance_printed(const std::string& given, const std::string& path,
                                           DataFiles& files, const Options& options,
                                           std::vector<Finding>& findings) {
    const LevelTable table = levels_in(files);
    const Levels levels = [&](std::string_view name) -> const double* {
        const auto found = table.find(name);
        return found == table.end() ? nullptr : &found->second;
    };
    PrintedText text(given);
    std::vector<ModelAccounts> models;
    const LinePass pass = [&](const LineSink& sink) { return text.pass(sink); };
    if (!balance_text(pass, settings_of(options, levels), models)) {
        findings.push_back(failure("file-unreadable",
                                   {{"path", path}, {"reason", system_message(text.error())}},
                                   whole_file(path)));
        return {};
    }
    keep_model(options.model, models);
    if (models.empty()) findings.push_back(no_model(options, path));
    add_findings(path, text, models, findings);
    std::erase_if(models, [](const ModelAccounts& model) { return !model.faults.empty(); });
    return models;
}

}  // namespace orvex::frontend
