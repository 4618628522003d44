#include "frontend/commands/warnings.h"
#include "frontend/findings/failure.h"
#include "frontend/findings/place.h"
#include "frontend/findings/wording.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace orvex::frontend {

namespace {

// Labels that mean something only with a value behind them. Any other one can be that of a nest.
constexpr std::string_view full_labels[] = {"Q", "P", "A", "T", "N", "R", "S", "K"};

// Those of them that say more of the row above, and so begin no row of their own.
constexpr std::string_view added_labels[] = {"Q", "P", "A", "T", "N", "R"};

template <std::size_t count>
bool is_one_of(std::string_view label, const std::string_view (&labels)[count]) {
    return std::find(std::begin(labels), std::end(labels), label) != std::end(labels);
}

void warn_of_start(const Source& source, const Entry& entry, std::vector<Finding>& findings) {
    if (!is_one_of(entry.label, added_labels)) return;
    const bool known = entry.line > 0;
    if (known && is_indented(line_at(source, entry.line).text))
        return;  // its "+" was found already
    findings.push_back(warning("entry-label",
                               "an entry begins with " + back_quoted(entry.label + ":") +
                                   ", which belongs to the one above",
                               label_span(source, entry.line, entry.label)));
}

// An option ends the block. What follows is still translated, but without the block's loops.
void warn_of_place(const Source& source, const Entry& entry, std::vector<Finding>& findings) {
    if (!entry.outside) return;
    findings.push_back(warning("entry-outside", "an option has ended the block of this entry",
                               label_span(source, entry.line, entry.label)));
}

void warn_of_gap(const Source& source, const Field& field, std::vector<Finding>& findings) {
    findings.push_back(warning("field-empty", back_quoted(field.label + ":") + " has no value",
                               label_span(source, field.line, field.label)));
}

// The nest that a label names: VA of "VA" and of "VA(S)", which says what it is a part of.
std::string_view nest_of(const Field& field) {
    return std::string_view(field.label).substr(0, field.label.find('('));
}

// A row gets into a nest by its label alone; the opening line is to say how the nest is put together. (Those
// that are elements of a set are left alone: their labels are made when the host's program runs.)
void warn_of_nest(const Source& source, const Block& block, const Field& field,
                  std::vector<Finding>& findings) {
    if (field.label.find(".TL") != std::string::npos) return;
    const bool opened =
        std::any_of(block.fields.begin(), block.fields.end(),
                    [&](const Field& nest) { return nest_of(nest) == field.label; });
    if (opened) return;
    findings.push_back(
        warning("nest-undeclared",
                "nest " + back_quoted(field.label) + " is not in the block's opening line",
                label_span(source, field.line, field.label)));
}

void warn_of_block(const Source& source, const Block& block, std::vector<Finding>& findings) {
    for (const Field& field : block.fields) {
        if (field.text.empty()) warn_of_gap(source, field, findings);
    }
    for (const Entry& entry : block.entries) {
        warn_of_start(source, entry, findings);
        warn_of_place(source, entry, findings);
        for (const Field& field : entry.fields) {
            if (!field.text.empty()) continue;
            if (is_one_of(field.label, full_labels)) {
                warn_of_gap(source, field, findings);
            } else {
                warn_of_nest(source, block, field, findings);
            }
        }
    }
}

// Sets that the host's program cannot have: one without a name, or an element that was to stand in double
// quotes.
void warn_of_loop(const Source& source, const Loop& loop, std::vector<Finding>& findings) {
    for (const std::string& set : loop.sets) {
        if (set.empty()) {
            findings.push_back(
                warning("argument-blank", "an argument is blank", record_span(source, loop.line)));
        } else if (set.front() == '\'') {
            findings.push_back(warning("argument-quotes", back_quoted(set) + " is taken for a set",
                                       name_span(source, loop.line, set)));
        }
    }
}

}  // namespace

void warn_of_rows(const Source& source, const Economy& economy, std::vector<Finding>& findings) {
    for (const Block& block : economy.blocks) {
        if (block.label != "REPORT") warn_of_block(source, block, findings);
    }
    for (const Loop& loop : economy.loops) warn_of_loop(source, loop, findings);
    for (const int line : economy.nameless) {
        findings.push_back(
            warning("name-missing", "a declaration has no name", record_span(source, line)));
    }
}

}  // namespace orvex::frontend
