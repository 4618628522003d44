#include "frontend/findings/failure.h"
#include "frontend/findings/place.h"
#include "frontend/findings/wording.h"
#include "frontend/rules/warnings.h"

#include <algorithm>
#include <cstddef>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orvex::frontend {

namespace {

using Labels = std::span<const std::string_view>;

// Labels that mean something only with a value behind them. Any other one can be that of a nest.
constexpr std::string_view full_labels[] = {"Q", "P", "A", "T", "N", "R", "S", "K", "Z"};

// Labels of which an entry has one at most.
constexpr std::string_view single_labels[] = {"Q", "P", "S"};

// What an entry can begin with. (A row K is no entry to the translator.)
constexpr std::string_view production_labels[] = {"O", "I", "Z"};
constexpr std::string_view demand_labels[] = {"D", "E", "Z"};
constexpr std::string_view entry_labels[] = {"O", "I", "D", "E"};

bool is_one_of(std::string_view label, Labels labels) {
    return std::find(labels.begin(), labels.end(), label) != labels.end();
}

// Labels that are elements of a set are made when the host's program runs.
bool is_made_by_host(std::string_view label) { return label.find(".TL") != std::string_view::npos; }

// The findings about the rows of one model.
class Rows {
  public:
    Rows(const Source& source, std::vector<Finding>& findings)
        : source_(source), findings_(findings) {}

    void look_at(const Block& block) {
        look_behind_name(block.line, "$" + block.label, block.name);
        look_at_opening(block);
        for (const Entry& entry : block.entries) {
            look_at_start(block, entry);
            look_behind_name(entry.line, entry.label, entry.name);
            look_at_fields(block, entry);
        }
    }

    // Sets that the host's program cannot have: one without a name, or an element that was to stand
    // in double quotes.
    void look_at(const Loop& loop) {
        for (const std::string& set : loop.sets) {
            const bool is_quoted = set.starts_with('\'') || set.starts_with("\xE2\x80");
            if (set.empty()) {
                warn("argument-blank", "an argument is blank", record_span(source_, loop.line));
            } else if (is_quoted) {
                warn("argument-quotes", back_quoted(set) + " is taken for a set",
                     name_span(source_, loop.line, set));
            }
        }
    }

  private:
    void warn(std::string code, std::string message, Span span) {
        findings_.push_back(warning(std::move(code), std::move(message), std::move(span)));
    }

    void warn_at(const Field& field, std::string code, std::string_view what) {
        warn(std::move(code), back_quoted(field.label + ":") + " " + std::string(what),
             label_span(source_, field.line, field.label));
    }

    void warn_of_double(const Field& field) {
        warn("label-twice", back_quoted(field.label + ":") + " stands here twice",
             last_label_span(source_, field.line, field.label));
    }

    void look_at_opening(const Block& block) {
        std::set<std::string_view> labels;
        for (const Field& field : block.fields) {
            if (field.text.empty()) warn_at(field, "field-empty", "has no value");
            if (is_odd(field.text)) warn_at(field, "value-odd", "has a value that is none");
            const bool is_new = labels.insert(field.label).second;
            if (!is_new && !is_made_by_host(field.label)) warn_of_double(field);
        }
    }

    void look_at_start(const Block& block, const Entry& entry) {
        const bool is_production = block.label == "PROD";
        const Labels labels = is_production ? Labels(production_labels) : Labels(demand_labels);
        const Span span = label_span(source_, entry.line, entry.label);
        if (entry.outside) {
            warn("entry-outside", "an option has ended the block of this entry", span);
            return;
        }
        if (is_one_of(entry.label, labels) || is_made_by_host(entry.label)) return;
        // That its "+" stands in a wrong place is found already.
        if (entry.line > 0 && is_indented(line_at(source_, entry.line).text)) return;
        warn("entry-label",
             "no entry of a `$" + block.label + "` block begins with " +
                 back_quoted(entry.label + ":"),
             span);
    }

    // A name with its sets ends the value: what comes behind the parenthesis and is no condition,
    // list or label is dropped.
    void look_behind_name(int line, std::string_view label, std::string_view name) {
        if (line < 1 || name.empty()) return;
        const std::string record = record_of(line_at(source_, line).text);
        const std::size_t at = find_label(record, label);
        if (at == std::string::npos) return;
        const std::size_t start = record.find_first_not_of(' ', at + label.size() + 1);
        if (start == std::string::npos || record.compare(start, name.size(), name) != 0) return;
        if (!record.substr(start + name.size()).starts_with('(')) return;
        const std::size_t close = std::min(record.find(')', start), record.size() - 1);
        const std::size_t begin = record.find_first_not_of(' ', close + 1);
        if (begin == std::string::npos || record[begin] == '$' || record[begin] == '#') return;
        const std::size_t end = std::min(record.find(' ', begin), record.size());
        const bool is_label = record.find(':', begin) <= end + 1;
        if (is_label) return;
        warn("entry-text", "what stands here is not read", span_of(source_, line, begin, end));
    }

    void look_at_fields(const Block& block, const Entry& entry) {
        for (const Field& field : entry.fields) {
            if (is_one_of(field.label, entry_labels)) {
                // What follows belongs to that entry.
                warn_at(field, "entry-joined", "begins an entry, which needs a line of its own");
                return;
            }
            look_at_field(block, field);
        }
        look_at_doubles(entry);
        look_at_tax(entry);
    }

    void look_at_field(const Block& block, const Field& field) {
        if (is_one_of(field.label, full_labels)) {
            if (field.text.empty()) warn_at(field, "field-empty", "has no value");
            if (field.name.empty() && is_odd(field.text)) {
                warn_at(field, "value-odd", "has a value that is none");
            }
        } else if (!is_made_by_host(field.label)) {
            look_at_nest(block, field);
        }
    }

    // An entry gets into a nest by its label alone; the opening line is to say how the nest is put
    // together.
    void look_at_nest(const Block& block, const Field& field) {
        if (!field.text.empty()) {
            warn_at(field, "label-unknown", "is no label of a value");
            return;
        }
        // VA is in "VA" and in "VA(S)", which says what the nest is a part of.
        const bool is_opened =
            std::any_of(block.fields.begin(), block.fields.end(), [&](const Field& nest) {
                return std::string_view(nest.label).substr(0, nest.label.find('(')) == field.label;
            });
        if (is_opened) return;
        warn("nest-undeclared",
             "nest " + back_quoted(field.label) + " is not in the block's opening line",
             label_span(source_, field.line, field.label));
    }

    void look_at_doubles(const Entry& entry) {
        std::set<std::string_view> labels;
        for (const Field& field : entry.fields) {
            if (!is_one_of(field.label, single_labels)) continue;
            if (!labels.insert(field.label).second) warn_of_double(field);
        }
    }

    // A tax takes two labels: who receives it, and how high it is.
    void look_at_tax(const Entry& entry) {
        const Field* receiver = nullptr;
        const Field* rate = nullptr;
        for (const Field& field : entry.fields) {
            if (field.label == "A") receiver = &field;
            if (field.label == "T" || field.label == "N") rate = &field;
        }
        if (receiver != nullptr && rate == nullptr) {
            warn_at(*receiver, "tax-rate", "receives a tax without a rate");
        }
        if (rate != nullptr && receiver == nullptr) {
            warn_at(*rate, "tax-receiver", "is a tax that nobody receives");
        }
    }

    // Outside of parentheses a value has neither blanks nor commas.
    static bool is_odd(std::string_view value) {
        int depth = 0;
        for (const char c : value) {
            depth += c == '(' ? 1 : c == ')' ? -1 : 0;
            const bool separates = c == ' ' || c == ',' || c == ';';
            if (depth < 0 || (depth == 0 && separates)) return true;
        }
        return depth != 0;
    }

    const Source& source_;
    std::vector<Finding>& findings_;
};

}  // namespace

void warn_of_rows(const Source& source, const Economy& economy, std::vector<Finding>& findings) {
    Rows rows(source, findings);
    for (const Block& block : economy.blocks) {
        if (block.label != "REPORT") rows.look_at(block);
    }
    for (const Loop& loop : economy.loops) rows.look_at(loop);
}

}  // namespace orvex::frontend
