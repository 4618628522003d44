#include "symbols/listing.h"

#include "text/bytes.h"
#include "text/numbers.h"
#include "unit.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <numeric>

namespace orvex {

namespace {

constexpr int narrowest_column = 12;
constexpr int numbers_a_line = 10;
constexpr int numbers_a_block = 100;
constexpr int number_width = 5;

// From the name's marker to the first reference: marker, blank, type label, six blanks.
constexpr int label_width = 13;

std::size_t at(int entry) { return static_cast<std::size_t>(entry); }

int column_width() { return std::clamp(symlenmx, narrowest_column, maxname); }

View type_label(char typ) {
    switch (typ) {
    case 'D': return "PARAM";
    case 'P': return "PRICE";
    case 'A': return "ACTIV";
    case 'C': return "CONSU";
    case 'V': return "AUXIL";
    case 'R': return "REPRT";
    default: return "SET  ";
    }
}

void write_head() {
    const int width = column_width();
    for (const View line : {"", "", "Symbol Listing", ""}) write_line(klst, {line});
    if (nrefign > 0) {
        write_line(klst, {"Warning: The reference reporting limit of 10000 has been reached:"});
        write_line(klst, {"         ", decimal(nrefign),
                          " references are not included in this symbol listing."});
        write_line(klst, {});
    }
    write_line(klst, {"Note:    Parameter and set references appearing within"});
    write_line(klst, {"         parentheses are not identified by the preprocessor."});
    write_line(klst, {});
    write_line(klst, {"Symbol", repeated<' '>(width - 4), "Type       References"});
    write_line(klst, {repeated<'='>(width), "  =====      ", repeated<'='>(50)});
}

// The name and kind of a symbol, in the columns before its references.
Text<maxname + label_width> entry_head(int isym) {
    const int width = column_width();
    const Name& name = symbol[at(isym)];
    const View shown = name.slice(1, width);
    return joined<maxname + label_width>({shown, repeated<' '>(width - length_of(shown)),
                                          name.length() > width ? "~" : " ", " ",
                                          type_label(symtyp[at(isym)])});
}

// Ten references at most, each in its columns. The view is valid until the next call; the rest of
// `columns` is never reused.
View reference_columns(std::span<const int> references) {
    static Bytes<numbers_a_line * number_width> columns;
    char* next = columns.data();
    for (const int line : references) {
        write_number<number_width>(next, line, Fill::blanks);
        next += number_width;
    }
    return {columns.data(), static_cast<std::size_t>(next - columns.data())};
}

// `references` has room for all references of the model.
void write_entry(int isym, std::span<int> references) {
    const int count = getref(isym, references);
    const int margin = column_width() + label_width;
    for (int first = 0; first == 0 || first < count; first += numbers_a_line) {
        if (first > 0 && first % numbers_a_block == 0) write_line(klst, {});
        const auto head = first == 0 ? entry_head(isym) : Text<maxname + label_width>();
        const View gap = repeated<' '>(margin - head.length());
        const int shown = std::min(numbers_a_line, count - first);
        write_line(klst, {head, gap, reference_columns(references.subspan(at(first), at(shown)))});
    }
}

}  // namespace

void symlst() {
    // The order, followed by a symbol's references. Static only because of its size: each call
    // fills in what it reads.
    static std::array<int, maxsym + maxref> rows;
    write_head();
    const std::span<int> order(rows.data(), at(nsym));
    sortc(order, symbol);
    for (const int isym : order) write_entry(isym, {order.data() + nsym, at(nref)});
}

void sortc(std::span<int> indx, const Table<Name, maxsym>& names) {
    const auto before = [&names](int a, int b) {
        return compare_padded(names[at(a)], names[at(b)]) < 0;
    };
    std::iota(indx.begin(), indx.end(), 1);
    std::make_heap(indx.begin(), indx.end(), before);
    std::sort_heap(indx.begin(), indx.end(), before);
}

int getref(int isym, std::span<int> list) {
    const int capacity = static_cast<int>(list.size());
    int next = capacity;
    for (int row = symloc[at(isym)]; row != 0 && next > 0; row = symref[at(row)].older) {
        list[at(--next)] = symref[at(row)].line;
    }
    std::copy(list.begin() + next, list.end(), list.begin());
    return capacity - next;
}

}  // namespace orvex
