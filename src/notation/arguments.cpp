#include "notation/arguments.h"

namespace orvex::notation {

namespace {

// The faults of a list: they differ by where the list is.
struct ListFaults {
    Fault too_many;
    Fault not_closed;
    Fault invalid;
};

// The argument between two delimiters, in the form in which it is kept.
Cut kept_argument(View list, std::size_t begin, std::size_t end) {
    const View raw = trimmed(list.substr(begin, end - begin).substr(0, argument_columns));
    const View kept = left_justified(raw, argument_columns);
    const std::size_t start = begin + raw.size() - kept.size();
    return {start, start + kept.size()};
}

// Splits the list after the parenthesis at cut.open. Only the arguments before the last are
// limited.
void split_list(View list, const ListFaults& faults, ArgumentsCut& cut) {
    std::size_t delimiter = cut.open;
    std::size_t close = View::npos;
    for (std::size_t at = cut.open + 1; at < list.size(); ++at) {
        if (list[at] == ',') {
            if (cut.count == most_arguments) {
                cut.fault = faults.too_many;
                cut.place = at;
                return;
            }
            cut.arguments[static_cast<std::size_t>(cut.count++)] =
                kept_argument(list, delimiter + 1, at);
            delimiter = at;
            close = View::npos;
        } else if (list[at] == ')' && close == View::npos) {
            close = at;
        }
    }
    if (close == View::npos) {
        cut.fault = faults.not_closed;
        cut.place = cut.open;
        close = list.size();
    } else {
        cut.end = close + 1;
    }
    cut.arguments[static_cast<std::size_t>(cut.count++)] =
        kept_argument(list, delimiter + 1, close);
}

// An argument that opens a double quote must close it around at least one character. A lone double
// quote passes: its first character is its last.
bool is_valid(View argument) {
    return !is_element(argument) || (argument.back() == '"' && argument != R"("")");
}

void check_arguments(View list, const ListFaults& faults, ArgumentsCut& cut) {
    for (std::size_t i = 0; cut.fault == Fault::none && i < static_cast<std::size_t>(cut.count);
         ++i) {
        if (is_valid(cut.arguments[i].in(list))) continue;
        cut.fault = faults.invalid;
        cut.place = cut.arguments[i].begin;
    }
}

}  // namespace

ArgumentsCut cut_arguments(View value) {
    static constexpr ListFaults faults = {Fault::rdarg_many, Fault::rdarg_close,
                                          Fault::rdarg_invalid};
    ArgumentsCut cut;
    cut.open = value.find('(');
    if (cut.open == View::npos) return cut;
    const bool closes = value.find(')') != View::npos;
    split_list(value, faults, cut);
    if (!closes) {
        cut.fault = Fault::rdarg_parentheses;
        cut.place = cut.open;
    } else if (cut.fault == Fault::none && cut.count > most_arguments) {
        cut.fault = Fault::rdarg_seven;
        cut.place = cut.arguments[most_arguments].begin;
    }
    check_arguments(value, faults, cut);
    return cut;
}

ArgumentsCut cut_extra_indices(View value, std::size_t mark) {
    static constexpr ListFaults faults = {Fault::extarg_many, Fault::extarg_close,
                                          Fault::extarg_invalid};
    ArgumentsCut cut;
    cut.place = mark;
    cut.open = value.find('(', mark + 1);
    if (cut.open == View::npos) {
        cut.fault = Fault::extarg_left;
        return cut;
    }
    const bool closes = value.find(')', cut.open + 1) != View::npos;
    split_list(value, faults, cut);
    if (!closes) {
        cut.fault = Fault::extarg_right;
        cut.place = cut.open;
    }
    check_arguments(value, faults, cut);
    return cut;
}

Shift shift_of(View argument) {
    Shift shift;
    const std::size_t plus = argument.find('+');
    const std::size_t minus = argument.find('-');
    const bool has_plus = plus != View::npos;
    const bool has_minus = minus != View::npos;
    if (!has_plus && !has_minus) return shift;
    if (is_element(argument) || argument.find("++") != View::npos ||
        argument.find("--") != View::npos) {
        return shift;
    }
    shift.guarded = true;
    shift.both = has_plus && has_minus;
    shift.at = has_plus ? plus : minus;
    return shift;
}

}  // namespace orvex::notation
