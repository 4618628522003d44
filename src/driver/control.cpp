#include "driver/control.h"

#include "input/textops.h"
#include "preproc.h"
#include "stop.h"
#include "unit.h"

#include <charconv>
#include <cstddef>

namespace orvex {

namespace {

constexpr std::size_t label_columns = 3;
constexpr std::size_t value_column = 5;  // the column before it is ignored

struct TextSetting {
    View label;
    Line* text;
};

constexpr TextSetting text_settings[] = {
    {"INP", &inpfil}, {"SCR", &scrfil}, {"SCD", &scrdir},
    {"ERR", &errfil}, {"HDR", &hdrfil}, {"TIM", &time},
};

// The number that the characters give: an optional sign and digits; 0 if there are none at all.
bool read_integer(View text, int& value) {
    value = 0;
    if (text.empty()) return true;
    const bool negative = text.front() == '-';
    if (negative || text.front() == '+') text.remove_prefix(1);
    if (text.empty() || text.find_first_not_of("0123456789") != View::npos) return false;
    std::from_chars(text.data(), text.data() + text.size(), value);
    if (negative) value = -value;
    return true;
}

// The number in the first four characters of the value, ignoring blanks.
int counter_value() {
    const Text<4> read = field.view();
    Text<4> digits;
    for (const char c : read.view()) {
        if (c != blank_char) digits.append(View(&c, 1));
    }
    int value = 0;
    if (read_integer(digits, value)) return value;
    write_standard_error({" *** Invalid integer in run control file: ", label, " ", read});
    end_run(2);
}

// The setting for the current label if it is a text, else null.
Line* find_text() {
    for (const TextSetting& setting : text_settings) {
        if (label == setting.label) return setting.text;
    }
    return nullptr;
}

void apply_line() {
    if (Line* const text = find_text(); text != nullptr) {
        *text = field;
    } else if (label == "NCO") {
        nconst = counter_value();
    } else if (label == "NMO") {
        nmodel = counter_value();
    } else if (label == "MDL") {
        upper(field);
        model = field.view();
    } else {
        write_standard_error({"STOP ", " INVALID INPUT TO ORVEXPP"});
        end_run();
    }
}

}  // namespace

void read_control_file() {
    View line;
    while (read_line(kctl, line)) {
        if (line.ends_with(carriage_return) && line_was_ended(kctl)) line.remove_suffix(1);
        label = line.substr(0, label_columns);
        field = line.size() < value_column ? View() : line.substr(value_column - 1);
        apply_line();
    }
}

}  // namespace orvex
