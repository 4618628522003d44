#include "frontend/rules/undeclared.h"

#include "frontend/base/spelling.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <utility>

namespace orvex::frontend {

namespace {

constexpr std::size_t most_comparisons = 1'000'000;

// The use by which the translator comes to know the name.
Index first_listed_use(const Model& model, const Symbol& symbol) {
    Index use = symbol.first_use;
    while (use != no_index && model.uses[use].listed == no_index) use = model.uses[use].next;
    return use == no_index ? symbol.first_use : use;
}

std::vector<Index> uses_of(const Model& model, const Symbol& symbol) {
    std::vector<Index> uses;
    for (Index use = symbol.first_use; use != no_index; use = model.uses[use].next)
        uses.push_back(use);
    return uses;
}

bool is_undeclared(const Symbol& symbol) {
    return symbol.entered && is_variable(symbol.kind) && !symbol.is_declared;
}

// The third field of a report record names whose block the row is in. The translator does not look
// that name up.
class Owners {
  public:
    Owners(std::string_view bytes, const Model& model) : bytes_(bytes), model_(model) {}

    std::vector<Undeclared> read() {
        for (const Block& block : model_.blocks) {
            if (!is_opened_by(block, notation::Opens::report)) continue;
            for (const Entry& entry : entries_of(model_, block)) {
                for (const Field& field : fields_of(model_, entry)) take(field);
            }
        }
        return std::move(found_);
    }

  private:
    void take(const Field& field) {
        const bool names_owner = field.row != nullptr && field.row->owns && !field.faulty;
        if (!names_owner || field.reference.use == no_index) return;
        const Index symbol = field.reference.symbol;
        const Kind kind = kind_of_owner(field);
        if (model_.symbols[symbol].kind == kind) return;
        const auto [known, is_new] = known_.emplace(std::pair(symbol, kind), found_.size());
        if (is_new) found_.push_back({symbol, kind, field.reference.use, {}, {}});
        found_[known->second].uses.push_back(field.reference.use);
    }

    // PROD: names what $PROD: does.
    Kind kind_of_owner(const Field& field) const {
        return kind_of_type(notation::type_of_name("$" + capitals(text_of(bytes_, field.label))));
    }

    std::string_view bytes_;
    const Model& model_;
    std::map<std::pair<Index, Kind>, std::size_t> known_;  // place in found_
    std::vector<Undeclared> found_;
};

}  // namespace

Suggestions::Suggestions(const Model& model, const std::vector<bool>& is_left_out)
    : left_(most_comparisons) {
    for (const Index symbol : model.declared) {
        if (is_left_out[symbol]) continue;
        declared_[static_cast<std::size_t>(model.symbols[symbol].kind)].push_back(
            name_of(model, symbol));
    }
}

std::string Suggestions::near(std::string_view name, Kind kind) {
    const std::vector<std::string>& candidates = declared_[static_cast<std::size_t>(kind)];
    if (candidates.size() > left_) return {};
    left_ -= candidates.size();
    return nearest(name, candidates);
}

std::vector<Undeclared> read_undeclared(std::string_view bytes, const Model& model,
                                        Suggestions& suggestions) {
    std::vector<Undeclared> found;
    for (Index index = 0; index < model.symbols.size(); ++index) {
        const Symbol& symbol = model.symbols[index];
        if (is_undeclared(symbol))
            found.push_back(
                {index, symbol.kind, first_listed_use(model, symbol), uses_of(model, symbol), {}});
    }
    std::vector<Undeclared> owners = Owners(bytes, model).read();
    std::move(owners.begin(), owners.end(), std::back_inserter(found));
    for (Undeclared& name : found)
        name.near = suggestions.near(name_of(model, name.symbol), name.kind);
    return found;
}

}  // namespace orvex::frontend
