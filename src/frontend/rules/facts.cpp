#include "frontend/rules/facts.h"

#include "frontend/rules/host_comments.h"
#include "frontend/syntax/expressions.h"
#include "frontend/syntax/lookalikes.h"
#include "text/characters.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace orvex::frontend {

namespace {

using notation::Meaning;

// Collects the facts, step by step.
class Reader {
  public:
    Reader(const Source& source, const HostText& host, const Model& model, Facts& facts)
        : source_(source), host_(host), model_(model), facts_(facts) {}

    void read() {
        facts_.rows = read_rows(source_, model_);
        facts_.names.resize(model_.symbols.size());
        facts_.blocks.resize(model_.symbols.size());
        facts_.block_after_end = block_after_end(source_, model_.node);
        read_no_names();
        read_rows_of_names();
        read_blocks();
        read_repeated();
        read_turned_blocks();
        read_declared();
        read_field_errors();
        read_text_not_read();
        read_type_errors();
        read_names_by_spelling();
        read_unknown_names();
        collect_judged();
        facts_.bodies = read_bodies(source_, model_);
        facts_.operators = read_operators(source_, model_, facts_.bodies);
        read_forgotten_blocks();
    }

  private:
    void add(Index symbol, unsigned fact) {
        if (symbol != no_index) facts_.names[symbol] |= fact;
    }
    bool has_fact(Index symbol, Fact fact) const { return has(facts_, symbol, fact); }

    // Rows.

    void read_rows_of_names() {
        for (const Row& row : facts_.rows.rows) {
            const Index owner = row.owner->reference.symbol;
            if (row.entry == nullptr) {
                add_block(*row.owner);
                continue;
            }
            add_flow(owner, row, row.entry->head);
            for (const Field* const field : fields_of(facts_.rows, row))
                add_field(owner, row, *field);
            if (row.entry->refused || row.entry->head.faulty) add_refused(owner, row.entry->head);
            if (row.stray) add_stray(owner, row.entry->head);
        }
    }

    void add_block(const Field& head) {
        const Index owner = head.reference.symbol;
        if (owner != no_index && facts_.blocks[owner] == nullptr) facts_.blocks[owner] = &head;
    }

    // A field that joins another entry to this one is meant as an entry itself.
    void add_field(Index owner, const Row& row, const Field& field) {
        if (begins_entry(field)) add_flow(owner, row, field);
        if (meaning_of(field) == Meaning::tax_receiver) add(field.reference.symbol, has_income);
    }

    void add_flow(Index owner, const Row& row, const Field& field) {
        const Index commodity = field.reference.symbol;
        if (field.text.empty()) add_nameless(meaning_of(field));
        switch (meaning_of(field)) {
        case Meaning::output: add(commodity, made | supplied); return add(owner, has_output);
        case Meaning::input: add(commodity, wanted); return add(owner, has_input);
        case Meaning::demand: add(commodity, wanted); return add(owner, has_demand);
        case Meaning::endowment: add(commodity, endowment_of(row)); return add(owner, has_income);
        default: return;
        }
    }

    // A consumer with a negative endowment takes what others make. A parameter may be negative,
    // too.
    bool may_take(const Row& row) const {
        const auto fields = fields_of(facts_.rows, row);
        return row.unclear || std::any_of(fields.begin(), fields.end(), [&](const Field* field) {
                   const bool is_quantity =
                       field->row != nullptr && field->row->text == notation::quantity_label;
                   return is_quantity && may_be_negative(*field);
               });
    }

    bool may_be_negative(const Field& field) const {
        const std::string_view text = text_of(source_.bytes, field.text);
        const std::size_t first = text.find_first_not_of("( ");
        const bool is_known =
            first == std::string_view::npos || is_digit(text[first]) || text[first] == '.';
        return field.faulty || !is_known;
    }

    unsigned endowment_of(const Row& row) const {
        if (takes(row)) return taken;
        return may_take(row) ? supplied | taken : supplied;
    }

    // Is the endowment negative, as far as its text shows?
    bool takes(const Row& row) const {
        const Field* const quantity = quantity_of(facts_.rows, row);
        if (row.unclear || quantity == nullptr || quantity->faulty) return false;
        const std::string_view text = text_of(source_.bytes, quantity->text);
        return is_negated(text) && begins_whole(text);
    }

    // Does a negated value begin with a name or a whole number, so that it is valid?
    static bool begins_whole(std::string_view value) {
        const std::size_t first = std::min(value.find_first_not_of("(- "), value.size());
        if (first == value.size()) return false;
        const std::size_t end = next_lexeme(value, first).end;
        const bool has_blank = !value.starts_with('(') && value.find(blank_char) != value.npos;
        return !has_blank && (!is_digit(value[first]) || end == value.size() ||
                              std::string_view("*/)").find(value[end]) != value.npos);
    }

    // A name of another kind could mean any commodity; one with wrong sets is known.
    void add_refused(Index owner, const Field& head) {
        add(owner, block_unclear);
        const Index symbol = head.reference.symbol;
        const bool is_known = symbol != no_index && model_.symbols[symbol].is_declared &&
                              model_.symbols[symbol].kind == Kind::commodity;
        if (is_known) return;
        add_nameless(meaning_of(head));
    }

    // Any commodity may be meant.
    void add_nameless(Meaning meaning) {
        const bool supplies = meaning == Meaning::output || meaning == Meaning::endowment;
        (supplies ? facts_.any_supplied : facts_.any_wanted) = true;
    }

    void add_stray(Index owner, const Field& head) {
        add(owner, block_unclear);
        add(head.reference.symbol, is_stray);
    }

    // Words that are not names, and rows without a block.

    void read_no_names() {
        facts_.descriptions = read_descriptions(source_, model_);
        facts_.lost_rows = read_lost_rows(source_, model_);
        for (const Description& text : facts_.descriptions) facts_.no_names.push_back(text.words);
        for (const LostRows& rows : facts_.lost_rows) take_lost(rows);
        std::sort(facts_.no_names.begin(), facts_.no_names.end(),
                  [](const Range& a, const Range& b) { return a.begin < b.begin; });
    }

    void take_lost(const LostRows& rows) {
        const Range text = range_of(source_.tree, source_.tree.records[rows.record].token,
                                    source_.tree.records[rows.end].token);
        excuse_words(text_of(source_.bytes, text));
        if (rows.is_declared) facts_.no_names.push_back(text);
        lose_block(rows.begins);
    }

    // A block of that kind may be there, for any name.
    void lose_block(unsigned begins) {
        const bool is_production = (begins & notation::production_entry) != 0;
        const bool is_demand = (begins & notation::demand_entry) != 0;
        facts_.is_doubtful[static_cast<std::size_t>(Kind::sector)] |= is_production;
        facts_.is_doubtful[static_cast<std::size_t>(Kind::consumer)] |= is_demand;
    }

    // Blocks and declarations.

    void read_repeated() {
        facts_.repeated_blocks = read_repeated_blocks(source_, model_, facts_.rows);
        for (const RepeatedBlock& block : facts_.repeated_blocks) add(block.meant, is_excused);
    }

    // A block without an output, input or demand has a finding; one of its rows may be meant as the
    // missing one.
    void read_turned_blocks() {
        const std::vector<Row>& rows = facts_.rows.rows;
        for (std::size_t i = 0; i < rows.size(); ++i) {
            if (is_after_other(rows, i)) lose_block(rows[i].entry->head.row->begins);
        }
        for (const Row& row : facts_.rows.rows) {
            const Index owner = row.owner->reference.symbol;
            if (row.entry == nullptr || owner == no_index) continue;
            constexpr unsigned both = has_output | has_input;
            const unsigned known = facts_.names[owner] & both;
            const bool is_production = row.keyword->opens == notation::Opens::production;
            const bool is_turned = is_production ? known != both : !has_fact(owner, has_demand);
            if (is_turned) add(row.entry->head.reference.symbol, Fact::is_turned);
        }
    }

    // If a sector or a consumer occurs only in its declaration, its block was forgotten, and with
    // it the rows that make and use any commodity.
    void read_forgotten_blocks() {
        for (const Index symbol : facts_.judged) {
            const Symbol& known = model_.symbols[symbol];
            const bool has_blocks = known.kind == Kind::sector || known.kind == Kind::consumer;
            if (!has_blocks || is_used(model_, known)) continue;
            facts_.has_forgotten = facts_.any_supplied = facts_.any_wanted = true;
        }
    }

    void read_blocks() {
        for (const Field* const owner : facts_.rows.unclear_owners)
            add(owner->reference.symbol, block_unclear);
        for (const Constraint& constraint : model_.constraints)
            add(constraint.symbol, has_constraint);
    }

    void read_declared() {
        for (const Index symbol : model_.declared) {
            facts_.is_declared[static_cast<std::size_t>(model_.symbols[symbol].kind)] = true;
            if (is_no_name(facts_, model_.symbols[symbol].declaration.begin)) add(symbol, is_odd);
        }
        for (Index symbol = 0; symbol < model_.symbols.size(); ++symbol) {
            if (model_.symbols[symbol].touched) add(symbol, is_excused);
            read_name(symbol);
        }
    }

    void read_name(Index symbol) {
        const Symbol& known = model_.symbols[symbol];
        const std::string& name = name_of(model_, symbol);
        const bool is_named = known.is_declared || (known.entered && is_variable(known.kind));
        if (!is_named || name.empty() || (may_be_name(name) && lookalikes(name).empty())) return;
        add(symbol, is_odd);
        excuse_words(name);
    }

    void read_field_errors() {
        const Tree& tree = source_.tree;
        const ModelNode& node = tree.models[model_.node];
        facts_.first_field = tree.records[node.record].field;
        facts_.has_error.resize(tree.records[node.end].field - facts_.first_field);
        for (std::size_t i = 0; i < facts_.has_error.size(); ++i)
            facts_.has_error[i] = tree.fields[facts_.first_field + i].fault != Fault::none;
        for (const Error& error : model_.errors) {
            note_error(error.place);
            for (const Range place : error.also) note_error(place);
        }
    }

    void note_error(Range place) {
        const Index field = field_at(source_.tree, place.begin);
        const Index end = facts_.first_field + static_cast<Index>(facts_.has_error.size());
        const bool is_known = field >= facts_.first_field && field < end;
        if (is_known) facts_.has_error[field - facts_.first_field] = true;
    }

    void excuse_words(std::string_view text) {
        for (std::size_t at = 0; at < text.size();) {
            const Lexeme next = next_lexeme(text, at);
            if (next.kind == TokenKind::word) excuse(text.substr(at, next.end - at));
            at = next.end;
        }
    }

    void excuse(std::string_view name) {
        if (!name.empty()) add(model_.names.find(name), is_excused);
    }

    // Text that is ignored, or is after the last column read, has its own finding.
    void read_text_not_read() {
        const ModelNode& node = source_.tree.models[model_.node];
        for (Index record = node.record; record < node.end; ++record) {
            const Index end = source_.tree.records[record + 1].token;
            for (Index token = source_.tree.records[record].token; token < end; ++token)
                take_token(token);
        }
    }

    void take_token(Index token) {
        const Tree& tree = source_.tree;
        const TokenKind kind = tree.tokens[token].kind;
        const std::string_view text = text_of(source_.bytes, range_of(tree, token));
        const bool is_odd_label = kind == TokenKind::label && !lookalikes(text).empty();
        if (kind == TokenKind::ignored || is_odd_label) excuse_words(text);
        if (kind != TokenKind::unread || token == 0) return;
        if (tree.tokens[token - 1].kind == TokenKind::description) return;
        excuse_words(text_of(source_.bytes, range_of(tree, token - 1)));
        excuse_words(text_of(source_.bytes, range_of(tree, token - 1, token + 1)));
    }

    // Errors, and names that are nearly those of others.

    void read_type_errors() {
        for (const Error& error : model_.errors) {
            if (error.fault != Fault::addsym_type) continue;
            facts_.is_doubtful[static_cast<std::size_t>(error.expected)] = true;
        }
    }

    void read_names_by_spelling() {
        std::vector<bool> skipped(model_.symbols.size());
        for (Index symbol = 0; symbol < skipped.size(); ++symbol)
            skipped[symbol] = has_fact(symbol, is_odd);
        Suggestions suggestions(model_, skipped);
        facts_.undeclared = read_undeclared(source_.bytes, model_, suggestions);
        for (const Undeclared& name : facts_.undeclared) {
            excuse(name.near);
            for (const std::string& other : name.others) excuse(other);
        }
        std::erase_if(facts_.undeclared, [&](const Undeclared& name) {
            return is_open() || has_fact(name.symbol, is_excused);
        });
        read_faulty_names(suggestions);
        read_refused_constraints(suggestions);
    }

    void read_unknown_names() {
        std::vector<bool> skipped(model_.symbols.size());
        for (Index symbol = 0; symbol < skipped.size(); ++symbol)
            skipped[symbol] = has_fact(symbol, is_excused);
        facts_.unknown = read_unknown(source_, model_, host_, skipped);
        for (const UnknownName& name : facts_.unknown) excuse(name.near);
    }

    // A word in a faulty place may be any name, misspelt.
    void read_faulty_names(Suggestions& suggestions) {
        for (Index symbol = 0; symbol < model_.symbols.size(); ++symbol) {
            const std::string& name = name_of(model_, symbol);
            const bool is_unknown =
                model_.symbols[symbol].touched && model_.symbols[symbol].kind == Kind::host;
            if (!is_unknown || notation::find_label(name) != nullptr) continue;
            for (const Kind kind : {Kind::sector, Kind::commodity, Kind::consumer, Kind::auxiliary})
                excuse(suggestions.near(name, kind, -1));
        }
    }

    void read_refused_constraints(Suggestions& suggestions) {
        for (const Error& error : model_.errors) {
            if (error.fault != Fault::chksym_unknown && error.fault != Fault::chksym_type) continue;
            const std::string near =
                suggestions.near(name_of(model_, error.symbol), Kind::auxiliary, -1);
            excuse(near);
            if (near.empty()) facts_.any_constrained = true;
        }
    }

    void collect_judged() {
        for (const Index index : model_.declared) {
            const Symbol& symbol = model_.symbols[index];
            const bool is_known = symbol.entered && is_variable(symbol.kind) && !is_open();
            constexpr unsigned unclear = is_odd | is_stray | is_excused;
            if (is_known && (facts_.names[index] & unclear) == 0) facts_.judged.push_back(index);
        }
    }

    // Are parts of the model unknown?
    bool is_open() const { return model_.lost || facts_.block_after_end != no_index; }

    const Source& source_;
    const HostText& host_;
    const Model& model_;
    Facts& facts_;
};

}  // namespace

bool is_no_name(const Facts& facts, Offset place) {
    const auto after =
        std::upper_bound(facts.no_names.begin(), facts.no_names.end(), place,
                         [](Offset offset, const Range& range) { return offset < range.begin; });
    return after != facts.no_names.begin() && place < (after - 1)->end;
}

Facts read_facts(const Source& source, const HostText& host, const Model& model) {
    Facts facts;
    Reader(source, host, model, facts).read();
    return facts;
}

}  // namespace orvex::frontend
