#include "frontend/model/field_reader.h"

#include "frontend/syntax/expressions.h"
#include "frontend/syntax/reading.h"

namespace orvex::frontend {

FieldReader::Read FieldReader::read(Index record, Index node) const {
    Read read;
    read.parts = parts_of(tree_, record, node);
    read.label = capitals(text(read.parts.label));
    Field& field = read.field;
    field.label = read.parts.label;
    field.row = notation::find_label(read.label);
    field.text = read.parts.value;
    field.ignored = read.parts.ignored;
    field.before = read.parts.before;
    field.record = record;
    field.node = node;
    field.faulty = tree_.fields[node].fault != Fault::none;
    const bool is_expression = text(read.parts.root).starts_with('(');
    if (!is_expression) field.reference.name = read.parts.root;
    return read;
}

void FieldReader::add_uses(Read& read, Role role, bool is_listed) {
    Field& field = read.field;
    const FieldParts& parts = read.parts;
    if (!field.reference.name.empty()) add_root(field, role, is_listed);
    Reference& reference = field.reference;
    const bool lists_arguments = is_listed && !field.reference.name.empty();
    add_arguments(parts.own, field.record, lists_arguments, reference.first_argument,
                  reference.argument_count);
    add_arguments(parts.extra, field.record, false, reference.first_extra, reference.extra_count);
    Index condition = parts.first;
    while (condition < parts.end && tree_.tokens[condition].kind != TokenKind::condition)
        ++condition;
    add_words(field.record, parts.first, condition, Role::value);
    add_words(field.record, condition, parts.end, Role::condition);
}

// Only the translator takes a value that is not a plain name for a name, so no use is noted for it.
void FieldReader::add_root(Field& field, Role role, bool is_listed) {
    Reference& reference = field.reference;
    reference.symbol = symbols_.mention(text(reference.name));
    if (!field.is_name && !is_plain_name(text(reference.name))) return;
    reference.use =
        symbols_.add_use(reference.symbol, reference.name, field.record, role, is_listed);
}

void FieldReader::add_arguments(const ArgumentList& list, Index record, bool is_listed,
                                Index& first, Index& count) {
    first = static_cast<Index>(model_.arguments.size());
    count = static_cast<Index>(list.count);
    for (const Range range : list.arguments())
        model_.arguments.push_back(read_argument(range, record, is_listed));
}

Argument FieldReader::read_argument(Range range, Index record, bool is_listed) {
    const std::string_view whole = text(range);
    Argument argument{range, symbols_.mention(whole), no_index, notation::argument_kind(whole)};
    if (range.empty() || argument.kind == notation::ArgumentKind::element) return argument;
    Range name = range;
    const bool is_shifted = argument.kind == notation::ArgumentKind::shifted;
    if (is_shifted) {
        const std::string_view set =
            without_blanks_at_end(whole.substr(0, whole.find_first_of("+-")));
        name.end = name.begin + static_cast<Offset>(set.size());
    }
    if (name.empty()) return argument;
    argument.use = symbols_.add_use(symbols_.mention(text(name)), name, record,
                                    is_shifted ? Role::lead : Role::set, is_listed && !is_shifted);
    return argument;
}

void FieldReader::add_words(Index record, Index first, Index end, Role role) {
    for (Index token = first; token < end; ++token) {
        if (tree_.tokens[token].kind != TokenKind::word || !names_something(token, end)) continue;
        const Range range = range_of(tree_, token);
        symbols_.add_use(symbols_.mention(text(range)), range, record, role, false);
    }
}

bool FieldReader::names_something(Index token, Index end) const {
    const std::string word = capitals(text(range_of(tree_, token)));
    if (is_operator_word(word)) return false;
    Index next = token + 1;
    while (next < end && tree_.tokens[next].kind == TokenKind::blank) ++next;
    const bool calls = next < end && text(range_of(tree_, next)) == "(";
    return !calls || !is_function(word);
}

void FieldReader::touch(Index first, Index end) {
    for (Index token = first; token < end; ++token) {
        const TokenKind kind = tree_.tokens[token].kind;
        if (kind == TokenKind::word || kind == TokenKind::name || kind == TokenKind::ignored) {
            symbols_.touch(text(range_of(tree_, token)));
        } else if (kind == TokenKind::argument) {
            touch_words(text(range_of(tree_, token)));
        }
    }
}

// The last argument of an unclosed list includes the rest of its line.
void FieldReader::touch_words(std::string_view text) {
    for (std::size_t at = 0; at < text.size();) {
        const Lexeme next = next_lexeme(text, at);
        if (next.kind == TokenKind::word) symbols_.touch(text.substr(at, next.end - at));
        at = next.end;
    }
}

}  // namespace orvex::frontend
