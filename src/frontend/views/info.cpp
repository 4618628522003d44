#include "frontend/views/info.h"

#include "frontend/base/bytes.h"
#include "frontend/base/printable.h"
#include "frontend/base/style.h"
#include "frontend/base/wrapping.h"
#include "frontend/views/listed_names.h"
#include "frontend/views/page.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>
#include <utility>
#include <vector>

namespace orvex::frontend {

namespace {

constexpr std::size_t widest_name = 28;
constexpr std::size_t widest_description = 36;

// The columns of the table: name, line of the declaration, description, lines of the references.
constexpr std::size_t column_count = 4;
constexpr std::size_t number_column = 1;  // its cells are right-aligned
using Cells = std::array<std::string, column_count>;
using Widths = std::array<std::size_t, column_count>;

// The names of one kind.
struct Section {
    Kind kind;
    std::vector<Cells> rows;
};

std::string_view title_of(Kind kind) {
    switch (kind) {
    case Kind::sector: return "Sectors";
    case Kind::commodity: return "Commodities";
    case Kind::consumer: return "Consumers";
    case Kind::auxiliary: return "Auxiliary variables";
    case Kind::report: return "Report variables";
    case Kind::parameter: return "Parameters";
    case Kind::set: return "Sets";
    case Kind::host: break;  // not in the table
    }
    return {};
}

// A row, in as many lines as its cells need. If a name is wider than its column, the other cells
// begin on the next line.
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

std::string line_list(const Model& model, const Symbol& symbol) {
    const int declared = declared_line(symbol);
    std::string list;
    int last = declared;
    for (const int line : reference_lines(model, symbol)) {
        if (line == last || line == declared) continue;
        if (!list.empty()) list += ' ';
        list += std::to_string(line);
        last = line;
    }
    return list;
}

Cells cells_of(const Model& model, std::string_view bytes, Index number) {
    const Symbol& symbol = model.symbols[number];
    return {printable(name_with_arguments(model, number)),
            symbol.is_declared ? std::to_string(declared_line(symbol)) : "",
            printable(description_of(model, bytes, number)), line_list(model, symbol)};
}

std::vector<Section> sections_of(const Source& source, const Model& model) {
    std::vector<Section> sections;
    for (const Kind kind : listed_kinds) {
        Section section{kind, {}};
        for (const Index number : known_names(model, kind))
            section.rows.push_back(cells_of(model, source.bytes, number));
        if (!section.rows.empty()) sections.push_back(std::move(section));
    }
    return sections;
}

Widths widths_for(const std::vector<Section>& sections) {
    Widths widths = {19, 4, 11, 0};  // of the headings
    for (const Section& section : sections) {
        for (const Cells& cells : section.rows) {
            widths[0] = std::max(widths[0], std::min(width_of(cells[0]), widest_name));
            widths[1] = std::max(widths[1], cells[1].size());
            widths[2] = std::max(widths[2], std::min(width_of(cells[2]), widest_description));
        }
    }
    widths[3] = page_width - (widths[0] + widths[1] + widths[2] + 2 * column_count);
    return widths;
}

// The rows below the heading of a section are indented. Parameters and sets are declared and
// described by the host.
void put_section(const Section& section, const Widths& widths, bool colour, std::string& out) {
    const bool of_host = section.kind == Kind::parameter || section.kind == Kind::set;
    const std::string title(title_of(section.kind));
    std::string head;
    put_row({"", of_host ? "" : "Line", of_host ? "" : "Description", "Used in lines"}, widths,
            head);
    out += '\n' + styled(Style::bold, title, colour) + head.substr(title.size());
    for (const Cells& cells : section.rows) put_row(cells, widths, out);
}

void put_constraints(const Model& model, bool colour, std::string& out) {
    if (model.constraints.empty()) return;
    out += '\n' + styled(Style::bold, "Constraints", colour) + '\n';
    std::string list;
    for (const Constraint& constraint : model.constraints)
        list += ' ' + printable(name_of(model, constraint.symbol));
    for (const std::string& line : wrapped(list, page_width - 2)) out += "  " + line + '\n';
}

}  // namespace

std::string info_text(const Source& source, const Model& model, bool colour) {
    std::string out = styled(Style::bold, printable(model.name), colour);
    const int line = source.models[model.node].line;
    out += "  " + printable(source.path) + ':' + std::to_string(line) + '\n';
    const std::vector<Section> sections = sections_of(source, model);
    const Widths widths = widths_for(sections);
    for (const Section& section : sections) put_section(section, widths, colour, out);
    put_constraints(model, colour, out);
    return out;
}

}  // namespace orvex::frontend
