#include "frontend/abilities/guide.h"

#include "frontend/base/bytes.h"

#include <vector>

namespace orvex::frontend {

extern const std::string_view guide_page;

namespace {

// Does a keyword of a table, `$SECTOR` or `$PROD:`, begin a word, or is it the word?
bool is_meant(std::string_view shown, std::string_view name) {
    const bool is_start = shown.starts_with('$') && !shown.ends_with(':');
    if (shown.ends_with(':')) shown.remove_suffix(1);
    return shown == name || (is_start && name.starts_with(shown));
}

// Is the name one of those in back quotes in the first cell of a row?
bool has_name(std::string_view row, std::string_view name) {
    std::string_view cell = row.substr(1, row.find('|', 1) - 1);
    while (cell.find('`') != std::string_view::npos) {
        cell.remove_prefix(cell.find('`') + 1);
        const std::size_t end = cell.find('`');
        if (end == std::string_view::npos) return false;
        if (is_meant(cell.substr(0, end), name)) return true;
        cell.remove_prefix(end + 1);
    }
    return false;
}

}  // namespace

std::string guide_row(std::string_view name) {
    std::string_view head;
    std::string_view rule;
    std::string_view before;
    for (const std::string_view line : lines_of(guide_page)) {
        if (line.starts_with("| ---")) {
            head = before;
            rule = line;
        }
        const bool is_row = line.starts_with("| `") && (head.starts_with("| label | first") ||
                                                        head.starts_with("| keyword |"));
        if (is_row && has_name(line, name))
            return std::string(head) + "\n" + std::string(rule) + "\n" + std::string(line) + "\n";
        before = line;
    }
    return {};
}

}  // namespace orvex::frontend
