#include "frontend/abilities/outline.h"

#include "frontend/abilities/structure.h"
#include "frontend/syntax/reading.h"
#include "frontend/views/listed_names.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace orvex::frontend {

namespace {

using notation::Opens;

std::optional<Kind> kind_of_block(const notation::Keyword& keyword) {
    switch (keyword.opens) {
    case Opens::production: return Kind::sector;
    case Opens::demand: return Kind::consumer;
    case Opens::constraint: return Kind::auxiliary;
    default: return {};
    }
}

// The items of one model.
class Outline {
  public:
    Outline(const Document& document, const Model& model)
        : tree_(document.source.tree), bytes_(document.source.bytes), model_(model) {}

    OutlineItem item() {
        const ModelNode& node = tree_.models[model_.node];
        OutlineItem item;
        item.name = model_.name.empty() ? "$MODEL:" : model_.name;
        item.is_model = true;
        item.range = lines_of_records(tree_, node.record, node.end);
        item.selection = model_name_range(node.record);
        const Index end = tree_.models[model_.node + 1].block;
        for (Index block = node.block; block < end; ++block) add_block(block, node.end, item.items);
        return item;
    }

  private:
    Range model_name_range(Index record) const {
        for (Index token = tree_.records[record].token; token < tree_.records[record + 1].token;
             ++token) {
            if (tree_.tokens[token].kind == TokenKind::model_name) return range_of(tree_, token);
        }
        return range_of(tree_, tree_.records[record].token);
    }

    // "$SECTORS", "$PROD:Y(S)": without condition, fields and comments.
    std::string head_of(Index record) const {
        std::string head;
        for (Index token = tree_.records[record].token; token < tree_.records[record + 1].token;
             ++token) {
            const TokenKind kind = tree_.tokens[token].kind;
            const bool is_part = kind == TokenKind::keyword || kind == TokenKind::colon ||
                                 kind == TokenKind::name || kind == TokenKind::open ||
                                 kind == TokenKind::argument || kind == TokenKind::comma ||
                                 kind == TokenKind::close;
            if (!is_part && kind != TokenKind::blank) break;
            if (is_part) head += capitals(text_of(bytes_, range_of(tree_, token)));
        }
        if (head.ends_with(':')) head.pop_back();
        return head;
    }

    void add_block(Index block, Index model_end, std::vector<OutlineItem>& items) {
        const BlockNode& node = tree_.blocks[block];
        const bool is_listed = node.keyword != nullptr && node.keyword->opens != Opens::option;
        OutlineItem item;
        const Index end = end_of_block(tree_, block, model_end);
        if (is_listed) {
            item.kind = kind_of_block(*node.keyword);
            item.range = lines_of_records(tree_, node.record, end);
            item.selection = record_range(tree_, node.record);
            item.name = head_of(node.record);
        }
        add_names(end, item.items);
        if (is_listed) items.push_back(std::move(item));
    }

    // The names declared before a record and not yet added.
    void add_names(Index end, std::vector<OutlineItem>& items) {
        for (; next_ < model_.declared.size(); ++next_) {
            const Index number = model_.declared[next_];
            const Symbol& symbol = model_.symbols[number];
            if (symbol.declared_record >= end) return;
            items.push_back({name_with_arguments(model_, number),
                             std::string(description_of(model_, bytes_, number)),
                             symbol.kind,
                             false,
                             symbol.declaration,
                             symbol.declaration,
                             {}});
        }
    }

    const Tree& tree_;
    std::string_view bytes_;
    const Model& model_;
    std::size_t next_ = 0;  // in Model::declared
};

}  // namespace

std::vector<OutlineItem> outline_of(const Document& document) {
    std::vector<OutlineItem> items;
    for (const Model& model : document.models) items.push_back(Outline(document, model).item());
    return items;
}

}  // namespace orvex::frontend
