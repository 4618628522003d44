#include "frontend/findings/place.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <utility>

namespace orvex::frontend {

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

}  // namespace orvex::frontend
