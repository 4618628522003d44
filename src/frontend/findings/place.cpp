#include "frontend/findings/place.h"

#include <algorithm>
#include <utility>

namespace orvex::frontend {

Span whole_file(std::string path) {
    Span span;
    span.path = std::move(path);
    return span;
}

Span span_of(const Source& source, int line, std::size_t begin, std::size_t end) {
    Span span;
    span.path = source.path;
    if (line < 1 || static_cast<std::size_t>(line) > source.lines.size()) return span;
    const SourceLine& at = line_at(source, line);
    begin = std::min(begin, at.text.size());
    end = std::clamp(end, begin, at.text.size());
    span.line = line;
    span.column = column_of(at.text, begin);
    span.end_column = column_of(at.text, end);
    span.begin = at.offset + begin;
    span.end = at.offset + end;
    span.text = at.text;
    return span;
}

Span record_span(const Source& source, int line) {
    if (line < 1 || static_cast<std::size_t>(line) > source.lines.size()) {
        return span_of(source, 0, 0, 0);
    }
    const std::string_view text = line_at(source, line).text;
    const std::string record = record_of(text);
    const std::size_t begin = text.find_first_not_of(" \t");
    if (begin == std::string_view::npos) return span_of(source, line, 0, 0);
    return span_of(source, line, begin, record.empty() ? text.size() : record.size());
}

Span name_span(const Source& source, int line, std::string_view name) {
    if (line < 1) return span_of(source, 0, 0, 0);
    const std::size_t at = find_word(line_at(source, line).text, name);
    if (at == std::string_view::npos) return record_span(source, line);
    return span_of(source, line, at, at + name.size());
}

std::size_t find_label(std::string_view line, std::string_view label, std::size_t from) {
    std::size_t at = find_word(line, label, from);
    while (at != std::string_view::npos && !line.substr(at + label.size()).starts_with(':'))
        at = find_word(line, label, at + 1);
    return at;
}

Span label_span(const Source& source, int line, std::string_view label) {
    if (line < 1) return span_of(source, 0, 0, 0);
    const std::size_t at = find_label(line_at(source, line).text, label);
    if (at == std::string_view::npos) return record_span(source, line);
    return span_of(source, line, at, at + label.size() + 1);
}

Span last_label_span(const Source& source, int line, std::string_view label) {
    if (line < 1) return span_of(source, 0, 0, 0);
    const std::string_view text = line_at(source, line).text;
    std::size_t last = find_label(text, label);
    if (last == std::string_view::npos) return record_span(source, line);
    for (std::size_t at = last; at != std::string_view::npos; at = find_label(text, label, at + 1))
        last = at;
    return span_of(source, line, last, last + label.size() + 1);
}

}  // namespace orvex::frontend
