#include "frontend/accounts/printed.h"

#include "frontend/base/bytes.h"
#include "frontend/base/decimals.h"
#include "frontend/base/line_stream.h"
#include "notation/labels.h"
#include "notation/records.h"

namespace orvex::frontend {

namespace {

using notation::Meaning;
using notation::Opens;

constexpr char element_mark = '.';  // between a name and its elements
constexpr char label_mark = ':';
constexpr std::string_view solve_keyword = "SOLVE";  // the end of a printed model

std::string in_capitals(std::string_view text) {
    std::string capitals(trimmed(text));
    make_upper(capitals);
    return capitals;
}

void report(const PrintedReader& reader, std::string_view variant, std::string_view text,
            LinePlace line) {
    constexpr std::size_t most_shown = 60;
    reader.parts.fault({variant, std::string(text.substr(0, most_shown)), line});
}

void end_entry(PrintedReader& reader) {
    if (reader.entry) reader.parts.entry(*reader.entry);
    reader.entry.reset();
}

void end_model(PrintedReader& reader) {
    end_entry(reader);
    reader.in_model = false;
    reader.section = Opens::end;
}

// The name in a field. If it is not valid, that is reported and the result is empty.
std::string name_in(const PrintedReader& reader, std::string_view text, LinePlace line) {
    std::string name = printed_name(text);
    const bool is_name = !name.empty() && name.find(label_mark) == std::string::npos;
    if (is_name) return name;
    report(reader, "name", text, line);
    return {};
}

std::optional<AccountKind> kind_of(notation::TypeCode type) {
    switch (type) {
    case 'A': return AccountKind::sector;
    case 'P': return AccountKind::commodity;
    case 'C': return AccountKind::consumer;
    default: return std::nullopt;
    }
}

void open_block(PrintedReader& reader, std::string_view name, LinePlace line) {
    reader.owner = name_in(reader, name, line);
    const bool is_production = reader.section == Opens::production;
    if (reader.owner.empty()) return;
    reader.parts.declaration(is_production ? AccountKind::sector : AccountKind::consumer,
                             reader.owner, line);
}

// A line that begins with "$". Options do not change which block the next entries belong to.
void read_keyword(PrintedReader& reader, std::string_view text, LinePlace line) {
    const std::size_t colon = text.find(label_mark);
    const std::string word = in_capitals(text.substr(1, colon - 1));
    const std::string_view rest = colon == std::string_view::npos ? "" : text.substr(colon + 1);
    const notation::Keyword* const keyword = notation::find_keyword(word);
    end_entry(reader);
    if (word == solve_keyword) return end_model(reader);
    if (keyword == nullptr || keyword->opens == Opens::option) return;
    if (keyword->opens == Opens::end) return report(reader, model_fault, text, line);
    reader.section = keyword->opens;
    reader.declares = kind_of(keyword->type);
    if (keyword->opens == Opens::production || keyword->opens == Opens::demand)
        open_block(reader, rest, line);
}

bool begins_model(std::string_view text) {
    const std::string start = in_capitals(text.substr(0, notation::model_keyword.size()));
    return start == notation::model_keyword;
}

void begin_model(PrintedReader& reader, std::string_view text, LinePlace line) {
    end_model(reader);
    reader.in_model = true;
    reader.parts.model(in_capitals(text.substr(notation::model_keyword.size())), line);
}

void read_declared(PrintedReader& reader, std::string_view text, LinePlace line) {
    const std::string name = name_in(reader, text, line);
    if (!name.empty() && reader.declares) reader.parts.declaration(*reader.declares, name, line);
}

// A label and its value, on one line.
struct PrintedField {
    Meaning meaning = Meaning::none;
    notation::TypeCode type = notation::no_type;
    std::string label;
    std::string_view value;
    LinePlace line = 0;
};

std::optional<PrintedField> field_in(std::string_view text, LinePlace line) {
    const std::size_t colon = text.find(label_mark);
    if (colon == std::string_view::npos) return std::nullopt;
    PrintedField field;
    field.label = in_capitals(text.substr(0, colon));
    field.value = trimmed(text.substr(colon + 1));
    field.line = line;
    if (const notation::Label* const row = notation::find_label(field.label)) {
        field.meaning = row->meaning;
        field.type = row->type;
    }
    return field;
}

// The first field of an entry. A field that is not a flow of its block is skipped.
void begin_entry(PrintedReader& reader, const PrintedField& field) {
    end_entry(reader);
    const bool is_flow = reader.section == Opens::production ? is_of_sector(field.meaning)
                                                             : is_of_consumer(field.meaning);
    if (!is_flow || reader.owner.empty()) return;
    std::string name = name_in(reader, field.value, field.line);
    if (name.empty()) return;
    Transaction& entry = reader.entry.emplace();
    entry.flow = field.meaning;
    entry.owner = reader.owner;
    entry.commodity = std::move(name);
    entry.place = field.line;
    entry.price_place = field.line;
}

void take_name(const PrintedReader& reader, const PrintedField& field, Transaction& entry) {
    const std::string name = name_in(reader, field.value, field.line);
    if (name.empty()) return;
    if (field.meaning == Meaning::ration) {
        entry.ration = name;
    } else if (field.meaning == Meaning::tax_receiver) {
        entry.tax_fields.push_back({TaxField::Kind::receiver, name, 0});
    } else {
        entry.tax_fields.push_back({TaxField::Kind::variable, name, 0});
    }
}

void take_number(const PrintedReader& reader, const PrintedField& field, Transaction& entry) {
    const std::optional<double> number = printed_number(field.value);
    if (!number) return report(reader, "number", field.value, field.line);
    if (field.meaning == Meaning::tax_rate) {
        entry.tax_fields.push_back({TaxField::Kind::rate, {}, *number});
        return;
    }
    if (field.meaning != Meaning::price) {
        entry.quantity = number;
        return;
    }
    entry.price = number;
    entry.price_place = field.line;
}

// A label without a value is a nest, whatever it is called.
void take_field(const PrintedReader& reader, const PrintedField& field, Transaction& entry) {
    if (field.value.empty()) return;
    const bool is_name = field.meaning == Meaning::tax_receiver ||
                         field.meaning == Meaning::ration ||
                         (field.meaning == Meaning::tax_rate && field.type != notation::no_type);
    const bool is_number = field.meaning == Meaning::tax_rate || field.meaning == Meaning::price ||
                           field.label == notation::quantity_label;
    if (is_name) {
        take_name(reader, field, entry);
    } else if (is_number) {
        take_number(reader, field, entry);
    }
}

void read_in_block(PrintedReader& reader, std::string_view text, LinePlace line) {
    const bool continues = text.front() == notation::continuation_mark;
    const auto field = field_in(continues ? text.substr(1) : text, line);
    if (!field) return report(reader, "line", text, line);
    if (!continues) return begin_entry(reader, *field);
    if (reader.entry) take_field(reader, *field, *reader.entry);
}

}  // namespace

void read_printed(PrintedReader& reader, std::string_view text, LinePlace line) {
    const bool is_cut = text.size() >= longest_line;
    text = trimmed(text);
    if (text.empty()) return;
    if (begins_model(text)) return begin_model(reader, text, line);
    if (!reader.in_model) return;
    if (is_cut) return report(reader, "long", text, line);
    if (text.front() == notation::keyword_mark) return read_keyword(reader, text, line);
    switch (reader.section) {
    case Opens::declaration: return read_declared(reader, text, line);
    case Opens::production:
    case Opens::demand: return read_in_block(reader, text, line);
    case Opens::report: return;
    default: return report(reader, "label", text, line);
    }
}

void end_printed(PrintedReader& reader) { end_model(reader); }

std::string printed_name(std::string_view text) {
    std::string name;
    while (!text.empty()) {
        const std::size_t mark = text.find(element_mark);
        name += trimmed(text.substr(0, mark));
        text.remove_prefix(mark == std::string_view::npos ? text.size() : mark);
        if (text.empty()) break;
        name += element_mark;
        text.remove_prefix(1);
    }
    make_upper(name);
    return name;
}

std::optional<double> printed_number(std::string_view text) {
    text = trimmed(text);
    if (in_capitals(text) == "EPS") return 0;
    if (text.starts_with('+')) text.remove_prefix(1);
    return decimal_in(text);
}

}  // namespace orvex::frontend
