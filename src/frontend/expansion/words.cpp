#include "frontend/expansion/words.h"

#include "frontend/base/bytes.h"
#include "frontend/syntax/expressions.h"

#include <algorithm>
#include <utility>

namespace orvex::frontend {

namespace {

using std::string_view;

// Where the statement in a line begins. The number of the model's line before it is a comment; a
// line without such a number has a statement only if it prints.
std::size_t begin_of_statement(string_view line) {
    if (line.starts_with('{')) return std::min(line.find('}'), line.size() - 1) + 1;
    const bool prints = line.starts_with("PUT") && line.find(".INTEGER1 = ") == string_view::npos &&
                        !line.starts_with("PUTCLOSE");
    return prints ? 0 : line.size();
}

class Cutter {
  public:
    explicit Cutter(string_view text) : text_(text) {}

    std::vector<Word> cut() {
        for (std::size_t begin = 0; begin < text_.size(); ++line_) {
            const std::size_t end = std::min(text_.find('\n', begin), text_.size());
            cut_line(begin, text_.substr(begin, end - begin));
            begin = end + 1;
        }
        const auto end = static_cast<Offset>(text_.size());
        words_.push_back({TokenKind::symbol, {end, end}, line_});
        return std::move(words_);
    }

  private:
    void cut_line(std::size_t begin, string_view line) {
        for (std::size_t at = begin_of_statement(line); at < line.size();) {
            if (line[at] == '{') {
                at = std::min(line.find('}', at), line.size() - 1) + 1;
                continue;
            }
            const Lexeme lexeme = next_lexeme(line, at);
            if (lexeme.kind != TokenKind::blank) add(lexeme.kind, begin + at, begin + lexeme.end);
            at = lexeme.end;
        }
    }

    void add(TokenKind kind, std::size_t begin, std::size_t end) {
        words_.push_back({kind, {static_cast<Offset>(begin), static_cast<Offset>(end)}, line_});
    }

    string_view text_;
    std::vector<Word> words_;
    Index line_ = 0;
};

}  // namespace

std::vector<Word> words_of(std::string_view generator) { return Cutter(generator).cut(); }

Words::Words(std::string_view text, std::vector<Word> words)
    : text_(text), words_(std::move(words)) {}

const Word& Words::following() const { return words_[std::min(at_ + 1, words_.size() - 1)]; }

bool Words::is_symbol(std::string_view symbol) const {
    return word().kind == TokenKind::symbol && is(symbol);
}

bool Words::is_name(std::string_view name) const { return is_name() && is(name); }

bool Words::is_joined() const { return word().range.end == following().range.begin; }

void Words::advance() {
    if (!at_end()) ++at_;
}

Offset Words::end_before() const { return at_ == 0 ? 0 : words_[at_ - 1].range.end; }

bool Words::skip_line() {
    const Index line = word().line;
    while (!at_end() && word().line == line) ++at_;
    return ends_with_close();
}

void Words::return_to_close() {
    if (ends_with_close()) at_ -= 2;
}

bool Words::ends_with_close() const {
    return at_ >= 2 && text_of(text_, words_[at_ - 1].range) == ";" &&
           text_of(text_, words_[at_ - 2].range) == ")";
}

}  // namespace orvex::frontend
