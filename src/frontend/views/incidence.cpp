#include "frontend/views/incidence.h"

#include "frontend/base/bytes.h"
#include "frontend/views/page.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <vector>

namespace orvex::frontend {

namespace {

constexpr std::size_t least_columns = 10;  // of a band, however wide the row names are

// How a sector or consumer deals with a commodity, or with taxes.
struct Sign {
    bool plus = false;   // makes or owns it, receives the tax
    bool minus = false;  // uses or demands it, pays the tax
};

struct Table {
    std::vector<std::string> rows;  // labels
    std::vector<std::string> columns;
    std::size_t sectors = 0;  // columns before the first consumer
    std::vector<std::vector<Sign>> signs;
    bool taxes = false;  // the last row is for taxes
};

void add_signs(const Graph& graph, const std::vector<std::size_t>& place, Table& table) {
    for (const Edge& edge : graph.edges) {
        const std::size_t from = place[edge.from];
        const std::size_t to = place[edge.to];
        switch (edge.flow) {
        case Flow::makes:
        case Flow::endows: table.signs[to][from].plus = true; break;
        case Flow::uses:
        case Flow::demands: table.signs[from][to].minus = true; break;
        case Flow::taxes:
            table.signs.back()[from].minus = true;
            table.signs.back()[to].plus = true;
            break;
        case Flow::sets: break;
        }
    }
}

Table make_table(const Graph& graph) {
    Table table;
    std::vector<std::size_t> place(graph.nodes.size(), 0);  // the row or column of a node
    auto add = [&](Kind kind, std::vector<std::string>& labels) {
        for (std::size_t i = 0; i < graph.nodes.size(); ++i) {
            if (graph.nodes[i].kind != kind) continue;
            place[i] = labels.size();
            labels.push_back(graph.nodes[i].label);
        }
    };
    add(Kind::commodity, table.rows);
    add(Kind::sector, table.columns);
    table.sectors = table.columns.size();
    add(Kind::consumer, table.columns);
    table.taxes = std::any_of(graph.edges.begin(), graph.edges.end(),
                              [](const Edge& edge) { return edge.flow == Flow::taxes; });
    if (table.taxes) table.rows.emplace_back("(taxes)");
    table.signs.assign(table.rows.size(), std::vector<Sign>(table.columns.size()));
    add_signs(graph, place, table);
    return table;
}

char letter(Sign sign) {
    if (sign.plus) return sign.minus ? '*' : '+';
    return sign.minus ? '-' : '.';
}

// The columns [begin, end) of a table, with vertical or horizontal headings.
struct Band {
    std::size_t begin = 0;
    std::size_t end = 0;
    bool vertical = false;
    std::size_t margin = 0;  // width of the row names
};

// The width of a column under a horizontal heading: a sign fits even if the name is empty.
std::size_t horizontal_width(const std::string& name) {
    return std::max<std::size_t>(width_of(name), 1);
}

// A line of a band: the name of its row, and one text per column.
template <typename Cell>
void put_line(const Table& table, const Band& band, std::string_view name, Cell cell,
              std::string& out) {
    std::string line(name);
    line.append(band.margin - width_of(name), ' ');
    for (std::size_t column = band.begin; column < band.end; ++column) {
        if (column == band.begin || column == table.sectors) line += " |";
        const std::size_t width = band.vertical ? 1 : horizontal_width(table.columns[column]);
        const std::string text = cell(column);
        line += ' ';
        line.append(width - width_of(text), ' ');
        line += text;
    }
    out += line + '\n';
}

void put_heads(const Table& table, const Band& band, std::string& out) {
    if (!band.vertical) {
        put_line(
            table, band, "", [&](std::size_t column) { return table.columns[column]; }, out);
        return;
    }
    std::vector<std::vector<std::string_view>> heads;  // their characters
    std::size_t height = 0;
    for (std::size_t column = band.begin; column < band.end; ++column) {
        heads.push_back(characters_of(table.columns[column]));
        height = std::max(height, heads.back().size());
    }
    for (std::size_t i = 0; i < height; ++i) {
        auto character = [&](std::size_t column) {
            const std::vector<std::string_view>& head = heads[column - band.begin];
            const std::size_t above = height - head.size();
            return std::string(i < above ? " " : head[i - above]);
        };
        put_line(table, band, "", character, out);
    }
}

void put_rule(const Table& table, const Band& band, std::string& out) {
    std::string line;
    put_line(
        table, band, "", [](std::size_t) { return std::string(); }, line);
    for (char& c : line) {
        if (c == ' ') c = '-';
        if (c == '|') c = '+';
    }
    out += line;
}

void put_band(const Table& table, const Band& band, std::string& out) {
    out += '\n';
    put_heads(table, band, out);
    put_rule(table, band, out);
    for (std::size_t row = 0; row < table.rows.size(); ++row) {
        if (table.taxes && row + 1 == table.rows.size()) put_rule(table, band, out);
        auto sign = [&](std::size_t column) {
            return std::string(1, letter(table.signs[row][column]));
        };
        put_line(table, band, table.rows[row], sign, out);
    }
}

// The bands of a table: a single one if the column names fit next to each other, else as many as
// needed with vertical names.
std::vector<Band> bands_of(const Table& table) {
    if (table.rows.empty() || table.columns.empty()) return {};
    std::size_t margin = 0;
    for (const std::string& row : table.rows) margin = std::max(margin, width_of(row));
    std::size_t width = margin + 4;  // two bars
    for (const std::string& column : table.columns) width += 1 + horizontal_width(column);
    if (width <= page_width) return {{0, table.columns.size(), false, margin}};

    const std::size_t room = page_width - std::min(margin + 4, page_width);
    const std::size_t count = std::max(room / 2, least_columns);
    std::vector<Band> bands;
    for (std::size_t begin = 0; begin < table.columns.size(); begin += count)
        bands.push_back({begin, std::min(begin + count, table.columns.size()), true, margin});
    return bands;
}

}  // namespace

std::string incidence_table(const Graph& graph) {
    const Table table = make_table(graph);
    std::string out = graph.model + '\n';
    for (const Band& band : bands_of(table)) put_band(table, band, out);
    out +=
        "\nRows: commodities. Columns: sectors, then consumers.\n"
        "+ made or endowed   - used or demanded   * both   . neither\n";
    if (table.taxes) out += "(taxes): + received   - paid   * both   . neither\n";
    return out;
}

}  // namespace orvex::frontend
