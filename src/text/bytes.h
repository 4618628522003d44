// Runs of bytes: views of them, comparing and copying them. Copying and comparing happen several
// times for each field, usually with a few bytes: a call would take longer than the work.
#pragma once

#include "text/characters.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace orvex {

template <int N>
using Bytes = std::array<char, static_cast<std::size_t>(N)>;

inline int length_of(View view) { return static_cast<int>(view.size()); }

// GCC 12 considers sizes that no piece of a short text can have.
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

// Copies a piece to where there is room for it. Source and destination may overlap.
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

// Are the first and last characters of two pieces equal, compared as two numbers?
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

// Do two views have the same characters?
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

// A view of all these characters, trailing blanks included.
template <std::size_t N>
View whole(const std::array<char, N>& full) {
    return {full.data(), N};
}

// The same character `count` times (at most 255).
template <char c>
View repeated(int count) {
    static constexpr auto row = [] {
        Bytes<255> filled{};
        filled.fill(c);
        return filled;
    }();
    return whole(row).substr(0, static_cast<std::size_t>(count));
}

}  // namespace orvex
