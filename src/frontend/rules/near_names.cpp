#include "frontend/rules/near_names.h"

#include "frontend/base/spelling.h"

#include <cstddef>

namespace orvex::frontend {

namespace {

bool fits(const Candidate& candidate, int dimension) {
    return dimension < 0 || candidate.dimension < 0 || candidate.dimension == dimension;
}

// Too short to be compared by letters: any short name may be meant.
bool is_short(std::string_view name) {
    constexpr std::size_t longest = 2;
    return name.size() <= longest;
}

}  // namespace

std::string nearest_name(std::string_view name, int dimension,
                         const std::vector<Candidate>& candidates) {
    std::vector<std::string> fitting;
    std::vector<std::string> unused;
    for (const Candidate& candidate : candidates) {
        if (!fits(candidate, dimension)) continue;
        fitting.push_back(candidate.name);
        if (candidate.is_unused) unused.push_back(candidate.name);
    }
    std::string near = nearest(name, fitting);
    if (near.empty()) near = nearest(name, unused);
    const bool is_only = unused.size() == 1 && is_short(unused.front()) && is_short(name);
    return near.empty() && is_only ? unused.front() : near;
}

std::vector<std::string> near_names(std::string_view name, int dimension,
                                    const std::vector<Candidate>& candidates) {
    std::vector<std::string> near;
    for (const Candidate& candidate : candidates) {
        if (fits(candidate, dimension) && !nearest(name, {candidate.name}).empty())
            near.push_back(candidate.name);
    }
    return near;
}

std::vector<Candidate> names_of(const Model& model, Kind kind) {
    std::vector<Candidate> names;
    for (Index symbol = 0; symbol < model.symbols.size(); ++symbol) {
        const Symbol& known = model.symbols[symbol];
        const bool is_sure = known.is_declared || !known.touched;
        if (known.kind != kind || known.first_use == no_index || !is_sure) continue;
        names.push_back({name_of(model, symbol), kind == Kind::set ? -1 : known.dimension,
                         known.is_declared && !is_used(model, known)});
    }
    return names;
}

}  // namespace orvex::frontend
