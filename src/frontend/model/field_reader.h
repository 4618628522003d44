// Reads the fields of a tree into a model, with the uses of all names in them.
#pragma once

#include "frontend/model/model.h"
#include "frontend/model/symbols.h"
#include "frontend/syntax/fields.h"

#include <string_view>

namespace orvex::frontend {

class FieldReader {
  public:
    // All of them must outlive the object.
    FieldReader(std::string_view bytes, const Tree& tree, Model& model, Symbols& symbols)
        : bytes_(bytes), tree_(tree), model_(model), symbols_(symbols) {}

    // A field, and what its own text shows: its label, and its value with its parts.
    struct Read {
        Field field;
        FieldParts parts;
        std::string label;  // in capitals
    };
    Read read(Index record, Index node) const;

    // Notes the uses of the names in a field, in the order of the file: its name with that role,
    // its arguments, and the names in expressions. `is_listed`: the translator lists those that it
    // knows.
    void add_uses(Read& read, Role role, bool is_listed);

    // Notes the uses of the names in an expression.
    void add_words(Index record, Index first, Index end, Role role);

    // Notes that a part of the text has a fault.
    void touch(Index first, Index end);

  private:
    void add_arguments(const ArgumentList& list, Index record, bool is_listed, Index& first,
                       Index& count);
    Argument read_argument(Range range, Index record, bool is_listed);
    void add_root(Field& field, Role role, bool is_listed);
    void touch_words(std::string_view text);
    bool names_something(Index token, Index end) const;
    std::string_view text(Range range) const { return text_of(bytes_, range); }

    std::string_view bytes_;
    const Tree& tree_;
    Model& model_;
    Symbols& symbols_;
};

}  // namespace orvex::frontend
