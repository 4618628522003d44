#include "frontend/rules/host_comments.h"

#include "frontend/base/bytes.h"
#include "frontend/base/spelling.h"
#include "frontend/findings/failure.h"
#include "frontend/findings/place.h"
#include "frontend/findings/wording.h"
#include "frontend/rules/checks.h"
#include "frontend/rules/edits.h"
#include "frontend/rules/facts.h"
#include "frontend/rules/warn.h"
#include "frontend/syntax/host_lines.h"
#include "frontend/syntax/reading.h"
#include "notation/keywords.h"
#include "notation/records.h"

#include <string>
#include <string_view>

namespace orvex::frontend {

namespace {

// Does the line begin a model, but after blanks or a byte order mark?
bool is_hidden_model(std::string_view line) {
    if (line.starts_with(byte_order_mark)) line.remove_prefix(byte_order_mark.size());
    const std::string_view text = trimmed(line);
    const std::string_view model = notation::model_keyword;
    return same_when_read(text.substr(0, model.size()), model);
}

// Goes through the lines of the host in order.
struct HostLines {
    bool in_comment = false;
    bool has_hidden = false;  // a model whose line is not in column 1, which has its own finding
    bool has_text = false;    // since the last comment, or the last end of a model
    Index last = no_index;    // the last record with text

    void take(std::string_view line, Index record) {
        switch (host_line(line)) {
        case HostLine::blank:
        case HostLine::remark: return;
        case HostLine::comment_begins: in_comment = true; return;
        case HostLine::comment_ends: *this = {}; return;
        case HostLine::directive:
        case HostLine::text: take_text(line, record);
        }
    }

    void take_text(std::string_view line, Index record) {
        if (is_hidden_model(line)) {
            has_hidden = true;
        } else {
            has_text = true;
            last = record;
        }
    }
};

std::string_view line_in(const Source& source, Index record) {
    return text_of(source.bytes, line_range(source.tree, record));
}

bool begins_block(std::string_view line) {
    if (!line.starts_with(notation::keyword_mark)) return false;
    const std::string text = capitals(line.substr(1, notation::keyword_columns));
    const std::size_t colon = text.find(':');
    if (colon == std::string::npos) return false;
    const notation::Keyword* const keyword =
        notation::find_keyword(without_blanks_at_end(text.substr(0, colon)));
    return keyword != nullptr && keyword->opens != notation::Opens::end;
}

// The host's text between a model and the previous one.
HostLines text_before(const Source& source, Index model) {
    const Tree& tree = source.tree;
    HostLines text;
    for (Index record = model == 0 ? 0 : tree.models[model - 1].end;
         record < tree.models[model].record; ++record)
        text.take(line_in(source, record), record);
    return text;
}

std::string line_end_of(const Subject& subject, Index record) {
    const Tree& tree = subject.source.tree;
    const Range line = line_range(tree, record);
    const std::string_view end =
        text_in(subject, {line.end, tree.tokens[tree.records[record + 1].token].begin});
    return end.empty() ? "\n" : std::string(end);
}

// The line that begins the host's comment, if it is misspelt or indented; otherwise an empty range.
Range misspelt_comment(const Subject& subject, Index record) {
    if (record == no_index) return {};
    const Range line = line_range(subject.source.tree, record);
    const std::string text = capitals(text_in(subject, line));
    const std::size_t mark = text.find_first_not_of(blank_char);
    if (mark == std::string::npos || text[mark] != notation::keyword_mark) return {};
    const std::string word(without_blanks_at_end(std::string_view(text).substr(mark + 1)));
    const std::string wanted(comment_directive);
    return word == wanted || nearest(word, {wanted}) == wanted ? line : Range{};
}

void add_fix(const Subject& subject, Index last_text, Finding& finding) {
    const Index record = subject.source.tree.models[subject.model->node].record;
    const std::string keyword = notation::keyword_mark + std::string(comment_directive);
    const Range misspelt = misspelt_comment(subject, last_text);
    const Offset begin = line_range(subject.source.tree, record).begin;
    if (misspelt.empty()) {
        set_fix(finding, Confidence::certain,
                {inserting(begin, keyword + line_end_of(subject, record))});
        return;
    }
    set_help(finding, "write " + back_quoted(keyword) + " in column 1 of line " +
                          std::to_string(line_of_record(last_text)));
    set_fix(finding, Confidence::certain, {replacing(misspelt, keyword)});
}

}  // namespace

Index block_after_end(const Source& source, Index model) {
    const Tree& tree = source.tree;
    if (!tree.models[model].closed) return no_index;
    const Index end = tree.models[model + 1].record;
    HostLines text;
    for (Index record = tree.models[model].end; record < end; ++record) {
        const std::string_view line = line_in(source, record);
        text.take(line, record);
        if (text.has_hidden) return no_index;
        if (!text.in_comment && begins_block(line)) return record;
    }
    return no_index;
}

// The blocks after the end belong to the host's text, but the host does not know them.
void check_model_end(const Subject& subject, Findings& findings) {
    const Index next = subject.facts->block_after_end;
    if (next == no_index) return;
    const Tree& tree = subject.source.tree;
    const Index end = tree.models[subject.model->node].end - 1;
    const std::string line = capitals(line_in(subject.source, next));
    Finding& finding =
        warn(subject, findings, record_range(tree, end),
             {{"name", subject.model->name}, {"keyword", line.substr(0, line.find(':') + 1)}});
    finding.remarks.insert(finding.remarks.begin(),
                           {Severity::note, "this block is not in the model",
                            record_span(subject.source, line_of_record(next))});
}

// A model without the host's comment around it is read as part of the host's own program. A file
// without any text of the host contains only models.
void check_comment_missing(const Subject& subject, Findings& findings) {
    const Tree& tree = subject.source.tree;
    const HostLines text = text_before(subject.source, subject.model->node);
    if (text.in_comment || text.has_hidden || !text.has_text) return;
    const Index record = tree.models[subject.model->node].record;
    Finding& finding = warn(subject, findings, range_of(tree, tree.records[record].token),
                            {{"name", subject.model->name}});
    add_fix(subject, text.last, finding);
}

}  // namespace orvex::frontend
