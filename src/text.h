// The one data type of the translator: a text of fixed length, padded with blanks, whose positions
// are counted from 1.
//
// A text keeps its trimmed part and that part's length; the padding is understood, never stored.
// So trailing blanks carry no meaning by construction, and whatever passes the fixed length is cut
// without a message. Texts hold bytes: any value, NUL included.
#pragma once

#include "notation/characters.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <string_view>

namespace orvex {

using notation::blank_char;
using notation::lower_letter;
using notation::trimmed;
using notation::upper_letter;
using notation::View;

inline int length_of(View view) { return static_cast<int>(view.size()); }

// What a piece of a text may be given as. A literal's length is known without a call.
constexpr View piece_of(View view) { return view; }
template <std::size_t size>
constexpr View piece_of(const char (&literal)[size]) {
    return {literal, size - 1};
}

// Sizes that no piece of a short text can have look possible to GCC 12.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Warray-bounds"

// Copies the first and the last characters of a piece as two numbers, which may overlap.
template <typename Number>
void copy_ends(char* to, View piece) {
    const std::size_t last = piece.size() - sizeof(Number);
    Number first_number;
    Number last_number;
    std::memcpy(&first_number, piece.data(), sizeof(Number));
    std::memcpy(&last_number, piece.data() + last, sizeof(Number));
    std::memcpy(to, &first_number, sizeof(Number));
    std::memcpy(to + last, &last_number, sizeof(Number));
}

void copy_long_piece(char* to, View piece);

// Copies a piece to where there is room for it, which may be a part of where it stands. Most pieces
// are so short that a call would cost more than the copying.
inline void copy_piece(char* to, View piece) {
    const std::size_t size = piece.size();
    if (size > 32) {
        copy_long_piece(to, piece);
    } else if (size >= 16) {
        copy_ends<std::array<std::uint64_t, 2>>(to, piece);
    } else if (size >= 8) {
        copy_ends<std::uint64_t>(to, piece);
    } else if (size >= 4) {
        copy_ends<std::uint32_t>(to, piece);
    } else if (size >= 2) {
        copy_ends<std::uint16_t>(to, piece);
    } else if (size == 1) {
        *to = piece.front();
    }
}

// Are the first and the last characters of two pieces, as two numbers, the same?
template <typename Number>
bool same_ends(View a, View b) {
    const std::size_t last = a.size() - sizeof(Number);
    Number numbers[4];
    std::memcpy(&numbers[0], a.data(), sizeof(Number));
    std::memcpy(&numbers[1], b.data(), sizeof(Number));
    std::memcpy(&numbers[2], a.data() + last, sizeof(Number));
    std::memcpy(&numbers[3], b.data() + last, sizeof(Number));
    return ((numbers[0] ^ numbers[1]) | (numbers[2] ^ numbers[3])) == 0;
}

// Do two views have the same characters? Names, too, are so short that it takes longer to call for
// it.
inline bool same(View a, View b) {
    if (a.size() != b.size()) return false;
    if (a.size() > 16) return a == b;
    if (a.size() >= 8) return same_ends<std::uint64_t>(a, b);
    if (a.size() >= 4) return same_ends<std::uint32_t>(a, b);
    if (a.size() >= 2) return same_ends<std::uint16_t>(a, b);
    return a.empty() || a.front() == b.front();
}

#pragma GCC diagnostic pop

// Order of two texts by character codes, the shorter one padded with blanks: negative, 0, positive.
int compare_padded(View a, View b);

template <int N>
using Bytes = std::array<char, static_cast<std::size_t>(N)>;

template <int N>
class Text {
  public:
    static constexpr int size = N;

    // Blank without a step at run time, so that static tables of texts cost nothing until they are
    // used.
    constexpr Text() : bytes_{} {}
    Text(View view) { assign(view); }
    Text(const char* literal) { assign(literal); }

    // The pieces one behind the other, each with its blanks.
    explicit Text(std::initializer_list<View> pieces) {
        for (const View piece : pieces) add(piece);
        trim();
    }

    Text(const Text& other) { copy(other); }
    Text& operator=(const Text& other) {
        if (this != &other) copy(other);
        return *this;
    }
    ~Text() = default;
    Text& operator=(View view) {
        assign(view);
        return *this;
    }
    Text& operator=(const char* literal) {
        assign(literal);
        return *this;
    }

    // The trimmed text, and its length.
    View view() const { return {bytes_.data(), static_cast<std::size_t>(length_)}; }
    operator View() const { return view(); }
    int length() const { return length_; }
    bool is_blank() const { return length_ == 0; }

    // The character at a position from 1 to N.
    char operator[](int position) const {
        return position <= length_ ? bytes_[index(position)] : blank_char;
    }

    // Positions first to last, as far as they lie in the text and before its padding.
    View slice(int first, int last) const {
        first = std::max(first, 1);
        last = std::min(last, length_);
        if (first > last) return {};
        return view().substr(index(first), index(last) - index(first) + 1);
    }
    View from(int first) const { return slice(first, N); }

    // Position of the first such character or piece at or after `start`, or 0. Neither may be
    // blank.
    int find(char wanted, int start = 1) const {
        if constexpr (N > short_text) return position(view().find(wanted, index(start)));
        // It takes longer to call memchr than to look at the few characters.
        for (int at = start; at <= length_; ++at) {
            if (bytes_[index(at)] == wanted) return at;
        }
        return 0;
    }
    int find(View wanted) const { return position(view().find(wanted)); }
    bool contains(char wanted) const { return find(wanted) != 0; }
    bool contains(View wanted) const { return find(wanted) != 0; }

    // Would all the pieces find room behind the last non-blank character?
    template <typename... Pieces>
    bool has_room_for(const Pieces&... pieces) const {
        return (piece_of(pieces).size() + ...) <= static_cast<std::size_t>(N - length_);
    }

    void clear() { length_ = 0; }

    // Makes the positions first to last blank.
    void blank(int first, int last) {
        if (last < length_) {
            if (first <= last)
                std::fill(bytes_.begin() + first - 1, bytes_.begin() + last, blank_char);
        } else if (first <= length_) {
            length_ = first - 1;
            trim();
        }
    }
    void blank_from(int first) { blank(first, N); }

    // Puts the pieces, each with its blanks, directly behind the last non-blank character; what has
    // no room is cut.
    template <typename... Pieces>
    void append(const Pieces&... pieces) {
        (add(piece_of(pieces)), ...);
        trim();
    }

    // Replaces every character by what `replace` makes of it, in whole blocks, which a compiler can
    // make vector instructions of. Blanks fill the last one, as what is behind a text may never
    // have been set.
    template <typename Replace>
    void map(Replace replace) {
        const int rest = length_ % block_size;
        if (rest != 0) std::fill_n(bytes_.begin() + length_, block_size - rest, blank_char);
        for (int start = 0; start < length_; start += block_size) {
            char* const block = bytes_.data() + start;
            std::transform(block, block + block_size, block, replace);
        }
        trim();
    }

    // All N characters, padding included.
    Bytes<N> padded() const {
        Bytes<N> full;
        full.fill(blank_char);
        std::memcpy(full.data(), bytes_.data(), static_cast<std::size_t>(length_));
        return full;
    }

  private:
    static constexpr std::size_t index(int position) {
        return static_cast<std::size_t>(position) - 1;
    }
    static int position(std::size_t found) {
        return found == View::npos ? 0 : static_cast<int>(found) + 1;
    }

    static constexpr int short_text = 128;
    static constexpr int block_size = N < short_text ? 8 : 32;

    void copy(const Text& other) {
        length_ = other.length_;
        for (int start = 0; start < length_; start += block_size)
            std::memcpy(bytes_.data() + start, other.bytes_.data() + start, block_size);
    }

    void add(View piece) {
        const auto kept = std::min(piece.size(), static_cast<std::size_t>(N - length_));
        copy_piece(bytes_.data() + length_, View(piece.data(), kept));
        length_ += static_cast<int>(kept);
    }

    // The view may be a part of this very text.
    void assign(View view) {
        length_ = 0;
        append(view);
    }
    void trim() {
        while (length_ > 0 && bytes_[static_cast<std::size_t>(length_ - 1)] == blank_char)
            --length_;
    }

    int length_ = 0;
    // What stands behind the text's length has no meaning. There is room for whole blocks.
    Bytes<(N + block_size - 1) / block_size * block_size> bytes_;
};

template <int N, int M>
bool operator==(const Text<N>& a, const Text<M>& b) {
    return same(a, b);
}
template <int N>
bool operator==(const Text<N>& a, View b) {
    return same(a, trimmed(b));
}
// A literal has no trailing blanks. Its known length spares a call for the comparison.
template <int N, std::size_t size>
bool operator==(const Text<N>& a, const char (&literal)[size]) {
    return a.view() == View(literal, size - 1);
}

// A view of all these characters, trailing blanks included.
template <std::size_t N>
View whole(const std::array<char, N>& full) {
    return {full.data(), N};
}

// `count` times the same character, at most 255.
template <char c>
View repeated(int count) {
    static constexpr auto row = [] {
        Bytes<255> filled{};
        filled.fill(c);
        return filled;
    }();
    return whole(row).substr(0, static_cast<std::size_t>(count));
}

// The pieces one behind the other, each with its blanks, as one text.
template <int N>
Text<N> joined(std::initializer_list<View> pieces) {
    return Text<N>(pieces);
}

// How a number stands in a fixed width: right-aligned behind blanks, or behind leading zeros. A
// number that does not fit, its sign included, shows as asterisks.
enum class Fill : char { blanks = ' ', zeros = '0' };
template <int Width>
void write_number(char* columns, int value, Fill fill) {
    std::memset(columns, static_cast<char>(fill), Width);
    const bool negative = value < 0;
    auto rest = negative ? 0U - static_cast<unsigned>(value) : static_cast<unsigned>(value);
    int first = Width;  // columns from here on hold digits
    do {
        columns[--first] = static_cast<char>('0' + rest % 10);
        rest /= 10;
    } while (rest != 0 && first > 0);
    // Zeros fill all the columns with digits, so a sign never fits beside them.
    const bool sign_fits = fill == Fill::blanks && first > 0;
    if (rest != 0 || (negative && !sign_fits)) {
        std::memset(columns, '*', Width);
    } else if (negative) {
        columns[first - 1] = '-';
    }
}

template <int Width>
Text<Width> right_aligned(int value) {
    Bytes<Width> columns;
    write_number<Width>(columns.data(), value, Fill::blanks);
    return whole(columns);
}

template <int Width>
Text<Width> zero_filled(int value) {
    Bytes<Width> columns;
    write_number<Width>(columns.data(), value, Fill::zeros);
    return whole(columns);
}

// The number in as many columns as it takes.
Text<11> decimal(int value);

}  // namespace orvex
