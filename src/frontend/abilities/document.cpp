#include "frontend/abilities/document.h"

#include "frontend/base/bytes.h"
#include "frontend/model/build.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace orvex::frontend {

namespace {

void note_lines(Document& document) {
    const std::string_view text = document.source.bytes;
    document.lines.assign(1, 0);
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] != '\n' && text[at] != '\r') continue;
        const bool is_pair = text[at] == '\r' && at + 1 < text.size() && text[at + 1] == '\n';
        if (!is_pair) document.lines.push_back(static_cast<Offset>(at + 1));
    }
    document.is_read = false;
}

// Size in bytes and units of the first character of a text, which must not be empty.
struct Step {
    std::size_t bytes;
    std::uint32_t units;
};

Step step_of(std::string_view text, Units units) {
    const auto first = static_cast<unsigned char>(text.front());
    if (first < 0x80) return {1, 1};
    const Character character = decode(text);
    if (character.length == 0) return {1, 1};
    const auto length = static_cast<std::uint32_t>(character.length);
    if (units == Units::utf8) return {character.length, length};
    const bool is_pair = units == Units::utf16 && character.code > 0xFFFF;
    return {character.length, is_pair ? 2U : 1U};
}

std::uint32_t line_of_offset(const Document& document, Offset offset) {
    const auto after = std::upper_bound(document.lines.begin(), document.lines.end(), offset);
    return static_cast<std::uint32_t>(after - document.lines.begin()) - 1;
}

// Collects the uses of names in all models, sorted by place.
void note_uses(Document& document) {
    document.uses.clear();
    for (Index model = 0; model < document.models.size(); ++model) {
        const auto count = static_cast<Index>(document.models[model].uses.size());
        for (Index use = 0; use < count; ++use) document.uses.push_back({model, use});
    }
    std::stable_sort(document.uses.begin(), document.uses.end(),
                     [&](const UsePlace& a, const UsePlace& b) {
                         return use_of(document, a).range.begin < use_of(document, b).range.begin;
                     });
}

}  // namespace

void set_text(Document& document, std::string text) {
    document.source.bytes = std::move(text);
    note_lines(document);
}

void replace_text(Document& document, Range range, std::string_view text) {
    document.source.bytes.replace(range.begin, range.end - range.begin, text);
    note_lines(document);
}

void read_text(Document& document) {
    if (document.is_read) return;
    parse_source(document.source);
    document.models = build_models(document.source.bytes, document.source.tree);
    note_uses(document);
    document.is_read = true;
}

Range line_at(const Document& document, std::uint32_t line) {
    const Offset begin = document.lines[line];
    const bool is_last = line + 1 == document.lines.size();
    const auto size = static_cast<Offset>(document.source.bytes.size());
    Offset end = is_last ? size : document.lines[line + 1];
    const std::string_view text = document.source.bytes;
    while (!is_last && end > begin && (text[end - 1] == '\n' || text[end - 1] == '\r')) --end;
    return {begin, end};
}

Offset offset_at(const Document& document, Position position) {
    if (position.line >= document.lines.size())
        return static_cast<Offset>(document.source.bytes.size());
    const Range line = line_at(document, position.line);
    std::string_view text = text_of(document.source.bytes, line);
    std::uint32_t units = 0;
    while (!text.empty()) {
        const Step step = step_of(text, document.units);
        if (units + step.units > position.character) break;
        units += step.units;
        text.remove_prefix(step.bytes);
    }
    return line.end - static_cast<Offset>(text.size());
}

Position position_at(const Document& document, Offset offset) {
    Position position;
    position.line = line_of_offset(document, offset);
    const Offset begin = document.lines[position.line];
    std::string_view text = text_of(document.source.bytes, {begin, offset});
    // A character that contains the offset is not counted.
    const std::string_view rest = std::string_view(document.source.bytes).substr(begin);
    std::size_t at = 0;
    while (at < text.size()) {
        const Step step = step_of(rest.substr(at), document.units);
        if (at + step.bytes > text.size()) break;
        at += step.bytes;
        position.character += step.units;
    }
    return position;
}

const UsePlace* use_at(const Document& document, Offset offset) {
    const auto after = std::upper_bound(document.uses.begin(), document.uses.end(), offset,
                                        [&](Offset place, const UsePlace& use) {
                                            return place < use_of(document, use).range.begin;
                                        });
    if (after == document.uses.begin()) return nullptr;
    const UsePlace& found = *(after - 1);
    return offset <= use_of(document, found).range.end ? &found : nullptr;
}

}  // namespace orvex::frontend
