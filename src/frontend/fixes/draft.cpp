#include "frontend/fixes/draft.h"

#include "frontend/fixes/choice.h"

#include <utility>

namespace orvex::frontend {

namespace {

constexpr int most_rounds = 10;

}  // namespace

Draft begin_draft(const Source& source, std::vector<Finding> findings) {
    return {source, std::move(findings), Revision(source.bytes)};
}

void revise(Draft& draft, const std::vector<Edit>& edits, const Check& check) {
    draft.revision.apply(edits);
    draft.source.bytes = draft.revision.text();
    parse_source(draft.source);
    draft.findings = check(draft.source);
}

void make_fixes(Draft& draft, Confidence least, const Check& check) {
    for (int round = 0; round < most_rounds; ++round) {
        const Choice choice = choose_fixes(draft.findings, least);
        if (choice.fixes == 0) return;
        revise(draft, choice.edits, check);
        draft.fixed += choice.fixes;
    }
}

}  // namespace orvex::frontend
