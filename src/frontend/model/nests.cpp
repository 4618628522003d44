#include "frontend/model/nests.h"

#include "frontend/syntax/reading.h"

#include <algorithm>
#include <string>
#include <utility>

namespace orvex::frontend {

namespace {

std::string key_of(Index block, std::string_view name) {
    return std::to_string(block).append(" ").append(name);
}

Index number_of(const Model& model, Index block, std::string_view name) {
    return model.nest_keys.find(key_of(block, name));
}

void add(Model& model, Nest nest) {
    model.nest_keys.add(key_of(nest.block, nest.name));
    model.nests.push_back(std::move(nest));
}

}  // namespace

void add_nest_roots(Model& model, Index block) {
    add(model, {"S", {}, block, no_index});
    add(model, {"T", {}, block, no_index});
}

void add_nest(Model& model, std::string_view bytes, Index block, const Field& field) {
    const std::string label = capitals(text_of(bytes, field.label));
    const std::size_t open = std::min(label.find('('), label.size());
    const std::string name = label.substr(0, open);
    if (number_of(model, block, name) != no_index) return;
    const std::size_t close = std::min(label.find(')', open), label.size());
    const std::string parent = open == label.size() ? "" : label.substr(open + 1, close - open - 1);
    add(model, {name, field.label, block, number_of(model, block, parent)});
}

const Nest* find_nest(const Model& model, Index block, std::string_view name) {
    const Index number = number_of(model, block, name);
    return number == no_index ? nullptr : &model.nests[number];
}

}  // namespace orvex::frontend
