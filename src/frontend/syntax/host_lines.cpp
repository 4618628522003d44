#include "frontend/syntax/host_lines.h"

#include "frontend/syntax/expressions.h"
#include "frontend/syntax/reading.h"
#include "notation/records.h"

namespace orvex::frontend {

bool is_directive(std::string_view line, std::string_view word) {
    if (!line.starts_with(notation::keyword_mark)) return false;
    const std::string_view rest = line.substr(1);
    const bool ends = rest.size() <= word.size() || !is_name_byte(rest[word.size()]);
    return ends && same_when_read(rest.substr(0, word.size()), word);
}

HostLine host_line(std::string_view line) {
    if (line.starts_with(byte_order_mark)) line.remove_prefix(byte_order_mark.size());
    if (without_blanks_at_end(line).empty()) return HostLine::blank;
    if (line.starts_with(notation::comment_mark)) return HostLine::remark;
    if (is_directive(line, comment_directive)) return HostLine::comment_begins;
    if (is_directive(line, notation::end_keyword)) return HostLine::comment_ends;
    return line.starts_with(notation::keyword_mark) ? HostLine::directive : HostLine::text;
}

}  // namespace orvex::frontend
