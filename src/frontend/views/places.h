// Places of names in a file.
#pragma once

#include "frontend/model/model.h"
#include "frontend/syntax/source.h"

#include <vector>

namespace orvex::frontend {

// A part of one line. Lines and columns count from 1, columns in characters as in column_of; the
// ends are exclusive.
struct NamePlace {
    int line = 0;
    int column = 0;
    int end_column = 0;
    Range bytes;
};

// Finds places. It keeps its position in a line, so that places in the order of the file take
// linear time in total.
class PlaceFinder {
  public:
    // The source must outlive the object.
    explicit PlaceFinder(const Source& source) : source_(source) {}

    // The place of a part of a record's line.
    NamePlace find(Index record, Range range);

  private:
    void go_to_line(Index record);
    int column_at(Offset offset);

    const Source& source_;
    Index record_ = no_index;
    Range line_;
    bool is_utf8_ = false;
    Offset at_ = 0;  // of the character in column_
    int column_ = 1;
};

// The place of each of the model's uses.
std::vector<NamePlace> places_of_uses(const Source& source, const Model& model);

// The uses of a symbol, in the order of the file.
std::vector<Index> uses_of(const Model& model, const Symbol& symbol);

}  // namespace orvex::frontend
