// Reads the expressions of a generator file into a program.
#pragma once

#include "frontend/expansion/program.h"
#include "frontend/expansion/words.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace orvex::frontend {

// Anything that cannot be evaluated throws a Flaw. A word that is not understood is then still the
// current one.
class ExpressionReader {
  public:
    // Both must outlive the object.
    ExpressionReader(Words& words, GeneratorProgram& program) : words_(words), program_(program) {}

    Index read() { return read_level(0); }

    // A number, name or expression in parentheses, with or without a sign: what PUT takes.
    Index read_value();

    // The set of a loop, or the sets in parentheses. They stay open until close_loops.
    void open_loops(Index& first, Index& count);
    void close_loops(Index count);

    // The number of open loops; and recover closes those that a Flaw left open beyond that number.
    std::size_t loops() const { return open_.size(); }
    void recover(std::size_t loops);

    // The number of the loop over the set named by the current word. Consumes the word.
    Index read_looped();

    // "T+1" of T.TE(T+1), with the closing parenthesis.
    ElementArgument read_shifted();

    // Consumes the symbol.
    void expect(std::string_view symbol);

    // Throws a Flaw: the current word, or the text read at `place`, is not understood.
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
    std::vector<Index> open_;  // the sets with an open loop
    int depth_ = 0;
};

}  // namespace orvex::frontend
