#include "frontend/rules/missing_end.h"

#include "frontend/rules/edits.h"
#include "frontend/syntax/meant_keyword.h"
#include "frontend/syntax/reading.h"
#include "notation/keywords.h"
#include "notation/labels.h"
#include "notation/records.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace orvex::frontend {

namespace {

bool is_of_host(Fault fault) {
    return fault == Fault::getfld_label || fault == Fault::keyword_colon ||
           fault == Fault::keyword_unknown;
}

// In the order of the file.
std::vector<Index> refused_records(const Model& model) {
    std::vector<Index> records;
    for (const Error& error : model.errors) {
        if (is_of_host(error.fault)) records.push_back(error.record);
    }
    std::sort(records.begin(), records.end());
    records.erase(std::unique(records.begin(), records.end()), records.end());
    return records;
}

// Can the record be host text, judging by its kind?
bool may_be_host_text(const RecordNode& record) {
    return record.kind == RecordKind::blank || record.kind == RecordKind::comment ||
           record.kind == RecordKind::unknown;
}

// Is the record a row without its colons, or a keyword that is nearly right? A row begins with a
// blank or a label.
bool looks_like_model(const Source& source, Index record) {
    const std::string line = capitals(text_of(source.bytes, line_range(source.tree, record)));
    if (line.starts_with(notation::keyword_mark)) {
        const std::string_view word =
            std::string_view(line).substr(1, line.find_first_of(" :") - 1);
        return notation::find_keyword(word) != nullptr || meant_keyword(word) != nullptr;
    }
    if (line.empty() || line.front() == blank_char || line.front() == notation::continuation_mark)
        return true;
    return notation::find_label(line.substr(0, line.find(blank_char))) != nullptr;
}

}  // namespace

Index first_host_text(const Source& source, const Model& model) {
    const ModelNode& node = source.tree.models[model.node];
    const bool is_ended = node.closed && !model.lost;
    if (is_ended || model.errors.empty() || !is_of_host(model.errors.back().fault)) return no_index;
    std::vector<Index> refused = refused_records(model);
    Index first = no_index;
    Index record = model.lost ? refused.back() + 1 : node.end;
    while (record-- > node.record + 1) {
        const bool is_refused = !refused.empty() && refused.back() == record;
        if (!is_refused && !may_be_host_text(source.tree.records[record])) break;
        if (!is_refused) continue;
        refused.pop_back();
        if (!looks_like_model(source, record)) first = record;
    }
    return first;
}

Fix ending_before(const Source& source, Index record) {
    const std::string end = notation::keyword_mark + std::string(notation::end_keyword) + "\n";
    return {Confidence::maybe, {inserting(line_range(source.tree, record).begin, end)}};
}

}  // namespace orvex::frontend
