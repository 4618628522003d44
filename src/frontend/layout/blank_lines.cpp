#include "frontend/layout/blank_lines.h"

#include "notation/keywords.h"
#include "notation/records.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>

namespace orvex::frontend {

namespace {

using notation::Opens;

class BlankLines {
  public:
    BlankLines(const Text& text, std::vector<Edit>& edits)
        : text_(text), tree_(text.tree), edits_(edits) {}

    void set(Index model) {
        const ModelNode& node = tree_.models[model];
        Index from = node.record + 1;
        bool is_open = false;  // a constraint that the next keyword ends
        for (Index block = node.block; block < tree_.models[model + 1].block; ++block) {
            const Index opening = tree_.blocks[block].record;
            const Index next = std::min(tree_.blocks[block + 1].record, node.end);
            if (!is_open) {
                reduce(from, opening);
                part(block, from);
            }
            from = opens(block, Opens::constraint) ? end_of_body(opening, next) : opening + 1;
            is_open = from > next;
        }
        if (!is_open) reduce(from, node.end);
    }

  private:
    RecordKind kind(Index record) const { return tree_.records[record].kind; }

    // A line that is too long for the translator to read stays.
    bool is_blank(Index record) const {
        return kind(record) == RecordKind::blank && !is_too_long(text_, record);
    }

    bool opens(Index block, Opens what) const {
        const notation::Keyword* const keyword = tree_.blocks[block].keyword;
        return keyword != nullptr && keyword->opens == what;
    }

    // The record after the last one of a constraint; if nothing in the block ends it, the one after
    // `next`.
    Index end_of_body(Index opening, Index next) const {
        for (Index record = opening + 1; record < next; ++record) {
            const std::string_view body = text_of(text_.bytes, record_range(tree_, record));
            const bool is_last = notation::body_record(body) == notation::BodyRecord::last;
            if (kind(record) == RecordKind::body && is_last) return record + 1;
        }
        return next + 1;
    }

    // Leaves one of several consecutive blank lines, and no blanks in it.
    void reduce(Index begin, Index end) {
        for (Index record = begin; record < end; ++record) {
            if (!is_blank(record)) continue;
            set_blanks(text_, line_range(tree_, record), 0, edits_);
            const Index second = record + 1;
            while (record + 1 < end && is_blank(record + 1)) ++record;
            if (second <= record) add_edit(lines(second, record + 1), "");
        }
    }

    // Puts a blank line before a block, or before the comments above its keyword, as far back as
    // `from`.
    void part(Index block, Index from) {
        Index top = tree_.blocks[block].record;
        while (top > from && kind(top - 1) == RecordKind::comment) --top;
        if (kind(top - 1) == RecordKind::blank || continues_options(block, top)) return;
        const Offset begin = lines(top, top).begin;
        const Offset end_before = line_range(tree_, top - 1).end;
        add_edit({begin, begin}, std::string(text_of(text_.bytes, {end_before, begin})));
    }

    // Is the block an option that directly follows another one?
    bool continues_options(Index block, Index top) const {
        return opens(block, Opens::option) && kind(top - 1) == RecordKind::opening &&
               opens(block - 1, Opens::option);
    }

    Range lines(Index begin, Index end) const {
        return range_of(tree_, tree_.records[begin].token, tree_.records[end].token);
    }

    void add_edit(Range range, std::string text) {
        Edit edit;
        edit.begin = range.begin;
        edit.end = range.end;
        edit.text = std::move(text);
        edits_.push_back(std::move(edit));
    }

    const Text& text_;
    const Tree& tree_;
    std::vector<Edit>& edits_;
};

}  // namespace

void set_blank_lines(const Text& text, Index model, std::vector<Edit>& edits) {
    BlankLines(text, edits).set(model);
}

}  // namespace orvex::frontend
