#include "frontend/syntax/emitter.h"

#include "frontend/syntax/expressions.h"

#include <algorithm>

namespace orvex::frontend {

void Emitter::begin_line(Offset start, std::string_view text) {
    start_ = start;
    text_ = text;
    done_ = 0;
}

void Emitter::put_at(TokenKind kind, std::size_t begin) {
    tokens_.push_back({start_ + static_cast<Offset>(begin), kind});
}

void Emitter::fill(std::size_t end) {
    while (done_ < end) {
        const bool is_blank = text_[done_] == blank_char;
        put_at(is_blank ? TokenKind::blank : TokenKind::ignored, done_);
        const std::size_t next =
            is_blank ? text_.find_first_not_of(blank_char, done_) : text_.find(blank_char, done_);
        done_ = std::min(next, end);
    }
}

void Emitter::put(TokenKind kind, notation::Cut cut) {
    if (cut.empty()) return;
    fill(cut.begin);
    put_at(kind, cut.begin);
    done_ = cut.end;
}

void Emitter::put_expression(notation::Cut cut) {
    for (std::size_t at = cut.begin; at < cut.end;) {
        const Lexeme next = next_lexeme(text_.substr(0, cut.end), at);
        put(next.kind, {at, next.end});
        at = next.end;
    }
}

Index Emitter::token_at(std::size_t position) const {
    const Offset offset = start_ + static_cast<Offset>(position);
    auto token = tokens_.size() - 1;
    while (token > 0 && tokens_[token].begin > offset) --token;
    return static_cast<Index>(token);
}

}  // namespace orvex::frontend
