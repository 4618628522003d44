#include "frontend/fixes/revision.h"

#include <algorithm>
#include <utility>

namespace orvex::frontend {

Revision::Piece Revision::Piece::part(std::size_t from, std::size_t to) const {
    if (is_kept) return {begin + from, begin + to, {}, true};
    return {0, 0, own.substr(from, to - from), false};
}

// Goes through pieces from start to end.
class Revision::Reader {
  public:
    explicit Reader(const std::vector<Piece>& pieces) : pieces_(pieces) {}

    // Reads on to an offset of the text; the pieces read go to `taken` unless it is null.
    void read_to(std::size_t offset, std::vector<Piece>* taken) {
        while (at_ < offset && piece_ < pieces_.size()) {
            const Piece& piece = pieces_[piece_];
            const std::size_t count = std::min(offset - at_, piece.size() - inside_);
            if (taken != nullptr && count > 0)
                taken->push_back(piece.part(inside_, inside_ + count));
            at_ += count;
            inside_ += count;
            if (inside_ < piece.size()) continue;
            inside_ = 0;
            ++piece_;
        }
    }

  private:
    const std::vector<Piece>& pieces_;
    std::size_t piece_ = 0;
    std::size_t inside_ = 0;  // the piece
    std::size_t at_ = 0;      // in the text
};

Revision::Revision(std::string_view original) : original_(original) {
    pieces_.push_back({0, original.size(), {}, true});
}

void Revision::apply(const std::vector<Edit>& edits) {
    std::vector<Piece> edited;
    Reader reader(pieces_);
    for (const Edit& edit : edits) {
        reader.read_to(edit.begin, &edited);
        reader.read_to(edit.end, nullptr);
        edited.push_back({0, 0, edit.text, false});
    }
    reader.read_to(static_cast<std::size_t>(-1), &edited);
    pieces_ = std::move(edited);
}

std::string Revision::text() const {
    std::string text;
    for (const Piece& piece : pieces_) {
        text += piece.is_kept ? original_.substr(piece.begin, piece.end - piece.begin)
                              : std::string_view(piece.own);
    }
    return text;
}

std::vector<Edit> Revision::edits() const {
    std::vector<Edit> edits;
    Edit gap;
    const auto close_gap = [&](std::size_t end) {
        gap.end = end;
        if (gap.begin < gap.end || !gap.text.empty()) edits.push_back(std::move(gap));
        gap = {};
    };
    for (const Piece& piece : pieces_) {
        if (piece.is_kept) {
            close_gap(piece.begin);
            gap.begin = piece.end;
        } else {
            gap.text += piece.own;
        }
    }
    close_gap(original_.size());
    return edits;
}

std::string edited(std::string_view text, const std::vector<Edit>& edits) {
    std::string made;
    made.reserve(text.size() + text.size() / 4);
    std::size_t at = 0;
    for (const Edit& edit : edits) {
        made.append(text, at, edit.begin - at).append(edit.text);
        at = edit.end;
    }
    return made.append(text, at);
}

}  // namespace orvex::frontend
