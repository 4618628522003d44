// A text open in an editor, with its tree, its models and the places of its names, and positions as
// the editor counts them.
#pragma once

#include "frontend/model/model.h"
#include "frontend/syntax/source.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace orvex::frontend {

// The units in which a position counts characters.
enum class Units { utf8, utf16, utf32 };

// Line and character, both counted from 0.
struct Position {
    std::uint32_t line = 0;
    std::uint32_t character = 0;
};

// A use of a name: its model in Document::models and the use in Model::uses.
struct UsePlace {
    Index model;
    Index use;
};

struct Document {
    std::string uri;
    std::int64_t version = 0;
    Units units = Units::utf16;
    Source source;
    // Of the text as last read.
    std::vector<Model> models;
    std::vector<UsePlace> uses;  // in the order of their places
    // Where each line begins. For an editor, LF, CR LF and a lone CR end a line.
    std::vector<Offset> lines;
    bool is_read = false;  // the tree and the models match the text
};

// Sets the whole text.
void set_text(Document& document, std::string text);

// Replaces a part of the text.
void replace_text(Document& document, Range range, std::string_view text);

// Reads the text again if it has changed: the tree, the models and their uses.
void read_text(Document& document);

// The offset of a position, but at most the end of its line or of the text.
Offset offset_at(const Document& document, Position position);

// The position of an offset, or of the character that contains it. A byte that is not part of a
// UTF-8 character counts as one unit.
Position position_at(const Document& document, Offset offset);

// A line without its line end.
Range line_at(const Document& document, std::uint32_t line);

// The use of a name that contains an offset or ends there; null if there is none.
const UsePlace* use_at(const Document& document, Offset offset);

inline const Model& model_of(const Document& document, const UsePlace& place) {
    return document.models[place.model];
}
inline const Use& use_of(const Document& document, const UsePlace& place) {
    return document.models[place.model].uses[place.use];
}

}  // namespace orvex::frontend
