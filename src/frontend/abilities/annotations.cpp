#include "frontend/abilities/annotations.h"

#include "frontend/base/bytes.h"
#include "frontend/syntax/host_lines.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>
#include <utility>

namespace orvex::frontend {

namespace {

std::string sets_of(const Symbol& symbol) {
    std::string text;
    for (const std::string& argument : symbol.arguments)
        text.append(text.empty() ? "(" : ",").append(argument);
    return text + ")";
}

// Is a name followed by its sets, possibly after an attribute?
bool has_sets(std::string_view bytes, Offset end) {
    std::size_t at = bytes.find_first_not_of(" \t", end);
    if (at != std::string_view::npos && bytes[at] == '.')
        at = bytes.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz \t",
                                     at + 1);
    return at != std::string_view::npos && bytes[at] == '(';
}

bool lacks_sets(const Document& document, const UsePlace& place) {
    const Use& use = use_of(document, place);
    const Symbol& symbol = model_of(document, place).symbols[use.symbol];
    if (use.role == Role::declared || !symbol.is_declared || symbol.arguments.empty()) return false;
    return !has_sets(document.source.bytes, use.range.end);
}

// The uses that are counted, in the order in which they are listed.
struct Count {
    std::string_view words;
    Role role;
};

constexpr std::array counts = {
    Count{"made by ", Role::produced},
    Count{"owned by ", Role::endowed},
    Count{"used by ", Role::used},
    Count{"demanded by ", Role::demanded},
    Count{"receives taxes ", Role::receives_tax},
    Count{"is a rate ", Role::rate},
    Count{"rations ", Role::ration},
    Count{"blocks ", Role::block},
    Count{"constraints ", Role::constraint},
    Count{"in values ", Role::value},
    Count{"in conditions ", Role::condition},
    Count{"in reports ", Role::report},
};

// The file name in a line "$INCLUDE NAME", without blanks and quotes around it.
Range included_file(std::string_view bytes, Range line) {
    const std::string_view text = text_of(bytes, line);
    if (!is_directive(text, include_directive)) return {};
    const std::string_view name =
        trimmed(trimmed(text.substr(1 + include_directive.size())), "\"'");
    const auto begin = static_cast<Offset>(name.data() - bytes.data());
    return {begin, begin + static_cast<Offset>(name.size())};
}

}  // namespace

std::vector<Hint> hints_in(const Document& document, Range range) {
    std::vector<Hint> hints;
    const auto first = std::lower_bound(document.uses.begin(), document.uses.end(), range.begin,
                                        [&](const UsePlace& use, Offset offset) {
                                            return use_of(document, use).range.end < offset;
                                        });
    for (auto place = first; place != document.uses.end(); ++place) {
        const Use& use = use_of(document, *place);
        if (use.range.begin >= range.end) break;
        if (lacks_sets(document, *place))
            hints.push_back(
                {use.range.end, sets_of(model_of(document, *place).symbols[use.symbol])});
    }
    return hints;
}

std::string uses_text(const Model& model, const Symbol& symbol) {
    std::array<int, counts.size()> found{};
    for (Index use = symbol.first_use; use != no_index; use = model.uses[use].next) {
        const auto count = std::find_if(counts.begin(), counts.end(), [&](const Count& row) {
            return row.role == model.uses[use].role;
        });
        if (count != counts.end()) ++found[static_cast<std::size_t>(count - counts.begin())];
    }
    std::string text;
    for (std::size_t i = 0; i < counts.size(); ++i) {
        if (found[i] == 0) continue;
        text.append(text.empty() ? "" : ", ").append(counts[i].words);
        text += std::to_string(found[i]);
    }
    return text.empty() ? "not used" : text;
}

std::vector<Lens> lenses_of(const Document& document) {
    std::vector<Lens> lenses;
    for (const Model& model : document.models) {
        for (const Index index : model.declared) {
            const Symbol& symbol = model.symbols[index];
            if (is_variable(symbol.kind) && !symbol.declaration.empty())
                lenses.push_back({symbol.declaration, uses_text(model, symbol)});
        }
    }
    return lenses;
}

std::vector<FileLink> links_of(const Document& document) {
    std::vector<FileLink> links;
    const Tree& tree = document.source.tree;
    for (Index record = 0; record < line_count(tree); ++record) {
        if (tree.records[record].kind != RecordKind::outside) continue;
        const Range name = included_file(document.source.bytes, line_range(tree, record));
        if (!name.empty())
            links.push_back({name, std::string(text_of(document.source.bytes, name))});
    }
    return links;
}

}  // namespace orvex::frontend
