// The errors of a model while it is being built. One cause in many places is one error.
#pragma once

#include "frontend/model/model.h"

#include <cstddef>
#include <map>
#include <string_view>
#include <tuple>

namespace orvex::frontend {

class Errors {
  public:
    // Both must outlive the object.
    Errors(std::string_view bytes, Model& model) : bytes_(bytes), model_(model) {}

    // The current record, and the last line that the translator has read by then.
    void start_record(Index record) { record_ = read_ = record; }
    void read_up_to(Index record) { read_ = record; }
    Index read() const { return read_; }

    // Adds an error whose message quotes the text of `about`.
    Error& add(Fault fault, Range place, Range about = {});

    // Adds an error about an argument; if it is wrong in the same way in many fields of a block,
    // that is one error.
    void add_argument(Fault fault, Range argument, Index symbol);
    void start_block() { of_arguments_.clear(); }

    // Adds an error about a name used as a kind with a number of arguments; the same use in many
    // fields is one error. The message names the symbol.
    void add_name(Fault fault, Range place, Index symbol, Kind expected, int dimension);

  private:
    // What identifies errors about names or arguments as the same one, and the number of the error.
    using Cause = std::tuple<Fault, Index, int>;
    using Found = std::map<Cause, std::size_t>;

    Error& add_once(Found& found, const Cause& cause, Range place, Index symbol);

    std::string_view bytes_;
    Model& model_;
    Index record_ = 0;
    Index read_ = 0;
    Found of_names_;
    Found of_arguments_;  // in the current block
};

}  // namespace orvex::frontend
