// Reads the expressions of a generator file into a program.
#pragma once

#include "frontend/expansion/program.h"
#include "frontend/expansion/words.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace orvex::frontend {

// What cannot be evaluated is thrown, as a Flaw. A word that is not understood is still the present
// one then.
class ExpressionReader {
  public:
    // Both must outlive the object.
    ExpressionReader(Words& words, GeneratorProgram& program) : words_(words), program_(program) {}

    Index read() { return read_level(0); }

    // A number, name or expression in parentheses, with a sign or without: what PUT takes.
    Index read_value();

    // The set of a loop; or the sets of one in parentheses. They are open until close_loops.
    void open_loops(Index& first, Index& count);
    void close_loops(Index count);

    // How many loops are open; and closes what a Flaw has left open beyond that.
    std::size_t loops() const { return open_.size(); }
    void recover(std::size_t loops);

    // The number of the loop over the set that the present word names. Takes the word.
    Index read_looped();

    // "T+1" of T.TE(T+1), with the parenthesis after it.
    ElementArgument read_shifted();

    // Takes the symbol.
    void expect(std::string_view symbol);

    // Throws that the present word is not understood, or what is read of the place.
    [[noreturn]] void refuse(std::string_view variant = {}) const;
    [[noreturn]] void refuse(std::string_view variant, Range place) const;

  private:
    Index read_level(int level);
    Index read_prefixed(int level);
    Index read_operand();
    Index read_number();
    Index read_name();
    Index read_function(std::string_view name, Offset begin);
    Index read_cardinal(Offset begin);
    Index read_sum(Offset begin);
    Index read_reference(Range name);
    void check_argument(Range name) const;
    ElementArgument read_argument();
    ElementArgument read_shift(Index loop);
    void open_loop();
    Index add(Expression node, Offset begin);
    Index add_operation(Operation operation, const std::vector<Index>& operands, Offset begin);
    Index name_of(std::string_view text, Range place);
    void use_arguments(Index name, int count, Range place);

    Words& words_;
    GeneratorProgram& program_;
    std::vector<Index> open_;  // names of the sets that are looped over
    int depth_ = 0;
};

}  // namespace orvex::frontend
