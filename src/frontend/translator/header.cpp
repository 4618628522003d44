#include "frontend/translator/header.h"

#include "frontend/base/bytes.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <optional>
#include <system_error>

namespace orvex::frontend {

namespace {

constexpr std::size_t number_columns = 5;
constexpr std::size_t label_columns = 5;
constexpr std::size_t gap = 4;  // blanks between a variable and its description

struct KindRow {
    Kind kind;
    // As in the symbol listing.
    std::string_view label;
};

constexpr KindRow kind_rows[] = {
    {Kind::sector, "ACTIV"},    {Kind::commodity, "PRICE"}, {Kind::consumer, "CONSU"},
    {Kind::auxiliary, "AUXIL"}, {Kind::parameter, "PARAM"}, {Kind::report, "REPRT"},
    {Kind::set, "SET  "},
};

// A text that is read line by line.
class Lines {
  public:
    explicit Lines(std::string_view text) : rest_(text) {}

    bool at_end() const { return rest_.empty(); }
    std::string_view rest() const { return rest_; }
    std::string_view peek() const { return rest_.substr(0, rest_.find('\n')); }
    std::string_view take() { return take_line(rest_); }

    // Skips to the line after the next line with this text, or to the end if there is none.
    bool skip_past(std::string_view wanted) {
        while (!at_end()) {
            if (take() == wanted) return true;
        }
        return false;
    }

  private:
    std::string_view rest_;
};

// Four blanks after a name, outside its parentheses, begin a description.
Variable read_variable(std::string_view line) {
    int depth = 0;
    std::size_t end = 0;
    while (end < line.size() && (depth != 0 || line[end] != ' ')) {
        depth += line[end] == '(' ? 1 : line[end] == ')' ? -1 : 0;
        ++end;
    }
    if (line.substr(end, gap) != "    ") end = line.size();
    return {std::string(line.substr(0, end)), std::string(without_blanks_around(line.substr(end)))};
}

bool is_equation_head(std::string_view line) {
    constexpr std::string_view front = "EQUATION DUMMY";
    constexpr std::string_view back = "  Artificial equation for model: ";
    return line.starts_with(front) && line.size() > front.size() + 2 &&
           line.substr(front.size() + 2).starts_with(back);
}

void read_variables(Lines& lines, Header& header) {
    if (!lines.skip_past("POSITIVE VARIABLES")) return;
    while (!lines.at_end() && !is_equation_head(lines.peek()))
        header.variables.push_back(read_variable(lines.take()));
}

// Reads up to the heading of the MODEL statement. The records of a constraint are in upper case, so
// none of them equals that heading.
void read_constraint_text(Lines& lines, Header& header) {
    bool inside = false;
    while (!lines.at_end()) {
        const std::string_view line = lines.take();
        if (line == "*       The model:") return;
        if (inside) header.constraint_text.append(line).append("\n");
        inside = inside || line == "*       Constraints:";
    }
}

// Reads lines such as "     EQ_002.TAU", up to "/;".
void read_constraints(Lines& lines, Header& header) {
    constexpr std::string_view front = "     EQ_";
    constexpr std::size_t name_column = front.size() + 4;  // three digits and a point
    while (!lines.at_end()) {
        const std::string_view line = lines.take();
        if (line == "/;") return;
        if (line.starts_with(front) && line.size() > name_column)
            header.constraints.emplace_back(line.substr(name_column));
    }
}

bool all_are(std::string_view text, char c) {
    return text.find_first_not_of(c) == std::string_view::npos;
}

// A right-aligned number; 0 if it did not fit into its columns and is shown as asterisks.
std::optional<int> read_number(std::string_view field) {
    if (field.size() == number_columns && all_are(field, '*')) return 0;
    const std::string_view digits = without_blanks_around(field);
    int number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (error != std::errc() || end != digits.data() + digits.size() || number < 1) return {};
    return number;
}

void read_echo(Lines& lines, int lines_before, Header& header) {
    constexpr std::string_view version = "ORVEX PREPROCESSOR VERSION 12/95";
    if (!lines.skip_past(version)) return;
    for (; !lines.at_end(); lines.take()) {
        const std::string_view line = lines.peek();
        const auto number = line.size() < number_columns
                                ? std::optional<int>()
                                : read_number(line.substr(0, number_columns));
        if (!number) return;
        if (header.first_line == 0) {
            header.first_line = *number == 0 ? lines_before + 1 : *number;
            header.last_line = header.first_line;
        } else {
            ++header.last_line;
        }
    }
}

// Reads the references of the last symbol.
void read_references(std::string_view columns, Header& header) {
    for (; columns.size() >= number_columns; columns.remove_prefix(number_columns)) {
        const int number = read_number(columns.substr(0, number_columns)).value_or(0);
        if (number > 0) header.symbols.back().references.push_back(number);
        if (number == 0) header.references_lost = true;
    }
}

// Reads the entries, whose names have a column of this width. A line with only numbers continues
// the previous entry.
void read_entries(Lines& lines, std::size_t width, Header& header) {
    const std::size_t label_column = width + 2;
    const std::size_t reference_column = label_column + label_columns + 6;
    while (!lines.at_end()) {
        const std::string_view line = lines.take();
        if (line == "$OFFTEXT") return;
        if (line.size() <= label_column) continue;
        const std::string_view references = line.substr(std::min(reference_column, line.size()));
        if (all_are(line.substr(0, reference_column), ' ')) {
            if (!header.symbols.empty()) read_references(references, header);
            continue;
        }
        std::string label(line.substr(label_column, label_columns));
        label.resize(label_columns, ' ');
        const auto* const row =
            std::find_if(std::begin(kind_rows), std::end(kind_rows),
                         [&](const KindRow& known) { return known.label == label; });
        if (row == std::end(kind_rows)) continue;
        ListedSymbol& symbol = header.symbols.emplace_back();
        symbol.name = without_trailing_blanks(line.substr(0, width));
        symbol.kind = row->kind;
        read_references(references, header);
    }
}

void read_symbols(Lines& lines, Header& header) {
    if (!lines.skip_past("Symbol Listing")) return;
    while (!lines.at_end()) {
        const std::string_view line = lines.take();
        if (line.starts_with("Warning: The reference reporting limit of "))
            header.references_lost = true;
        if (line.starts_with("=")) {
            const auto width = line.find_first_not_of('=');
            return read_entries(lines, width == std::string_view::npos ? line.size() : width,
                                header);
        }
    }
}

}  // namespace

Header read_header(std::string_view text, int lines_before) {
    Header header;
    Lines lines(text);
    // A file with only an error block, which quotes a line of the input, does not begin like this.
    if (lines.at_end() || lines.take() != "$OFFLISTING") return header;
    read_variables(lines, header);
    read_constraint_text(lines, header);
    read_constraints(lines, header);
    read_echo(lines, lines_before, header);
    read_symbols(lines, header);
    return header;
}

const ListedSymbol* find_symbol(const Header& header, std::string_view name) {
    const auto found =
        std::find_if(header.symbols.begin(), header.symbols.end(),
                     [&](const ListedSymbol& symbol) { return symbol.name == name; });
    return found == header.symbols.end() ? nullptr : &*found;
}

}  // namespace orvex::frontend
