// The words of a generator file, in order.
#pragma once

#include "frontend/syntax/tree.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace orvex::frontend {

// A word, number, string or symbol of a statement.
struct Word {
    TokenKind kind = TokenKind::symbol;
    Range range;
    Index line = 0;  // counted from 0
};

// The words of all lines that have statements. Lines for the host's compiler, comments, and
// statements that print nothing are left out.
std::vector<Word> words_of(std::string_view generator);

// The words, with a current position. After the last one there is an empty symbol.
class Words {
  public:
    Words(std::string_view text, std::vector<Word> words);

    bool at_end() const { return at_ + 1 >= words_.size(); }
    const Word& word() const { return words_[at_]; }
    const Word& following() const;
    std::string_view text() const { return text_of(text_, word().range); }
    bool is(std::string_view text) const { return this->text() == text; }

    // Is the current word this symbol or name, and not a string that looks like it?
    bool is_symbol(std::string_view symbol) const;
    bool is_name(std::string_view name) const;
    bool is_name() const { return word().kind == TokenKind::word; }

    // Does the next word follow without a blank, on the same line?
    bool is_joined() const;

    void advance();

    // Where the previous word ends.
    Offset end_before() const;

    // Goes to the next line. True if the statement on this line ends there with ");".
    bool skip_line();

    // Goes back to the ")" of the ");" at the end of the previous line, if there is one.
    void return_to_close();

  private:
    bool ends_with_close() const;

    std::string_view text_;
    std::vector<Word> words_;
    std::size_t at_ = 0;
};

}  // namespace orvex::frontend
