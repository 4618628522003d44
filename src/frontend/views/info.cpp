#include "frontend/views/info.h"

#include "frontend/base/bytes.h"
#include "frontend/findings/paint.h"
#include "frontend/findings/printable.h"
#include "frontend/translator/generator.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace orvex::frontend {

namespace {

constexpr std::size_t page_width = 100;
constexpr std::size_t widest_name = 28;
constexpr std::size_t widest_description = 36;

// The columns of the table: name, line of the declaration, description, lines of the references.
constexpr std::size_t column_count = 4;
constexpr std::size_t number_column = 1;  // its cells stand to the right
using Cells = std::array<std::string, column_count>;
using Widths = std::array<std::size_t, column_count>;

struct Section {
    Kind kind;
    std::string_view title;
};

constexpr std::array<Section, 7> sections = {{{Kind::sector, "Sectors"},
                                              {Kind::commodity, "Commodities"},
                                              {Kind::consumer, "Consumers"},
                                              {Kind::auxiliary, "Auxiliary variables"},
                                              {Kind::report, "Report variables"},
                                              {Kind::parameter, "Parameters"},
                                              {Kind::set, "Sets"}}};

// The words of a text in lines of this width. A longer word has a line for itself.
std::vector<std::string> wrapped(std::string_view text, std::size_t width) {
    std::vector<std::string> lines(1);
    for (std::size_t at = text.find_first_not_of(' '); at < text.size();) {
        const std::size_t end = std::min(text.find(' ', at), text.size());
        const std::string_view word = text.substr(at, end - at);
        if (!lines.back().empty() && width_of(lines.back()) + 1 + width_of(word) > width)
            lines.emplace_back();
        if (!lines.back().empty()) lines.back() += ' ';
        lines.back() += word;
        at = text.find_first_not_of(' ', end);
    }
    return lines;
}

// A row, in as many lines as its cells need. The cells behind a name wider than its column begin
// on the next line.
void put_row(const Cells& cells, const Widths& widths, std::string& out) {
    std::array<std::vector<std::string>, column_count> lines;
    std::size_t height = 0;
    for (std::size_t column = 0; column < column_count; ++column) {
        lines[column] = wrapped(cells[column], widths[column]);
        if (column > 0 && width_of(cells[0]) > widths[0])
            lines[column].insert(lines[column].begin(), std::string());
        height = std::max(height, lines[column].size());
    }
    for (std::size_t i = 0; i < height; ++i) {
        std::string line;
        std::size_t edge = 0;
        for (std::size_t column = 0; column < column_count; ++column) {
            edge += 2;
            if (i < lines[column].size() && !lines[column][i].empty()) {
                const std::string& text = lines[column][i];
                std::size_t begin = edge;
                if (column == number_column) begin += widths[column] - width_of(text);
                const std::size_t width = width_of(line);
                line.append(begin > width ? begin - width : 0, ' ');
                line += text;
            }
            edge += widths[column];
        }
        out += line + '\n';
    }
}

std::string line_list(const Name& name) {
    std::string list;
    int last = name.declared;
    for (const int line : name.references) {
        if (line == last || line == name.declared) continue;
        if (!list.empty()) list += ' ';
        list += std::to_string(line);
        last = line;
    }
    return list;
}

Cells cells_of(const Name& name) {
    return {printable(reference(name.name, name.arguments)),
            name.declared > 0 ? std::to_string(name.declared) : "", printable(name.description),
            line_list(name)};
}

Widths widths_for(const std::vector<const Name*>& names) {
    Widths widths = {19, 4, 11, 0};  // of the heads
    for (const Name* name : names) {
        const Cells cells = cells_of(*name);
        widths[0] = std::max(widths[0], std::min(width_of(cells[0]), widest_name));
        widths[1] = std::max(widths[1], cells[1].size());
        widths[2] = std::max(widths[2], std::min(width_of(cells[2]), widest_description));
    }
    widths[3] = page_width - (widths[0] + widths[1] + widths[2] + 2 * column_count);
    return widths;
}

// What is under the head of a section is indented. The host declares and describes the parameters
// and sets.
void put_section(const Section& section, const std::vector<const Name*>& names,
                 const Widths& widths, bool colour, std::string& out) {
    const bool of_host = section.kind == Kind::parameter || section.kind == Kind::set;
    std::string rows;
    for (const Name* name : names)
        if (name->kind == section.kind) put_row(cells_of(*name), widths, rows);
    if (rows.empty()) return;
    std::string head;
    put_row({"", of_host ? "" : "Line", of_host ? "" : "Description", "Used in lines"}, widths,
            head);
    out += '\n' + painted(Paint::bold, std::string(section.title), colour) +
           head.substr(section.title.size()) + rows;
}

}  // namespace

std::vector<const Name*> ordered_names(const Economy& economy) {
    std::vector<const Name*> result;
    for (const Section& section : sections) {
        const auto begin = static_cast<std::ptrdiff_t>(result.size());
        for (const Name& name : economy.names)
            if (name.kind == section.kind) result.push_back(&name);
        std::stable_sort(result.begin() + begin, result.end(), [](const Name* a, const Name* b) {
            if (a->declared == 0 && b->declared == 0) return a->name < b->name;
            return b->declared == 0 || (a->declared != 0 && a->declared < b->declared);
        });
    }
    return result;
}

std::string info_text(const Economy& economy, std::string_view path, bool colour) {
    std::string out = painted(Paint::bold, printable(economy.model), colour);
    out += "  " + printable(path) + ':' + std::to_string(economy.line) + '\n';
    const std::vector<const Name*> names = ordered_names(economy);
    const Widths widths = widths_for(names);
    for (const Section& section : sections) put_section(section, names, widths, colour, out);
    if (economy.constraints.empty()) return out;
    out += '\n' + painted(Paint::bold, "Constraints", colour) + '\n';
    std::string list;
    for (const std::string& name : economy.constraints) list += ' ' + printable(name);
    for (const std::string& line : wrapped(list, page_width - 2)) out += "  " + line + '\n';
    return out;
}

}  // namespace orvex::frontend
