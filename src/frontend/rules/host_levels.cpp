#include "frontend/rules/host_levels.h"

#include "frontend/base/bytes.h"
#include "frontend/syntax/expressions.h"
#include "frontend/syntax/reading.h"
#include "notation/records.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace orvex::frontend {

namespace {

constexpr std::string_view level_suffixes[] = {".L", ".FX"};

std::string_view usual_level(Kind kind) { return kind == Kind::auxiliary ? "0" : "1"; }

// The name that ends before a place in a line.
std::string_view name_before(std::string_view line, std::size_t end) {
    std::size_t begin = end;
    while (begin > 0 && is_name_byte(line[begin - 1])) --begin;
    return line.substr(begin, end - begin);
}

// Does the rest of a line, after the name and its suffix, assign a value other than the usual one?
bool assigns_other(std::string_view rest, std::string_view usual) {
    const std::size_t equals = rest.find('=');
    if (equals == std::string_view::npos) return false;
    rest.remove_prefix(equals + 1);
    return trimmed(rest.substr(0, rest.find(';'))) != usual;
}

bool sets_level(const Model& model, std::string_view line, std::string_view suffix) {
    for (std::size_t at = line.find(suffix); at != std::string_view::npos;
         at = line.find(suffix, at + 1)) {
        const std::size_t end = at + suffix.size();
        if (end < line.size() && is_name_byte(line[end])) continue;
        const Symbol* const symbol = find_symbol(model, name_before(line, at));
        if (symbol == nullptr || !is_variable(symbol->kind)) continue;
        if (assigns_other(line.substr(end), usual_level(symbol->kind))) return true;
    }
    return false;
}

}  // namespace

bool sets_levels(const Source& source, const Model& model) {
    const Tree& tree = source.tree;
    for (Index record = 0; record < line_count(tree); ++record) {
        if (tree.records[record].kind != RecordKind::outside) continue;
        const std::string line = capitals(line_text(source, line_of_record(record)));
        if (line.starts_with(notation::comment_mark)) continue;
        const bool sets =
            std::any_of(std::begin(level_suffixes), std::end(level_suffixes),
                        [&](std::string_view suffix) { return sets_level(model, line, suffix); });
        if (sets) return true;
    }
    return false;
}

}  // namespace orvex::frontend
