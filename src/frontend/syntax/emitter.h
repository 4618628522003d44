// Emits the tokens of one line in order. Anything left out between two of them also becomes a
// token, so that no byte is lost.
#pragma once

#include "frontend/syntax/tree.h"
#include "notation/cut.h"

#include <string_view>
#include <vector>

namespace orvex::frontend {

class Emitter {
  public:
    explicit Emitter(std::vector<Token>& tokens) : tokens_(tokens) {}

    // Begins a line at that offset of the file. `text` is the line as it is read (TABs and CRs as
    // blanks, capitals), and positions count from its start.
    void begin_line(Offset start, std::string_view text);

    // Adds a token at or after the end of the previous one. An empty one is left out.
    void put(TokenKind kind, notation::Cut cut);

    // Adds the tokens of an expression.
    void put_expression(notation::Cut cut);

    // Adds tokens up to `end` for blanks and ignored text.
    void fill(std::size_t end);

    // The index of the token that begins at a position, or of the last one before it.
    Index token_at(std::size_t position) const;

    Index next_token() const { return static_cast<Index>(tokens_.size()); }

  private:
    void put_at(TokenKind kind, std::size_t begin);

    std::vector<Token>& tokens_;
    std::string_view text_;
    Offset start_ = 0;
    std::size_t done_ = 0;  // the line has been split into tokens up to here
};

}  // namespace orvex::frontend
