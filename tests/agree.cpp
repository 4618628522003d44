// The rules of the comparison:
//
// - A run that stops reports the first error of the first model that has one, and the last line
//   read by then. The models without an error then pass in the judge's second run.
// - The symbol listing has the names that the model says are entered, with the same kinds. In the
//   listing, a lead or lag (T+1), a quoted element and a blank argument are sets, and a value that
//   is not a plain name (A*B) is a parameter. The model notes no uses of these, nor of names that
//   begin like a number, so their references are not compared.
// - Names declared by a keyword such as $AUXILIARIES are listed only where they are used. Names in
//   conditions, constraints and expressions are never listed.
// - A listing that has lost references (after 10,000 of them, or above line 99,999) has only some
//   of the model's.
// - The generator file prints each declared name, option and field of the model in order, with
//   label and name or value. It is not compared if a statement is so long that it may be cut.
// - Models whose names cannot be used as file names, or are used twice, are not run.
#include "agree.h"

#include "driver/run.h"
#include "frontend/base/bytes.h"
#include "frontend/base/files.h"
#include "frontend/findings/messages.h"
#include "frontend/model/build.h"
#include "frontend/syntax/expressions.h"
#include "frontend/syntax/reading.h"
#include "frontend/syntax/source.h"
#include "frontend/translator/header.h"
#include "frontend/translator/judge.h"
#include "notation/statements.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>

namespace agree {

namespace {

using namespace orvex::frontend;
namespace notation = orvex::notation;
using notation::Opens;
using std::string;
using std::string_view;

// Thrown to report the first difference.
struct Difference {
    string text;
};

void require(bool holds, const string& what) {
    if (!holds) throw Difference{what};
}

// Runs the translator in a temporary folder of this process.
RunResult translate(const string& input, const std::vector<string>& names) {
    static const TempDir place;
    std::filesystem::current_path(place.path());
    for (const auto& file : std::filesystem::directory_iterator(".")) remove(file.path());
    write_private_file("control", "INP input\nERR error\n");
    write_private_file("input", input);
    require(orvex::run("control") == 0, "another status than 0");
    RunResult result = read_outputs(place.path(), names, true);
    require(result.cause.empty(), result.cause);
    return result;
}

class Comparison {
  public:
    Comparison(const string& input, unsigned skipped) {
        source_.bytes = input;
        parse_source(source_);
        bool is_open = false;
        for (Index node = 0; node < model_count(tree_); ++node) {
            if (node < 32 && (skipped >> node & 1U) != 0) continue;
            selected_.push_back(node);
            models_.push_back(build_model(source_.bytes, tree_, node, is_open));
            expectations_.push_back(expectation_of(models_.back()));
            if (models_.back().errors.empty()) is_open = models_.back().opening_is_open;
        }
    }

    void compare() const {
        check_tokens();
        std::vector<string> names;
        for (const Model& model : models_) {
            check_ranges(model);
            names.push_back(model.name);
        }
        if (!are_files(names)) return;
        const auto first = std::find_if(models_.begin(), models_.end(),
                                        [](const Model& model) { return !model.errors.empty(); });
        RunResult result = translate(first_input(source_, selected_), names);
        if (first != models_.end()) {
            compare_stop(*first, result);
            result = translate(second_input(source_, selected_, expectations_), names);
        }
        require(!result.failed, "a stop for " + result.message);
        int lines = 0;
        for (std::size_t i = 0; i < models_.size(); ++i) {
            if (models_[i].errors.empty()) compare_outputs(models_[i], result.models[i], lines);
            const ModelNode& node = tree_.models[models_[i].node];
            lines += static_cast<int>(node.end - node.record) - 1;
        }
    }

  private:
    string_view text(Range range) const { return text_of(source_.bytes, range); }
    Offset begin(const Field& field) const {
        return tree_.tokens[tree_.fields[field.node].token].begin;
    }

    void check_tokens() const {
        Offset end = 0;
        for (Index token = 0; token + 1 < tree_.tokens.size(); ++token) {
            const Range range = range_of(tree_, token);
            require(range.begin == end && !range.empty(), "a gap at " + std::to_string(end));
            end = range.end;
        }
        require(end == source_.bytes.size(), "the tokens end at " + std::to_string(end));
        const auto size = [](const auto&... lists) {
            return (... + (lists.capacity() * sizeof lists[0]));
        };
        require(size(tree_.tokens, tree_.fields, tree_.records, tree_.blocks, tree_.models) <=
                    24 * tree_.tokens.size() + 200,
                "more than 24 bytes a token");
    }

    // Checks that a range is in the line of a record, or is empty.
    void check(Range range, Index record) const {
        const Range line = line_range(tree_, record);
        const bool is_inside =
            range.begin >= line.begin && range.begin <= range.end && range.end <= line.end;
        require(range == Range() || is_inside, "a range out of line " + std::to_string(record + 1));
    }

    void check(const Field& field) const {
        for (const Range range :
             {field.label, field.text, field.ignored, field.before, field.reference.name})
            check(range, field.record);
    }

    void check_ranges(const Model& model) const {
        for (const Use& use : model.uses) {
            check(use.range, use.record);
            require(same_when_read(text(use.range), name_of(model, use.symbol)), "another name");
        }
        for (const Index declared : model.declared) {
            const Symbol& symbol = model.symbols[declared];
            check(symbol.declaration, symbol.declared_record);
            check(symbol.description, symbol.declared_record);
        }
        for (const auto* const fields : {&model.fields, &model.repeated, &model.nameless})
            for (const Field& field : *fields) check(field);
        for (const Entry& entry : model.entries) check(entry.head);
        for (const Block& block : model.blocks) check(block.head);
        for (const Constraint& row : model.constraints) check(row.name, row.record);
        for (const Error& error : model.errors) check(error.place, error.record);
    }

    static bool are_files(const std::vector<string>& names) {
        const std::set<string> distinct(names.begin(), names.end());
        return distinct.size() == names.size() &&
               std::all_of(names.begin(), names.end(), [](const string& name) {
                   return !name.empty() && name.find_first_of({"/\0", 2}) == string::npos;
               });
    }

    void compare_stop(const Model& model, const RunResult& result) const {
        const Error& error = model.errors.front();
        require(result.failed && result.models.back().name == model.name, "no stop in the model");
        require(is_known(source_, expectation_of(model), result),
                "another stop: " + result.message);
        const auto values = recognise(result.message)->values;
        if (values.empty()) return;
        const bool is_cut = result.message.size() >= notation::record_columns;
        const string& told = values.begin()->second;
        require(told == trimmed(error.text).substr(0, is_cut ? told.size() : string::npos),
                result.message + " and not " + error.text);
    }

    void compare_outputs(const Model& model, const ModelOutput& output, int lines_before) const {
        const Header header = read_header(output.header, lines_before);
        std::size_t count = 0;
        for (Index number = 0; number < model.symbols.size(); ++number) {
            const string& name = name_of(model, number);
            const Symbol& symbol = model.symbols[number];
            if (!symbol.entered) continue;
            ++count;
            const ListedSymbol* const listed = find_symbol(header, name);
            require(listed != nullptr && listed->kind == symbol.kind, "another kind of " + name);
            if (!has_uses(name, symbol.kind)) continue;
            const std::vector<int> lines = references_of(model, symbol, lines_before);
            const auto& some = listed->references;
            require(header.references_lost
                        ? std::includes(lines.begin(), lines.end(), some.begin(), some.end())
                        : lines == some,
                    "other references of " + name);
        }
        require(count == header.symbols.size(), "more names in the listing");
        compare_statements(model, output.generator);
    }

    static bool has_uses(const string& name, Kind kind) {
        if (notation::is_numeric(name)) return false;
        if (kind == Kind::parameter) return is_plain_name(name);
        return kind != Kind::set ||
               (!name.empty() && notation::argument_kind(name) == notation::ArgumentKind::set);
    }

    std::vector<int> references_of(const Model& model, const Symbol& symbol, int before) const {
        const Index first = tree_.models[model.node].record;
        std::vector<int> lines;
        for (Index use = symbol.first_use; use != no_index; use = model.uses[use].next) {
            const Index listed = model.uses[use].listed;
            if (listed != no_index) lines.push_back(before + static_cast<int>(listed - first));
        }
        std::sort(lines.begin(), lines.end());
        return lines;
    }

    // The text that a statement prints: label and name, or value. A label such as R.TL is separate.
    string printed(const Field& field, const string& label) const {
        const string value = capitals(text(field.text));
        const string name = value.starts_with('(') ? "(" : capitals(text(field.reference.name));
        if (field.is_name) return label.empty() ? name : "'" + label + ":" + name;
        if (label.find('.') != string::npos) return ":'" + value;
        return label + (value.starts_with('-') ? ":'(" : ":'") + value;
    }

    // The same for all statements of a model, by their places in the input.
    std::map<Offset, string> printed(const Model& model) const {
        std::map<Offset, string> all;
        for (const Index declared : model.declared)
            all[model.symbols[declared].declaration.begin] = "'" + name_of(model, declared) + "'";
        for (const auto* const fields : {&model.repeated, &model.nameless})
            for (const Field& field : *fields)
                all[begin(field)] = capitals(text(field.reference.name));
        for (const Field& field : model.fields)
            all[begin(field)] = printed(field, capitals(text(field.label)));
        for (const Block& block : model.blocks) {
            const Range record = record_range(tree_, block.record);
            if (is_opened_by(block, Opens::option))
                all[record.begin] = "'" + capitals(text(record)) + "'";
            if (is_opened_by(block, Opens::production) || is_opened_by(block, Opens::demand))
                all[begin(block.head)] = printed(block.head, "$" + string(block.keyword->word));
        }
        for (const Entry& entry : model.entries) {
            all.erase(entry.head.reference.name.begin);  // a report variable
            all[begin(entry.head)] = printed(entry.head, capitals(text(entry.head.label)));
        }
        return all;
    }

    static bool is_broken_off(string_view statement) {
        return statement.starts_with("IF (") && !statement.ends_with(",") &&
               !statement.ends_with(");");
    }

    // Does a statement print a name, a value or an option?
    static bool prints(string_view statement) {
        return statement.starts_with("PUT /,") || statement.starts_with("PUT /'+',") ||
               (statement.starts_with("PUT'") && !statement.starts_with("PUT'$")) ||
               (statement.starts_with("IF (") && statement.ends_with(");"));
    }

    void compare_statements(const Model& model, const string& generator) const {
        constexpr std::size_t text_start = 9;
        constexpr std::size_t surely_whole = 200;
        const std::map<Offset, string> all = printed(model);
        auto next = all.begin();
        for (const string_view line : lines_of(generator)) {
            if (!line.starts_with("{") || line.size() == text_start) continue;
            const string_view statement = line.substr(line.find_first_not_of(' ', text_start));
            const bool may_be_cut =
                line.size() > text_start + surely_whole ||
                (next != all.end() && next->second.size() > surely_whole);  // among blanks
            if (may_be_cut || is_broken_off(statement)) return;
            if (!prints(statement)) continue;
            require(next != all.end() && statement.find(next->second) != string::npos,
                    string(statement) + " and not " + (next == all.end() ? "" : next->second));
            ++next;
        }
        require(next == all.end(), "no statement for the last field");
    }

    Source source_;
    const Tree& tree_ = source_.tree;
    std::vector<Index> selected_;
    std::vector<Model> models_;
    std::vector<Expectation> expectations_;
};

}  // namespace

std::string difference(const std::string& input, unsigned skipped) {
    try {
        Comparison(input, skipped).compare();
    } catch (const Difference& found) {
        return found.text;
    }
    return "";
}

std::string fuzzed_input(const std::string& data) {
    const std::size_t end = data.find('\0', 2);
    return end == string::npos ? "" : data.substr(end + 1);
}

}  // namespace agree
