#include "frontend/syntax/parse.h"

#include "frontend/syntax/emitter.h"
#include "frontend/syntax/expressions.h"
#include "frontend/syntax/meant_keyword.h"
#include "notation/arguments.h"
#include "notation/conditions.h"
#include "notation/constraints.h"
#include "notation/fields.h"
#include "notation/labels.h"
#include "notation/limits.h"
#include "notation/records.h"

#include <algorithm>
#include <array>

namespace orvex::frontend {

namespace {

using notation::Cut;
using notation::Opens;
using std::string_view;

// How the records after a keyword record are split.
enum class Mode : std::uint8_t { outside, fields, names, report, body, unknown };

class Parser {
  public:
    Parser(string_view bytes, Tree& tree) : bytes_(bytes), tree_(tree), emitter_(tree.tokens) {}

    void parse() {
        for (std::size_t start = 0; start < bytes_.size();) {
            const std::size_t end = std::min(bytes_.find('\n', start), bytes_.size());
            parse_line(start, end);
            start = std::min(end + 1, bytes_.size());
        }
        close_model(false);
        end_lists();
    }

  private:
    // Lines.

    void parse_line(std::size_t start, std::size_t end) {
        tree_.records.push_back(
            {emitter_.next_token(), next_field(), RecordKind::outside, Fault::none});
        const bool has_return = end > start && end < bytes_.size() && bytes_[end - 1] == '\r';
        const std::size_t size = end - start - (has_return ? 1 : 0);
        line_start_ = static_cast<Offset>(start);
        read_line(bytes_.substr(start, size));
        if (mode_ == Mode::outside && !begins_model()) {
            if (size > 0) put_whole(TokenKind::outside);
        } else {
            parse_in_model(size);
        }
        if (end < bytes_.size()) {
            tree_.tokens.push_back({line_start_ + static_cast<Offset>(size), TokenKind::line_end});
        }
    }

    // Fills read_ with the line as it is read; record_ is the same without its comment.
    void read_line(string_view line) {
        const string_view kept = line.substr(0, notation::record_columns);
        std::transform(kept.begin(), kept.end(), read_.begin(), notation::as_read);
        const string_view read(read_.data(), kept.size());
        emitter_.begin_line(line_start_, read);
        whole_ = read;
        record_ = orvex::trimmed(read.substr(0, read.find(notation::description_mark)));
    }

    void put_whole(TokenKind kind) { tree_.tokens.push_back({line_start_, kind}); }

    bool begins_model() const { return whole_.starts_with(notation::model_keyword); }

    RecordNode& record() { return tree_.records.back(); }
    Index next_field() const { return static_cast<Index>(tree_.fields.size()); }
    Index this_record() const { return static_cast<Index>(tree_.records.size()) - 1; }

    void parse_in_model(std::size_t size) {
        if (mode_ == Mode::outside) {
            open_model();
        } else if (whole_.starts_with(notation::comment_mark)) {
            record().kind = RecordKind::comment;
            return put_whole(TokenKind::comment);
        } else if (orvex::trimmed(whole_).empty()) {
            record().kind = RecordKind::blank;
        } else {
            parse_record();
            put_description();
        }
        emitter_.fill(whole_.size());
        if (size > whole_.size()) {
            tree_.tokens.push_back(
                {line_start_ + static_cast<Offset>(whole_.size()), TokenKind::unread});
        }
    }

    void put_description() {
        const std::size_t mark = whole_.find(notation::description_mark);
        if (mark != string_view::npos) {
            emitter_.put(TokenKind::description, {mark, whole_.size()});
        }
    }

    // Models.

    void open_model() {
        record().kind = RecordKind::model;
        const std::size_t colon = notation::model_keyword.size() - 1;
        emitter_.put(TokenKind::keyword, {0, colon});
        emitter_.put(TokenKind::colon, {colon, colon + 1});
        emitter_.put(TokenKind::model_name, model_name_cut(colon + 1));
        tree_.models.push_back({this_record(), no_index, next_block(), false});
        mode_ = Mode::fields;
        in_opening_ = false;
    }

    // A TAB at the end of the name is part of it.
    Cut model_name_cut(std::size_t start) const {
        Cut cut = {whole_.find_first_not_of(blank_char, start), whole_.size()};
        const string_view raw = bytes_.substr(line_start_, whole_.size());
        while (cut.begin < cut.end &&
               (raw[cut.end - 1] == blank_char || raw[cut.end - 1] == carriage_return)) {
            --cut.end;
        }
        return cut;
    }

    Index next_block() const { return static_cast<Index>(tree_.blocks.size()); }

    void close_model(bool closed) {
        if (mode_ == Mode::outside) return;
        tree_.models.back().end = static_cast<Index>(tree_.records.size());
        tree_.models.back().closed = closed;
        mode_ = Mode::outside;
    }

    // Records.

    void parse_record() {
        const auto start = notation::record_start(record_);
        if (mode_ == Mode::body && parse_body()) return;
        if (start == notation::RecordStart::keyword) return parse_keyword();
        switch (mode_) {
        case Mode::names: return parse_names();
        case Mode::report: return parse_report(start);
        case Mode::unknown:
            record().kind = RecordKind::unknown;
            return emitter_.put_expression({0, record_.size()});
        default: return parse_fields(start);
        }
    }

    // False for a record that does not belong to the body.
    bool parse_body() {
        const auto part = notation::body_record(record_);
        if (part != notation::BodyRecord::more) mode_ = Mode::fields;
        if (part == notation::BodyRecord::outside) return false;
        record().kind = RecordKind::body;
        emitter_.put_expression({0, record_.size()});
        return true;
    }

    void parse_names() {
        record().kind = RecordKind::names;
        for (std::size_t at = 0; at < record_.size();) {
            const notation::EntryCut cut = notation::cut_entry(record_, at);
            begin_field(cut.entry.begin);
            put_declared(cut.entry);
            note_fault(cut.fault, cut.entry.begin);
            at = cut.entry.end;
        }
    }

    void parse_report(notation::RecordStart start) {
        record().kind = RecordKind::report;
        if (start == notation::RecordStart::continuation)
            record().fault = Fault::repblk_continuation;
        put_fields(0);
    }

    void parse_fields(notation::RecordStart start) {
        const bool continues = start == notation::RecordStart::continuation;
        record().kind = continues ? RecordKind::continuation : RecordKind::entry;
        if (!continues) in_opening_ = false;
        put_fields(0);
    }

    // Keyword records.

    void parse_keyword() {
        const string_view text = record_.substr(1, notation::keyword_columns);
        if (notation::ends_model(text)) {
            return end_model(1 + notation::end_keyword.size());
        }
        const std::size_t colon = text.find(':');
        string_view word = orvex::trimmed(text.substr(0, colon));
        const notation::Keyword* keyword = notation::find_keyword(word);
        if (colon == string_view::npos) {
            record().fault = Fault::keyword_colon;
        } else if (keyword == nullptr) {
            record().fault = Fault::keyword_unknown;
        }
        if (record().fault == Fault::none)
            return open_block(keyword, notation::gives_type(*keyword, word), 1 + word.size());
        word = first_word(word);
        const std::size_t joined = joined_keyword(word);
        if (joined > 0 && !is_complete(record_.substr(1 + word.size())))
            return open_block(nullptr, true, 1 + joined);
        keyword = notation::find_keyword(without_blanks(word));
        if (keyword == nullptr) keyword = meant_keyword(without_blanks(word));
        open_block(keyword, true, 1 + word.size());
    }

    // Is the first word of a record followed by what it needs: a colon, or the name of its block?
    static bool is_complete(string_view rest) {
        const std::size_t next = std::min(rest.find_first_not_of(blank_char), rest.size());
        const string_view word = rest.substr(next, rest.find(blank_char, next) - next);
        return word.starts_with(':') || (!word.empty() && word.find(':') == string_view::npos);
    }

    // Including the blanks before it.
    static string_view first_word(string_view text) {
        const std::size_t start = std::min(text.find_first_not_of(' '), text.size());
        return text.substr(0, text.find_first_of(" :", start));
    }

    static string_view without_blanks(string_view word) {
        return notation::without_blanks(word, {0, word.size()}).in(word);
    }

    void end_model(std::size_t keyword_end) {
        record().kind = RecordKind::end;
        emitter_.put(TokenKind::keyword, {0, keyword_end});
        close_model(true);
    }

    void open_block(const notation::Keyword* keyword, bool gives_type, std::size_t word_end) {
        if (keyword != nullptr && keyword->opens == Opens::end) return end_model(word_end);
        record().kind = RecordKind::opening;
        tree_.blocks.push_back({this_record(), gives_type, keyword});
        in_opening_ = false;
        if (keyword == nullptr) {
            mode_ = Mode::unknown;
            emitter_.put(TokenKind::keyword, {0, std::max<std::size_t>(word_end, 1)});
            return emitter_.put_expression({word_end, record_.size()});
        }
        put_opening(*keyword, word_end);
    }

    // Adds the keyword and its colon. Returns the end of both, or of the keyword if the colon is
    // missing.
    std::size_t put_keyword(std::size_t word_end) {
        emitter_.put(TokenKind::keyword, {0, word_end});
        const std::size_t next = record_.find_first_not_of(blank_char, word_end);
        if (next == string_view::npos || record_[next] != ':') return word_end;
        emitter_.put(TokenKind::colon, {next, next + 1});
        return next + 1;
    }

    void put_opening(const notation::Keyword& keyword, std::size_t word_end) {
        switch (keyword.opens) {
        case Opens::production:
        case Opens::demand: return put_function(word_end);
        case Opens::constraint: return put_constraint(word_end);
        case Opens::declaration: mode_ = Mode::names; break;
        case Opens::report: mode_ = Mode::report; break;
        case Opens::option: return put_option(word_end);
        case Opens::end: break;
        }
        put_keyword(word_end);
    }

    void put_option(std::size_t word_end) {
        mode_ = Mode::fields;
        const std::size_t start = put_keyword(word_end);
        emitter_.put(TokenKind::text, notation::without_blanks(record_, {start, record_.size()}));
    }

    // The first field is the keyword's own; a missing colon is treated as present.
    void put_function(std::size_t word_end) {
        mode_ = Mode::fields;
        in_opening_ = true;
        begin_field(0);
        const bool has_colon = put_keyword(word_end) > word_end;
        if (!has_colon && word_end >= record_.size()) return;
        if (!has_colon) read_[word_end] = ':';
        const notation::FieldCut cut = notation::cut_field(record_);
        if (!has_colon) read_[word_end] = blank_char;
        put_value(notation::without_blanks(record_, cut.value), true);
        if (cut.end < record_.size()) put_fields(cut.end);
    }

    void put_constraint(std::size_t word_end) {
        mode_ = Mode::body;
        const std::size_t start = put_keyword(word_end);
        begin_field(start);
        put_constrained(start);
    }

    void put_constrained(std::size_t start) {
        const notation::ConstraintCut cut = notation::cut_constraint(record_, start);
        const std::size_t mark = cut.condition.begin;
        emitter_.put(TokenKind::name, cut.variable);
        if (!cut.arguments.empty()) put_arguments({start, mark}, cut.arguments.begin);
        if (cut.condition.empty()) return;
        emitter_.put(TokenKind::condition, {mark, mark + 1});
        emitter_.put_expression({mark + 1, record_.size()});
    }

    // Fields.

    void begin_field(std::size_t start) {
        emitter_.fill(std::min(start, record_.size()));
        tree_.fields.push_back({emitter_.next_token(), Fault::none, 0});
    }

    // Notes a fault of the field, which overrides earlier ones: the translator checks the end of an
    // entry first, then conditions, extra indices and arguments.
    void note_fault(Fault fault, std::size_t place) {
        if (fault == Fault::none) return;
        FieldNode& field = tree_.fields.back();
        field.fault = fault;
        const Index token = std::max(emitter_.token_at(place), field.token);
        field.fault_offset = static_cast<std::uint16_t>(token - field.token);
    }

    void put_fields(std::size_t at) {
        bool first = true;
        do {
            const notation::FieldCut cut = notation::cut_field(record_, at);
            if (cut.fault != Fault::none) return put_unlabelled(at, cut.fault);
            put_field(cut, first);
            first = false;
            at = cut.end;
        } while (at < record_.size());
    }

    // The rest of the record, which has no label; a blank record has only a comment.
    void put_unlabelled(std::size_t at, Fault fault) {
        tree_.fields.push_back({emitter_.next_token(), fault, 0});
        if (at == 0 && record_.starts_with(notation::continuation_mark)) {
            emitter_.put(TokenKind::plus, {0, 1});
            at = 1;
        }
        emitter_.put_expression({std::min(at, record_.size()), record_.size()});
    }

    void put_field(const notation::FieldCut& cut, bool first) {
        tree_.fields.push_back({emitter_.next_token(), Fault::none, 0});
        const bool has_plus =
            record_.starts_with(notation::continuation_mark) && first && cut.label.begin > 0;
        if (has_plus) emitter_.put(TokenKind::plus, {0, 1});
        const string_view label = orvex::trimmed(cut.label.in(record_));
        emitter_.put(TokenKind::label, {cut.label.begin, cut.label.begin + label.size()});
        emitter_.put(TokenKind::colon, {cut.label.end, cut.label.end + 1});
        put_value(notation::without_blanks(record_, cut.value), has_name(label, first));
    }

    // Does the field name something? This depends only on the field, not on the rest of the file.
    bool has_name(string_view label, bool first) const {
        if (record().kind == RecordKind::report) return true;
        if (in_opening_) return false;
        if (record().kind == RecordKind::entry && first) return label != notation::guard_label;
        return notation::names_later(label);
    }
    const RecordNode& record() const { return tree_.records.back(); }

    // Values.

    void put_value(Cut value, bool is_name) {
        const string_view text = value.in(record_);
        const notation::ConditionCut condition = notation::find_condition(text);
        if (condition.fault != Fault::none) {
            emitter_.put_expression(value);
            return note_fault(condition.fault, value.begin);
        }
        const std::size_t mark = std::min(condition.mark, text.size());
        const std::size_t list = std::min(text.find('#'), mark);
        const bool is_expression = condition.expression_end > 0;
        put_reference({value.begin, value.begin + list}, is_name, is_expression);
        if (list < mark) put_extra_indices(value.begin, list, mark);
        if (mark < text.size()) put_condition({value.begin + mark, value.end});
        emitter_.fill(value.end);  // dropped text belongs to this field
    }

    void put_condition(Cut cut) {
        emitter_.put(TokenKind::condition, {cut.begin, cut.begin + 1});
        emitter_.put_expression({cut.begin + 1, cut.end});
        const Cut text = notation::without_blanks(record_, {cut.begin + 1, cut.end});
        if (!notation::is_balanced(text.in(record_))) {
            note_fault(Fault::chkcnd_parentheses, cut.begin);
        }
    }

    void put_declared(Cut entry) {
        const std::size_t mark = std::min(entry.in(record_).find('$'), entry.end - entry.begin);
        put_reference({entry.begin, entry.begin + mark}, true, false);
        if (entry.begin + mark < entry.end) put_condition({entry.begin + mark, entry.end});
    }

    // A name with its arguments, or an expression.
    void put_reference(Cut value, bool is_name, bool is_expression) {
        value = notation::without_blanks(record_, value);
        const string_view text = value.in(record_);
        if (is_expression) return emitter_.put_expression(value);
        const std::size_t open = std::min(text.find('('), text.size());
        const Cut name = notation::without_blanks(record_, {value.begin, value.begin + open});
        if (is_name || is_plain_name(name.in(record_))) {
            emitter_.put(TokenKind::name, name);
        } else {
            emitter_.put_expression(name);
        }
        if (open == text.size()) return;
        const notation::ListCut cut = put_arguments(value, value.begin + open);
        note_fault(cut.fault, value.begin + cut.place);
        if (!is_name && cut.end > 0) emitter_.put_expression({value.begin + cut.end, value.end});
    }

    // Adds the arguments of a list in which positions count from `start`.
    auto put_argument(std::size_t start) {
        return [this, start](int number, Cut argument) {
            if (number > 0) put_comma(start + argument.begin);
            emitter_.put(TokenKind::argument, {start + argument.begin, start + argument.end});
        };
    }

    // Adds the arguments of a value from its "(" on. Positions count from the start of the value.
    notation::ListCut put_arguments(Cut value, std::size_t open) {
        emitter_.put(TokenKind::open, {open, open + 1});
        const notation::ListCut cut =
            notation::cut_arguments(value.in(record_), put_argument(value.begin));
        put_close(cut, value.begin, value.end);
        return cut;
    }

    // Positions in the value count from `start`.
    void put_extra_indices(std::size_t start, std::size_t list, std::size_t mark) {
        const string_view text = record_.substr(start, mark);
        const std::size_t open = text.find('(', list);
        emitter_.put(TokenKind::list, {start + list, start + list + 1});
        if (open != string_view::npos)
            emitter_.put(TokenKind::open, {start + open, start + open + 1});
        const notation::ListCut cut = notation::cut_extra_indices(text, list, put_argument(start));
        if (open == string_view::npos) emitter_.put_expression({start + list + 1, start + mark});
        put_close(cut, start, start + mark);
        note_fault(cut.fault, start + cut.place);
    }

    // Adds the end of a list; without one the list continues to `end`.
    void put_close(const notation::ListCut& cut, std::size_t start, std::size_t end) {
        if (cut.end > 0) emitter_.put(TokenKind::close, {start + cut.end - 1, start + cut.end});
        if (cut.end > 0) return;
        emitter_.fill(std::min(start + cut.place, record_.size()));
        emitter_.fill(std::min(end, record_.size()));
    }

    // Adds the comma before an argument that begins at that position.
    void put_comma(std::size_t argument) {
        const std::size_t comma = record_.rfind(',', argument - 1);
        emitter_.put(TokenKind::comma, {comma, comma + 1});
    }

    // Adds the final empty element to each list.
    void end_lists() {
        tree_.tokens.push_back({static_cast<Offset>(bytes_.size()), TokenKind::outside});
        const Index last_token = emitter_.next_token() - 1;
        tree_.records.push_back({last_token, next_field(), RecordKind::outside, Fault::none});
        tree_.fields.push_back({last_token, Fault::none, 0});
        tree_.blocks.push_back({this_record(), false, nullptr});
        tree_.models.push_back({this_record(), this_record(), next_block() - 1, false});
    }

    string_view bytes_;
    Tree& tree_;
    Emitter emitter_;
    std::array<char, notation::record_columns> read_{};
    string_view whole_;   // the line as it is read
    string_view record_;  // without its comment and trailing blanks
    Offset line_start_ = 0;
    Mode mode_ = Mode::outside;
    bool in_opening_ = false;  // the fields belong to a block's opening record
};

// Releases the unused memory of the lists.
void shrink(Tree& tree) {
    tree.tokens.shrink_to_fit();
    tree.fields.shrink_to_fit();
    tree.records.shrink_to_fit();
    tree.blocks.shrink_to_fit();
    tree.models.shrink_to_fit();
}

}  // namespace

Tree parse(std::string_view bytes) {
    Tree tree;
    Parser(bytes, tree).parse();
    shrink(tree);
    return tree;
}

}  // namespace orvex::frontend
