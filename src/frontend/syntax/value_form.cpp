#include "frontend/syntax/value_form.h"

#include "frontend/syntax/expressions.h"
#include "frontend/syntax/tree.h"
#include "text/characters.h"

#include <algorithm>

namespace orvex::frontend {

namespace {

using std::string_view;

constexpr string_view operator_marks = "+-*/<>=";
constexpr string_view sign_marks = "+-";
constexpr string_view bracket_marks = "[]{}";

bool is_one_of(char c, string_view marks) { return marks.find(c) != string_view::npos; }

bool has_macro(string_view text) {
    const std::size_t mark = text.find('%');
    if (mark == string_view::npos) return false;
    const std::size_t end = text.find_first_of("% ", mark + 1);
    return end != string_view::npos && text[end] == '%' && end > mark + 1;
}

// The end of the group opened by "(", or npos.
std::size_t end_of_group(string_view text, std::size_t open) {
    int depth = 0;
    for (std::size_t at = open; at < text.size(); ++at) {
        depth += text[at] == '(' ? 1 : text[at] == ')' ? -1 : 0;
        if (depth == 0) return at + 1;
    }
    return string_view::npos;
}

// Can it be part of a name: a letter (ASCII or not), a digit, "_", or the point of an attribute?
bool is_part_of_name(char c) {
    return is_name_byte(c) || c == '.' || static_cast<unsigned char>(c) >= 0x80;
}

bool is_number(string_view run) {
    const Lexeme lexeme = next_lexeme(run, 0);
    return lexeme.kind == TokenKind::number && lexeme.end == run.size();
}

bool begins_number(string_view run) { return is_digit(run.front()) || run.front() == '.'; }

// A point begins an attribute.
bool are_parts_of_name(string_view text) {
    for (std::size_t point = text.find('.'); point < text.size();
         point = text.find('.', point + 1)) {
        if (point + 1 == text.size() || is_digit(text[point + 1])) return false;
    }
    return std::all_of(text.begin(), text.end(), is_part_of_name);
}

bool is_balanced(string_view text) {
    int depth = 0;
    for (const char c : text) {
        depth += c == '(' ? 1 : c == ')' ? -1 : 0;
        if (depth < 0) return false;
    }
    return depth == 0;
}

// Is it a name with an attribute and arguments, in any order?
bool is_reference(string_view run) {
    const std::size_t open = std::min(run.find('('), run.size());
    const string_view name = run.substr(0, open);
    if (name.empty() || begins_number(name)) return false;
    const std::size_t close = open == run.size() ? open : end_of_group(run, open);
    return close != string_view::npos &&
           are_parts_of_name(name.substr(0, name.find_last_not_of(blank_char) + 1)) &&
           are_parts_of_name(run.substr(close));
}

bool is_group(string_view run) { return run.front() == '(' && end_of_group(run, 0) == run.size(); }

bool is_call(string_view run) {
    const std::size_t open = run.find('(');
    return open != string_view::npos && is_function(run.substr(0, open));
}

ValueForm form_of_run(string_view run) {
    if (is_number(run) || is_group(run)) return ValueForm::good;
    if (is_reference(run)) return is_call(run) ? ValueForm::expression : ValueForm::good;
    if (!is_balanced(run)) return ValueForm::parentheses;
    if (is_one_of(run.front(), "\"'")) return ValueForm::quoted;
    const bool has_letter =
        std::any_of(run.begin(), run.end(), [](char c) { return is_name_byte(c) && !is_digit(c); });
    return begins_number(run) && !has_letter ? ValueForm::not_number : ValueForm::not_value;
}

// Reads the runs of a value outside parentheses, and the operators between them.
class Reader {
  public:
    explicit Reader(string_view text) : text_(text) {}

    ValueShape read() {
        const bool is_negative = text_.starts_with('-');
        if (is_one_of(text_.front(), sign_marks)) at_ = 1;
        while (shape_.form == ValueForm::good && skip_blanks()) take();
        if (shape_.form != ValueForm::good) return shape_;
        if (!after_run_) shape_.form = ValueForm::unfinished;
        if (after_run_ && has_operator_ && !is_negative) shape_.form = ValueForm::expression;
        return shape_;
    }

  private:
    bool skip_blanks() {
        while (at_ < text_.size() && text_[at_] == blank_char) ++at_;
        return at_ < text_.size();
    }

    void take() {
        const char c = text_[at_];
        if (c == ',') {
            shape_.form = ValueForm::comma;
        } else if (c == ';') {
            shape_.form = ValueForm::semicolon;
        } else if (is_one_of(c, bracket_marks)) {
            shape_.form = ValueForm::brackets;
        } else if (is_one_of(c, operator_marks)) {
            ++at_;
            take_operator(is_one_of(c, "<>="));
            if (!has_run_ && !is_one_of(c, sign_marks)) shape_.form = ValueForm::not_value;
        } else {
            take_run();
        }
    }

    void take_operator(bool compares) {
        shape_.compares = shape_.compares || compares;
        has_operator_ = true;
        after_run_ = false;
    }

    void take_run() {
        const std::size_t begin = at_;
        skip_run();
        const string_view run = text_.substr(begin, at_ - begin);
        if (is_operator(run)) return take_operator(true);
        if (after_run_) {
            shape_ = {ValueForm::several, shape_.compares, begin, at_};
            return;
        }
        const ValueForm form = form_of_run(run);
        after_run_ = true;
        has_run_ = true;
        if (form == ValueForm::expression) {
            has_operator_ = true;
        } else {
            shape_.form = form;
        }
    }

    // If there is no operand before it, the word is used as a name.
    bool is_operator(string_view word) const {
        return is_operator_word(word) && (after_run_ || word == "NOT");
    }

    // Skips to a blank or a mark outside parentheses. Arguments may follow a blank.
    void skip_run() {
        const Lexeme first = next_lexeme(text_, at_);
        const std::size_t begin = at_;
        if (is_operator(text_.substr(at_, first.end - at_))) {
            at_ = first.end;
            return;
        }
        if (first.kind == TokenKind::number || first.kind == TokenKind::string) at_ = first.end;
        while (at_ < text_.size() && !ends_run(text_[at_])) {
            if (text_[at_] != '(') {
                ++at_;
                continue;
            }
            at_ = std::min(end_of_group(text_, at_), text_.size());
        }
        const std::size_t next = std::min(text_.find_first_not_of(blank_char, at_), text_.size());
        const bool has_arguments = next > at_ && next < text_.size() && text_[next] == '(' &&
                                   is_plain_name(text_.substr(begin, at_ - begin));
        if (has_arguments) at_ = std::min(end_of_group(text_, next), text_.size());
    }

    static bool ends_run(char c) {
        return c == blank_char || c == ',' || c == ';' || is_one_of(c, bracket_marks) ||
               is_one_of(c, operator_marks);
    }

    string_view text_;
    std::size_t at_ = 0;
    bool has_run_ = false;
    bool after_run_ = false;
    bool has_operator_ = false;
    ValueShape shape_;
};

}  // namespace

ValueShape shape_of_value(string_view value) {
    if (value.empty() || has_macro(value)) return {};
    return Reader(value).read();
}

}  // namespace orvex::frontend
