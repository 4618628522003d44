// Lines of the host's program, in which the models of a file are comments.
#pragma once

#include <string_view>

namespace orvex::frontend {

// Directives of the host, without their "$". A comment ends with notation::end_keyword.
constexpr std::string_view comment_directive = "ONTEXT";
constexpr std::string_view include_directive = "INCLUDE";

// An invisible mark that some editors write at the start of a file.
constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";

enum class HostLine {
    blank,
    remark,          // "*" in column 1
    comment_begins,  // $ONTEXT
    comment_ends,    // $OFFTEXT
    directive,       // another "$" in column 1
    text,
};

// The kind of a line, without its line end. A byte order mark before it does not matter.
HostLine host_line(std::string_view line);

// Does a line begin with "$" in column 1 and exactly that word, given in capitals?
bool is_directive(std::string_view line, std::string_view word);

}  // namespace orvex::frontend
