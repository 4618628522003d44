// What is wrong with a row as a whole.
#include "frontend/rules/edits.h"
#include "frontend/rules/error_place.h"
#include "frontend/rules/error_texts.h"
#include "frontend/rules/missing_end.h"
#include "notation/keywords.h"
#include "notation/labels.h"
#include "notation/records.h"

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>

namespace orvex::frontend {

namespace {

using notation::Opens;

// Makes the line of a record a comment: the mark in column 1 replaces a blank, or a mark of another
// kind.
Fix as_comment(const ErrorCase& at, Index record, Confidence confidence) {
    const Range line = line_range(at.source.tree, record);
    const bool takes_place =
        std::string_view(" \t!;#").find(at.source.bytes[line.begin]) != std::string_view::npos;
    return Fix{confidence,
               {replacing({line.begin, line.begin + (takes_place ? 1U : 0U)},
                          std::string(1, notation::comment_mark))}};
}

bool is_in_block(const ErrorCase& at, Opens opens) {
    const Block* const block = block_of(at);
    return block != nullptr && is_opened_by(*block, opens);
}

// The blanks before the record's first character.
Range indent_of(const ErrorCase& at) {
    return {line_range(at.source.tree, at.error.record).begin, at.error.place.begin};
}

// A keyword that is not in column 1.
void say_indented_keyword(const ErrorCase& at, const std::string& record, Said& said) {
    said.variant = "keyword";
    const std::string word = record.substr(0, record.find_first_of(" :"));
    said.values["keyword"] = word;
    said.place.end = said.place.begin + static_cast<Offset>(word.size());
    if (notation::find_keyword(word.substr(1)) != nullptr)
        said.fix = Fix{Confidence::certain, {removing(indent_of(at))}};
}

void say_misplaced_comment(const ErrorCase& at, const std::string& record, Said& said) {
    said.variant = "comment";
    said.fix = record.front() == notation::comment_mark
                   ? Fix{Confidence::certain, {removing(indent_of(at))}}
                   : as_comment(at, at.error.record, Confidence::maybe);
}

// Puts colons into a row that has blanks instead: "O PX Q 1".
std::optional<Fix> with_colons(const ErrorCase& at, const std::string& record) {
    Fix fix;
    std::size_t words = 0;
    std::size_t begin = record.find_first_not_of(" +");
    for (; begin < record.size(); ++words) {
        const std::size_t end = std::min(record.find(blank_char, begin), record.size());
        const std::size_t next = std::min(record.find_first_not_of(blank_char, end), record.size());
        if (words % 2 == 0) {
            const std::string word = record.substr(begin, end - begin);
            if (notation::find_label(word) == nullptr || end == record.size()) return {};
            const Offset start = at.error.place.begin;
            fix.edits.push_back({start + end, start + next, ":"});
        }
        begin = next;
    }
    if (words == 0 || words % 2 != 0) return {};
    return fix;
}

// The variable at the start of a record before the first block, whose declaration lacks its
// keyword; null if it is not a variable.
const Symbol* declared_without_keyword(const ErrorCase& at, const std::string& record) {
    const Symbol* const symbol =
        find_symbol(at.model, record.substr(0, record.find_first_of(" (")));
    return symbol != nullptr && is_variable(symbol->kind) ? symbol : nullptr;
}

void say_before_blocks(const ErrorCase& at, const std::string& record, Said& said) {
    said.variant = "outside";
    const Symbol* const symbol = declared_without_keyword(at, record);
    if (symbol == nullptr) {
        said.fix = as_comment(at, at.error.record, Confidence::maybe);
        return;
    }
    said.help = "names";
    said.values["keyword"] = declaring_keyword(symbol->kind);
}

// The labels in the message depend on the block.
std::string row_variant(const ErrorCase& at, const std::string& record) {
    if (record.front() == notation::continuation_mark) return "continued";
    if (is_in_block(at, Opens::demand)) return "demand";
    return is_in_block(at, Opens::report) ? "report" : "";
}

}  // namespace

void say_comment(const ErrorCase& at, Said& said) {
    said.fix = as_comment(at, at.error.record, Confidence::certain);
}

void say_unlabelled(const ErrorCase& at, Said& said) {
    const std::string record = as_read(at, at.error.place);
    said.values["text"] = std::string(text_in(at, at.error.place));
    if (record.empty()) return;
    if (at.host_text == at.error.record) {
        said.variant = "end";
        said.values["model"] = at.model.name;
        said.fix = ending_before(at.source, at.error.record);
    } else if (record.starts_with(notation::keyword_mark)) {
        say_indented_keyword(at, record, said);
    } else if (is_in_block(at, Opens::constraint)) {
        said.variant = "constraint";
    } else if (std::string_view("*#;-/").find(record.front()) != std::string_view::npos) {
        say_misplaced_comment(at, record, said);
    } else if (block_of(at) == nullptr) {
        say_before_blocks(at, record, said);
    } else {
        said.variant = row_variant(at, record);
        said.fix = with_colons(at, record);
    }
}

void say_long_statement(const ErrorCase& at, Said& said) {
    said.variant = "field";
    const std::string label = label_before(at, at.error.place.begin);
    const bool is_value = at.error.fault == notation::Fault::numfld_long;
    said.values["field"] = is_value ? label : label + as_read(at, at.error.place);
}

}  // namespace orvex::frontend
