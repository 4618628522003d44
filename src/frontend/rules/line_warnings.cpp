#include "frontend/findings/failure.h"
#include "frontend/findings/place.h"
#include "frontend/findings/wording.h"
#include "frontend/rules/warnings.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

namespace orvex::frontend {

namespace {

constexpr std::size_t columns_read = 255;

// Something is behind the last column that is read, and it is not in a comment.
void warn_of_length(const Source& source, int line, std::vector<Finding>& findings) {
    const std::string_view text = line_at(source, line).text;
    const std::string_view record = text.substr(0, text.find('!'));
    const std::size_t size = record.find_last_not_of(" \t") + 1;
    if (size <= columns_read) return;
    findings.push_back(warning("line-long",
                               "line has " + std::to_string(size) + " bytes, and only 255 are read",
                               span_of(source, line, columns_read, size)));
}

void warn_of_indent(const Source& source, int line, std::vector<Finding>& findings) {
    const std::string_view text = line_at(source, line).text;
    if (!is_indented(text)) return;
    const std::size_t at = text.find_first_not_of(" \t");
    const std::size_t size = text[at] == '$' ? first_word(text.substr(at)).size() : 1;
    findings.push_back(warning("line-indent",
                               back_quoted(text.substr(at, size)) + " does not stand in column 1",
                               span_of(source, line, at, at + size)));
}

// A "+" stands directly in front of a label, and so becomes a part of it.
void warn_of_plus(const Source& source, int line, std::vector<Finding>& findings) {
    const std::string record = record_of(line_at(source, line).text);
    const std::string_view label = first_word(record);
    if (label.size() < 2 || label.size() == record.size() || record[label.size()] != ':') return;
    findings.push_back(warning("line-plus",
                               "the label is " + back_quoted(label) + ", with the plus sign",
                               span_of(source, line, 0, label.size())));
}

// A model that the translator passes over because its line is not in column 1. An editor's byte
// order mark hides the first one.
void warn_of_hidden_model(const Source& source, int line, std::vector<Finding>& findings) {
    constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";
    constexpr std::string_view keyword = "$MODEL:";
    const std::string record = record_of(line_at(source, line).text);
    const bool marked = record.starts_with(byte_order_mark);
    const std::size_t at = record.find_first_not_of(' ', marked ? byte_order_mark.size() : 0);
    if (at == std::string::npos || at == 0 || record.compare(at, keyword.size(), keyword) != 0)
        return;
    findings.push_back(warning(
        "line-indent",
        "`$MODEL` does not stand in column 1" +
            std::string(marked ? ", but behind a byte order mark, which no editor shows" : ""),
        span_of(source, line, at, at + keyword.size() - 1)));
}

// Of auxiliary variables, only the whole keyword opens a block that makes its names such.
void warn_of_auxiliaries(const Source& source, int line, std::vector<Finding>& findings) {
    const std::string record = record_of(line_at(source, line).text);
    const std::string_view keyword = first_word(record);
    if (!keyword.starts_with("$AUXILI") || keyword == "$AUXILIARY") return;
    findings.push_back(warning(
        "keyword-auxiliary", back_quoted(keyword) + " does not make its names auxiliary variables",
        span_of(source, line, 0, keyword.size())));
}

bool has_labels(const Source& source, int line) {
    const int block = line_at(source, line).block;
    if (block == 0) return false;
    const std::string record = record_of(line_at(source, block).text);
    const std::string_view keyword = first_word(record);
    return keyword == "$PROD" || keyword == "$DEMAND" || keyword == "$REPORT";
}

// Something stands in front of the line's first label, which begins behind the last blank before
// its colon.
void warn_of_text(const Source& source, int line, std::vector<Finding>& findings) {
    if (!has_labels(source, line) || is_indented(line_at(source, line).text)) return;
    const std::string record = record_of(line_at(source, line).text);
    const std::size_t colon = record.find(':');
    if (colon == std::string::npos || colon == 0) return;
    const std::size_t blank = record.rfind(' ', colon - 1);
    if (blank == std::string::npos) return;
    const std::size_t end = record.find_last_not_of(' ', blank);
    const std::size_t begin = record.find_first_not_of(' ', record.front() == '+' ? 1 : 0);
    if (end == std::string::npos || begin > end) return;
    findings.push_back(warning("entry-text", "what stands here is not read",
                               span_of(source, line, begin, end + 1)));
}

// Keywords that say all by themselves, as they begin.
constexpr std::string_view whole_keywords[] = {"$SECTOR", "$ACTIVI", "$COMMOD",
                                               "$PRICES", "$MARKET", "$CONSUM",
                                               "$INCOME", "$AUXILI", "$REPORT"};

void warn_of_keyword_text(const Source& source, int line, std::vector<Finding>& findings) {
    const std::string record = record_of(line_at(source, line).text);
    const std::size_t colon = record.find(':');
    const bool is_whole =
        std::any_of(std::begin(whole_keywords), std::end(whole_keywords),
                    [&](std::string_view start) { return record.starts_with(start); });
    if (!is_whole || colon == std::string::npos) return;
    const std::size_t begin = record.find_first_not_of(' ', colon + 1);
    if (begin == std::string::npos) return;
    findings.push_back(warning("keyword-text", "what stands behind the keyword is not read",
                               span_of(source, line, begin, record.size())));
}

// The name goes into file names and statements.
void warn_of_model_name(const Source& source, const ModelText& model,
                        std::vector<Finding>& findings) {
    const bool is_plain = std::all_of(model.name.begin(), model.name.end(), is_name_byte);
    if (model.name.empty() || is_plain) return;
    const std::string_view text = line_at(source, model.line).text;
    const std::size_t begin = text.find_first_not_of(" \t", text.find(':') + 1);
    findings.push_back(warning("model-name",
                               back_quoted(model.name) + " is the whole name of the model",
                               span_of(source, model.line, begin, begin + model.name.size())));
}

void warn_of_line(const Source& source, int line, std::vector<Finding>& findings) {
    switch (line_at(source, line).kind) {
    case LineKind::outside: warn_of_hidden_model(source, line, findings); break;
    case LineKind::entry:
        warn_of_indent(source, line, findings);
        warn_of_text(source, line, findings);
        warn_of_length(source, line, findings);
        break;
    case LineKind::continuation:
        warn_of_plus(source, line, findings);
        warn_of_text(source, line, findings);
        warn_of_length(source, line, findings);
        break;
    case LineKind::keyword:
        warn_of_auxiliaries(source, line, findings);
        warn_of_keyword_text(source, line, findings);
        warn_of_length(source, line, findings);
        break;
    case LineKind::algebra: warn_of_length(source, line, findings); break;
    case LineKind::model:
    case LineKind::blank:
    case LineKind::comment: break;
    }
}

}  // namespace

void warn_of_lines(const Source& source, const std::vector<bool>& left_out,
                   std::vector<Finding>& findings) {
    if (source.models.empty()) {
        findings.push_back(
            warning("model-none", "file has no `$MODEL:` line", span_of(source, 0, 0, 0)));
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
        const ModelText& model_text = source.models[i];
        if (left_out[i]) continue;
        warn_of_model_name(source, model_text, findings);
        if (model_text.closed) continue;
        findings.push_back(warning("model-open",
                                   "model " + back_quoted(model_text.name) + " has no `$OFFTEXT`",
                                   record_span(source, model_text.line)));
    }
}

}  // namespace orvex::frontend
