// What is wrong with the keyword of a record.
#include "frontend/findings/place.h"
#include "frontend/rules/edits.h"
#include "frontend/rules/error_place.h"
#include "frontend/rules/error_texts.h"
#include "frontend/rules/missing_end.h"
#include "frontend/syntax/meant_keyword.h"
#include "notation/keywords.h"
#include "notation/limits.h"
#include "notation/records.h"

#include <algorithm>
#include <string>

namespace orvex::frontend {

namespace {

using notation::Keyword;
using notation::Opens;

// A keyword record as written.
struct Written {
    Range record;
    Range blanks;  // between the "$" and the word
    Range word;
    Range gap;  // the blanks after the word
    bool has_colon = false;
    bool has_text = false;  // after the gap, and a colon in it
};

Written read_keyword(const ErrorCase& at) {
    Written written;
    written.record = record_range(at.source.tree, at.error.record);
    const std::string text = as_read(at, written.record);
    const auto part = [&](std::size_t from, std::size_t to) {
        return Range{written.record.begin + static_cast<Offset>(std::min(from, text.size())),
                     written.record.begin + static_cast<Offset>(std::min(to, text.size()))};
    };
    const std::size_t word = std::min(text.find_first_not_of(blank_char, 1), text.size());
    const std::size_t end = std::min(text.find_first_of(" :", word), text.size());
    const std::size_t next = std::min(text.find_first_not_of(blank_char, end), text.size());
    written.blanks = part(1, word);
    written.word = part(word, end);
    written.gap = part(end, next);
    written.has_colon = next < text.size() && text[next] == ':';
    written.has_text = next + (written.has_colon ? 1 : 0) < text.size();
    return written;
}

// The keyword with its "$" and, if needed, a colon.
std::string whole_keyword(const Keyword& keyword) {
    const std::string word = notation::keyword_mark + std::string(keyword.word);
    return keyword.opens == Opens::end ? word : word + ":";
}

// The model must end before the record.
void say_open_model(const ErrorCase& at, Said& said) {
    said.variant = "open";
    said.values["model"] = at.model.name;
    const Index record = at.source.tree.models[at.model.node].record;
    said.notes.push_back(
        {Severity::note, "the model begins here", record_span(at.source, line_of_record(record))});
    said.fix = ending_before(at.source, at.error.record);
}

// The keyword of a block is joined to its name: "$PRODY". False if it is not.
bool say_joined(const ErrorCase& at, const Written& written, Said& said) {
    const std::string word = as_read(at, written.word);
    const auto size = static_cast<Offset>(joined_keyword(word));
    if (size == 0) return false;
    const std::string name = word.substr(size);
    const Symbol* const symbol = find_symbol(at.model, name.substr(0, name.find('(')));
    if (symbol == nullptr || !is_variable(symbol->kind)) return false;
    said.variant = "joined";
    said.values["head"] = "$" + word.substr(0, size);
    said.values["name"] = name;
    said.fix = Fix{Confidence::certain, {inserting(written.word.begin + size, ":")}};
    return true;
}

void say_unknown(const ErrorCase& at, const Written& written, Said& said) {
    if (say_joined(at, written, said)) return;
    said.variant = "unknown";
    const std::string word = as_read(at, written.word);
    const Keyword* const known = notation::find_keyword(word);
    const Keyword* const meant = known != nullptr ? known : meant_keyword(word);
    if (meant == nullptr) return;
    said.meant = whole_keyword(*meant);
    if (!written.has_colon && joined_keyword(word) > 0) return;
    Range replaced = {written.record.begin, written.word.end};
    if (written.has_colon) {
        replaced.end = written.gap.end + 1;
    } else if (written.has_text && meant->opens != Opens::end) {
        ++replaced.end;
    }
    said.fix = Fix{Confidence::maybe,
                   {replacing(replaced, cased_like(text_in(at, replaced), said.meant))}};
}

// The colon replaces a blank before the following text. Names and reports belong on lines of their
// own.
Fix with_colon(const Written& written, const Keyword& keyword) {
    if (!written.has_text) return Fix{Confidence::certain, {inserting(written.word.end, ":")}};
    const bool needs_line = keyword.opens == Opens::declaration || keyword.opens == Opens::report;
    return Fix{needs_line ? Confidence::maybe : Confidence::certain,
               {replacing({written.gap.begin, written.gap.begin + 1}, ":")}};
}

void say_blank(const Written& written, const Keyword& keyword, Said& said) {
    said.variant = "blank";
    said.place = {written.record.begin, written.word.end};
    said.fix = Fix{Confidence::certain, {removing(written.blanks)}};
    if (written.has_colon || keyword.opens == Opens::end) return;
    const Fix colon = with_colon(written, keyword);
    said.fix->confidence = colon.confidence;
    said.fix->edits.push_back(colon.edits.front());
}

}  // namespace

void say_keyword(const ErrorCase& at, Said& said) {
    const Written written = read_keyword(at);
    const std::string word = as_read(at, written.word);
    said.values["keyword"] = word;
    said.place = {written.record.begin, written.word.end};
    if (at.host_text == at.error.record || belongs_outside(word)) return say_open_model(at, said);
    const Keyword* const keyword = notation::find_keyword(word);
    const bool has_room = word.size() < notation::keyword_columns;
    if (keyword == nullptr || !has_room) return say_unknown(at, written, said);
    said.values["whole"] = keyword->opens == Opens::end ? "$" + word : "$" + word + ":";
    if (!written.blanks.empty()) return say_blank(written, *keyword, said);
    if (written.has_colon) {
        said.variant = "far";
        said.fix = Fix{Confidence::certain, {removing(written.gap)}};
    } else {
        said.variant = "colon";
        said.fix = with_colon(written, *keyword);
    }
}

void say_late_declaration(const ErrorCase& at, Said& said) {
    said.variant = "keyword";
    said.values["keyword"] = keyword_of_record(at, at.error.record);
    const auto& blocks = at.model.blocks;
    const auto report = std::find_if(blocks.begin(), blocks.end(), [](const Block& block) {
        return is_opened_by(block, Opens::report);
    });
    if (report == blocks.end()) return;
    said.notes.push_back({Severity::note, "the first report block begins here",
                          record_span(at.source, line_of_record(report->record))});
}

}  // namespace orvex::frontend
