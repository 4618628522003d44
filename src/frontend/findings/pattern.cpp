#include "frontend/findings/pattern.h"

#include "frontend/base/bytes.h"

#include <algorithm>

namespace orvex::frontend {

namespace {

bool is_lower(char c) { return c >= 'a' && c <= 'z'; }
bool is_digit(char c) { return c >= '0' && c <= '9'; }

// The length of a placeholder "<name>" or "<name:20>" at the start of a text; 0 if there is none.
std::size_t place_length(std::string_view text) {
    if (!text.starts_with('<')) return 0;
    std::size_t at = 1;
    while (at < text.size() && is_lower(text[at])) ++at;
    if (at == 1) return 0;
    if (at < text.size() && text[at] == ':') {
        ++at;
        while (at < text.size() && is_digit(text[at])) ++at;
    }
    return at < text.size() && text[at] == '>' ? at + 1 : 0;
}

}  // namespace

std::vector<Piece> pieces_of(std::string_view pattern) {
    std::vector<Piece> pieces;
    std::size_t begin = 0;
    for (std::size_t at = 0; at < pattern.size();) {
        const std::size_t length = place_length(pattern.substr(at));
        if (length == 0) {
            ++at;
            continue;
        }
        const std::string_view place = pattern.substr(at + 1, length - 2);
        pieces.push_back({pattern.substr(begin, at - begin), place.substr(0, place.find(':'))});
        begin = at += length;
    }
    pieces.push_back({pattern.substr(begin), {}});
    return pieces;
}

bool matches(const std::vector<Piece>& pieces, std::string_view line, Values& values) {
    const std::string_view text = trim_end(line);
    const std::string padded = std::string(text) + ' ';  // a value can be blank
    std::size_t at = 0;
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        const bool last = i + 1 == pieces.size();
        const std::string_view literal = last ? trim_end(pieces[i].literal) : pieces[i].literal;
        std::size_t found = i == 0 ? 0 : padded.find(literal, at);
        if (last && i > 0)
            found = std::max(at, text.size() - std::min(text.size(), literal.size()));
        if (found == std::string::npos || padded.compare(found, literal.size(), literal) != 0) {
            return false;
        }
        if (i > 0) {
            values[std::string(pieces[i - 1].name)] = trimmed(padded.substr(at, found - at));
        }
        at = found + literal.size();
    }
    return at >= text.size();
}

std::size_t weight(const std::vector<Piece>& pieces) {
    std::size_t sum = 0;
    for (const Piece& piece : pieces) sum += piece.literal.size();
    return sum;
}

}  // namespace orvex::frontend
