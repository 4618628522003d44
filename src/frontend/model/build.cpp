#include "frontend/model/build.h"

#include "frontend/model/errors.h"
#include "frontend/model/field_reader.h"
#include "frontend/model/nests.h"
#include "frontend/model/statements.h"
#include "frontend/model/symbols.h"
#include "frontend/model/width.h"
#include "frontend/syntax/expressions.h"
#include "frontend/syntax/meant_keyword.h"
#include "frontend/syntax/reading.h"
#include "notation/conditions.h"
#include "notation/limits.h"
#include "notation/records.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace orvex::frontend {

namespace {

using notation::Opens;
using notation::Put;
using std::string_view;
using Read = FieldReader::Read;

struct RoleRow {
    string_view label;
    Role role;
};

constexpr RoleRow roles[] = {
    {"O", Role::produced},     {"I", Role::used}, {"D", Role::demanded}, {"E", Role::endowed},
    {"A", Role::receives_tax}, {"N", Role::rate}, {"R", Role::ration},
};

Role role_of(string_view label) {
    const auto* const found =
        std::find_if(std::begin(roles), std::end(roles),
                     [label](const RoleRow& row) { return row.label == label; });
    return found == std::end(roles) ? Role::other : found->role;
}

// Goes through a model as the translator does: the same steps in the same order, so that the first
// error is the one at which the translator stops.
class Builder {
  public:
    Builder(string_view bytes, const Tree& tree, Index node, Model& model)
        : bytes_(bytes),
          tree_(tree),
          node_(tree.models[node]),
          model_(model),
          symbols_(model),
          errors_(bytes, model),
          reader_(bytes, tree, model, symbols_),
          statements_(bytes, model) {}

    void build() {
        reserve();
        next_block_ = node_.block;
        for (record_ = node_.record + 1; record_ < node_.end && !model_.lost; ++record_) {
            errors_.start_record(record_);
            take_record(tree_.records[record_]);
        }
        find_sets();
    }

  private:
    // Reserves as much as the lists of a usual model need: in a model with a million lines, growing
    // them costs more than everything else.
    void reserve() {
        const Index fields = tree_.records[node_.end].field - tree_.records[node_.record].field;
        model_.fields.reserve(fields);
        model_.entries.reserve(fields);
        model_.arguments.reserve(fields);
        model_.uses.reserve(2 * std::size_t{fields});
    }

    void take_record(const RecordNode& record) {
        switch (record.kind) {
        case RecordKind::opening: return take_keyword(record);
        case RecordKind::names: return take_names();
        case RecordKind::entry: return take_entry(record.field);
        case RecordKind::continuation: return take_fields(record.field);
        case RecordKind::report: return take_report(record);
        case RecordKind::body:
            return reader_.add_words(record_, record.token, end_token(), Role::constraint);
        case RecordKind::unknown: return reader_.touch(record.token, end_token());
        case RecordKind::end:
            if (record.fault != Fault::none) add_keyword_error(record.fault);
            return;
        default: return;
        }
    }

    // A name used as an argument is a set, even if the translator does not enter it.
    void find_sets() {
        for (const Use& use : model_.uses) {
            Symbol& symbol = model_.symbols[use.symbol];
            const bool is_argument = use.role == Role::set || use.role == Role::lead;
            if (is_argument && symbol.kind == Kind::host) symbol.kind = Kind::set;
        }
    }

    Index end_token() const { return tree_.records[record_ + 1].token; }
    Index end_field() const { return tree_.records[record_ + 1].field; }
    string_view text(Range range) const { return text_of(bytes_, range); }

    // Keyword records.

    void take_keyword(const RecordNode& record) {
        const BlockNode& node = tree_.blocks[next_block_++];
        if (record.fault != Fault::none) add_keyword_error(record.fault);
        symbols_.close_block();
        statements_.close_block();
        errors_.start_block();
        Block& block = model_.blocks.emplace_back();
        block.keyword = node.keyword;
        block.record = record_;
        block.first_field = static_cast<Index>(model_.fields.size());
        block.first_entry = static_cast<Index>(model_.entries.size());
        if (node.keyword == nullptr) return take_unknown(record);
        switch (node.keyword->opens) {
        case Opens::declaration: return open_declaration(node);
        case Opens::production: return open_function(record.field, "$PROD");
        case Opens::demand: return open_function(record.field, "$DEMAND");
        case Opens::constraint: return open_constraint(record.field);
        case Opens::report: return open_report();
        case Opens::option:
        case Opens::end: return;
        }
    }

    string_view keyword_text() const { return text(range_of(tree_, tree_.records[record_].token)); }

    Range keyword_range() const {
        Range range = range_of(tree_, tree_.records[record_].token);
        ++range.begin;
        return range;
    }

    // The message of the error quotes the text up to the colon.
    void add_keyword_error(Fault fault) {
        const Range token = range_of(tree_, tree_.records[record_].token);
        const Offset begin = token.begin + 1;
        string_view rest = text({begin, record_range(tree_, record_).end});
        rest = rest.substr(0, notation::keyword_columns);
        rest = without_blanks_at_end(rest.substr(0, rest.find(':')));
        errors_.add(fault, token, {begin, begin + static_cast<Offset>(rest.size())});
    }

    void take_unknown(const RecordNode& record) {
        reader_.touch(record.token, end_token());
        model_.lost = belongs_outside(capitals(text(keyword_range())));
    }

    void open_declaration(const BlockNode& node) {
        if (symbols_.declarations_required())
            errors_.add(Fault::keyword_order, range_of(tree_, tree_.records[record_].token));
        gives_type_ = node.gives_type;
        declared_kind_ = kind_of_type(node.keyword->type);
    }

    void open_report() {
        symbols_.require_declarations();
        model_.opening_is_open = false;
    }

    void open_function(Index node, string_view head) {
        model_.opening_is_open = true;
        Read read = reader_.read(record_, node);
        read.field.row = notation::find_label(head);
        read.field.is_name = true;
        reader_.add_uses(read, Role::block, true);
        check_syntax(read);
        open_loops(read);
        symbols_.mark_block();
        statements_.mark_block();
        enter_name(read, capitals(keyword_text()), {}, Put::new_line);
        model_.blocks.back().head = read.field;
        add_nest_roots(model_, static_cast<Index>(model_.blocks.size()) - 1);
        take_fields(node + 1);
    }

    void open_constraint(Index node) {
        model_.opening_is_open = false;
        Read read = reader_.read(record_, node);
        read.field.is_name = true;
        reader_.add_uses(read, Role::constraint, false);
        const Range name = read.field.reference.name;
        const Index symbol = symbols_.mention(text(name));
        const Symbol& known = model_.symbols[symbol];
        if (!known.entered || known.kind != Kind::auxiliary) {
            const Fault fault = known.entered ? Fault::chksym_type : Fault::chksym_unknown;
            errors_.add_name(fault, name.empty() ? record_range(tree_, record_) : name, symbol,
                             Kind::auxiliary, -1);
            symbols_.touch(symbol);
        }
        model_.constraints.push_back({symbol, name, record_});
        Range arguments = read.parts.all;
        arguments.begin = name.end;
        if (read.parts.has_condition) arguments.end = read.parts.condition.begin;
        statements_.declare_equation(read, name, arguments);
    }

    // Declarations.

    void take_names() {
        for (Index node = tree_.records[record_].field; node < end_field() && !model_.lost; ++node)
            declare(node);
    }

    void declare(Index node) {
        statements_.close_block();
        Read read = reader_.read(record_, node);
        Field& field = read.field;
        field.is_name = true;
        reader_.add_uses(read, Role::declared, false);
        check_syntax(read);
        open_loops(read);
        symbols_.close_field();
        if (field.reference.name.empty()) {
            model_.nameless.push_back(field);
            return;
        }
        if (gives_type_ && !enter(field, declared_kind_)) return;
        check_width(read, {}, {}, Put::new_line);
        statements_.print_name(read, {}, {}, Put::new_line);
        statements_.add_term(read, condition_text(read));
        note_declaration(read, node + 1 == end_field());
    }

    void note_declaration(const Read& read, bool is_last) {
        const Field& field = read.field;
        Symbol& symbol = model_.symbols[field.reference.symbol];
        if (symbol.is_declared) {
            model_.repeated.push_back(field);
            return;
        }
        if (!gives_type_ && !symbol.entered) symbol.kind = declared_kind_;
        note_declared(field);
        if (is_last) symbol.description = description();
    }

    void note_declared(const Field& field) {
        Symbol& symbol = model_.symbols[field.reference.symbol];
        symbol.is_declared = true;
        symbol.declaration = field.reference.name;
        symbol.declared_record = record_;
        symbol.arguments.clear();
        note_arguments(field);
        model_.declared.push_back(field.reference.symbol);
    }

    // A name is shown with the arguments of its declaration, or else of its first use.
    void note_arguments(const Field& field) {
        if (field.reference.symbol == no_index || field.faulty) return;
        Symbol& symbol = model_.symbols[field.reference.symbol];
        if (!symbol.arguments.empty()) return;
        for (const Argument& argument : arguments_of(model_, field.reference))
            symbol.arguments.push_back(capitals(text(argument.range)));
    }

    Range description() const {
        for (Index token = tree_.records[record_].token; token < end_token(); ++token) {
            if (tree_.tokens[token].kind != TokenKind::description) continue;
            Range range = range_of(tree_, token);
            ++range.begin;
            return trimmed(range);
        }
        return {};
    }

    // Up to the first ";", which ends a description, and without surrounding blanks.
    Range trimmed(Range range) const {
        const auto is_blank = [this](Offset at) {
            return notation::as_blank(bytes_[at]) == blank_char;
        };
        const std::size_t semicolon = text(range).find(';');
        if (semicolon != string_view::npos)
            range.end = range.begin + static_cast<Offset>(semicolon);
        while (range.begin < range.end && is_blank(range.begin)) ++range.begin;
        while (range.begin < range.end && is_blank(range.end - 1)) --range.end;
        return range;
    }

    // Entries.

    void take_entry(Index node) {
        symbols_.return_to_block();
        statements_.return_to_block();
        model_.opening_is_open = false;
        if (!is_labelled(node)) return take_unlabelled(node);
        Read read = reader_.read(record_, node);
        Entry entry;
        read.field.is_name = read.label != notation::guard_label;
        reader_.add_uses(read, role_of(read.label), true);
        check_syntax(read);
        check_shifts(read);
        open_loops(read);
        open_guard(read);
        entry.refused = !enter_field(read, {}, Put::new_line);
        entry.head = read.field;
        add_entry(entry);
        errors_.read_up_to(record_);
        take_fields(node + 1);
    }

    void add_entry(Entry entry) {
        entry.first_field = static_cast<Index>(model_.fields.size());
        model_.entries.push_back(entry);
        if (!model_.blocks.empty()) ++model_.blocks.back().entry_count;
    }

    bool is_labelled(Index node) const {
        const Fault fault = tree_.fields[node].fault;
        return fault != Fault::getfld_label && fault != Fault::getfld_blank;
    }

    void take_unlabelled(Index node) {
        if (checked_early_ != record_) add_unlabelled(record_, node);
        reader_.touch(tree_.fields[node].token, end_token());
        if (!model_.blocks.empty()) model_.blocks.back().unclear = true;
    }

    void add_unlabelled(Index record, Index node) {
        errors_.add(tree_.fields[node].fault, record_range(tree_, record)).record = record;
    }

    // After an entry with one field, the translator reads the next record and, if that is a
    // continuation, its first field before it continues with the entry. Returns that record if it
    // is a continuation, else no_index.
    Index look_ahead() {
        Index next = record_ + 1;
        while (next < node_.end && is_passed_over(tree_.records[next].kind)) ++next;
        errors_.read_up_to(std::min(next, node_.end - 1));
        if (next == node_.end || tree_.records[next].kind != RecordKind::continuation)
            return no_index;
        const Index node = tree_.records[next].field;
        if (is_labelled(node)) return next;
        add_unlabelled(next, node);
        checked_early_ = next;
        return no_index;
    }

    // The guard of an entry: its own value, or the quantity in its second field.
    void open_guard(const Read& read) {
        if (!read.field.is_name) return statements_.open_guard(read, read.field.text);
        Index record = record_;
        Index node = read.field.node + 1;
        if (node == end_field()) {
            record = look_ahead();
            if (record == no_index) return;
            node = tree_.records[record].field;
        }
        const Range value = quantity_at(record, node);
        if (value.empty()) return;
        if (statements_.surely_fits(value.end - value.begin)) return statements_.open_level();
        statements_.open_guard(reader_.read(record, node), value);
    }

    // The value of a quantity as written; empty for another field.
    Range quantity_at(Index record, Index node) const {
        Index token = tree_.fields[node].token;
        const Index end = end_of_field(tree_, record, node);
        while (token < end && tree_.tokens[token].kind != TokenKind::label) ++token;
        if (token == end || !same_when_read(text(range_of(tree_, token)), notation::quantity_label))
            return {};
        while (tree_.tokens[token].kind != TokenKind::colon) ++token;
        ++token;
        while (token < end && tree_.tokens[token].kind == TokenKind::blank) ++token;
        return range_of(tree_, token, end);
    }

    static bool is_passed_over(RecordKind kind) {
        return kind == RecordKind::blank || kind == RecordKind::comment;
    }

    // Takes the fields of the record from `node` on, which belong to the current entry or block.
    void take_fields(Index node) {
        for (; node < end_field() && !model_.lost; ++node) take_later_field(node);
    }

    void take_later_field(Index node) {
        if (!is_labelled(node)) return take_unlabelled(node);
        Read read = reader_.read(record_, node);
        Field& field = read.field;
        field.is_name = !model_.opening_is_open && field.row != nullptr && field.row->names_later;
        reader_.add_uses(read, field.is_name ? role_of(read.label) : Role::value, true);
        check_syntax(read);
        const bool ranges = read.label.find(notation::element_label) != std::string::npos;
        if (ranges && field.reference.argument_count > 0) open_loops(read);
        check_sets(field);
        const bool loops = ranges && field.reference.argument_count == 0 && !field.text.empty();
        if (loops) statements_.open_label(read);
        enter_field(read, condition_text(read), Put::continuation);
        if (is_in_nest(read)) field.row = nullptr;
        if (loops) statements_.close_label();
        add_field(field);
    }

    // A label without a value is a nest if the block opens one with that name, whatever else it
    // could mean.
    bool is_in_nest(const Read& read) const {
        if (read.field.row == nullptr || !read.field.text.empty() || model_.opening_is_open ||
            model_.blocks.empty() || read.label == notation::quantity_label)
            return false;
        const Nest* const nest =
            find_nest(model_, static_cast<Index>(model_.blocks.size()) - 1, read.label);
        return nest != nullptr && !nest->label.empty();
    }

    // The fields of one entry or opening record are contiguous; other fields belong to neither.
    void add_field(const Field& field) {
        const auto place = static_cast<Index>(model_.fields.size());
        model_.fields.push_back(field);
        if (model_.blocks.empty()) return;
        Block& block = model_.blocks.back();
        if (model_.opening_is_open) {
            if (place != block.first_field + block.field_count) return;
            ++block.field_count;
            add_nest(model_, bytes_, static_cast<Index>(model_.blocks.size()) - 1, field);
        } else if (block.entry_count > 0) {
            ++model_.entries.back().field_count;
        }
    }

    // Reports.

    void take_report(const RecordNode& record) {
        symbols_.close_block();
        statements_.close_block();
        if (record.fault != Fault::none) {
            errors_.add(record.fault, range_of(tree_, record.token));
            return reader_.touch(record.token, end_token());
        }
        if (!is_labelled(record.field)) return take_unlabelled(record.field);
        Read read = reader_.read(record_, record.field);
        read.field.is_name = true;
        reader_.add_uses(read, Role::report, true);
        check_syntax(read);
        if (read.label != notation::report_label)
            refuse(Fault::repblk_first, place_of_label(read.field), read.field);
        open_loops(read);
        statements_.add_report_term(read, condition_text(read));
        enter_field(read, {}, Put::new_line);
        note_report_variable(read);
        Entry entry;
        entry.head = read.field;
        add_entry(entry);
        take_reported(record.field + 1);
    }

    void note_report_variable(const Read& read) {
        const Index symbol = read.field.reference.symbol;
        if (symbol == no_index || read.label != notation::report_label) return;
        const Symbol& known = model_.symbols[symbol];
        if (known.kind == Kind::report && !known.is_declared) note_declared(read.field);
    }

    Range place_of_label(const Field& field) const {
        return field.label.empty() ? record_range(tree_, record_) : field.label;
    }

    // One error per field is enough.
    void refuse(Fault fault, Range place, Field& field, Range about = {}) {
        if (!field.faulty) errors_.add(fault, place, about);
        field.faulty = true;
    }

    void take_reported(Index node) {
        if (node == end_field()) {
            return refuse(Fault::repblk_single, record_range(tree_, record_),
                          model_.entries.back().head);
        }
        for (Index place = 1; node < end_field() && place < 3; ++node, ++place)
            take_reported_field(node, place);
        if (node == end_field()) return;
        Index first = tree_.fields[node].token;
        while (tree_.tokens[first].kind == TokenKind::blank) ++first;
        errors_.add(Fault::repblk_extra,
                    {tree_.tokens[first].begin, record_range(tree_, record_).end});
        reader_.touch(tree_.fields[node].token, end_token());
    }

    void take_reported_field(Index node, Index place) {
        Read read = reader_.read(record_, node);
        Field& field = read.field;
        field.is_name = true;
        reader_.add_uses(read, Role::report, true);
        check_syntax(read);
        check_unconditional(read);
        check_sets(field);
        const bool fits =
            field.row != nullptr && (place == 1 ? field.row->reported : field.row->owns);
        const Fault unfit = place == 1 ? Fault::repblk_second : Fault::repblk_third;
        if (!fits && !is_misplaced_first(read))
            refuse(unfit, place_of_label(field), field, field.label);
        enter_field(read, {}, Put::same_line);
        add_field(field);
    }

    // Is this the field that must begin the record, after another field has taken its place?
    bool is_misplaced_first(const Read& read) const {
        const Entry& entry = model_.entries.back();
        const bool is_taken =
            entry.head.row == nullptr || entry.head.row->begins != notation::report_record;
        return read.label == notation::report_label && is_taken;
    }

    void check_unconditional(Read& read) {
        const bool implicit = notation::has_implicit_condition(read.label);
        if (read.parts.has_condition) {
            refuse(Fault::repblk_condition, condition_range(read.parts), read.field);
        } else if (implicit) {
            refuse(Fault::repblk_condition, read.field.label, read.field);
        }
    }

    // From the "$" to the next blank.
    Range condition_range(const FieldParts& parts) const {
        Index mark = parts.first;
        while (tree_.tokens[mark].kind != TokenKind::condition) ++mark;
        Index end = mark + 1;
        while (end < parts.end && tree_.tokens[end].kind != TokenKind::blank) ++end;
        return range_of(tree_, mark, end);
    }

    // What the translator checks about a field.

    void check_syntax(const Read& read) {
        if (!read.field.faulty) return;
        const FieldNode& node = tree_.fields[read.field.node];
        errors_.add(node.fault, fault_range(tree_, node));
        reader_.touch(read.parts.first, read.parts.end);
    }

    void check_shifts(const Read& read) {
        const Field& field = read.field;
        for (const Argument& argument : arguments_of(model_, field.reference)) {
            const notation::Shift shift = notation::shift_of(text(argument.range));
            if (!shift.guarded || field.faulty) continue;
            statements_.open_shift(read, text(argument.range), shift.at);
            const Index set =
                symbols_.mention(without_blanks_at_end(text(argument.range).substr(0, shift.at)));
            if (shift.both) {
                errors_.add_argument(Fault::leadlg_both, argument.range, argument.symbol);
            } else if (!symbols_.is_active(set)) {
                errors_.add_argument(Fault::leadlg_inactive, argument.range, argument.symbol);
                symbols_.touch(set);
            }
        }
    }

    // Activates the sets of a field.
    void open_loops(const Read& read) {
        const Field& field = read.field;
        std::string sets = "(";  // those that were not active
        if (field.faulty) activate_words(field);
        for (const auto list :
             {arguments_of(model_, field.reference), extras_of(model_, field.reference)}) {
            for (const Argument& argument : list) {
                if (argument.kind != notation::ArgumentKind::set || model_.lost) continue;
                if (!symbols_.is_active(argument.symbol))
                    sets.append(text(argument.range)).append(",");
                open_loop(field, argument);
            }
        }
        statements_.open(read, sets, condition_text(read));
    }

    // In a field with a fault, each word before its condition may be meant as a set.
    void activate_words(const Field& field) {
        const Index end = end_of_field(tree_, field.record, field.node);
        string_view words = text(range_of(tree_, tree_.fields[field.node].token, end));
        words = words.substr(0, words.find('$', 1));
        for (std::size_t at = 0; at < words.size();) {
            const Lexeme next = next_lexeme(words, at);
            if (next.kind == TokenKind::word)
                symbols_.activate(symbols_.mention(words.substr(at, next.end - at)));
            at = next.end;
        }
    }

    void open_loop(const Field& field, const Argument& argument) {
        if (is_too_long(argument)) {
            if (!field.faulty)
                errors_.add_argument(Fault::sloop_length, argument.range, argument.symbol);
            symbols_.activate(argument.symbol);
        } else if (!symbols_.activate(argument.symbol)) {
            errors_.add(Fault::sloop_full, argument.range);
            model_.lost = true;
        }
    }

    // Every own argument that is not quoted must be active. If one is blank, the number of
    // arguments is not reliable.
    void check_sets(Field& field) {
        bool has_blank = false;
        for (const Argument& argument : arguments_of(model_, field.reference)) {
            const bool good = argument.kind == notation::ArgumentKind::element ||
                              symbols_.is_active(argument.symbol);
            if (good || field.faulty) continue;
            errors_.add_argument(Fault::chkset_inactive, argument.range, argument.symbol);
            symbols_.touch(argument.symbol);
            field.unlooped = true;
            has_blank = has_blank || argument.range.empty();
        }
        field.faulty = field.faulty || has_blank;
    }

    std::string condition_text(const Read& read) const {
        return condition_of(read.label, text(read.parts.all), text(read.parts.condition),
                            read.parts.has_condition);
    }

    void check_width(Read& read, string_view label, string_view condition, Put put) {
        if (!name_fits(model_, bytes_, read.field, label, condition, put))
            refuse(Fault::chrfld_long, read.field.text, read.field);
    }

    // Enters the names of a field as its statement is written. False if the name is refused.
    bool enter_field(Read& read, const std::string& condition, Put put) {
        return read.field.is_name ? enter_name(read, read.label, condition, put)
                                  : enter_value(read, condition);
    }

    bool enter_name(Read& read, string_view label, const std::string& condition, Put put) {
        Field& field = read.field;
        check_width(read, label, condition, put);
        statements_.print_name(read, label, condition, put);
        const notation::TypeCode type = field.row == nullptr ? notation::no_type : field.row->type;
        if (type == notation::no_type || field.reference.name.empty()) return true;
        const bool good = enter(field, kind_of_type(type));
        note_arguments(field);
        return good;
    }

    bool enter_value(Read& read, const std::string& condition) {
        Field& field = read.field;
        if (!value_fits(read.label, text(field.text), condition)) {
            refuse(Fault::numfld_long, field.text.empty() ? field.label : field.text, field);
        }
        statements_.print_value(read, condition);
        const bool is_name =
            !notation::is_numeric(text(field.text)) && !field.reference.name.empty();
        const bool good = !is_name || field.faulty || enter(field, Kind::parameter);
        if (field.reference.use == no_index) field.reference.symbol = no_index;
        note_arguments(field);
        return good;
    }

    // Is the number of arguments in a field reliable? A new name with a wrong argument may have one
    // too many.
    bool is_list_clear(const Field& field) const {
        const bool is_known = model_.symbols[field.reference.symbol].entered;
        return !field.faulty && (is_known || !field.unlooped);
    }

    // Enters the name of a field and its arguments, or checks them. A field with a fault gives no
    // further errors, and its number of arguments does not count. False if the name is refused.
    bool enter(const Field& field, Kind kind) {
        const Reference& reference = field.reference;
        const int dimension =
            is_list_clear(field) ? static_cast<int>(reference.argument_count) : -1;
        const Fault fault =
            symbols_.enter(reference.symbol, reference.use, kind, dimension, errors_.read());
        const bool is_misplaced = fault == Fault::addsym_undeclared && declares();
        if (fault != Fault::none && !is_misplaced) {
            if (!field.faulty) refuse_name(fault, field, kind, dimension);
            return false;
        }
        if (field.faulty) return true;
        for (const Argument& argument : arguments_of(model_, reference)) {
            if (is_too_long(argument)) continue;
            const bool is_set = argument.kind == notation::ArgumentKind::set;
            const Fault of_set = symbols_.enter(argument.symbol, is_set ? argument.use : no_index,
                                                Kind::set, 0, errors_.read());
            if (of_set == Fault::none) continue;
            errors_.add_name(of_set, argument.range, argument.symbol, Kind::set, 0);
            symbols_.touch(argument.symbol);
            model_.lost = model_.lost || of_set == Fault::addsym_full;
        }
        return true;
    }

    // The error of a declaration after the first report is at its keyword.
    bool declares() const { return tree_.records[record_].kind == RecordKind::names; }

    // The error of a set whose name is too long is reported where its loop is opened, or as a set
    // that is not active.
    static bool is_too_long(const Argument& argument) {
        return argument.kind == notation::ArgumentKind::set &&
               argument.range.end - argument.range.begin > notation::name_columns;
    }

    void refuse_name(Fault fault, const Field& field, Kind kind, int dimension) {
        errors_.add_name(fault, field.reference.name, field.reference.symbol, kind, dimension);
        symbols_.touch(field.reference.symbol);
        model_.lost = model_.lost || fault == Fault::addsym_full;
    }

    string_view bytes_;
    const Tree& tree_;
    const ModelNode& node_;
    Model& model_;
    Symbols symbols_;
    Errors errors_;
    FieldReader reader_;
    Statements statements_;
    Index next_block_ = 0;
    Index record_ = 0;
    Index checked_early_ = no_index;  // a continuation whose error was found early
    bool gives_type_ = false;         // the current declarations enter their names
    Kind declared_kind_ = Kind::host;
};

}  // namespace

Model build_model(std::string_view bytes, const Tree& tree, Index model, bool opening_is_open) {
    Model built;
    built.node = model;
    built.name = model_name(bytes, tree, model);
    built.opening_is_open = opening_is_open;
    Builder(bytes, tree, model, built).build();
    return built;
}

std::vector<Model> build_models(std::string_view bytes, const Tree& tree) {
    std::vector<Model> models;
    bool opening_is_open = false;
    for (Index node = 0; node < model_count(tree); ++node) {
        models.push_back(build_model(bytes, tree, node, opening_is_open));
        // A model with an error passes nothing on.
        if (models.back().errors.empty()) opening_is_open = models.back().opening_is_open;
    }
    return models;
}

}  // namespace orvex::frontend
