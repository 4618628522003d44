// Cells of comma-separated values (RFC 4180).
#pragma once

#include <string>
#include <string_view>

namespace orvex::frontend {

// A cell, in quotes where it needs them.
inline std::string csv_cell(std::string_view text) {
    if (text.find_first_of("\",\r\n") == std::string_view::npos) return std::string(text);
    std::string cell = "\"";
    for (const char c : text) cell.append(c == '"' ? 2 : 1, c);
    return cell + '"';
}

}  // namespace orvex::frontend
