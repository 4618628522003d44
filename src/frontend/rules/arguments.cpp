#include "notation/arguments.h"

#include "frontend/rules/arguments.h"
#include "frontend/rules/checks.h"
#include "frontend/rules/facts.h"
#include "frontend/rules/rows.h"
#include "frontend/rules/warn.h"
#include "frontend/syntax/expressions.h"
#include "frontend/syntax/fields.h"
#include "frontend/syntax/lookalikes.h"
#include "frontend/syntax/reading.h"
#include "text/characters.h"

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvex::frontend {

namespace {

// An element that should be in double quotes: in single quotes, in typographic quotes of UTF-8, or
// a number.
bool is_misquoted(std::string_view argument) {
    return argument.starts_with('\'') || argument.starts_with("\xE2\x80") ||
           (!argument.empty() && std::all_of(argument.begin(), argument.end(), is_name_byte) &&
            is_digit(argument.front()));
}

// Searches the loops of a model (of declarations, blocks, entries and reports) for elements that
// are looped over. An element that already has an open loop is not found again.
class Loops {
  public:
    explicit Loops(const Subject& subject) : subject_(subject) {}

    std::vector<Range> read() {
        read_declarations();
        for (const Block& block : subject_.model->blocks) read_block(block);
        return std::move(found_);
    }

  private:
    void read_declarations() {
        const Tree& tree = subject_.source.tree;
        const ModelNode& node = tree.models[subject_.model->node];
        for (Index record = node.record; record < node.end; ++record) {
            if (tree.records[record].kind != RecordKind::names) continue;
            for (Index field = tree.records[record].field; field < tree.records[record + 1].field;
                 ++field)
                read_declared(record, field);
        }
    }

    void read_declared(Index record, Index field) {
        if (subject_.source.tree.fields[field].fault != Fault::none) return;
        const FieldParts parts = parts_of(subject_.source.tree, record, field);
        open_.clear();
        for (const Range argument : parts.own.arguments()) take(argument);
        for (const Range argument : parts.extra.arguments()) take(argument);
    }

    void read_block(const Block& block) {
        open_.clear();
        if (is_function(block)) take(block.head);
        const std::vector<std::string> of_block = open_;
        for (const Entry& entry : entries_of(*subject_.model, block)) {
            open_ = of_block;
            take(entry.head);
            for (const Field& field : fields_of(*subject_.model, entry)) {
                if (is_made_by_host(subject_.source, field) && field.reference.argument_count > 0)
                    take(field);
            }
        }
    }

    void take(const Field& field) {
        if (field.faulty) return;
        for (const auto& list : {arguments_of(*subject_.model, field.reference),
                                 extras_of(*subject_.model, field.reference)}) {
            for (const Argument& argument : list) take(argument.range);
        }
    }

    void take(Range argument) {
        const std::string text = capitals(text_in(subject_, argument));
        if (!is_misquoted(text) || notation::argument_kind(text) != notation::ArgumentKind::set)
            return;
        if (std::find(open_.begin(), open_.end(), text) != open_.end()) return;
        open_.push_back(text);
        found_.push_back(argument);
    }

    const Subject& subject_;
    std::vector<std::string> open_;  // elements of the open loops
    std::vector<Range> found_;
};

bool has_error(const Subject& subject, Index record) {
    const std::vector<RecordNode>& records = subject.source.tree.records;
    for (Index field = records[record].field; field < records[record + 1].field; ++field) {
        if (has_error(*subject.facts, field)) return true;
    }
    return false;
}

// Is the argument read as a set, on a line without errors? An error may be about the set that it
// was meant to be.
bool is_judged(const Subject& subject, const Argument& argument) {
    if (argument.kind != notation::ArgumentKind::set) return false;
    const int line = line_of(subject.source.tree, argument.range.begin);
    return !has_error(subject, static_cast<Index>(line - 1));
}

// Removes the parentheses in an argument, and those they required at the end of its list. Nothing
// if the result is not a name.
std::optional<Fix> without_parentheses(const Subject& subject, Range argument) {
    const std::string_view bytes = subject.source.bytes;
    std::string name;
    Fix fix = {Confidence::certain, {}};
    for (Offset at = argument.begin; at < argument.end; ++at) {
        if (bytes[at] == '(' || bytes[at] == ')') {
            fix.edits.push_back({at, at + 1, ""});
        } else {
            name += bytes[at];
        }
    }
    if (fix.edits.empty() || !may_be_name(name)) return {};
    const std::size_t close = bytes.find(')', argument.end);
    const std::size_t last = std::min(bytes.find_first_not_of(')', close), bytes.size());
    if (last > close + 1) fix.edits.push_back({close + 1, last, ""});
    return fix;
}

// The length of the quote at the start and end of an argument; 0 if it has none.
Offset quote_length(std::string_view argument) {
    const std::string_view quote = argument.starts_with('\'') ? "'" : "\xE2\x80";
    const std::size_t size = quote == "'" ? 1 : 3;
    const bool is_quoted = argument.size() > 2 * size && argument.starts_with(quote) &&
                           argument.substr(argument.size() - size).starts_with(quote);
    return is_quoted ? static_cast<Offset>(size) : 0;
}

// How often each symbol is an argument.
std::vector<int> argument_counts(const Model& model) {
    std::vector<int> counts(model.symbols.size());
    for (const Argument& argument : model.arguments) ++counts[argument.symbol];
    return counts;
}

// If it is not the only argument with that text, others have to change with it.
Fix in_double_quotes(const Subject& subject, Range argument, bool is_only) {
    const Offset size = quote_length(text_in(subject, argument));
    return {
        size > 0 && is_only ? Confidence::certain : Confidence::maybe,
        {{argument.begin, argument.begin + size, "\""}, {argument.end - size, argument.end, "\""}}};
}

}  // namespace

bool is_invalid_set(std::string_view argument) {
    return !argument.empty() && !may_be_name(argument) && !is_misquoted(argument) &&
           lookalikes(argument).empty();
}

void check_argument_blank(const Subject& subject, Findings& findings) {
    const Tree& tree = subject.source.tree;
    for (const Argument& argument : subject.model->arguments) {
        if (!argument.range.empty() || !is_judged(subject, argument)) continue;
        const Range name = range_of(tree, owner_of_argument(tree, argument.range.begin));
        warn(subject, findings, argument.range, {{"name", as_read(subject, name)}});
    }
}

void check_argument_invalid(const Subject& subject, Findings& findings) {
    for (const Argument& argument : subject.model->arguments) {
        if (!is_invalid_set(text_in(subject, argument.range)) || !is_judged(subject, argument))
            continue;
        warn(subject, findings, argument.range, {{"argument", as_read(subject, argument.range)}})
            .fix = without_parentheses(subject, argument.range);
    }
}

void check_argument_quotes(const Subject& subject, Findings& findings) {
    const std::vector<Range> found = Loops(subject).read();
    if (found.empty()) return;
    const std::vector<int> counts = argument_counts(*subject.model);
    for (const Range argument : found) {
        const std::string text = as_read(subject, argument);
        const Index symbol = subject.model->names.find(text);
        warn(subject, findings, argument, {{"argument", text}}).fix =
            in_double_quotes(subject, argument, symbol != no_index && counts[symbol] == 1);
    }
}

}  // namespace orvex::frontend
