#include "frontend/rules/repeated_blocks.h"

#include "frontend/syntax/fields.h"
#include "frontend/syntax/reading.h"

#include <array>
#include <string>
#include <unordered_map>

namespace orvex::frontend {

namespace {

Kind kind_of_owner(const notation::Keyword& keyword) {
    return keyword.opens == notation::Opens::production ? Kind::sector : Kind::consumer;
}

class Reader {
  public:
    Reader(const Source& source, const Model& model, const Rows& rows)
        : source_(source), model_(model), rows_(rows), has_block_(model.symbols.size()) {}

    std::vector<RepeatedBlock> read() {
        for (const Row& row : rows_.rows) {
            if (row.entry == nullptr) take(row);
        }
        if (!repeated_.empty()) find_meant();
        return std::move(repeated_);
    }

  private:
    void take(const Row& opening) {
        const Field& head = *opening.owner;
        const Index symbol = head.reference.symbol;
        if (symbol == no_index) return;
        has_block_[symbol] = true;
        const Symbol& owner = model_.symbols[symbol];
        const bool is_known = owner.is_declared && owner.kind == kind_of_owner(*opening.keyword);
        if (!is_known || head.faulty || has_condition(head)) return;
        const auto [known, is_new] = blocks_.emplace(key_of(head), &head);
        if (!is_new) repeated_.push_back({known->second, &head});
    }

    bool has_condition(const Field& head) const {
        return parts_of(source_.tree, head.record, head.node).has_condition;
    }

    // The name with its arguments and extra indices.
    std::string key_of(const Field& head) const {
        std::string key = reference_text(model_, source_.bytes, head.reference);
        for (const Argument& extra : extras_of(model_, head.reference))
            key.append("#").append(capitals(text_of(source_.bytes, extra.range)));
        return key;
    }

    // A block may be meant for the one name without a block, if that takes as many arguments.
    void find_meant() {
        std::array<Index, kind_count> without{};
        std::array<int, kind_count> count{};
        for (const Index symbol : model_.declared) {
            const auto kind = static_cast<std::size_t>(model_.symbols[symbol].kind);
            if (has_block_[symbol]) continue;
            without[kind] = symbol;
            ++count[kind];
        }
        for (RepeatedBlock& block : repeated_) {
            const Symbol& owner = model_.symbols[block.second->reference.symbol];
            const auto kind = static_cast<std::size_t>(owner.kind);
            const bool fits =
                count[kind] == 1 && model_.symbols[without[kind]].dimension == owner.dimension;
            if (fits) block.meant = without[kind];
        }
    }

    const Source& source_;
    const Model& model_;
    const Rows& rows_;
    std::vector<bool> has_block_;  // for each symbol
    std::unordered_map<std::string, const Field*> blocks_;
    std::vector<RepeatedBlock> repeated_;
};

}  // namespace

std::vector<RepeatedBlock> read_repeated_blocks(const Source& source, const Model& model,
                                                const Rows& rows) {
    return Reader(source, model, rows).read();
}

}  // namespace orvex::frontend
