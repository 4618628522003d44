// Lines and records: what the translator reads of a line, and what its first column means.
#pragma once

#include "notation/limits.h"
#include "text/characters.h"

namespace orvex::notation {

constexpr char comment_mark = '*';       // in column 1: the line is a comment
constexpr char keyword_mark = '$';       // in column 1: the record begins with a keyword
constexpr char continuation_mark = '+';  // in column 1: the record continues the one before
constexpr char description_mark = '!';   // anywhere: a comment or a description follows

constexpr View model_keyword = "$MODEL:";  // begins a model; blanks before the name are skipped
constexpr View end_keyword = "OFFTEXT";    // begins the record that ends one, after the "$"

// The character as which a character of a line is read.
constexpr char as_blank(char c) { return c == carriage_return || c == tab ? blank_char : c; }
constexpr char as_read(char c) { return upper_letter(as_blank(c)); }

// How a record begins: with a keyword, as a continuation, or otherwise, as its block expects.
enum class RecordStart { keyword, continuation, other };
constexpr RecordStart record_start(View record) {
    const char first = record.empty() ? blank_char : record.front();
    if (first == keyword_mark) return RecordStart::keyword;
    return first == continuation_mark ? RecordStart::continuation : RecordStart::other;
}

// A record of a constraint's body. The first one with a ";" is the last of the body; one that
// begins with "$" and has no ";" is outside.
enum class BodyRecord { more, last, outside };
constexpr BodyRecord body_record(View record) {
    if (record.find(';') != View::npos) return BodyRecord::last;
    return record_start(record) == RecordStart::keyword ? BodyRecord::outside : BodyRecord::more;
}

}  // namespace orvex::notation
