#include "frontend/views/json.h"

#include "frontend/base/bytes.h"
#include "frontend/views/listed_names.h"
#include "frontend/views/places.h"

#include <array>
#include <charconv>
#include <concepts>
#include <cstddef>
#include <nlohmann/json.hpp>
#include <string_view>
#include <utility>
#include <vector>

namespace orvex::frontend {

namespace {

using nlohmann::ordered_json;

constexpr int data_version = 2;

std::string dumped(const ordered_json& value) {
    return value.dump(-1, ' ', false, ordered_json::error_handler_t::replace);
}

// A number that may be unknown.
ordered_json known(int number, int unknown) {
    return number == unknown ? ordered_json() : ordered_json(number);
}

ordered_json texts(const std::vector<std::string>& list) {
    ordered_json result = ordered_json::array();
    for (const std::string& text : list) result.push_back(as_utf8(text));
    return result;
}

// Appends an object without its end, so that members can be written as they are found: as objects,
// the uses of a large model take several times the memory.
void put_open(const ordered_json& object, std::string& out) {
    out += dumped(object);
    out.pop_back();
}

void put_comma(bool is_first, std::string& out) {
    if (!is_first) out += ',';
}

void put_number(std::string_view before, std::integral auto number, std::string& out) {
    std::array<char, 20> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    out.append(before).append(digits.data(), end);
}

// A place without its end.
void put_place(const NamePlace& place, std::string& out) {
    put_number(R"({"line":)", place.line, out);
    put_number(R"(,"column":)", place.column, out);
    put_number(R"(,"end_column":)", place.end_column, out);
    put_number(R"(,"byte_start":)", place.bytes.begin, out);
    put_number(R"(,"byte_end":)", place.bytes.end, out);
}

// What the names of a model are shown from.
struct Names {
    const Source& source;
    const Model& model;
    std::vector<NamePlace> uses;
    PlaceFinder finder;
};

void put_uses(const Names& names, const Symbol& symbol, std::string& out) {
    bool is_first = true;
    out += R"(,"uses":[)";
    for (const Index number : uses_of(names.model, symbol)) {
        put_comma(std::exchange(is_first, false), out);
        put_place(names.uses[number], out);
        out.append(R"(,"role":")").append(role_name(names.model.uses[number].role)) += R"("})";
    }
    out += ']';
}

void put_declaration(Names& names, const Symbol& symbol, std::string& out) {
    out += R"(,"declaration":)";
    if (!symbol.is_declared) {
        out += "null";
        return;
    }
    put_place(names.finder.find(symbol.declared_record, symbol.declaration), out);
    out += '}';
}

std::string_view kind_text(Kind kind) { return kind == Kind::host ? "host" : kind_name(kind); }

void put_name(Names& names, Index number, std::string& out) {
    const Model& model = names.model;
    const Symbol& symbol = model.symbols[number];
    const std::string_view description = description_of(model, names.source.bytes, number);
    put_open({{"name", as_utf8(name_of(model, number))},
              {"kind", kind_text(symbol.kind)},
              {"dimension", known(symbol.dimension, -1)},
              {"arguments", texts(symbol.arguments)},
              {"description", as_utf8(description)},
              {"declared", known(declared_line(symbol), 0)},
              {"references", reference_lines(model, symbol)}},
             out);
    put_declaration(names, symbol, out);
    put_uses(names, symbol, out);
    out += '}';
}

void put_names(const Source& source, const Model& model, std::string& out) {
    Names names{source, model, places_of_uses(source, model), PlaceFinder(source)};
    bool is_first = true;
    out += R"(,"names":[)";
    for (const Kind kind : listed_kinds) {
        for (const Index number : used_names(model, kind)) {
            put_comma(std::exchange(is_first, false), out);
            put_name(names, number, out);
        }
    }
    out += ']';
}

void put_constraints(const Source& source, const Model& model, std::string& out) {
    std::vector<std::string> names;
    for (const Constraint& constraint : model.constraints)
        names.push_back(name_of(model, constraint.symbol));
    out += R"(,"constraints":)" + dumped(texts(names)) + R"(,"constraint_places":[)";
    PlaceFinder finder(source);
    bool is_first = true;
    for (const Constraint& constraint : model.constraints) {
        put_comma(std::exchange(is_first, false), out);
        put_place(finder.find(constraint.record, constraint.name), out);
        out += '}';
    }
    out += ']';
}

std::string id(std::size_t node) { return 'n' + std::to_string(node + 1); }

}  // namespace

std::string as_utf8(std::string_view text) {
    const bool latin1 = !is_utf8(text);
    std::string result;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x20 || byte == 0x7F) {
            result += ' ';
        } else if (latin1 && byte >= 0x80) {
            result += static_cast<char>(0xC0 | (byte >> 6));
            result += static_cast<char>(0x80 | (byte & 0x3F));
        } else {
            result += c;
        }
    }
    return result;
}

std::string info_json(const Source& source, const Model& model) {
    std::string out;
    put_open({{"version", data_version},
              {"type", "model"},
              {"model", as_utf8(model.name)},
              {"path", as_utf8(source.path)},
              {"line", source.models[model.node].line}},
             out);
    put_names(source, model, out);
    put_constraints(source, model, out);
    put_number(R"(,"errors":)", model.errors.size(), out);
    return out + "}\n";
}

std::string graph_json(const Graph& graph) {
    ordered_json nodes = ordered_json::array();
    for (std::size_t i = 0; i < graph.nodes.size(); ++i) {
        const Node& node = graph.nodes[i];
        nodes.push_back({{"id", id(i)},
                         {"name", node.name},
                         {"kind", kind_name(node.kind)},
                         {"label", node.label},
                         {"description", node.description},
                         {"constraint", node.constraint},
                         {"blocks", node.blocks}});
    }
    ordered_json edges = ordered_json::array();
    for (const Edge& edge : graph.edges) {
        edges.push_back({{"from", id(edge.from)},
                         {"to", id(edge.to)},
                         {"flow", row_of(edge.flow).word},
                         {"label", edge.label},
                         {"lines", edge.lines}});
    }
    return dumped({{"version", data_version},
                   {"type", "graph"},
                   {"model", graph.model},
                   {"nodes", nodes},
                   {"edges", edges}}) +
           '\n';
}

}  // namespace orvex::frontend
