#include "frontend/views/graph.h"

#include "frontend/base/bytes.h"
#include "frontend/syntax/expressions.h"
#include "frontend/syntax/fields.h"
#include "frontend/syntax/reading.h"
#include "frontend/views/dot.h"
#include "frontend/views/incidence.h"
#include "frontend/views/json.h"
#include "frontend/views/listed_names.h"
#include "frontend/views/mermaid.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <set>
#include <span>
#include <string>
#include <tuple>
#include <utility>

namespace orvex::frontend {

namespace {

using notation::Opens;

constexpr std::string_view tax_rate_label = "T";
constexpr std::size_t nowhere = static_cast<std::size_t>(-1);

// A graph under construction.
struct Builder {
    const Source& source;
    const Model& model;
    Graph graph;
    std::vector<std::size_t> node_of;  // for each symbol
    std::vector<std::size_t> blocks;   // for each node, the number of its blocks
    std::map<std::tuple<std::size_t, std::size_t, Flow>, std::size_t> edge_of;
    std::set<std::pair<std::size_t, std::string>> parts;  // of the labels of the edges
};

std::vector<bool> constrained_symbols(const Model& model) {
    std::vector<bool> constrained(model.symbols.size(), false);
    for (const Constraint& constraint : model.constraints) constrained[constraint.symbol] = true;
    return constrained;
}

void add_nodes(Builder& builder) {
    const Model& model = builder.model;
    const std::vector<bool> constrained = constrained_symbols(model);
    builder.node_of.assign(model.symbols.size(), nowhere);
    for (const Kind kind : listed_kinds) {
        if (!is_variable(kind)) continue;
        for (const Index symbol : known_names(model, kind)) {
            builder.node_of[symbol] = builder.graph.nodes.size();
            builder.graph.nodes.push_back(
                {as_utf8(name_of(model, symbol)), kind, as_utf8(name_with_arguments(model, symbol)),
                 as_utf8(description_of(model, builder.source.bytes, symbol)),
                 kind == Kind::auxiliary && constrained[symbol]});
        }
    }
}

// The node of a symbol if it has this kind. Other names can occur in a block whose error the
// translator does not report.
std::size_t node_at(const Builder& builder, Index symbol, Kind kind) {
    if (symbol == no_index || builder.model.symbols[symbol].kind != kind) return nowhere;
    return builder.node_of[symbol];
}

void append(std::string& list, std::string_view separator, std::string_view text) {
    if (text.empty()) return;
    if (!list.empty()) list += separator;
    list += text;
}

// An arrow drawn for an entry or a field. One of its ends is the owner of the block.
struct Arrow {
    Flow flow = Flow::makes;
    Index symbol = no_index;  // at the other end
    std::string label;
    Index record = 0;
};

// A second arrow of the same kind between the same two nodes is merged into the first.
void add_edge(Builder& builder, std::size_t from, std::size_t to, const Arrow& arrow) {
    if (from == nowhere || to == nowhere) return;
    std::vector<Edge>& edges = builder.graph.edges;
    const auto [found, is_new] = builder.edge_of.try_emplace({from, to, arrow.flow}, edges.size());
    if (is_new) edges.push_back({from, to, arrow.flow, {}, {}});
    Edge& edge = edges[found->second];
    const std::string label = as_utf8(arrow.label);
    if (builder.parts.emplace(found->second, label).second) append(edge.label, "; ", label);
    const int line = line_of_record(arrow.record);
    if (edge.lines.empty() || edge.lines.back() != line) edge.lines.push_back(line);
}

// The kind of the node at the other end of an arrow from or to the owner of the block.
Kind kind_of_other(Flow flow) {
    if (flow == Flow::taxes) return Kind::consumer;
    return flow == Flow::sets ? Kind::auxiliary : Kind::commodity;
}

bool leaves_owner(Flow flow) {
    return flow == Flow::makes || flow == Flow::endows || flow == Flow::taxes;
}

void add_arrow(Builder& builder, std::size_t owner, const Arrow& arrow) {
    const std::size_t other = node_at(builder, arrow.symbol, kind_of_other(arrow.flow));
    if (leaves_owner(arrow.flow))
        add_edge(builder, owner, other, arrow);
    else
        add_edge(builder, other, owner, arrow);
}

Role role_of(const Model& model, const Field& field) {
    const Index use = field.reference.use;
    return use == no_index ? Role::other : model.uses[use].role;
}

// A name or value with its condition and extra indices: "PT#(RR)", "X0$(X0 GT 1)".
std::string whole_text(const Builder& builder, const Field& field) {
    const std::string_view bytes = builder.source.bytes;
    const FieldParts parts = parts_of(builder.source.tree, field.record, field.node);
    const std::string text = field.reference.name.empty()
                                 ? capitals(text_of(bytes, field.text))
                                 : reference_text(builder.model, bytes, field.reference);
    return text + capitals(trimmed(text_of(bytes, {parts.value.end, parts.all.end})));
}

// "Q:Y0(S)"; "VA:" for the nest of an entry.
std::string field_text(const Builder& builder, const Field& field) {
    return capitals(text_of(builder.source.bytes, field.label)) + ':' + whole_text(builder, field);
}

// What a name with its arguments adds to the label of its node: nothing, "$C(T)", or
// "PK(T+1)$C(T)".
std::string shown_beside(const Builder& builder, const Field& name, std::size_t node) {
    std::string text = whole_text(builder, name);
    if (node == nowhere) return text;
    const std::string& label = builder.graph.nodes[node].label;
    if (!text.starts_with(label)) return text;
    const std::string_view rest = std::string_view(text).substr(label.size());
    const bool is_same = rest.empty() || rest.front() == '$' || rest.front() == '#';
    return is_same ? std::string(rest) : text;
}

// The arrows made from the fields of an entry: the one of the entry itself, those of the taxes on
// it, and those of the variables that set something in it.
struct Arrows {
    std::string block;  // identifies the owner's block if it has several
    Arrow own;
    std::vector<Arrow> others;
    std::size_t tax = nowhere;  // index of the tax that T: and N: belong to
};

void add_field(const Builder& builder, const Field& field, const std::string& entry,
               Arrows& arrows) {
    const Role role = role_of(builder.model, field);
    const bool is_rate =
        role == Role::rate || (field.row != nullptr && field.row->text == tax_rate_label);
    std::string& label =
        is_rate && arrows.tax != nowhere ? arrows.others[arrows.tax].label : arrows.own.label;
    const Index symbol = field.reference.symbol;
    if (role == Role::receives_tax) {
        arrows.tax = arrows.others.size();
        arrows.others.push_back({Flow::taxes, symbol, arrows.block + entry, field.record});
    } else if (role == Role::rate || role == Role::ration) {
        if (is_rate && arrows.tax != nowhere) append(label, " ", field_text(builder, field));
        arrows.others.push_back({Flow::sets, symbol,
                                 arrows.block + std::string(field.row->text) + ": of " + entry,
                                 field.record});
    } else {
        append(label, " ", field_text(builder, field));
    }
}

// Is the quantity of an entry negative, as far as its text shows?
bool is_below_zero(const Builder& builder, std::span<const Entry> entries) {
    const auto fields = fields_of(builder.model, entries.front());
    const auto quantity = std::find_if(fields.begin(), fields.end(), [](const Field& field) {
        return field.row != nullptr && field.row->text == notation::quantity_label;
    });
    return quantity != fields.end() && is_negated(text_of(builder.source.bytes, quantity->text));
}

bool has_flow(Role role) {
    return role == Role::produced || role == Role::used || role == Role::demanded ||
           role == Role::endowed;
}

Flow flow_of(Role role, bool is_below_zero) {
    switch (role) {
    case Role::used: return Flow::uses;
    case Role::demanded: return Flow::demands;
    case Role::endowed: return is_below_zero ? Flow::demands : Flow::endows;
    default: return Flow::makes;
    }
}

using Entries = std::span<const Entry>;

// The block that arrows belong to.
struct Owner {
    std::size_t node = nowhere;
    std::string block;  // identifies the node's block if it has several
};

// Adds the first of the entries. Following entries that only have values, such as K:LIMIT, are part
// of it.
void add_entry(Builder& builder, Entries entries, const Owner& owner) {
    const Model& model = builder.model;
    const Field& head = entries.front().head;
    const std::string reference = whole_text(builder, head);
    const Role role = role_of(model, head);
    Arrows arrows;
    arrows.block = owner.block;
    if (has_flow(role)) {
        const Index symbol = head.reference.symbol;
        arrows.own = {flow_of(role, is_below_zero(builder, entries)), symbol, {}, head.record};
        arrows.own.label = shown_beside(builder, head, node_at(builder, symbol, Kind::commodity));
    }
    for (const Entry& entry : entries) {
        if (!entry.head.is_name) add_field(builder, entry.head, reference, arrows);
        for (const Field& field : fields_of(model, entry))
            add_field(builder, field, reference, arrows);
    }
    const bool is_negative = role == Role::endowed && arrows.own.flow == Flow::demands;
    arrows.own.label.insert(0, owner.block + (is_negative ? "E: " : ""));
    if (has_flow(role)) add_arrow(builder, owner.node, arrows.own);
    for (const Arrow& other : arrows.others) add_arrow(builder, owner.node, other);
}

void add_entries(Builder& builder, Entries entries, const Owner& owner) {
    while (!entries.empty()) {
        const auto next = std::find_if(entries.begin() + 1, entries.end(),
                                       [](const Entry& entry) { return entry.head.is_name; });
        const auto count = static_cast<std::size_t>(next - entries.begin());
        add_entry(builder, entries.first(count), owner);
        entries = entries.subspan(count);
    }
}

// The node of the owner of a block, or nowhere.
std::size_t node_of(const Builder& builder, const Block& block) {
    const Index symbol = block.head.reference.symbol;
    if (is_opened_by(block, Opens::production)) return node_at(builder, symbol, Kind::sector);
    if (is_opened_by(block, Opens::demand)) return node_at(builder, symbol, Kind::consumer);
    return nowhere;
}

void count_blocks(Builder& builder) {
    builder.blocks.assign(builder.graph.nodes.size(), 0);
    for (const Block& block : builder.model.blocks) {
        const std::size_t node = node_of(builder, block);
        if (node != nowhere) ++builder.blocks[node];
    }
}

// Notes the contents of a block's opening record.
Owner open_block(Builder& builder, const Block& block) {
    const std::size_t node = node_of(builder, block);
    if (node == nowhere) return {};
    const std::string difference = shown_beside(builder, block.head, node);
    std::string text = difference;
    for (const Field& field : fields_of(builder.model, block))
        append(text, " ", field_text(builder, field));
    if (!text.empty()) builder.graph.nodes[node].blocks.push_back(as_utf8(text));
    const bool is_one_of_several = builder.blocks[node] > 1 && !difference.empty();
    return {node, is_one_of_several ? whole_text(builder, block.head) + ": " : ""};
}

// Entries after an option still belong to the previous block.
bool ends_block(const Block& block) {
    constexpr Opens ends[] = {Opens::production, Opens::demand, Opens::declaration, Opens::report};
    return std::any_of(std::begin(ends), std::end(ends),
                       [&](Opens opens) { return is_opened_by(block, opens); });
}

// The number of arrows between a node and each other node; -1 if they are not connected.
std::vector<int> distances(const Graph& graph, std::size_t start) {
    std::vector<std::vector<std::size_t>> neighbours(graph.nodes.size());
    for (const Edge& edge : graph.edges) {
        neighbours[edge.from].push_back(edge.to);
        neighbours[edge.to].push_back(edge.from);
    }
    std::vector<int> distance(graph.nodes.size(), -1);
    std::vector<std::size_t> queue = {start};
    distance[start] = 0;
    for (std::size_t next = 0; next < queue.size(); ++next) {
        const std::size_t node = queue[next];
        for (const std::size_t other : neighbours[node]) {
            if (distance[other] >= 0) continue;
            distance[other] = distance[node] + 1;
            queue.push_back(other);
        }
    }
    return distance;
}

}  // namespace

Graph make_graph(const Source& source, const Model& model) {
    Builder builder{source, model, {}, {}, {}, {}, {}};
    builder.graph.model = as_utf8(model.name);
    add_nodes(builder);
    count_blocks(builder);
    Owner owner;
    for (const Block& block : model.blocks) {
        if (ends_block(block)) owner = open_block(builder, block);
        if (owner.node != nowhere) add_entries(builder, entries_of(model, block), owner);
    }
    return std::move(builder.graph);
}

bool focus(Graph& graph, std::string_view name, int depth) {
    std::string wanted(name);
    make_upper(wanted);
    const auto start = std::find_if(graph.nodes.begin(), graph.nodes.end(),
                                    [&](const Node& node) { return node.name == wanted; });
    if (start == graph.nodes.end()) return false;

    const std::vector<int> distance =
        distances(graph, static_cast<std::size_t>(start - graph.nodes.begin()));
    Graph part;
    part.model = graph.model;
    std::vector<std::size_t> place(graph.nodes.size(), nowhere);
    for (std::size_t i = 0; i < graph.nodes.size(); ++i) {
        if (distance[i] < 0 || (depth >= 0 && distance[i] > depth)) continue;
        place[i] = part.nodes.size();
        part.nodes.push_back(graph.nodes[i]);
    }
    for (const Edge& edge : graph.edges) {
        const std::size_t from = place[edge.from];
        const std::size_t to = place[edge.to];
        if (from != nowhere && to != nowhere)
            part.edges.push_back({from, to, edge.flow, edge.label, edge.lines});
    }
    graph = std::move(part);
    return true;
}

std::string draw(const Graph& graph, std::string_view picture) {
    if (picture == "mermaid") return mermaid_text(graph);
    if (picture == "json") return graph_json(graph);
    if (picture == "table") return incidence_table(graph);
    return dot_text(graph);
}

}  // namespace orvex::frontend
