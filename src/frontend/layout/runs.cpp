#include "frontend/layout/runs.h"

#include "notation/keywords.h"

#include <utility>

namespace orvex::frontend {

namespace {

using notation::Opens;

bool is_entry(RecordKind kind) {
    return kind == RecordKind::entry || kind == RecordKind::continuation ||
           kind == RecordKind::report;
}

bool has_entries(const BlockNode& block) {
    return block.keyword != nullptr &&
           (block.keyword->opens == Opens::production || block.keyword->opens == Opens::demand);
}

class RunReader {
  public:
    RunReader(const Tree& tree, Index model)
        : tree_(tree), next_block_(tree.models[model].block), end_(tree.models[model].end) {}

    // Takes the run that begins with a record. Returns the record after the run or, if no run
    // begins there, the next record.
    Index take(Index record) {
        switch (kind(record)) {
        case RecordKind::opening: return take_opening(record);
        case RecordKind::names: return add(RunKind::names, record, end_of_names(record));
        case RecordKind::entry:
        case RecordKind::report: return take_entries(record);
        case RecordKind::continuation:
            return is_opening_ ? add(RunKind::opening, record, record + 1) : take_entries(record);
        default: return record + 1;
        }
    }

    std::vector<Run> runs;

  private:
    RecordKind kind(Index record) const { return tree_.records[record].kind; }

    Index add(RunKind kind, Index first, Index end) {
        runs.push_back({kind, kind == RunKind::entries && has_entries_, first, end});
        return end;
    }

    Index take_opening(Index record) {
        has_entries_ = has_entries(tree_.blocks[next_block_++]);
        is_opening_ = has_entries_;
        return has_entries_ ? add(RunKind::opening, record, record + 1) : record + 1;
    }

    // Continuations after a comment or a blank line are not aligned with the next entry.
    Index take_entries(Index record) {
        is_opening_ = false;
        const bool continues = kind(record) == RecordKind::continuation;
        Index end = record + 1;
        while (end < end_ &&
               (continues ? kind(end) == RecordKind::continuation : is_entry(kind(end))))
            ++end;
        return add(RunKind::entries, record, end);
    }

    Index end_of_names(Index record) const {
        Index end = record + 1;
        for (; record < end_ && kind(record) != RecordKind::opening; ++record) {
            if (kind(record) == RecordKind::names) end = record + 1;
        }
        return end;
    }

    const Tree& tree_;
    Index next_block_;
    Index end_;
    bool has_entries_ = false;
    bool is_opening_ = false;  // continuations belong to the opening record
};

}  // namespace

std::vector<Run> runs_of(const Tree& tree, Index model) {
    const ModelNode& node = tree.models[model];
    RunReader reader(tree, model);
    for (Index record = node.record + 1; record < node.end;) record = reader.take(record);
    return std::move(reader.runs);
}

}  // namespace orvex::frontend
