#include "frontend/views/graph.h"

#include "frontend/base/bytes.h"
#include "frontend/translator/generator.h"
#include "frontend/views/graphviz.h"
#include "frontend/views/incidence.h"
#include "frontend/views/info.h"
#include "frontend/views/json.h"
#include "frontend/views/mermaid.h"

#include <algorithm>
#include <map>
#include <tuple>
#include <utility>

namespace orvex::frontend {

namespace {

constexpr std::size_t nowhere = static_cast<std::size_t>(-1);

// A graph in the making.
struct Builder {
    Graph graph;
    std::map<std::string, std::size_t> node_of;
    std::map<std::tuple<std::size_t, std::size_t, Flow>, std::size_t> edge_of;
};

void add_nodes(const Economy& economy, Builder& builder) {
    for (const Name* name : ordered_names(economy)) {
        if (!is_variable(name->kind)) continue;
        Node node;
        node.name = as_utf8(name->name);
        node.kind = name->kind;
        node.label = as_utf8(reference(name->name, name->arguments));
        node.description = as_utf8(name->description);
        const auto& determined = economy.constraints;
        node.constraint =
            name->kind == Kind::auxiliary &&
            std::find(determined.begin(), determined.end(), name->name) != determined.end();
        builder.node_of.emplace(name->name, builder.graph.nodes.size());
        builder.graph.nodes.push_back(node);
    }
}

// The node of a name of this kind. Names of other kinds can stand in a block where it is wrong in a
// way that the translator does not mind.
std::size_t node_at(const Builder& builder, const std::string& name, Kind kind) {
    const auto found = builder.node_of.find(name);
    if (found == builder.node_of.end()) return nowhere;
    return builder.graph.nodes[found->second].kind == kind ? found->second : nowhere;
}

void append(std::string& list, std::string_view separator, std::string_view text) {
    if (text.empty()) return;
    if (!list.empty()) list += separator;
    list += text;
}

// Whether a label that was joined with "; " has this part already.
bool has_part(std::string_view list, std::string_view part) {
    for (std::size_t at = 0; at <= list.size();) {
        const std::size_t end = std::min(list.find("; ", at), list.size());
        if (list.substr(at, end - at) == part) return true;
        at = end + 2;
    }
    return false;
}

// A second arrow of the same kind between the same two nodes joins the first.
void add_edge(Builder& builder, std::size_t from, std::size_t to, Flow flow,
              const std::string& label) {
    if (from == nowhere || to == nowhere) return;
    const std::string text = as_utf8(label);
    const auto [place, is_new] =
        builder.edge_of.try_emplace({from, to, flow}, builder.graph.edges.size());
    if (is_new) {
        builder.graph.edges.push_back({from, to, flow, text});
        return;
    }
    std::string& joined = builder.graph.edges[place->second].label;
    if (!has_part(joined, text)) append(joined, "; ", text);
}

// What the fields of an entry come to: the label of the flow itself, the taxes on it, and the
// variables that determine it.
struct Details {
    struct Other {
        Flow flow = Flow::taxes;
        std::string name;
        std::string label;
    };
    std::string label;
    std::vector<Other> others;
};

Details read_fields(const Entry& entry) {
    Details details;
    std::size_t tax = nowhere;  // index of the tax that T: and N: belong to
    for (const Field& field : entry.fields) {
        const bool is_rate = field.label == "N";
        const std::string text = field.label + ':' + field.text;
        if (field.label == "A") {
            tax = details.others.size();
            details.others.push_back({Flow::taxes, field.name, entry.reference});
        } else if (is_rate || field.label == "R") {
            if (is_rate && tax != nowhere) append(details.others[tax].label, " ", text);
            details.others.push_back(
                {Flow::sets, field.name, field.label + ": of " + entry.reference});
        } else if (field.label == "T" && tax != nowhere) {
            append(details.others[tax].label, " ", text);
        } else if (!field.text.empty()) {
            // A field without a value only says which nest the entry is in.
            append(details.label, " ", text);
        }
    }
    return details;
}

void add_entry(const Entry& entry, std::size_t owner, Builder& builder) {
    const std::size_t good = node_at(builder, entry.name, Kind::commodity);
    const Details details = read_fields(entry);
    if (entry.label == "O") add_edge(builder, owner, good, Flow::makes, details.label);
    if (entry.label == "I") add_edge(builder, good, owner, Flow::uses, details.label);
    if (entry.label == "D") add_edge(builder, good, owner, Flow::demands, details.label);
    if (entry.label == "E") add_edge(builder, owner, good, Flow::endows, details.label);
    for (const Details::Other& other : details.others) {
        if (other.flow == Flow::taxes)
            add_edge(builder, owner, node_at(builder, other.name, Kind::consumer), Flow::taxes,
                     other.label);
        else
            add_edge(builder, node_at(builder, other.name, Kind::auxiliary), owner, Flow::sets,
                     other.label);
    }
}

// The number of arrows between a node and each other; -1 where nothing leads there.
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

Graph make_graph(const Economy& economy) {
    Builder builder;
    builder.graph.model = as_utf8(economy.model);
    add_nodes(economy, builder);
    for (const Block& block : economy.blocks) {
        if (block.label == "REPORT") continue;
        const Kind kind = block.label == "PROD" ? Kind::sector : Kind::consumer;
        const std::size_t owner = node_at(builder, block.name, kind);
        for (const Entry& entry : block.entries) add_entry(entry, owner, builder);
    }
    return builder.graph;
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
            part.edges.push_back({from, to, edge.flow, edge.label});
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
