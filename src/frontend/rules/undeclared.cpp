#include "frontend/rules/undeclared.h"

#include "frontend/syntax/reading.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <utility>

namespace orvex::frontend {

namespace {

constexpr std::size_t most_comparisons = 1'000'000;

// The use by which the translator learns of the name.
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

// The number of sets that a name is used with; -1 if unknown for this kind.
int dimension_of(const Model& model, const Undeclared& name) {
    const Symbol& symbol = model.symbols[name.symbol];
    return symbol.kind == name.kind ? symbol.dimension : -1;
}

// The third field of a report record names the owner of the block that the row is in. The
// translator does not look that name up.
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
        if (is_new) found_.push_back({symbol, kind, field.reference.use, {}, {}, {}});
        found_[known->second].uses.push_back(field.reference.use);
    }

    // PROD: names the same kind as $PROD:.
    Kind kind_of_owner(const Field& field) const {
        return kind_of_type(notation::type_of_name("$" + capitals(text_of(bytes_, field.label))));
    }

    std::string_view bytes_;
    const Model& model_;
    std::map<std::pair<Index, Kind>, std::size_t> known_;  // position in found_
    std::vector<Undeclared> found_;
};

}  // namespace

Suggestions::Suggestions(const Model& model, const std::vector<bool>& is_skipped)
    : left_(most_comparisons) {
    for (const Index symbol : model.declared) {
        if (is_skipped[symbol]) continue;
        const Symbol& known = model.symbols[symbol];
        declared_[static_cast<std::size_t>(known.kind)].push_back(
            {name_of(model, symbol), known.dimension, !is_used(model, known)});
    }
}

bool Suggestions::may_compare(Kind kind) {
    const std::size_t count = declared_[static_cast<std::size_t>(kind)].size();
    if (count > left_) return false;
    left_ -= count;
    return true;
}

std::string Suggestions::near(std::string_view name, Kind kind, int dimension) {
    if (!may_compare(kind)) return {};
    return nearest_name(name, dimension, declared_[static_cast<std::size_t>(kind)]);
}

std::vector<std::string> Suggestions::all_near(std::string_view name, Kind kind, int dimension) {
    if (!may_compare(kind)) return {};
    return near_names(name, dimension, declared_[static_cast<std::size_t>(kind)]);
}

std::vector<Undeclared> read_undeclared(std::string_view bytes, const Model& model,
                                        Suggestions& suggestions) {
    std::vector<Undeclared> found;
    for (Index index = 0; index < model.symbols.size(); ++index) {
        const Symbol& symbol = model.symbols[index];
        if (is_undeclared(symbol))
            found.push_back({index,
                             symbol.kind,
                             first_listed_use(model, symbol),
                             uses_of(model, symbol),
                             {},
                             {}});
    }
    std::vector<Undeclared> owners = Owners(bytes, model).read();
    std::move(owners.begin(), owners.end(), std::back_inserter(found));
    for (Undeclared& name : found) {
        const std::string& text = name_of(model, name.symbol);
        const int dimension = dimension_of(model, name);
        name.near = suggestions.near(text, name.kind, dimension);
        if (name.near.empty()) name.others = suggestions.all_near(text, name.kind, dimension);
    }
    return found;
}

}  // namespace orvex::frontend
