#include "notation/arguments.h"

#include "frontend/rules/checks.h"
#include "frontend/rules/edits.h"
#include "frontend/rules/rows.h"
#include "frontend/rules/warn.h"
#include "frontend/syntax/fields.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace orvex::frontend {

namespace {

// Sets that the host's program cannot have.
using IsWrong = bool (*)(std::string_view argument);

// How the quotation marks of UTF-8 begin; one more byte tells them apart.
constexpr std::string_view typographic = "\xE2\x80";

bool is_blank(std::string_view argument) { return argument.empty(); }

// An element that was to be in double quotes: in single ones, or in typographic ones of UTF-8.
bool is_misquoted(std::string_view argument) {
    return argument.starts_with('\'') || argument.starts_with(typographic);
}

// The length of the quotation mark that begins a text; 0 where there is none.
std::size_t mark_size(std::string_view text) {
    if (text.starts_with('\'')) return 1;
    return text.starts_with(typographic) ? typographic.size() + 1 : 0;
}

// Puts double quotes in place of other marks, where there is one at each end.
void fix_quotes(Range argument, std::string_view text, Finding& finding) {
    const std::size_t first = mark_size(text);
    const std::size_t last = text.ends_with('\'') ? 1 : typographic.size() + 1;
    if (first == 0 || text.size() <= first + last) return;
    const std::size_t end = text.size() - last;
    const bool is_clear = mark_size(text.substr(end)) == last &&
                          text.substr(first, end - first).find_first_of("'\"") == text.npos;
    if (!is_clear) return;
    const auto offset = [&](std::size_t at) { return argument.begin + static_cast<Offset>(at); };
    set_fix(finding, Confidence::certain,
            {replacing({argument.begin, offset(first)}, "\""),
             replacing({offset(end), argument.end}, "\"")});
}

// Goes through the loops of a model: those of declarations, blocks, entries and reports. A set over
// which one loops already is not found again.
class Loops {
  public:
    Loops(const Subject& subject, IsWrong is_wrong) : subject_(subject), is_wrong_(is_wrong) {}

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
        if (!is_wrong_(text) || notation::argument_kind(text) != notation::ArgumentKind::set)
            return;
        if (std::find(open_.begin(), open_.end(), text) != open_.end()) return;
        open_.push_back(text);
        found_.push_back(argument);
    }

    const Subject& subject_;
    IsWrong is_wrong_;
    std::vector<std::string> open_;  // wrong sets of the open loops
    std::vector<Range> found_;
};

}  // namespace

void check_argument_blank(const Subject& subject, Findings& findings) {
    for (const Range argument : Loops(subject, is_blank).read()) warn(subject, findings, argument);
}

void check_argument_quotes(const Subject& subject, Findings& findings) {
    for (const Range argument : Loops(subject, is_misquoted).read()) {
        Finding& finding =
            warn(subject, findings, argument, {{"argument", as_read(subject, argument)}});
        fix_quotes(argument, text_in(subject, argument), finding);
    }
}

}  // namespace orvex::frontend
