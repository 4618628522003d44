#include "frontend/abilities/guide.h"

#include "frontend/base/bytes.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace orvex::frontend {

extern const std::string_view guide_page;

namespace {

// Does a table's keyword (`$SECTOR` or `$PROD:`) match a word? Without a colon, it need only be the
// beginning of the word.
bool is_meant(std::string_view shown, std::string_view name) {
    const bool is_start = shown.starts_with('$') && !shown.ends_with(':');
    if (shown.ends_with(':')) shown.remove_suffix(1);
    return shown == name || (is_start && name.starts_with(shown));
}

// Is the name one of those in backticks in the first cell of a row?
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

// The cells of a row, without the blanks around them.
std::vector<std::string> cells_of(std::string_view row) {
    std::vector<std::string> cells;
    row.remove_prefix(1);
    for (std::size_t end = row.find('|'); end != std::string_view::npos; end = row.find('|')) {
        const std::size_t begin = std::min(row.find_first_not_of(' '), end);
        std::string_view cell = row.substr(begin, end - begin);
        while (cell.ends_with(' ')) cell.remove_suffix(1);
        cells.emplace_back(cell);
        row.remove_prefix(end + 1);
    }
    return cells;
}

std::string list_of(std::string_view head, std::string_view row) {
    const std::vector<std::string> names = cells_of(head);
    const std::vector<std::string> cells = cells_of(row);
    std::string text;
    for (std::size_t i = 0; i < std::min(names.size(), cells.size()); ++i) {
        if (cells[i].empty()) continue;
        text.append("- ").append(names[i]).append(": ").append(cells[i]).append("\n");
    }
    return text;
}

}  // namespace

std::string guide_row(std::string_view name) {
    std::string_view head;
    std::string_view before;
    for (const std::string_view line : lines_of(guide_page)) {
        if (line.starts_with("| ---")) head = before;
        const bool is_row = line.starts_with("| `") && (head.starts_with("| label | first") ||
                                                        head.starts_with("| keyword |"));
        if (is_row && has_name(line, name)) return list_of(head, line);
        before = line;
    }
    return {};
}

}  // namespace orvex::frontend
