#include "frontend/views/listed_names.h"

#include "frontend/syntax/source.h"

#include <algorithm>
#include <cstddef>

namespace orvex::frontend {

std::vector<Index> used_names(const Model& model, Kind kind) {
    const auto is_listed = [&](Index number, bool declared) {
        const Symbol& symbol = model.symbols[number];
        return symbol.kind == kind && symbol.first_use != no_index &&
               symbol.is_declared == declared;
    };
    std::vector<Index> names;
    for (const Index number : model.declared)
        if (is_listed(number, true)) names.push_back(number);
    const auto declared = static_cast<std::ptrdiff_t>(names.size());
    for (Index number = 0; number < model.symbols.size(); ++number)
        if (is_listed(number, false)) names.push_back(number);
    std::sort(names.begin() + declared, names.end(),
              [&](Index a, Index b) { return name_of(model, a) < name_of(model, b); });
    return names;
}

std::vector<Index> known_names(const Model& model, Kind kind) {
    std::vector<Index> names = used_names(model, kind);
    std::erase_if(names, [&](Index number) { return !model.symbols[number].entered; });
    return names;
}

std::string name_with_arguments(const Model& model, Index symbol) {
    std::string text = name_of(model, symbol);
    std::string_view before = "(";
    for (const std::string& argument : model.symbols[symbol].arguments) {
        text.append(before).append(argument);
        before = ",";
    }
    return model.symbols[symbol].arguments.empty() ? text : text + ")";
}

std::string_view description_of(const Model& model, std::string_view bytes, Index symbol) {
    return text_of(bytes, model.symbols[symbol].description);
}

int declared_line(const Symbol& symbol) {
    return symbol.is_declared ? line_of_record(symbol.declared_record) : 0;
}

std::vector<int> reference_lines(const Model& model, const Symbol& symbol) {
    std::vector<int> lines;
    for (Index number = symbol.first_use; number != no_index; number = model.uses[number].next) {
        const Use& use = model.uses[number];
        if (use.listed != no_index && use.role != Role::lead)
            lines.push_back(line_of_record(use.record));
    }
    return lines;
}

}  // namespace orvex::frontend
