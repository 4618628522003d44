// A text that is edited repeatedly, as its original with edits.
#pragma once

#include "frontend/findings/finding.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace orvex::frontend {

class Revision {
  public:
    // The original must outlive the revision.
    explicit Revision(std::string_view original);

    // Precondition: the edits are in order and do not touch one another. Offsets are those of the
    // current text.
    void apply(const std::vector<Edit>& edits);

    std::string text() const;

    // The edits that turn the original into this text, in order. Only offsets and texts are set.
    std::vector<Edit> edits() const;

  private:
    // A part of the original, or a new text.
    struct Piece {
        std::size_t begin = 0;
        std::size_t end = 0;
        std::string own;
        bool is_kept = false;

        std::size_t size() const { return is_kept ? end - begin : own.size(); }
        Piece part(std::size_t from, std::size_t to) const;
    };
    class Reader;

    std::string_view original_;
    std::vector<Piece> pieces_;
};

// The text after edits that are in order and do not touch one another.
std::string edited(std::string_view text, const std::vector<Edit>& edits);

}  // namespace orvex::frontend
