// The statements of a model in its generator file, with their levels: which of them pass the last
// column written?
#pragma once

#include "frontend/model/field_reader.h"
#include "frontend/model/model.h"
#include "notation/statements.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace orvex::frontend {

class Statements {
  public:
    // Both must outlive the object.
    Statements(std::string_view bytes, Model& model) : bytes_(bytes), model_(model) {}

    // Closes and keeps levels as the translator does: closes all of them; closes those of the
    // previous entry; keeps the current ones as the block's.
    void close_block();
    void return_to_block();
    void mark_block() { block_levels_ = levels_; }

    // The statements that a field opens: the loop of a list of sets "(S,T,"  or, if that is just
    // "(", only the condition; and the guards of a lead or lag, and of a value. `condition` has its
    // parentheses, or is empty.
    void open(const FieldReader::Read& read, std::string_view list, std::string_view condition);
    void open_shift(const FieldReader::Read& read, std::string_view argument, std::size_t at);
    void open_guard(const FieldReader::Read& read, Range value);
    void open_level() { ++levels_; }

    // The loop of a label over a set, which stays open until the field has been printed.
    void open_label(const FieldReader::Read& read);
    void close_label() { --levels_; }

    // The statement that prints a field, with its label as printed.
    void print_name(const FieldReader::Read& read, std::string_view label,
                    std::string_view condition, notation::Put put);
    void print_value(const FieldReader::Read& read, std::string_view condition);

    // The lines of the header file: the term of a declared name or of a report variable in the
    // artificial equation, and the declaration of a constraint's equation.
    void add_term(const FieldReader::Read& read, std::string_view condition);
    void add_report_term(const FieldReader::Read& read, std::string_view condition);
    void declare_equation(const FieldReader::Read& read, Range variable, Range arguments);

    // Does a statement surely fit if the field contributes this many columns?
    bool surely_fits(std::size_t size) const;

  private:
    std::string distinct_sets(const Field& field) const;
    void check_line(const FieldReader::Read& read, CutStatement::Part part, std::size_t columns);
    std::string_view text(Range range) const { return text_of(bytes_, range); }
    void check(const FieldReader::Read& read, CutStatement::Part part, Range place,
               std::size_t columns);
    void check_head(const FieldReader::Read& read, std::string_view sets,
                    std::string_view condition, std::size_t columns);

    std::string_view bytes_;
    Model& model_;
    int levels_ = 0;
    int block_levels_ = 0;
    bool is_deep_ = false;  // the current entry has a finding about its levels
};

}  // namespace orvex::frontend
