#include "layout_properties.h"

#include "driver/run.h"
#include "frontend/base/files.h"
#include "frontend/fixes/revision.h"
#include "frontend/layout/layout.h"
#include "frontend/model/build.h"
#include "frontend/syntax/reading.h"
#include "frontend/syntax/source.h"
#include "frontend/translator/judge.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <random>
#include <sstream>
#include <string_view>
#include <vector>

namespace layout_properties {

using namespace orvex::frontend;
using std::string;
using std::string_view;

namespace {

struct Broken {
    string what;
};

void require(bool holds, const string& what) {
    if (!holds) throw Broken{what};
}

std::vector<Edit> edits_of(const Source& source) {
    std::vector<Edit> edits;
    for (const Model& model : build_models(source.bytes, source.tree)) {
        require(model.errors.empty(), "an error in the model");
        const std::vector<Edit> of_model = layout_of(source, model);
        edits.insert(edits.end(), of_model.begin(), of_model.end());
    }
    std::size_t at = 0;
    for (const Edit& edit : edits) {
        require(edit.begin >= at && edit.begin <= edit.end, "edits that are not apart");
        at = edit.end;
    }
    return edits;
}

Source source_of(string text) {
    Source source;
    source.bytes = std::move(text);
    parse_source(source);
    return source;
}

string laid_out(const Source& source) { return edited(source.bytes, edits_of(source)); }

// The text with the contents of all models that have errors as comments.
string without_errors(const string& text) {
    const Source source = source_of(text);
    std::vector<Index> all;
    std::vector<Expectation> expectations;
    for (const Model& model : build_models(source.bytes, source.tree)) {
        all.push_back(model.node);
        expectations.push_back(expectation_of(model));
    }
    return second_input(source, all, expectations);
}

// An output without line numbers, the echo of the text, and the lines where names are used.
string without_lines(const string& output) {
    std::istringstream lines(output);
    string kept;
    bool in_echo = false;
    for (string line; std::getline(lines, line);) {
        if (line.starts_with("{") && line.size() > 6 && line[6] == '}') line.erase(1, 5);
        in_echo = in_echo || line.find(" PREPROCESSOR ") != string::npos;
        const bool is_listing = line == "Symbol Listing";
        if (is_listing) in_echo = false;
        if (in_echo) continue;
        kept += line + "\n";
        if (!is_listing) continue;
        // Only the first line of a symbol begins with a name.
        while (std::getline(lines, line) && line != "$OFFTEXT") {
            if (!line.empty() && line[0] != ' ') kept += line.substr(0, line.find("     ")) + "\n";
        }
    }
    return kept;
}

// The translator's outputs for an input.
string outputs_of(const string& input) {
    static const TempDir place;
    std::filesystem::current_path(place.path());
    for (const auto& file : std::filesystem::directory_iterator(".")) remove(file.path());
    write_private_file("control", "INP input\nERR error\n");
    write_private_file("input", input);
    string outputs = "status " + std::to_string(orvex::run("control")) + "\n";
    std::vector<string> names;
    for (const auto& file : std::filesystem::directory_iterator("."))
        names.push_back(file.path().filename().string());
    std::sort(names.begin(), names.end());
    for (const string& name : names) {
        string text;
        if (name == "control" || name == "input" || !read_file(name, text)) continue;
        outputs += name + ":\n" + without_lines(text);
    }
    return outputs;
}

// The comments and the text outside models, with all descriptions, in order.
std::vector<string> comments_of(const Source& source) {
    std::vector<string> comments;
    for (Index token = 0; token + 1 < source.tree.tokens.size(); ++token) {
        const TokenKind kind = source.tree.tokens[token].kind;
        if (kind == TokenKind::comment || kind == TokenKind::description ||
            kind == TokenKind::outside || kind == TokenKind::unread)
            comments.emplace_back(text_of(source.bytes, range_of(source.tree, token)));
    }
    return comments;
}

// The longest line in a model.
std::size_t longest_line(const Source& source) {
    std::size_t longest = 0;
    for (Index record = 0; record + 1 < source.tree.records.size(); ++record) {
        const Range line = line_range(source.tree, record);
        if (source.tree.records[record].kind != RecordKind::outside)
            longest = std::max<std::size_t>(longest, line.end - line.begin);
    }
    return longest;
}

// Blanks that are layout: before a label, a name of a declaration and a "!", and after the colon of
// a label.
bool is_layout(const Tree& tree, Index record, Index token) {
    const RecordKind kind = tree.records[record].kind;
    const bool has_fields = kind == RecordKind::entry || kind == RecordKind::continuation ||
                            kind == RecordKind::report || kind == RecordKind::opening;
    const auto kind_at = [&](Index at) { return tree.tokens[at].kind; };
    if (kind == RecordKind::names) {
        const Index first = tree.records[record].field;
        const Index end = tree.records[record + 1].field;
        return std::any_of(tree.fields.begin() + first, tree.fields.begin() + end,
                           [&](const FieldNode& field) { return field.token == token + 1; });
    }
    if (!has_fields || tree.records[record].field == tree.records[record + 1].field) return false;
    const Index first = tree.fields[tree.records[record].field].token;
    if (kind == RecordKind::opening && first != tree.records[record].token) return false;
    return kind_at(token + 1) == TokenKind::label ||
           (kind_at(token - 1) == TokenKind::colon && kind_at(token + 1) != TokenKind::colon &&
            kind_at(token + 1) != TokenKind::blank && kind_at(token + 1) != TokenKind::line_end);
}

// The text with its layout blanks changed.
string with_other_blanks(const Source& source, unsigned choice) {
    std::mt19937 random(choice);
    const Tree& tree = source.tree;
    string text;
    for (Index record = 0; record + 1 < tree.records.size(); ++record) {
        for (Index token = tree.records[record].token; token < tree.records[record + 1].token;
             ++token) {
            const string_view bytes = text_of(source.bytes, range_of(tree, token));
            const bool may_change =
                tree.tokens[token].kind == TokenKind::blank && is_layout(tree, record, token);
            if (may_change && random() % 2 == 0) {
                text.append(1 + random() % 4, random() % 4 == 0 ? '\t' : ' ');
            } else {
                text += bytes;
            }
        }
    }
    return text;
}

void check(const string& given, unsigned blanks) {
    const string text = without_errors(given);
    const Source before = source_of(text);
    const bool has_names =
        std::all_of(before.models.begin(), before.models.end(), [](const ModelText& model) {
            return !model.name.empty() && model.name.find('/') == string::npos;
        });
    if (before.models.empty() || !has_names) return;
    const string formatted = laid_out(before);
    const Source after = source_of(formatted);
    require(laid_out(after) == formatted, "formatted twice:\n" + laid_out(after));
    require(comments_of(before) == comments_of(after), "comments:\n" + formatted);
    const string outputs = outputs_of(text);
    const string new_outputs = outputs_of(formatted);
    require(outputs == new_outputs, "outputs:\n" + outputs + "\nof\n" + formatted + new_outputs);
    const Source other = source_of(with_other_blanks(before, blanks));
    // If a line is nearly full, what fits depends on its blanks.
    constexpr std::size_t nearly_full = 200;
    if (std::max({longest_line(before), longest_line(other), longest_line(after)}) > nearly_full)
        return;
    const string of_other = laid_out(other);
    require(of_other == formatted, "other blanks:\n" + other.bytes + "\n" + of_other);
}

}  // namespace

std::string laid_out(const std::string& text) {
    try {
        return laid_out(source_of(text));
    } catch (const Broken& found) {
        return found.what;
    }
}

std::string broken(const std::string& text, unsigned blanks) {
    try {
        check(text, blanks);
    } catch (const Broken& found) {
        return found.what + "\nof:\n" + text;
    }
    return {};
}

}  // namespace layout_properties
