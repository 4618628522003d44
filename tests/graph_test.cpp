// The output of `orvex info` and `orvex graph` for a model.
#include "frontend/views/graph.h"

#include "frontend/base/graphviz.h"
#include "frontend/model/build.h"
#include "frontend/syntax/source.h"
#include "frontend/views/info.h"
#include "frontend/views/json.h"
#include "harness.h"
#include "tools.h"

#include <algorithm>
#include <chrono>
#include <gtest/gtest.h>
#include <string>
#include <vector>

using namespace orvex::frontend;
using harness::Folder;
using std::string;

namespace {

struct ModelOfText {
    Source source;
    Model model;
};

// The first model of a text.
ModelOfText build(const string& text, const string& path = "m.zlm") {
    ModelOfText built;
    built.source.path = path;
    built.source.bytes = text;
    parse_source(built.source);
    built.model = build_model(built.source.bytes, built.source.tree, 0, false);
    return built;
}

Graph graph_of(const string& text) {
    const ModelOfText built = build(text);
    EXPECT_EQ(built.model.errors.size(), 0U);
    return make_graph(built.source, built.model);
}

// A sector that buys its input twice, taxed both times, and a variable that is a tax rate and has a
// constraint. PL is not declared.
const char* const small_model = R"~($MODEL:M<1>
$SECTORS:
  Y(S)  ! "A" & b
$COMMODITIES:
  PX
$CONSUMERS:
  RA
$AUXILIARY:
  T
$PROD:Y(S)  S:1
  O:PX  Q:1
  I:PL  Q:2  VA:  A:RA  N:T
+       P:3
  I:PL  Q:Q0(S)  A:RA  T:0.1
$DEMAND:RA
  D:PX
  E:PL  Q:5  R:T
$CONSTRAINT:T
  T - 1;
$REPORT:
  V:V  O:PX  PROD:Y
)~";

TEST(Graph, Dot) {
    const string text = draw(graph_of(small_model), "dot");
    EXPECT_EQ(
        text.substr(text.find("    n1 [")),
        R"~(    n1 [label=<Y(S)<br/><font point-size="9">"A" &amp; b</font><br/><font point-size="9" color="#444444">S:1</font>>, shape=box, fillcolor="#DCE9F5", tooltip="sector: \"A\" &amp; b; S:1"];
    n2 [label="PX", shape=ellipse, fillcolor="#FFFFFF", tooltip="commodity"];
    n3 [label="PL", shape=ellipse, fillcolor="#FFFFFF", tooltip="commodity"];
    n4 [label="RA", shape=hexagon, fillcolor="#FBE6CF", tooltip="consumer"];
    n5 [label="T", shape=diamond, fillcolor="#EEEEEE", peripheries=2, tooltip="auxiliary variable"];

    n1 -> n2 [label="Q:1", color="#0072B2", fontcolor="#0072B2", arrowhead=normal, penwidth=1.6, tooltip="Y -> PX, makes: Q:1"];
    n3 -> n1 [label="Q:2 VA: P:3\nQ:Q0(S)", color="#B34700", fontcolor="#B34700", arrowhead=vee, tooltip="PL -> Y, uses: Q:2 VA: P:3; Q:Q0(S)"];
    n1 -> n4 [label="PL N:T\nPL T:0.1", color="#000000", fontcolor="#000000", arrowhead=diamond, style=dotted, tooltip="Y -> RA, taxes: PL N:T; PL T:0.1"];
    n5 -> n1 [label="N: of PL", color="#666666", fontcolor="#666666", arrowhead=open, style=dashed, tooltip="T -> Y, sets: N: of PL"];
    n2 -> n4 [color="#00704F", fontcolor="#00704F", arrowhead=onormal, tooltip="PX -> RA, demands"];
    n4 -> n3 [label="Q:5", color="#8F4A76", fontcolor="#8F4A76", arrowhead=empty, penwidth=1.6, tooltip="RA -> PL, endows: Q:5"];
    n5 -> n4 [label="R: of PL", color="#666666", fontcolor="#666666", arrowhead=open, style=dashed, tooltip="T -> RA, sets: R: of PL"];
}
)~");
    EXPECT_EQ(text.find("digraph \"M<1>\" {\n"), 0U);
    const Graph parts{"", {{}, {}}, {{0, 1, Flow::uses, "Q:(A & B); P:\"x\"", {}}}};
    EXPECT_NE(draw(parts, "dot").find(R"~([label="Q:(A &amp; B)\nP:\"x\"", )~"), string::npos);
    EXPECT_NE(text.find("<b>M&lt;1&gt;</b>"), string::npos);
}

// Texts of at most 24, 32 and 40 columns, and 3, 6 and 8 lines.
TEST(Graph, LongTextsEndInDots) {
    const string words = "aaa bbb ccc ddd eee fff ggg hhh iii jjj kkk lll mmm nnn ooo ppp qqq rrr";
    Graph graph{"", {{"Y", Kind::sector, "Y", words, false, {}}, {}}, {}};
    for (int i = 1; i <= 8; ++i) graph.nodes[0].blocks.push_back("S:" + std::to_string(i));
    string label = words;
    for (int i = 1; i <= 8; ++i) label += "; Q:" + std::to_string(i);
    graph.edges = {{0, 1, Flow::makes, label, {}}};
    const string text = draw(graph, "dot");
    EXPECT_NE(
        text.find(R"~(<Y<br/><font point-size="9">aaa bbb ccc ddd eee fff<br/>ggg hhh iii jjj kkk)~"
                  R"~( lll<br/>mmm nnn ooo ppp qqq rrr</font><br/><font point-size="9" )~"
                  R"~(color="#444444">S:1<br/>S:2<br/>S:3<br/>S:4<br/>S:5<br/>S:6 ...</font>>)~"),
        string::npos)
        << text;
    EXPECT_NE(
        text.find(R"~(label="aaa bbb ccc ddd eee fff ggg hhh iii jjj\nkkk lll mmm nnn ooo ppp qqq)~"
                  R"~( rrr\nQ:1\nQ:2\nQ:3\nQ:4\nQ:5\nQ:6 ...", )~"),
        string::npos)
        << text;
    graph.nodes[0].description += " sss";
    EXPECT_NE(draw(graph, "dot").find("mmm nnn ooo ppp qqq rrr ...</font>"), string::npos);
}

TEST(Graph, Mermaid) {
    Graph graph = graph_of(small_model);
    graph.nodes[1].label = "a\"];#<b>`|";
    const string text = draw(graph, "mermaid");
    EXPECT_EQ(text.substr(0, text.find("    classDef")), R"~(flowchart LR
    n1["Y(S)<br/>#34;A#34; #38; b<br/>S:1"]:::sector
    n2(["a#34;]#59;#35;#60;b#62;#96;|"]):::commodity
    n3(["PL"]):::commodity
    n4{{"RA"}}:::consumer
    n5{"T"}:::determined
    n1 ==>|"Q:1"| n2
    n3 -->|"Q:2 VA: P:3<br/>Q:Q0(S)"| n1
    n1 -.->|"PL N:T<br/>PL T:0.1"| n4
    n5 -.-o|"N: of PL"| n1
    n2 --> n4
    n4 ==>|"Q:5"| n3
    n5 -.-o|"R: of PL"| n4
    linkStyle 0 stroke:#0072B2
    linkStyle 1 stroke:#B34700
    linkStyle 4 stroke:#00704F
    linkStyle 5 stroke:#8F4A76
    linkStyle 2 stroke:#000000
    linkStyle 3,6 stroke:#666666
)~");
}

TEST(Graph, Json) {
    Graph graph = graph_of(small_model);
    ASSERT_TRUE(focus(graph, "px", 0));
    graph.nodes[0].description = "\xFF";
    EXPECT_EQ(
        draw(graph, "json"),
        "{\"version\":2,\"type\":\"graph\",\"model\":\"M<1>\",\"nodes\":[{\"id\":\"n1\","
        "\"name\":\"PX\",\"kind\":\"commodity\",\"label\":\"PX\",\"description\":\"\xEF\xBF\xBD\","
        "\"constraint\":false,\"blocks\":[]}],\"edges\":[]}\n");
}

// A row of values, and entries after an option, belong to the previous block.
TEST(Graph, LinesOfEdges) {
    const Graph graph = graph_of(
        "$MODEL:M\n$PROD:Y\n I:PL  Q:1\n* no row\n K:LIMIT\n$PEPS:1\n O:PX\n I:PL  Q:2\n$PRICES:\n"
        " PL\n");
    const string text = draw(graph, "json");
    EXPECT_EQ(
        text.substr(text.find("\"edges\"")),
        R"~("edges":[{"from":"n2","to":"n1","flow":"uses","label":"Q:1 K:LIMIT; Q:2","lines":[3,8]},)~"
        R"~({"from":"n1","to":"n3","flow":"makes","label":"","lines":[7]}]})~"
        "\n");
}

struct LabelRow {
    const char* rows;   // of a model with the sector Y(S), the commodities PX(S) and PL, and RA
    const char* edges;  // "from to flow label" of each arrow, one per line
};

const LabelRow label_rows[] = {
    // Differences from the names in the nodes: elements, other sets, leads and lags, conditions.
    {"$PROD:Y(S)\n O:PX(S) Q:1\n", "Y PX makes Q:1\n"},
    {"$PROD:Y(S)\n O:px(s+1) Q:1\n", "Y PX makes PX(S+1) Q:1\n"},
    {"$PROD:Y(S)\n I:PX(R) Q:X(R,S)\n", "PX Y uses PX(R) Q:X(R,S)\n"},
    {"$PROD:Y(S)\n I:PX(\"a\") Q:1\n", "PX Y uses PX(\"A\") Q:1\n"},
    {"$PROD:Y(S)\n O:PX(S)$C(S) Q:1\n", "Y PX makes $C(S) Q:1\n"},
    {"$PROD:Y(S)\n O:PX(S-1)$(C(S) GT 0) Q:X0$C(S)\n",
     "Y PX makes PX(S-1)$(C(S) GT 0) Q:X0$C(S)\n"},
    {"$PROD:Y(S)\n I:PL#(R) Q:X(R,S) R.TL:\n", "PL Y uses #(R) Q:X(R,S) R.TL:\n"},
    {"$PROD:Y(S)\n I:PX(S)$C(S) Q:1 A:RA T:0.1\n",
     "PX Y uses $C(S) Q:1\nY RA taxes PX(S)$C(S) T:0.1\n"},
    // If there are several blocks, they are identified by what differs.
    {"$PROD:Y(\"a\")\n O:PX(\"a\") Q:1\n$PROD:Y(S)$D(S)\n O:PX(S) Q:2\n$PROD:Y(S)\n O:PL Q:3\n",
     "Y PX makes Y(\"A\"): PX(\"A\") Q:1; Y(S)$D(S): Q:2\nY PL makes Q:3\n"},
    {"$PROD:Y(\"a\")\n O:PX(\"a\") Q:1\n", "Y PX makes PX(\"A\") Q:1\n"},
    // Endowments, and those that are negative whatever the signs of their names.
    {"$DEMAND:RA\n E:PL Q:5\n E:PL Q:X0\n", "RA PL endows Q:5; Q:X0\n"},
    {"$DEMAND:RA\n E:PL Q:-5\n E:PL Q:(-X0)\n", "PL RA demands E: Q:-5; E: Q:(-X0)\n"},
    {"$DEMAND:RA\n E:PL\n E:PL P:-1\n", "RA PL endows P:-1\n"},
};

TEST(Graph, Labels) {
    const string head = "$MODEL:M\n$SECTORS:\n Y(S)\n$PRICES:\n PX(S)\n PL\n$CONSUMERS:\n RA\n";
    for (const LabelRow& row : label_rows) {
        const Graph graph = graph_of(head + row.rows);
        string edges;
        for (const Edge& edge : graph.edges) {
            edges += graph.nodes[edge.from].name + " " + graph.nodes[edge.to].name + " " +
                     string(row_of(edge.flow).word) + " " + edge.label + "\n";
        }
        EXPECT_EQ(edges, row.edges) << row.rows;
    }
}

TEST(Graph, Blocks) {
    const Graph graph = graph_of(
        "$MODEL:M\n$SECTORS:\n Y(S)\n W\n$CONSUMERS:\n RA\n"
        "$PROD:Y(S)$C(S)  s:0.5  t:2\n+ va(s):(E+1)  R.TL:E(R)\n O:P(S)\n"
        "$PROD:Y(\"a\")  S:1\n O:P(\"a\")\n$PROD:W\n O:P(\"a\")\n$DEMAND:RA  S:SIGMA$C\n");
    const std::vector<string> blocks[] = {
        {"$C(S) S:0.5 T:2 VA(S):(E+1) R.TL:E(R)", "Y(\"A\") S:1"}, {}, {}, {"S:SIGMA$C"}};
    for (const Node& node : graph.nodes) {
        const std::size_t row = node.name == "Y" ? 0 : node.name == "RA" ? 3 : 1;
        EXPECT_EQ(node.blocks, blocks[row]) << node.name;
    }
}

// The names and the number of arrows left around a node.
string around(const string& middle, int depth) {
    Graph graph = graph_of(small_model);
    if (!focus(graph, middle, depth)) return "no such node";
    string names;
    for (const Node& node : graph.nodes) names += node.name + " ";
    return names + std::to_string(graph.edges.size());
}

TEST(Graph, Nothing) {
    Graph graph;
    EXPECT_EQ(draw(graph, "table").substr(0, 7), "\n\nRows:");
    EXPECT_EQ(draw(graph, "dot").find("<b>"), string::npos);  // Graphviz refuses an empty one
    graph.nodes = {{"", Kind::sector, "", "", false}, {"", Kind::commodity, "", "", false}};
    EXPECT_EQ(draw(graph, "table").substr(0, 18), "\n\n |  \n-+--\n | .\n\n");
    EXPECT_NE(draw(graph, "mermaid").find("n1[\" \"]"), string::npos);
}

TEST(Graph, Focus) {
    EXPECT_EQ(around("q0", -1), "no such node");
    EXPECT_EQ(around("PX", 0), "PX 0");
    EXPECT_EQ(around("px", 1), "Y PX RA 3");
    EXPECT_EQ(around("T", 1), "Y RA T 3");
    EXPECT_EQ(around("T", -1), "Y PX PL RA T 7");
}

// Sectors S01 to S60, each of which makes a good.
Graph wide_graph() {
    Graph graph{"WIDE", {}, {}};
    for (int i = 1; i <= 60; ++i) {
        const string digits = std::to_string(100 + i).substr(1);
        graph.nodes.push_back({"S" + digits, Kind::sector, "S" + digits, "", false});
        graph.nodes.push_back({"GOOD" + digits, Kind::commodity, "GOOD" + digits, "", false});
        const auto node = graph.nodes.size();
        graph.edges.push_back({node - 2, node - 1, Flow::makes, "", {}});
    }
    return graph;
}

// All of them also use all goods and a factor, and the household demands the goods.
Graph dense_graph() {
    Graph graph = wide_graph();
    for (std::size_t user = 0; user < 120; user += 2) {
        for (std::size_t good = 1; good < 120; good += 2)
            graph.edges.push_back({good, user, Flow::uses, "Q:1 VA:", {}});
        graph.edges.push_back({120, user, Flow::uses, "Q:2", {}});
        graph.edges.push_back({user + 1, 121, Flow::demands, "Q:3", {}});
    }
    graph.nodes.push_back({"PL", Kind::commodity, "PL", "Wage of those who work in a year", false});
    graph.nodes.push_back({"RA", Kind::consumer, "RA", "", false, {"S:1"}});
    graph.edges.push_back({121, 120, Flow::endows, "Q:4", {}});
    return graph;
}

// More than 60 arrows: they have no labels, and factors, sectors, goods and consumers have a column
// each. An arrow to the left is written from its end.
TEST(Graph, Columns) {
    const string text = draw(dense_graph(), "dot");
    const string parts[] = {
        "splines=line",
        R"~(n121 [label=<PL&#160; <font point-size="9">Wage of those who work ...</font>>, shape)~",
        R"~(n122 [label="RA", shape=box, fillcolor="#FBE6CF", tooltip="consumer; S:1"];)~",
        "    { rank=same; n121 }\n    { rank=same; n1 -> n3 -> n5",
        "-> n119 [style=invis] }\n    { rank=same; n2 -> n4",
        "    { rank=same; n122 }\n    n121 -> n1 -> n2 -> n122 [style=invis, weight=0];\n",
        R"~(    n1:e -> n4:w [color="#B3470038", dir=back, arrowtail=vee, tooltip="GOOD02 -> S01, uses: )~",
        R"~(    n121:e -> n3:w [color="#B3470038", arrowhead=vee, tooltip="PL -> S02, uses: Q:2"];)~",
        R"~(    n121:e -> n122:w [color="#8F4A7690", dir=back, arrowtail=empty, penwidth=1.6, tooltip=)~",
        R"~(tooltip="GOOD02 -> S01, uses: Q:1 VA:"];)~",
    };
    for (const string& part : parts) EXPECT_NE(text.find(part), string::npos) << part;
    EXPECT_EQ(text.rfind("makes\"];\n}\n"), text.size() - 11);  // drawn over the others
    Graph few = wide_graph();
    EXPECT_EQ(draw(few, "dot").find("splines=line"), string::npos);
    few.edges.push_back({1, 0, Flow::uses, "", {}});
    EXPECT_NE(draw(few, "dot").find("splines=line"), string::npos);
}

TEST(Graph, WideTable) {
    const std::vector<string> lines = harness::lines_of(draw(wide_graph(), "table"));
    std::size_t widest = 0;
    std::ptrdiff_t marks = 0;
    for (const string& line : lines) {
        widest = std::max(widest, line.size());
        if (line.starts_with("GOOD")) marks += std::count(line.begin(), line.end(), '+');
    }
    EXPECT_LE(widest, 100U);
    EXPECT_EQ(marks, 60);
    // The column names are vertical: S01 to S45, then S46 to S60.
    EXPECT_EQ(lines[3].substr(0, 30) + "\n" + lines[4].substr(0, 30),
              "       | 0 0 0 0 0 0 0 0 0 1 1\n"
              "       | 1 2 3 4 5 6 7 8 9 0 1");
    EXPECT_EQ(lines[6].substr(0, 16), "GOOD01 | + . . .");
    EXPECT_EQ(lines[68].substr(0, 12) + lines[69].substr(0, 12), "       | 4 4       | 6 7");
}

// Every character counts as one column, however many bytes it has.
TEST(Graph, TableOfManyBytes) {
    Graph graph = wide_graph();
    graph.nodes[0].label = "\xC3\x84\xE2\x82\xAC";
    graph.nodes[1].label = "G\xC3\x9CTER1";
    const std::vector<string> vertical = harness::lines_of(draw(graph, "table"));
    EXPECT_EQ(vertical[2].substr(0, 12) + vertical[3].substr(0, 13) + vertical[4].substr(0, 14),
              "       |   S       | \xC3\x84 0       | \xE2\x82\xAC 2");
    EXPECT_EQ(vertical[6].substr(0, 13), "G\xC3\x9CTER1 | + .");
    graph.nodes.resize(2);
    graph.edges.resize(1);
    const string horizontal = draw(graph, "table");
    EXPECT_EQ(horizontal.substr(0, horizontal.find("\nRows")),
              "WIDE\n\n       | \xC3\x84\xE2\x82\xAC\n-------+---\nG\xC3\x9CTER1 |  +\n");
}

TEST(Graph, Svg) {
    using namespace std::chrono_literals;
    if (Folder().shell("command -v dot").status != 0) SKIP_WITHOUT("dot (Debian: graphviz)");
    string svg;
    string reason;
    for (const string& dot : {draw(graph_of(small_model), "dot"), draw(dense_graph(), "dot")}) {
        EXPECT_EQ(draw_svg(dot, 10s, svg, reason), Drawing::done) << reason;
        EXPECT_NE(svg.find("<text"), string::npos);
    }
    EXPECT_EQ(draw_svg("digraph {}", 1ms, svg, reason), Drawing::too_slow);
    EXPECT_EQ(draw_svg("no graph", 10s, svg, reason), Drawing::failed);
    EXPECT_EQ(reason.find("Graphviz's `dot` failed: "), 0U) << reason;
}

// Columns of 28, 4, 36 and 24 characters, with two blanks before each.
TEST(Info, Text) {
    string text =
        "$MODEL:M<1>\n$SECTORS:\n Y(A_LONG_SET,ANOTHER_LONG_SET)  ! \"A\" & b\n$PRICES:\n"
        " PX ! fünf Wörter, more than one line has room for; this is cut off\n"
        "$PROD:Y(A_LONG_SET,ANOTHER_LONG_SET)\n";
    for (int line = 7; line < 17; ++line) text += " I:PX  Q:1\n";
    text += " I:PL  Q:(H0+\"PX\")$H1\n I:PL\n$DEMAND:RA\n E:PL  E:PL\n";
    const ModelOfText built = build("\n" + text, "a b.zlm");
    const string shown = info_text(built.source, built.model, false);
    EXPECT_EQ(shown.substr(0, shown.find("\nSets")), R"~(M<1>  a b.zlm:2

Sectors                         Line  Description                           Used in lines
  Y(A_LONG_SET,ANOTHER_LONG_SET)
                                   4  "A" & b                               7

Commodities                     Line  Description                           Used in lines
  PX                               6  fünf Wörter, more than one line has   8 9 10 11 12 13 14 15 16
                                      room for                              17
  PL                                                                        18 19 21

Consumers                       Line  Description                           Used in lines
  RA                                                                        20
)~");
}

TEST(Info, SendsNothingButTextToTheTerminal) {
    const ModelOfText built = build(
        "$MODEL:M\x1b[2J\n$AUXILIARY:\n T\b  ! \xC3\xBC\x1b]0:x\x07\xC2\x9B\n$CONSTRAINT:T\b\n 1;\n"
        "$PROD:Y\x9B\n",
        "a\x1b.zlm");
    const string odd = "\xEF\xBF\xBD";
    EXPECT_EQ(info_text(built.source, built.model, false),
              "M" + odd + "[2J  a" + odd + ".zlm:1\n\nSectors" + string(14, ' ') +
                  "  Line  Description  Used in lines\n  Y" + odd + string(38, ' ') +
                  "6\n\nAuxiliary variables    Line  Description  Used in lines\n  T" + odd +
                  string(17, ' ') + "     3  \xC3\xBC" + odd + "]0:x" + odd + odd +
                  "\n\nConstraints\n  T" + odd + "\n");
}

// The ends of "é" are two bytes and one column apart.
const char* const model_of_uses =
    "$MODEL:M<1>\n"
    "$AUXILIARY:\n"
    " T(S)  ! \xC3\xA9\n"
    "$PROD:Y\n"
    " I:PX  Q:(A(\"\xC3\xA9\")*B)$C\n"
    "$CONSTRAINT:T\n"
    " T - A;\n";

struct UndeclaredName {
    const char* name;
    const char* kind;
    const char* dimension;
    const char* references;
    const char* uses;
};

string json_of(const UndeclaredName& row) {
    return R"~({"name":")~" + string(row.name) + R"~(","kind":")~" + row.kind +
           R"~(","dimension":)~" + row.dimension +
           R"~(,"arguments":[],"description":"","declared":null,"references":[)~" + row.references +
           R"~(],"declaration":null,"uses":[)~" + row.uses + "]}";
}

TEST(Info, Json) {
    const ModelOfText built = build(model_of_uses, "\xE9.zlm");
    const string shown = info_json(built.source, built.model);
    const UndeclaredName undeclared[] = {
        {"Y", "sector", "0", "4",
         R"~({"line":4,"column":7,"end_column":8,"byte_start":42,"byte_end":43,"role":"block"})~"},
        {"PX", "commodity", "0", "5",
         R"~({"line":5,"column":4,"end_column":6,"byte_start":47,"byte_end":49,"role":"used"})~"},
        {"S", "set", "0", "3",
         R"~({"line":3,"column":4,"end_column":5,"byte_start":27,"byte_end":28,"role":"set"})~"},
        {"A", "host", "null", "",
         R"~({"line":5,"column":11,"end_column":12,"byte_start":54,"byte_end":55,"role":"value"},)~"
         R"~({"line":7,"column":6,"end_column":7,"byte_start":86,"byte_end":87,)~"
         R"~("role":"constraint"})~"},
        {"B", "host", "null", "",
         R"~({"line":5,"column":18,"end_column":19,"byte_start":62,"byte_end":63,"role":"value"})~"},
        {"C", "host", "null", "",
         R"~({"line":5,"column":21,"end_column":22,"byte_start":65,"byte_end":66,)~"
         R"~("role":"condition"})~"},
    };
    const string declared =
        R"~({"name":"T","kind":"auxiliary variable","dimension":1,"arguments":["S"],)~"
        R"~("description":"é","declared":3,"references":[3],"declaration":)~"
        R"~({"line":3,"column":2,"end_column":3,"byte_start":25,"byte_end":26},"uses":[)~"
        R"~({"line":3,"column":2,"end_column":3,"byte_start":25,"byte_end":26,"role":"declared"},)~"
        R"~({"line":6,"column":13,"end_column":14,"byte_start":79,"byte_end":80,)~"
        R"~("role":"constraint"},{"line":7,"column":2,"end_column":3,"byte_start":82,)~"
        R"~("byte_end":83,"role":"constraint"}]},)~";
    string expected =
        R"~({"version":2,"type":"model","model":"M<1>","path":"é.zlm","line":1,"names":[)~";
    for (const UndeclaredName& row : undeclared) {
        if (row.kind == string("set")) expected += declared;
        expected += json_of(row) + ",";
    }
    expected.back() = ']';
    expected +=
        R"~(,"constraints":["T"],"constraint_places":[)~"
        R"~({"line":6,"column":13,"end_column":14,"byte_start":79,"byte_end":80}],"errors":0})~";
    EXPECT_EQ(shown, expected + "\n");
}

// A name in a wrong place, an unreadable line, and a line that is not UTF-8.
TEST(Info, JsonOfModelWithErrors) {
    const ModelOfText built =
        build(model_of_uses + string("$PROD:PX\n O:T(S)  Q:1\n junk\n E:RA(\"\xE9\",B)\n"));
    const string shown = info_json(built.source, built.model);
    const string parts[] = {
        R"~({"line":8,"column":7,"end_column":9,"byte_start":95,"byte_end":97,"role":"block"}]})~",
        R"~({"line":9,"column":4,"end_column":5,"byte_start":101,"byte_end":102,"role":"produced"})~",
        R"~({"line":11,"column":11,"end_column":12,"byte_start":127,"byte_end":128,"role":"set"}]})~",
        R"~("errors":3})~",
    };
    for (const string& part : parts) EXPECT_NE(shown.find(part), string::npos) << part << shown;
}

string orvex(const string& arguments) {
    const harness::Result result =
        Folder().shell("cd \"" EXAMPLES_DIR "\" && \"$ORVEX\" " + arguments);
    EXPECT_EQ(result.status, 0) << result.err;
    return result.out;
}

// The table of an example, without its legend.
string table_of(const string& example) {
    const string table = orvex("graph --format table " + example + "/" + example + ".zlm");
    return table.substr(0, table.find("\nRows"));
}

// The signs of the tables, compared with those in the examples themselves; the guide shows the one
// of taxes.
TEST(Examples, Tables) {
    EXPECT_EQ(table_of("dynamic"), R"~(DYNAMIC

      | Y(T) K(T) INV(T) INVL | HOUSE
------+-----------------------+------
PY(T) |    +    .      -    - |     -
PL(T) |    -    .      .    . |     +
RK(T) |    -    +      .    . |     .
PK(T) |    .    *      +    . |     +
PKL   |    .    +      .    + |     -
)~");
    EXPECT_EQ(table_of("three"), R"~(BARTER

      | ANN BOB
------+--------
WHEAT |   *   -
WINE  |   -   *
)~");
}

TEST(Examples, Facts) {
    const string facts[][2] = {
        {"graph --format json taxes/taxes.zlm",
         R"~({"from":"n1","to":"n10","flow":"taxes","label":"PL N:TAU; PK T:TK(S)")~"},
        {"graph --format json --model WORK three/three.zlm",
         R"~({"from":"n3","to":"n5","flow":"demands","label":"E: Q:-75")~"},
        {"graph --format json dynamic/dynamic.zlm",
         R"~({"from":"n5","to":"n3","flow":"uses","label":"PY(T-1) Q:INV0 K:IMAX(T)")~"},
        {"info taxes/taxes.zlm", "\nConstraints\n  TAU\n"},
        {"info regions/regions.zlm", "\n  BUY(RR,R)              80\n"},
    };
    for (const auto& fact : facts) {
        const string out = orvex(fact[0]);
        EXPECT_NE(out.find(fact[1]), string::npos) << fact[1] << "\n" << out;
    }
}

TEST(Examples, JsonFitsItsSchema) {
    if (Folder().shell("python3 -c 'import jsonschema'").status != 0)
        SKIP_WITHOUT("python3 with jsonschema (Debian: python3-jsonschema)");
    const harness::Result result = Folder().shell(
        "for model in '" EXAMPLES_DIR
        "'/*/*.zlm; do"
        " \"$ORVEX\" info --format json \"$model\"; \"$ORVEX\" graph --format json \"$model\";"
        " \"$ORVEX\" expand --summary --format json \"$model\" --data ${model%/*}/data.* "
        "2>/dev/null;"
        " done >all; python3 '" TESTS_DIR "/validate.py' '" DOCS_DIR
        "/data.schema.json' all"
        " | sort | uniq -c");
    EXPECT_EQ(result.out, "     21 valid\n") << result.err;
}

}  // namespace
