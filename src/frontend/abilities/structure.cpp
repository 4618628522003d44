#include "frontend/abilities/structure.h"

#include <algorithm>

namespace orvex::frontend {

namespace {

bool is_apart(const Tree& tree, Index record) {
    const RecordKind kind = tree.records[record].kind;
    return kind == RecordKind::blank || kind == RecordKind::comment;
}

void fold_model(const Tree& tree, Index model, std::vector<Fold>& folds) {
    const ModelNode& node = tree.models[model];
    folds.push_back({lines_of_records(tree, node.record, node.end)});
    for (Index block = node.block; block < tree.models[model + 1].block; ++block) {
        const Index end = end_of_block(tree, block, node.end);
        if (end > tree.blocks[block].record + 1)
            folds.push_back({lines_of_records(tree, tree.blocks[block].record, end)});
    }
}

bool is_comment_line(const Document& document, Index record) {
    const RecordNode& node = document.source.tree.records[record];
    if (node.kind == RecordKind::comment) return true;
    return node.kind == RecordKind::outside &&
           text_of(document.source.bytes, line_range(document.source.tree, record))
               .starts_with('*');
}

void fold_comments(const Document& document, std::vector<Fold>& folds) {
    const Tree& tree = document.source.tree;
    const Index count = line_count(tree);
    for (Index record = 0; record < count; ++record) {
        const Index first = record;
        while (record < count && is_comment_line(document, record)) ++record;
        if (record > first + 1) folds.push_back({lines_of_records(tree, first, record), true});
    }
}

// The last element that begins at or before an offset.
template <typename Element, typename Begin>
Index last_at(const std::vector<Element>& list, Offset offset, const Begin& begin) {
    const auto after = std::upper_bound(
        list.begin(), list.end() - 1, offset,
        [&](Offset place, const Element& element) { return place < begin(element); });
    return after == list.begin() ? no_index : static_cast<Index>(after - list.begin()) - 1;
}

class Parts {
  public:
    Parts(const Document& document, Offset offset)
        : tree_(document.source.tree),
          offset_(offset),
          size_(static_cast<Offset>(document.source.bytes.size())) {}

    std::vector<Range> collect() {
        if (tree_.tokens.size() > 1) add_parts();
        add({0, size_});
        return std::move(parts_);
    }

  private:
    Offset begin_of_record(Index record) const {
        return tree_.tokens[tree_.records[record].token].begin;
    }

    void add(Range range) {
        const bool holds = range.begin <= offset_ && offset_ <= range.end;
        if (!holds || range.empty()) return;
        const bool grows =
            parts_.empty() || (range.begin <= parts_.back().begin &&
                               parts_.back().end <= range.end && !(range == parts_.back()));
        if (grows) parts_.push_back(range);
    }

    void add_parts() {
        const Index token = last_at(tree_.tokens, offset_, [](const Token& t) { return t.begin; });
        if (token != no_index) add(range_of(tree_, token));
        const Index record = last_at(tree_.records, offset_, [&](const RecordNode& node) {
            return tree_.tokens[node.token].begin;
        });
        if (record == no_index) return;
        add_field(record, token);
        add(record_range(tree_, record));
        add(line_range(tree_, record));
        add_entry(record);
        add_model(record);
    }

    void add_field(Index record, Index token) {
        const Index end = tree_.records[record + 1].field;
        for (Index field = tree_.records[record].field; field < end; ++field) {
            const Index last = end_of_field(tree_, record, field);
            if (tree_.fields[field].token <= token && token < last)
                add(range_of(tree_, tree_.fields[field].token, last));
        }
    }

    // A record with its continuations.
    void add_entry(Index record) {
        const auto continues = [&](Index at) {
            return at < line_count(tree_) && tree_.records[at].kind == RecordKind::continuation;
        };
        Index first = record;
        while (first > 0 && continues(first)) --first;
        Index end = record + 1;
        while (continues(end)) ++end;
        add(lines_of_records(tree_, first, end));
    }

    void add_model(Index record) {
        const Index model = last_model(record);
        if (model == no_index || record >= tree_.models[model].end) return;
        const ModelNode& node = tree_.models[model];
        for (Index block = node.block; block < tree_.models[model + 1].block; ++block) {
            const Index end = end_of_block(tree_, block, node.end);
            if (tree_.blocks[block].record <= record && record < end)
                add(lines_of_records(tree_, tree_.blocks[block].record, end));
        }
        add(lines_of_records(tree_, node.record, node.end));
    }

    Index last_model(Index record) const {
        const auto after = std::upper_bound(
            tree_.models.begin(), tree_.models.end() - 1, record,
            [](Index place, const ModelNode& node) { return place < node.record; });
        return after == tree_.models.begin() ? no_index
                                             : static_cast<Index>(after - tree_.models.begin()) - 1;
    }

    const Tree& tree_;
    Offset offset_;
    Offset size_;
    std::vector<Range> parts_;
};

}  // namespace

Range lines_of_records(const Tree& tree, Index first, Index end) {
    return {line_range(tree, first).begin, line_range(tree, end - 1).end};
}

Index end_of_block(const Tree& tree, Index block, Index model_end) {
    Index end = model_end;
    if (block + 1 < tree.blocks.size()) end = std::min(end, tree.blocks[block + 1].record);
    while (end > tree.blocks[block].record + 1 &&
           (is_apart(tree, end - 1) || tree.records[end - 1].kind == RecordKind::end))
        --end;
    return end;
}

std::vector<Fold> folds_of(const Document& document) {
    std::vector<Fold> folds;
    for (Index model = 0; model < model_count(document.source.tree); ++model)
        fold_model(document.source.tree, model, folds);
    fold_comments(document, folds);
    std::stable_sort(folds.begin(), folds.end(),
                     [](const Fold& a, const Fold& b) { return a.range.begin < b.range.begin; });
    return folds;
}

std::vector<Range> parts_around(const Document& document, Offset offset) {
    return Parts(document, offset).collect();
}

}  // namespace orvex::frontend
