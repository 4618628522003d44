// The syntax tree of a whole file: every byte is in exactly one token, and all tokens together are
// the file. Any bytes give a tree; faults are marked at the record or field that has them. The tree
// shows how a text is split, not what its names mean, and keeps no copy of the text.
//
// The levels of the tree are flat lists in the order of the file. Each element refers to the first
// element of the level below that belongs to it, and ends where the next one begins; each list ends
// with an extra empty element. Records are the lines of the file.
#pragma once

#include "notation/fault.h"
#include "notation/keywords.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace orvex::frontend {

using notation::Fault;
using Offset = std::uint32_t;  // of a byte in the file, from 0
using Index = std::uint32_t;   // of an element of a list, from 0

constexpr Index no_index = static_cast<Index>(-1);

// A part of a file: offsets, the end exclusive.
struct Range {
    Offset begin = 0;
    Offset end = 0;

    bool empty() const { return begin >= end; }
    bool operator==(const Range&) const = default;
};

inline std::string_view text_of(std::string_view bytes, Range range) {
    return bytes.substr(range.begin, range.end - range.begin);
}

enum class TokenKind : std::uint8_t {
    outside,      // a line outside models
    line_end,     // LF, with a CR before it
    blank,        // blanks, TABs and CRs
    comment,      // a line with "*" in column 1
    description,  // from "!" on, as far as the line is read
    unread,       // not read by the translator: after column 255
    ignored,      // read and dropped: before a label, after a list, after a keyword
    keyword,      // "$PROD"
    model_name,   // of $MODEL:
    text,         // of an option
    plus,         // "+" in column 1
    colon,        // of a keyword or a label
    label,
    name,       // a name, or anything in its place
    open,       // of a list of arguments
    argument,   // a set, a lead or lag, an element, or anything in its place
    comma,      // between arguments
    close,      // of a list of arguments
    list,       // the "#" of extra indices
    condition,  // the "$" of a condition
    word,       // from here on parts of expressions: an identifier
    attribute,  // ".L"
    number,
    string,  // in quotes
    macro,   // "%X%"
    symbol,  // an operator, a parenthesis, any other character
};

struct Token {
    Offset begin;
    TokenKind kind;
};

// A labelled field, or an entry of a declaration.
struct FieldNode {
    Index token;                 // its first one: text before its label, or the label
    Fault fault;                 // the fault that the translator reports
    std::uint16_t fault_offset;  // of the token at fault, counted from the first one
};

enum class RecordKind : std::uint8_t {
    outside,       // not in a model
    model,         // $MODEL:
    blank,         // in a model, only blanks
    comment,       // "*" in column 1
    opening,       // the keyword record of a block, or an option
    end,           // $OFFTEXT, or a line meant as that
    names,         // of a declaration
    entry,         // labelled fields, the first of which begins something
    continuation,  // labelled fields after "+"
    report,        // labelled fields of a report
    body,          // of a constraint
    unknown,       // of unknown kind: after an unknown keyword
};

struct RecordNode {
    Index token;
    Index field;
    RecordKind kind;
    Fault fault;  // of its first token
};

// A keyword record and the records up to the next one.
struct BlockNode {
    Index record;
    bool gives_type;                   // its names have the type of the keyword
    const notation::Keyword* keyword;  // as it was meant; null if unknown
};

struct ModelNode {
    Index record;  // $MODEL:
    Index end;     // after its last record
    Index block;   // its first block; records before that belong to none
    bool closed;   // by $OFFTEXT, or a line meant as that
};

struct Tree {
    std::vector<Token> tokens;
    std::vector<FieldNode> fields;
    std::vector<RecordNode> records;
    std::vector<BlockNode> blocks;
    std::vector<ModelNode> models;
};

// The bytes of a token, and of all tokens from one up to another.
inline Range range_of(const Tree& tree, Index token) {
    return {tree.tokens[token].begin, tree.tokens[token + 1].begin};
}
inline Range range_of(const Tree& tree, Index first, Index end) {
    return {tree.tokens[first].begin, tree.tokens[end].begin};
}

// The number of lines; a last line without a line end counts.
inline Index line_count(const Tree& tree) { return static_cast<Index>(tree.records.size()) - 1; }

inline Index model_count(const Tree& tree) { return static_cast<Index>(tree.models.size()) - 1; }

// The name of a model in capitals, cut as the translator cuts it: its outputs are named after it.
std::string model_name(std::string_view bytes, const Tree& tree, Index model);

// The token after the last one of a field of that record, not counting blanks at its end.
Index end_of_field(const Tree& tree, Index record, Index field);

// A line without its line end.
Range line_range(const Tree& tree, Index record);

// The part of a record that the translator uses: from the first character to the last, without a
// comment after "!" unless there is nothing else.
Range record_range(const Tree& tree, Index record);

// Where the fault of a field is: from its token to the next blank.
Range fault_range(const Tree& tree, const FieldNode& field);

}  // namespace orvex::frontend
