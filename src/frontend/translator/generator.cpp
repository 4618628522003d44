#include "frontend/translator/generator.h"

#include "frontend/base/bytes.h"

#include <algorithm>
#include <charconv>
#include <cstddef>

namespace orvex::frontend {

namespace {

using View = std::string_view;
constexpr auto none = View::npos;

constexpr std::size_t number_columns = 5;
constexpr View mark_behind_number = "}  ";

// Takes the word off the front of the text, where it stands there.
bool take(View& text, View word) {
    if (!text.starts_with(word)) return false;
    text.remove_prefix(word.size());
    return true;
}

View up_to(View text, View word) { return text.substr(0, text.find(word)); }

// Without the ending, which a statement that was cut at its 255th column has not.
View without_end(View text, View ending) {
    if (text.ends_with(ending)) text.remove_suffix(ending.size());
    return text;
}

// '.'S.TL -> S, '.'T.TE(T+1) -> T+1.
std::string set_argument(View item) {
    const auto shifted = item.find(".TE(");
    if (shifted == none) return std::string(without_end(item, ".TL"));
    return std::string(without_end(item.substr(shifted + 4), ")"));
}

std::string in_quotes(View element) {
    std::string quoted = "\"";
    quoted.append(element).append("\"");
    return quoted;
}

// Reads the items behind a name, such as '.'S.TL'.US'.
void read_arguments(View items, std::vector<std::string>& arguments) {
    while (take(items, "'.")) {
        const bool element = !take(items, "'");
        const View item = up_to(items, "'.");
        items.remove_prefix(item.size());
        arguments.push_back(element ? in_quotes(without_end(item, "'")) : set_argument(item));
    }
}

// Reads 'NAME' or 'LABEL:NAME' with its items. The quote that ends it may stand in the name as
// well.
void read_name(View text, bool labelled, Statement& statement) {
    View quoted = text;
    View items;
    if (!text.starts_with("'.") || text == "'.'") take(quoted, "'");
    if (quoted.size() == text.size()) {
        quoted = {};
        items = text;
    } else if (const auto end = quoted.find("''."); end != none) {
        items = quoted.substr(end + 1);
        quoted = quoted.substr(0, end);
    } else {
        quoted = without_end(quoted, "'");
    }
    if (const auto colon = quoted.find(':'); labelled && colon != none) {
        statement.label = quoted.substr(0, colon);
        quoted.remove_prefix(colon + 1);
    }
    statement.name = quoted;
    read_arguments(items, statement.arguments);
}

void set_value(View label, View value, Statement& statement) {
    statement.form = Form::value;
    statement.label = label;
    statement.value = without_blanks_around(value);
}

// Behind PUT /,'+',: 'K:'V, or R.TL,':'V, or R.TL,'(S)'':'V.
void read_listed_value(View text, Statement& statement) {
    if (take(text, "'")) {
        const View label = up_to(text, ":'");
        View value = text.substr(std::min(label.size() + 2, text.size()));
        // A negative value has been put in parentheses.
        if (value.starts_with("(-")) value = without_end(value.substr(1), ")");
        return set_value(label, value, statement);
    }
    std::string label(up_to(text, ",'"));
    text.remove_prefix(std::min(label.size() + 2, text.size()));
    const View close = text.starts_with(":'") ? ":'" : "'':'";
    const View rest = up_to(text, close);
    label += rest;
    set_value(label, text.substr(std::min(rest.size() + close.size(), text.size())), statement);
}

// Behind PUT /,'+: is it a value, L:'V, or a first field whose label begins with "+", L:N'?
bool is_value(View text) {
    const auto colon = text.find(':');
    return colon != none && text.substr(colon + 1).starts_with("'");
}

bool is_option(View text) {
    return text.starts_with("'$") && text.ends_with("'") && !text.starts_with("'$PROD:") &&
           !text.starts_with("'$DEMAND:");
}

// Behind PUT /,
void read_new_line(View text, bool declaring, Statement& statement) {
    if (declaring && !is_option(text)) {
        statement.form = Form::name;
        return read_name(without_end(text, ";"), false, statement);
    }
    if (View value = text; take(value, "'+',")) {
        read_listed_value(without_end(value, ";"), statement);
    } else if (value = text; take(value, "'+") && is_value(value)) {
        const View label = up_to(value, ":");
        set_value(label, without_end(value.substr(label.size() + 2), ";"), statement);
    } else if (is_option(text)) {
        const View option = text.substr(1, text.size() - 2);
        statement.form = Form::option;
        statement.label = up_to(option, ":");
        statement.value = option.substr(1);
    } else {
        statement.form = Form::head;
        read_name(without_end(text, ";"), true, statement);
    }
}

void read_put(View text, bool declaring, Statement& statement) {
    const bool banner = text.starts_with("PUT'$") || text.starts_with("PUT / '$");
    if (banner && text.ends_with(":'/;")) {
        statement.form = Form::banner;
        statement.label = without_end(text.substr(text.find('\'') + 1), ":'/;");
    } else if (take(text, "PUT /'+',") || (text.starts_with("PUT'") && take(text, "PUT"))) {
        statement.form = Form::more;
        read_name(without_end(text, ";"), true, statement);
    } else if (take(text, "PUT /,")) {
        read_new_line(text, declaring, statement);
    }
}

// LOOP((S,T)$(C), or LOOP(R,
void read_loop(View text, Statement& statement) {
    statement.form = Form::loop;
    text = without_end(text, ",");
    if (take(text, "(")) {
        const auto close = std::min(text.find(")$"), text.size());
        if (close < text.size()) statement.condition = text.substr(close + 2);
        text = without_end(text.substr(0, close), ")");
    }
    for (bool more = true; more;) {
        const View set = up_to(text, ",");
        statement.arguments.emplace_back(set);
        more = set.size() < text.size();
        text.remove_prefix(set.size() + (more ? 1 : 0));
    }
}

// Where the PUT of IF (C, PUT ...) begins: at the comma behind the condition, whose parentheses
// match.
std::size_t find_put(View text) {
    const auto begins_put = [&](std::size_t at) {
        View rest = text.substr(at);
        if (!take(rest, ",")) return false;
        take(rest, " ");
        return rest.starts_with("PUT ") || rest.starts_with("PUT'");
    };
    int depth = 0;
    auto first = none;
    for (std::size_t at = 0; at < text.size(); ++at) {
        depth += text[at] == '(' ? 1 : text[at] == ')' ? -1 : 0;
        if (text[at] != ',' || !begins_put(at)) continue;
        if (depth <= 0) return at;
        if (first == none) first = at;
    }
    return first;
}

// Behind IF (
void read_condition(View text, bool declaring, Statement& statement) {
    const auto comma = find_put(text);
    if (comma == none) {
        statement.form = Form::condition;
        statement.condition = without_blanks_around(without_end(text, ","));
        return;
    }
    statement.condition = text.substr(0, comma);
    const View put = without_blanks_around(without_end(text.substr(comma + 1), ");"));
    read_put(put, declaring, statement);
}

void read_statement(View text, bool declaring, Statement& statement) {
    if (text == ");") {
        statement.form = Form::close;
    } else if (take(text, "LOOP(")) {
        read_loop(text, statement);
    } else if (take(text, "IF(ABS(")) {
        statement.form = Form::guard;
        statement.condition = without_end(text, ") GT ORVEPS,");
    } else if (take(text, "IF (")) {
        read_condition(text, declaring, statement);
    } else {
        read_put(text, declaring, statement);
    }
}

// Takes the number off the front of a line; false where it has none.
bool take_number(View& line, int& number) {
    if (!line.starts_with("{") || line.size() < 1 + number_columns) return false;
    const View digits = without_blanks_around(line.substr(1, number_columns));
    line.remove_prefix(1 + number_columns);
    std::from_chars(digits.data(), digits.data() + digits.size(), number);
    return take(line, mark_behind_number);
}

}  // namespace

std::vector<Statement> read_generator(std::string_view text) {
    std::vector<Statement> statements;
    bool declaring = false;  // behind the banner of a declaration
    while (!text.empty()) {
        View line = take_line(text);
        int number = 0;
        if (!take_number(line, number)) continue;
        const auto indent = std::min(line.find_first_not_of(' '), line.size());
        Statement& statement = statements.emplace_back();
        statement.line = number;
        statement.level = static_cast<int>(indent / 2);
        read_statement(line.substr(indent), declaring, statement);
        if (statement.form == Form::banner)
            declaring = statement.label != "$REPORT";
        else if (statement.form == Form::option || line.substr(indent) == "PUT /;")
            declaring = false;
    }
    return statements;
}

std::string reference(const std::string& name, const std::vector<std::string>& arguments) {
    std::string text = name;
    for (std::size_t i = 0; i < arguments.size(); ++i)
        text.append(i == 0 ? "(" : ",").append(arguments[i]);
    if (!arguments.empty()) text += ')';
    return text;
}

std::string reference(const Statement& statement) {
    return reference(statement.name, statement.arguments);
}

}  // namespace orvex::frontend
