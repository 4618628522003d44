#include "frontend/session/depfile.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace orvex::frontend {

namespace {

// make ends a name at ";" or "=", even after a backslash, but not if the character comes from a
// variable.
struct Variable {
    char character;
    std::string_view definition, reference;
};
constexpr Variable variables[] = {
    {';', "orvex_semicolon := ;\n", "\\$(orvex_semicolon)"},
    {'=', "orvex_equals := =\n", "$(orvex_equals)"},
};

const Variable* variable_of(char c) {
    const auto* const found =
        std::find_if(std::begin(variables), std::end(variables),
                     [c](const Variable& each) { return each.character == c; });
    return found == std::end(variables) ? nullptr : found;
}

// Before the colon "%" makes a pattern; after it "|" separates the names.
constexpr std::string_view special_in_target = " \t#:%";
constexpr std::string_view special_in_prerequisite = " \t#:|";

std::string escaped(std::string_view name, std::string_view special) {
    std::string text;
    std::size_t backslashes = 0;
    for (const char c : name) {
        const Variable* const variable = variable_of(c);
        const bool is_escaped = special.find(c) != std::string_view::npos;
        // Backslashes before the character would be read as escaping it, so each is doubled.
        if (is_escaped || c == ';') text.append(backslashes, '\\');
        if (is_escaped) text += '\\';
        if (c == '$') text += '$';
        if (variable != nullptr) {
            text += variable->reference;
        } else {
            text += c;
        }
        backslashes = c == '\\' ? backslashes + 1 : 0;
    }
    return text;
}

// The lines of a rule.
struct Rule {
    std::string text;
    std::size_t column = 0;
};

void append(Rule& rule, const std::string& word) {
    constexpr std::size_t last_column = 72;
    if (rule.column > 0 && rule.column + 1 + word.size() > last_column) {
        rule.text += " \\\n";
        rule.column = 0;
    }
    if (!rule.text.empty()) {
        rule.text += ' ';
        ++rule.column;
    }
    rule.text += word;
    rule.column += word.size();
}

// The definitions that the rule needs.
std::string definitions_for(const Rule& rule) {
    std::string text;
    for (const Variable& variable : variables) {
        if (rule.text.find(variable.reference) != std::string::npos) text += variable.definition;
    }
    return text;
}

}  // namespace

std::string depfile(const std::vector<std::string>& outputs,
                    const std::vector<std::string>& inputs) {
    Rule rule;
    for (const std::string& output : outputs) append(rule, escaped(output, special_in_target));
    rule.text += ':';
    ++rule.column;
    for (const std::string& input : inputs) append(rule, escaped(input, special_in_prerequisite));
    return definitions_for(rule) + rule.text + "\n";
}

}  // namespace orvex::frontend
