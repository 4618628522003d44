#include "frontend/model/errors.h"

#include "frontend/syntax/reading.h"

namespace orvex::frontend {

Error& Errors::add(Fault fault, Range place, Range about) {
    Error& error = model_.errors.emplace_back();
    error.fault = fault;
    error.place = place;
    error.record = record_;
    error.read = read_;
    error.text = capitals(text_of(bytes_, about));
    return error;
}

Error& Errors::add_once(Found& found, const Cause& cause, Range place, Index symbol) {
    const auto [known, is_new] = found.emplace(cause, model_.errors.size());
    if (!is_new) {
        Error& error = model_.errors[known->second];
        error.also.push_back(place);
        return error;
    }
    Error& error = add(std::get<Fault>(cause), place);
    error.text = name_of(model_, symbol);
    error.symbol = symbol;
    return error;
}

void Errors::add_argument(Fault fault, Range argument, Index symbol) {
    add_once(of_arguments_, {fault, symbol, 0}, argument, symbol);
}

void Errors::add_name(Fault fault, Range place, Index symbol, Kind expected, int dimension) {
    const int use = fault == Fault::addsym_type ? static_cast<int>(expected) : dimension;
    Error& error = add_once(of_names_, {fault, symbol, use}, place, symbol);
    if (!error.also.empty()) return;
    error.expected = expected;
    error.dimension = dimension;
}

}  // namespace orvex::frontend
