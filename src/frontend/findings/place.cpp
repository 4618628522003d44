#include "frontend/findings/place.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <utility>

namespace orvex::frontend {

namespace {

struct Place {
    int line = 1;
    int column = 1;
};

// If a text is empty or ends with a line end, its end is on a line of its own.
Place place_at(const Source& source, std::size_t offset) {
    const std::string_view bytes = source.bytes;
    offset = std::min(offset, bytes.size());
    const bool has_whole_lines = bytes.empty() || bytes.ends_with('\n');
    if (offset == bytes.size() && has_whole_lines) return {line_count(source) + 1, 1};
    const int line = line_of(source.tree, static_cast<Offset>(offset));
    const Offset start = line_begin(source, line);
    return {line, column_of(line_text(source, line), offset - start)};
}

// Do lines there end with CR LF? If the last line has no end, the previous one decides.
bool has_carriage_return(std::string_view bytes, std::size_t offset) {
    std::size_t end = bytes.find('\n', offset);
    if (end == std::string_view::npos) end = bytes.rfind('\n');
    return end != std::string_view::npos && end > 0 && bytes[end - 1] == '\r';
}

void put_carriage_returns(std::string& text) {
    for (std::size_t at = text.find('\n'); at != std::string::npos; at = text.find('\n', at + 1)) {
        if (at == 0 || text[at - 1] != '\r') text.insert(at++, 1, '\r');
    }
}

}  // namespace

Span whole_file(std::string path) {
    Span span;
    span.path = std::move(path);
    return span;
}

Span span_of(const Source& source, Range range) {
    Span span;
    span.path = source.path;
    span.line = line_of(source.tree, range.begin);
    const std::string_view line = line_text(source, span.line);
    const Offset start = line_begin(source, span.line);
    const std::size_t begin = std::min<std::size_t>(range.begin - start, line.size());
    const std::size_t end = std::clamp<std::size_t>(range.end - start, begin, line.size());
    span.column = column_of(line, begin);
    span.end_column = column_of(line, end);
    span.begin = start + begin;
    span.end = start + end;
    span.text = line;
    return span;
}

Span record_span(const Source& source, int line) {
    return span_of(source, record_range(source.tree, static_cast<Index>(line) - 1));
}

void place_fix(const Source& source, Fix& fix) {
    for (Edit& edit : fix.edits) {
        const Place begin = place_at(source, edit.begin);
        const Place end = place_at(source, edit.end);
        edit.line = begin.line;
        edit.column = begin.column;
        edit.end_line = end.line;
        edit.end_column = end.column;
        const bool has_lines = edit.text.find('\n') != std::string::npos;
        if (has_lines && has_carriage_return(source.bytes, edit.begin))
            put_carriage_returns(edit.text);
    }
}

}  // namespace orvex::frontend
