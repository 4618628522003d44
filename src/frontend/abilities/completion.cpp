#include "frontend/abilities/completion.h"

#include "frontend/abilities/context.h"
#include "frontend/abilities/guide.h"
#include "frontend/abilities/hover.h"
#include "frontend/syntax/expressions.h"
#include "frontend/syntax/reading.h"
#include "frontend/views/listed_names.h"
#include "notation/conditions.h"
#include "notation/labels.h"
#include "notation/records.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <utility>

namespace orvex::frontend {

namespace {

using notation::Opens;

constexpr int likely = 0;
constexpr int possible = 1;
constexpr int unlikely = 2;

ItemKind item_kind(Kind kind) {
    switch (kind) {
    case Kind::sector: return ItemKind::sector;
    case Kind::commodity: return ItemKind::commodity;
    case Kind::consumer: return ItemKind::consumer;
    case Kind::auxiliary: return ItemKind::auxiliary;
    case Kind::set: return ItemKind::set;
    default: return ItemKind::parameter;
    }
}

std::string snippet_of(const notation::Keyword& keyword) {
    const std::string word = "$" + std::string(keyword.word);
    switch (keyword.opens) {
    case Opens::production:
        return "\\" + word + ":${1:SECTOR}  S:${2:1}\n  O:$3  Q:$4\n  I:$5  Q:$6";
    case Opens::demand: return "\\" + word + ":${1:CONSUMER}  S:${2:1}\n  D:$3  Q:$4\n  E:$5  Q:$6";
    case Opens::constraint: return "\\" + word + ":${1:NAME}\n  $2 =E= $3;";
    case Opens::declaration:
    case Opens::report: return "\\" + word + ":\n  $1";
    case Opens::option:
    case Opens::end: break;
    }
    return {};
}

// Finds what may be written at a given place.
class Completer {
  public:
    Completer(const Document& document, Offset offset)
        : document_(document),
          offset_(offset),
          context_(context_at(document, offset)),
          start_(offset) {
        const Offset begin = offset - static_cast<Offset>(context_.before.size());
        while (start_ > begin && is_name_byte(document.source.bytes[start_ - 1])) --start_;
    }

    Completion complete() {
        const std::string_view before = context_.before;
        const bool is_comment = before.starts_with(notation::comment_mark) ||
                                before.find(notation::description_mark) != std::string_view::npos;
        if (!is_comment) add_items();
        return {{start_, offset_}, std::move(items_)};
    }

  private:
    void add_items() {
        const std::string_view before = context_.before;
        if (before.starts_with(notation::keyword_mark) &&
            before.find(':') == std::string_view::npos)
            return add_keywords();
        if (context_.keyword == nullptr) return;
        if (before.starts_with(notation::keyword_mark)) return add_in_opening();
        switch (context_.keyword->opens) {
        case Opens::production:
        case Opens::demand: return add_in_entry(false);
        case Opens::report: return add_in_entry(true);
        case Opens::constraint: return add_expression_names();
        default: return;
        }
    }

    // The "$" is replaced, too.
    void add_keywords() {
        start_ = offset_ - static_cast<Offset>(context_.before.size());
        if (context_.model == nullptr) {
            const std::string word(notation::model_keyword);
            return items_.push_back({word, ItemKind::keyword, word, "", "begins a model", likely});
        }
        for (const notation::Keyword& keyword : notation::keywords()) {
            const bool has_colon = keyword.opens != Opens::end;
            const std::string word = "$" + std::string(keyword.word) + (has_colon ? ":" : "");
            items_.push_back({word, ItemKind::keyword, word, snippet_of(keyword), "", likely});
        }
    }

    void add_in_opening() {
        const std::string_view after =
            context_.before.substr(std::min(context_.before.find(':') + 1, context_.before.size()));
        if (is_in_list()) return add_loops();
        if (after.find_first_of(" \t") == std::string_view::npos) return add_owners();
        add_fields(true);
    }

    // The names of blocks, those without a block first.
    void add_owners() {
        switch (context_.keyword->opens) {
        case Opens::production: return add_names(Kind::sector, Role::block);
        case Opens::demand: return add_names(Kind::consumer, Role::block);
        case Opens::constraint: return add_names(Kind::auxiliary, Role::constraint);
        default: return;
        }
    }

    void add_in_entry(bool is_report) {
        if (is_in_list()) return add_loops();
        is_report_ = is_report;
        add_fields(false);
    }

    // Completes the last field of the line so far: its label, or the text after it.
    void add_fields(bool is_opening) {
        const std::string_view before = context_.before;
        const std::size_t blank = before.find_last_of(" \t");
        const std::string_view field =
            blank == std::string_view::npos ? before : before.substr(blank + 1);
        const std::size_t colon = field.find(':');
        if (colon == std::string_view::npos) return add_labels(is_opening, is_first_field(before));
        if (field.find(notation::condition_mark) != std::string_view::npos)
            return add_names(Kind::parameter, Role::condition);
        add_values(capitals(field.substr(0, colon)), is_opening,
                   is_first_field(before.substr(0, before.size() - field.size())));
    }

    // Is the current field the first one in its line, and does the line not continue another one?
    static bool is_first_field(std::string_view before) {
        return before.find(':') == std::string_view::npos &&
               !before.starts_with(notation::continuation_mark);
    }

    void add_values(const std::string& label, bool is_opening, bool is_first) {
        const notation::Label* const row = notation::find_label(label);
        const bool names = row != nullptr && !is_opening && (is_first || row->names_later);
        const Kind kind = row == nullptr ? Kind::host : kind_of_type(row->type);
        if (names && is_report_ && row->owns) return add_names(owner_kind(label), Role::report);
        if (names && is_variable(kind)) return add_names(kind, role_of(*row));
        add_names(Kind::parameter, Role::value);
        add_names(Kind::auxiliary, Role::value);
    }

    static Kind owner_kind(const std::string& label) {
        return kind_of_type(notation::type_of_name("$" + label));
    }

    static Role role_of(const notation::Label& row) {
        switch (row.meaning) {
        case notation::Meaning::output: return Role::produced;
        case notation::Meaning::input: return Role::used;
        case notation::Meaning::demand: return Role::demanded;
        case notation::Meaning::endowment: return Role::endowed;
        case notation::Meaning::tax_receiver: return Role::receives_tax;
        case notation::Meaning::tax_rate: return Role::rate;
        default: return Role::other;
        }
    }

    bool has_label(std::string_view label) const {
        if (context_.entry == nullptr) return false;
        const auto is_it = [&](const Field& field) {
            return capitals(text_of(document_.source.bytes, field.label)) == label;
        };
        const auto fields = fields_of(*context_.model, *context_.entry);
        return is_it(context_.entry->head) || std::any_of(fields.begin(), fields.end(), is_it);
    }

    void add_label(std::string_view label, ItemKind kind, int rank) {
        const std::string text = std::string(label) + ":";
        items_.push_back({text, kind, text, "", "", rank});
    }

    void add_labels(bool is_opening, bool is_first) {
        const unsigned begins = is_report_ ? notation::report_record
                                : context_.keyword->opens == Opens::production
                                    ? notation::production_entry
                                    : notation::demand_entry;
        for (const notation::Label& label : notation::labels()) {
            if (label.text.starts_with(notation::keyword_mark)) continue;
            if (fits(label, begins, is_opening, is_first) && !has_label(label.text))
                add_label(label.text, ItemKind::label, likely);
        }
        if (!is_opening && !is_first && !is_report_) add_nests();
    }

    bool fits(const notation::Label& label, unsigned begins, bool is_opening, bool is_first) const {
        if (is_opening) return label.text == "S" || label.text == "T";
        if (is_first) return (label.begins & begins) != 0;
        if (is_report_) return label.reported || label.owns;
        return label.full && label.text != "Z" && label.text != notation::guard_label;
    }

    void add_nests() {
        if (context_.block == nullptr) return;
        const auto block = static_cast<Index>(context_.block - context_.model->blocks.data());
        for (const Nest& nest : context_.model->nests) {
            if (nest.block == block && !nest.label.empty() && !has_label(nest.name))
                add_label(nest.name, ItemKind::nest, likely);
        }
    }

    bool is_in_list() const { return !open_list_at(document_, context_, offset_).name.empty(); }

    void add_loops() {
        const std::vector<std::string> loops = loops_at(document_, context_);
        for (const std::string& set : loops)
            items_.push_back({set, ItemKind::set, set, "", "looped over here", likely});
        for (const Index symbol : used_names(*context_.model, Kind::set)) {
            const std::string& name = name_of(*context_.model, symbol);
            if (std::find(loops.begin(), loops.end(), name) == loops.end())
                items_.push_back({name, ItemKind::set, name, "", "", unlikely});
        }
    }

    void add_expression_names() {
        for (const Kind kind :
             {Kind::auxiliary, Kind::commodity, Kind::sector, Kind::consumer, Kind::parameter})
            add_names(kind, Role::constraint);
    }

    // The names of a kind. Those not yet used in this role come first; those whose sets no loop
    // covers here come last.
    void add_names(Kind kind, Role role) {
        const Model& model = *context_.model;
        const std::vector<std::string> loops = loops_at(document_, context_);
        for (const Index index : used_names(model, kind)) {
            const Symbol& symbol = model.symbols[index];
            const std::string name = name_with_arguments(model, index);
            const bool fits = std::all_of(
                symbol.arguments.begin(), symbol.arguments.end(), [&](const std::string& set) {
                    return std::find(loops.begin(), loops.end(), set) != loops.end();
                });
            const bool opens_loops = role == Role::block || role == Role::produced ||
                                     role == Role::used || role == Role::demanded ||
                                     role == Role::endowed || role == Role::constraint;
            const int rank = !fits && !opens_loops      ? unlikely
                             : is_used_as(symbol, role) ? possible
                                                        : likely;
            const std::string_view description =
                description_of(model, document_.source.bytes, index);
            items_.push_back({name, item_kind(kind), name, "", std::string(description), rank});
        }
    }

    bool is_used_as(const Symbol& symbol, Role role) const {
        for (Index use = symbol.first_use; use != no_index; use = context_.model->uses[use].next) {
            const Use& known = context_.model->uses[use];
            if (known.role == role && known.record != context_.record) return true;
        }
        return false;
    }

    const Document& document_;
    Offset offset_;
    Context context_;
    Offset start_;
    bool is_report_ = false;
    std::vector<CompletionItem> items_;
};

}  // namespace

Completion complete_at(const Document& document, Offset offset) {
    return Completer(document, offset).complete();
}

std::string item_text(const Document& document, Offset offset, const std::string& label,
                      ItemKind kind) {
    const std::string name = label.substr(0, label.find_first_of("(:"));
    if (kind == ItemKind::label || kind == ItemKind::keyword) return guide_row(name);
    const Model* const model = context_at(document, offset).model;
    if (model == nullptr || kind == ItemKind::nest) return {};
    const Index symbol = model->names.find(name);
    return symbol == no_index ? std::string() : name_text(document, *model, symbol);
}

}  // namespace orvex::frontend
