#include "frontend/commands/diagnose.h"

#include "frontend/findings/messages.h"
#include "frontend/findings/place.h"
#include "frontend/findings/spelling.h"
#include "frontend/findings/wording.h"
#include "frontend/translator/generator.h"
#include "frontend/translator/header.h"

#include <algorithm>
#include <optional>

namespace orvex::frontend {

namespace {

constexpr std::size_t nowhere = std::string_view::npos;

// All that a fault is explained from.
struct Clues {
    const Source& source;
    const std::vector<bool>& left_out;
    const Fault& fault;
    Recognised known;
    Header header;
    std::vector<Statement> statements;

    std::string_view line() const { return line_at(source, fault.line).text; }
    std::string_view code() const {
        return known.entry == nullptr ? std::string_view() : std::string_view(known.entry->code);
    }
    // What stands for <what> in the message, or an empty text.
    std::string_view value(const std::string& what) const {
        const auto found = known.values.find(what);
        return found == known.values.end() ? std::string_view() : std::string_view(found->second);
    }
};

bool writes_name(const Statement& statement) {
    return statement.form == Form::name || statement.form == Form::head ||
           statement.form == Form::more || statement.form == Form::value;
}

// The statement of the field that addsym refused, which is written before its names are entered.
// (Those of a declaration are entered first: it is the statement of the name before.)
const Statement* last_field(const std::vector<Statement>& statements) {
    const auto found = std::find_if(statements.rbegin(), statements.rend(), writes_name);
    return found == statements.rend() ? nullptr : &*found;
}

// Position of a name that addsym refused. A name can stand in a line more than once, also as a
// label: the field's statement tells which one is meant.
std::size_t find_refused_name(const Clues& clues, std::string_view name) {
    const std::string_view line = clues.line();
    const Statement* const field = last_field(clues.statements);
    std::size_t from = 0;
    if (field != nullptr && field->form != Form::name && !field->label.empty()) {
        const std::size_t label = find_label(line, field->label);
        if (label != nowhere) from = label + field->label.size();
    }
    const std::size_t at = find_word(line, name, from);
    return at != nowhere ? at : find_word(line, name);
}

// Position of an argument: behind "(" or "," where it stands there, else anywhere.
std::size_t find_argument(std::string_view line, std::string_view argument) {
    for (std::size_t at = find_word(line, argument); at != nowhere;
         at = find_word(line, argument, at + 1)) {
        const std::size_t before = line.substr(0, at).find_last_not_of(" \t");
        if (before != nowhere && (line[before] == '(' || line[before] == ',')) return at;
    }
    return find_word(line, argument);
}

// The character that begins what a message without a name is about, where a code tells it.
char mark_of(std::string_view code) {
    if (code.starts_with("extarg")) return '#';
    if (code.starts_with("chkcnd") || code == "repblk-condition") return '$';
    if (code.starts_with("rdarg") || code.starts_with("rdcond")) return '(';
    return '\0';
}

// From the mark to the next blank, where the record has one such mark only.
Span mark_span(const Clues& clues, char mark) {
    const std::string record = record_of(clues.line());
    const std::size_t at = record.find(mark, 1);
    if (mark == '\0' || at == nowhere || record.find(mark, at + 1) != nowhere) {
        return record_span(clues.source, clues.fault.line);
    }
    return span_of(clues.source, clues.fault.line, at,
                   std::min(record.find(' ', at), record.size()));
}

Span fault_span(const Clues& clues) {
    const int line = clues.fault.line;
    if (const auto keyword = clues.value("keyword"); !keyword.empty()) {
        return span_of(clues.source, line, 0, first_word(keyword).size() + 1);
    }
    std::size_t at = nowhere;
    std::string_view text;
    if (text = clues.value("argument"); !text.empty()) {
        at = find_argument(clues.line(), text);
    } else if (text = clues.value("label"); !text.empty()) {
        at = find_word(clues.line(), text);
    } else if (text = clues.value("name"); !text.empty()) {
        at = find_refused_name(clues, text);
    }
    if (at != nowhere) return span_of(clues.source, line, at, at + text.size());
    return mark_span(clues, mark_of(clues.code()));
}

// The line of a name's first occurrence. The translator looks one record ahead of an entry with one
// field, and then counts that one.
int first_line(const Clues& clues, const Symbol& symbol) {
    if (symbol.references.empty()) return 0;
    const int listed = file_line(clues.source, symbol.references.front(), clues.left_out);
    for (int line = listed; line > clues.source.models[clues.fault.model].line; --line) {
        const std::string_view text = line_at(clues.source, line).text;
        if (find_word(text, symbol.name) != nowhere) return line;
    }
    return listed;
}

std::string with_arguments(std::size_t count) {
    if (count == 0) return "without arguments";
    return "with " + std::to_string(count) + (count == 1 ? " argument" : " arguments");
}

// Where a name was declared or first used, for the faults that are about two uses of it.
void add_first_use(const Clues& clues, Finding& finding) {
    const std::string_view name = clues.value("name");
    const Symbol* const symbol = find_symbol(clues.header, name);
    if (symbol == nullptr) return;
    const int line = first_line(clues, *symbol);
    if (line == 0) return;
    const auto uses_name = [&](const Statement& statement) { return statement.name == name; };
    const auto use = std::find_if(clues.statements.begin(), clues.statements.end(), uses_name);
    const bool declared =
        use != clues.statements.end() && (use->form == Form::name || use->label == "V");
    std::string message = "`" + std::string(name) + "` was ";
    message += declared ? "declared here, " : "first used here, ";
    if (clues.code() == "addsym-dimension") {
        if (use == clues.statements.end()) return;
        message += with_arguments(use->arguments.size());
    } else {
        message += "as " + std::string(kind_with_article(symbol->kind));
    }
    const Span span = name_span(clues.source, line, name);
    if (span.begin != finding.span.begin) {
        finding.remarks.push_back({Severity::note, message, span});
    }
}

void add_report_block(const Clues& clues, Finding& finding) {
    for (int line = clues.source.models[clues.fault.model].line; line < clues.fault.line; ++line) {
        const SourceLine& candidate = line_at(clues.source, line);
        if (candidate.kind != LineKind::keyword) continue;
        if (first_word(record_of(candidate.text)) != "$REPORT") continue;
        finding.remarks.push_back(
            {Severity::note, "the report block begins here", record_span(clues.source, line)});
        return;
    }
}

std::vector<std::string> names_of(const Header& header, Kind kind) {
    std::vector<std::string> names;
    for (const Symbol& symbol : header.symbols) {
        if (symbol.kind == kind) names.push_back(symbol.name);
    }
    return names;
}

// The kind of name that a label is followed by.
Kind kind_behind(std::string_view label) {
    if (label == "$PROD" || label == "PROD") return Kind::sector;
    if (label == "$DEMAND" || label == "A" || label == "W") return Kind::consumer;
    if (label == "N" || label == "R") return Kind::auxiliary;
    return Kind::commodity;
}

// What may have been meant in place of what was refused.
std::string meant(const Clues& clues) {
    const std::string_view code = clues.code();
    const Statement* const field = last_field(clues.statements);
    if (code == "keyword-unknown" || code == "keyword-colon") {
        std::string keyword = meant_keyword(first_word(clues.value("keyword")));
        if (keyword.empty()) return keyword;
        return "$" + keyword + (keyword == "OFFTEXT" ? "" : ":");
    }
    if (code == "addsym-undeclared" && field != nullptr) {
        return nearest(clues.value("name"), names_of(clues.header, kind_behind(field->label)));
    }
    if (code == "chksym-unknown") {
        return nearest(clues.value("name"), names_of(clues.header, Kind::auxiliary));
    }
    if (code == "chkset-inactive") {
        return nearest(clues.value("argument"), names_of(clues.header, Kind::set));
    }
    if (code == "leadlg-inactive") {
        const std::string_view argument = clues.value("argument");
        const std::size_t shift = argument.find_first_of("+-");
        const auto set = nearest(argument.substr(0, shift), names_of(clues.header, Kind::set));
        return set.empty() ? set : set + std::string(argument.substr(shift));
    }
    if (code == "repblk-second") return nearest(clues.value("label"), {"I", "O", "D", "W"});
    if (code == "repblk-third") return nearest(clues.value("label"), {"PROD", "DEMAND"});
    return {};
}

// What to do where the line itself tells it better than the message; else empty.
std::string own_help(const Clues& clues) {
    const std::string_view code = clues.code();
    const std::string record = record_of(clues.line());
    const std::size_t start = record.find_first_not_of(' ');
    const char first = start == nowhere ? '\0' : record[start];
    const Statement* const field = last_field(clues.statements);
    if (code == "getfld-label") {
        const int block = line_at(clues.source, clues.fault.line).block;
        if (block > 0 && record_of(line_at(clues.source, block).text).starts_with("$CONSTRAINT")) {
            return "a constraint ends with its first `;`: what follows is no part of it";
        }
        if (first == '$') return "move the `$` to column 1";
        if (first != '\0' && std::string_view("*#;-/").find(first) != nowhere) {
            return "begin a comment with `*` in column 1";
        }
    }
    if (code == "chkset-inactive") {
        const std::string_view argument = clues.value("argument");
        if (argument.empty()) return "name the blank argument, or remove the comma";
        if (argument.starts_with('\'')) return "put the element into double quotes";
    }
    // A name in a place of a value: an entry was meant, or a field of one.
    if (code == "addsym-type" && field != nullptr && field->form == Form::value &&
        field->label.size() == 1) {
        if (field->label.find_first_not_of("OIDE") == nowhere) {
            return "begin a new line with `" + field->label + ":`: here it takes a value";
        }
        if (field->label.find_first_not_of("ANR") == nowhere) {
            return "move `" + field->label + ":` to an entry: here it takes a value";
        }
    }
    return {};
}

void add_open_model(const Clues& clues, Finding& finding) {
    const ModelText& model = clues.source.models[clues.fault.model];
    finding.remarks = {
        {Severity::note,
         "model `" + model.name + "`, which begins here, has no `$OFFTEXT` before that",
         record_span(clues.source, model.line)},
        {Severity::help, "write `$OFFTEXT` in column 1 where the model ends", {}}};
}

void add_remarks(const Clues& clues, Finding& finding) {
    const std::string_view code = clues.code();
    if (stands_outside(clues.value("keyword"))) return add_open_model(clues, finding);
    if (code == "addsym-type" || code == "addsym-dimension" || code == "chksym-type") {
        add_first_use(clues, finding);
    }
    if (code == "keyword-order") add_report_block(clues, finding);
    if (const std::string name = meant(clues); !name.empty()) {
        finding.remarks.push_back({Severity::help, "did you mean `" + name + "`?", {}});
    }
    std::string help = own_help(clues);
    const MessageEntry* const entry = find_code(finding.code);
    if (help.empty() && entry != nullptr) help = as_help(entry->cure);
    if (!help.empty()) finding.remarks.push_back({Severity::help, help, {}});
}

}  // namespace

Finding diagnose(const Source& source, const std::vector<bool>& left_out, const Fault& fault) {
    const Clues clues{source,
                      left_out,
                      fault,
                      recognise(fault.message).value_or(Recognised()),
                      read_header(fault.header, lines_before(source, fault.model, left_out)),
                      read_generator(fault.generator)};
    Finding finding;
    finding.severity = Severity::error;
    finding.code = clues.known.entry == nullptr ? "message-unknown" : clues.known.entry->code;
    finding.message = plain_words(fault.message, clues.known.values);
    finding.span = fault_span(clues);
    add_remarks(clues, finding);
    return finding;
}

std::string meant_keyword(std::string_view word) {
    constexpr std::size_t shortest_start = 4;
    static const std::vector<std::string> keywords = {
        "PROD",      "DEMAND",    "CONSTRAINT", "REPORT", "OFFTEXT", "SECTORS", "COMMODITIES",
        "CONSUMERS", "AUXILIARY", "ACTIVITIES", "PRICES", "MARKETS", "INCOME",  "PEPS",
        "EULCHK",    "WALCHK",    "DATECH",     "FUNLOG", "DIAGNL",  "ECHOP"};
    if (std::string near = nearest(word, keywords); !near.empty()) return near;
    const auto found = std::find_if(keywords.begin(), keywords.end(), [word](const auto& keyword) {
        const std::size_t shorter = std::min(keyword.size(), word.size());
        return shorter >= shortest_start && word.substr(0, shorter) == keyword.substr(0, shorter);
    });
    return found == keywords.end() ? "" : *found;
}

bool stands_outside(std::string_view keyword) {
    const std::string_view word = first_word(keyword);
    return word == "MODEL" || word == "ONTEXT" || word == "INCLUDE";
}

}  // namespace orvex::frontend
