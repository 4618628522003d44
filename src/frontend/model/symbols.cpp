#include "frontend/model/symbols.h"

#include "notation/limits.h"

#include <cstddef>

namespace orvex::frontend {

Index Symbols::mention(std::string_view name) {
    const Index symbol = model_.names.add(name);
    if (symbol == model_.symbols.size()) {
        model_.symbols.emplace_back();
        is_active_.push_back(0);
    }
    return symbol;
}

Index Symbols::add_use(Index symbol, Range range, Index record, Role role, bool is_listed) {
    const auto use = static_cast<Index>(model_.uses.size());
    Symbol& used = model_.symbols[symbol];
    const Index listed = is_listed && used.entered ? record : no_index;
    model_.uses.push_back({symbol, range, record, listed, no_index, role});
    if (used.last_use != no_index) model_.uses[used.last_use].next = use;
    if (used.first_use == no_index) used.first_use = use;
    used.last_use = use;
    return use;
}

Fault Symbols::enter(Index symbol, Index use, Kind kind, int dimension, Index record) {
    if (name_of(model_, symbol).size() > notation::name_columns) return Fault::addsym_length;
    Symbol& known = model_.symbols[symbol];
    if (!known.entered) return enter_new(symbol, use, kind, dimension, record);
    if (known.kind != kind) return Fault::addsym_type;
    if (known.dimension < 0) known.dimension = dimension;
    const bool fits = dimension < 0 || kind == Kind::set || known.dimension == dimension;
    return fits ? Fault::none : Fault::addsym_dimension;
}

Fault Symbols::enter_new(Index symbol, Index use, Kind kind, int dimension, Index record) {
    const bool undeclared = declarations_required_ && is_variable(kind);
    if (!undeclared && entered_ == notation::most_symbols) return Fault::addsym_full;
    ++entered_;
    Symbol& known = model_.symbols[symbol];
    known.entered = true;
    known.kind = kind;
    known.dimension = kind == Kind::set ? 0 : dimension;
    if (use != no_index) model_.uses[use].listed = record;
    return undeclared ? Fault::addsym_undeclared : Fault::none;
}

bool Symbols::is_active(Index symbol) const { return is_active_[symbol] != 0; }

bool Symbols::activate(Index symbol) {
    if (is_active(symbol)) return true;
    if (active_.size() == notation::most_active_sets) return false;
    active_.push_back(symbol);
    is_active_[symbol] = 1;
    return true;
}

void Symbols::deactivate_from(std::size_t mark) {
    for (; active_.size() > mark; active_.pop_back()) is_active_[active_.back()] = 0;
}

void Symbols::close_block() {
    block_mark_ = 0;
    deactivate_from(0);
}

void Symbols::return_to_block() { deactivate_from(block_mark_); }

void Symbols::close_field() { deactivate_from(0); }

}  // namespace orvex::frontend
