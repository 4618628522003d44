#include "frontend/fixes/choice.h"

#include <algorithm>
#include <iterator>
#include <map>

namespace orvex::frontend {

namespace {

using Taken = std::map<std::size_t, const Edit*>;  // by their start

// The order of two edits that begin at the same place would be undefined.
bool is_free(const Taken& taken, const Edit& edit) {
    const auto next = taken.lower_bound(edit.begin);
    if (next != taken.end() && (next->first == edit.begin || next->first < edit.end)) return false;
    return next == taken.begin() || std::prev(next)->second->end <= edit.begin;
}

bool is_wanted(const Finding& finding, Confidence least) {
    return finding.fix && finding.fix->confidence <= least &&
           finding.fix->confidence != Confidence::placeholders;
}

}  // namespace

Choice choose_fixes(const std::vector<Finding>& findings, Confidence least) {
    Taken taken;
    Choice choice;
    for (const Finding& finding : findings) {
        if (!is_wanted(finding, least)) continue;
        const std::vector<Edit>& edits = finding.fix->edits;
        if (!std::all_of(edits.begin(), edits.end(),
                         [&](const Edit& edit) { return is_free(taken, edit); }))
            continue;
        for (const Edit& edit : edits) taken.emplace(edit.begin, &edit);
        ++choice.fixes;
    }
    for (const auto& [begin, edit] : taken) choice.edits.push_back(*edit);
    return choice;
}

}  // namespace orvex::frontend
