// The one data type of the translator: a text of fixed length, padded with blanks, whose positions
// are counted from 1.
//
// A text stores its trimmed part and that part's length; the padding is implied, never stored. So
// trailing blanks carry no meaning by construction. Anything past the fixed length is cut without a
// message. Texts hold bytes: any value, NUL included.
#pragma once

#include "text/bytes.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <initializer_list>

namespace orvex {

// The forms in which a piece of a text can be passed. A literal's length is known without a call.
constexpr View piece_of(View view) { return view; }
template <std::size_t size>
constexpr View piece_of(const char (&literal)[size]) {
    return {literal, size - 1};
}

template <int N>
class Text {
  public:
    static constexpr int size = N;

    // Blank without any work at run time, so that static tables of texts cost nothing until they
    // are used.
    constexpr Text() : bytes_{} {}
    Text(View view) { assign(view); }
    Text(const char* literal) { assign(literal); }

    // Concatenates the pieces, each with its blanks.
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

    // Positions first to last, as far as they are in the text and before its padding.
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
        // Calling memchr takes longer than checking the few characters.
        for (int at = start; at <= length_; ++at) {
            if (bytes_[index(at)] == wanted) return at;
        }
        return 0;
    }
    int find(View wanted) const { return position(view().find(wanted)); }
    bool contains(char wanted) const { return find(wanted) != 0; }
    bool contains(View wanted) const { return find(wanted) != 0; }

    // Is there room for all the pieces after the last non-blank character?
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

    // Appends the pieces, each with its blanks, after the last non-blank character; text that does
    // not fit is cut.
    template <typename... Pieces>
    void append(const Pieces&... pieces) {
        (add(piece_of(pieces)), ...);
        trim();
    }

    // Replaces every character by the result of `replace`, in whole blocks, for which a compiler
    // can use vector instructions. Blanks fill the last block, as the bytes after a text may never
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
    // The bytes after the text's length have no meaning. There is room for whole blocks.
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
// A literal has no trailing blanks. Its known length saves a call for the comparison.
template <int N, std::size_t size>
bool operator==(const Text<N>& a, const char (&literal)[size]) {
    return a.view() == View(literal, size - 1);
}

// The pieces concatenated into one text, each with its blanks.
template <int N>
Text<N> joined(std::initializer_list<View> pieces) {
    return Text<N>(pieces);
}

}  // namespace orvex
