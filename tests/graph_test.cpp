// What `orvex info` and `orvex graph` show of a model.
#include "frontend/views/graph.h"

#include "frontend/views/info.h"
#include "frontend/views/json.h"
#include "harness.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <vector>

using namespace orvex::frontend;
using harness::Folder;
using std::string;

namespace {

Name name(const string& text, Kind kind, int declared, std::vector<string> arguments = {},
          const string& description = "") {
    Name result{
        text,     kind, static_cast<int>(arguments.size()), std::move(arguments), description,
        declared, {}};
    if (declared > 0) result.references = {declared};
    return result;
}

Field value(const string& label, const string& text) { return {label, text, "", 0}; }

Entry entry(const string& label, const string& text, std::vector<Field> fields) {
    return {label, text, text, std::move(fields), 0};
}

// A sector that buys its input twice, taxed both times, and a variable that is a tax rate and has a
// constraint. PL is not declared.
Economy small_economy() {
    Economy economy;
    economy.model = "M<1>";
    economy.line = 3;
    economy.names = {name("PL", Kind::commodity, 0), name("Y", Kind::sector, 5, {"S"}, "\"A\" & b"),
                     name("PX", Kind::commodity, 7), name("RA", Kind::consumer, 9),
                     name("T", Kind::auxiliary, 11), name("Q0", Kind::parameter, 0, {"S"})};
    economy.names[0].references = {14, 15, 15, 18};
    economy.names[5].dimension = -1;
    economy.constraints = {"T"};
    const Field taxed{"A", "RA", "RA", 0};
    const Field rate{"N", "T", "T", 0};
    const Entry bought =
        entry("I", "PL", {value("Q", "2"), value("VA", ""), taxed, rate, value("P", "3")});
    const Entry more = entry("I", "PL", {value("Q", "Q0(S)"), taxed, value("T", "0.1")});
    const Entry owned = entry("E", "PL", {value("Q", "5"), {"R", "T", "T", 0}});
    economy.blocks = {{"PROD",
                       "Y",
                       "Y(S)",
                       {value("S", "1")},
                       {entry("O", "PX", {value("Q", "1")}), bought, more},
                       0},
                      {"DEMAND", "RA", "RA", {}, {entry("D", "PX", {}), owned}, 0},
                      {"REPORT", "", "", {}, {entry("V", "V", {{"O", "PX", "PX", 0}})}, 0}};
    return economy;
}

TEST(Graph, Dot) {
    const string text = draw(make_graph(small_economy()), "dot");
    EXPECT_EQ(
        text.substr(text.find("    n1 [")),
        R"~(    n1 [label="Y(S)", shape=box, fillcolor="#DCE9F5", tooltip="sector: \"A\" &amp; b"];
    n2 [label="PX", shape=ellipse, fillcolor="#FFFFFF", tooltip="commodity"];
    n3 [label="PL", shape=ellipse, fillcolor="#FFFFFF", tooltip="commodity"];
    n4 [label="RA", shape=hexagon, fillcolor="#FBE6CF", tooltip="consumer"];
    n5 [label="T", shape=diamond, fillcolor="#EEEEEE", peripheries=2, tooltip="auxiliary variable"];

    n1 -> n2 [label="Q:1", color="#0072B2", fontcolor="#0072B2", arrowhead=normal, penwidth=1.6, tooltip="makes"];
    n3 -> n1 [label="Q:2 P:3\nQ:Q0(S)", color="#B34700", fontcolor="#B34700", arrowhead=vee, tooltip="uses"];
    n1 -> n4 [label="PL N:T\nPL T:0.1", color="#000000", fontcolor="#000000", arrowhead=diamond, style=dotted, tooltip="taxes"];
    n5 -> n1 [label="N: of PL", color="#666666", fontcolor="#666666", arrowhead=open, style=dashed, tooltip="sets"];
    n2 -> n4 [color="#00704F", fontcolor="#00704F", arrowhead=onormal, tooltip="demands"];
    n4 -> n3 [label="Q:5", color="#8F4A76", fontcolor="#8F4A76", arrowhead=empty, penwidth=1.6, tooltip="endows"];
    n5 -> n4 [label="R: of PL", color="#666666", fontcolor="#666666", arrowhead=open, style=dashed, tooltip="sets"];
}
)~");
    EXPECT_EQ(text.find("digraph \"M<1>\" {\n"), 0U);
    const Graph parts{"", {{}, {}}, {{0, 1, Flow::uses, "Q:(A & B); P:\"x\""}}};
    EXPECT_NE(draw(parts, "dot").find(R"~([label="Q:(A &amp; B)\nP:\"x\"", )~"), string::npos);
    EXPECT_NE(text.find("<b>M&lt;1&gt;</b>"), string::npos);
}

TEST(Graph, Mermaid) {
    Graph graph = make_graph(small_economy());
    graph.nodes[1].label = "a\"];#<b>`|";
    const string text = draw(graph, "mermaid");
    EXPECT_EQ(text.substr(0, text.find("    classDef")), R"~(flowchart LR
    n1["Y(S)"]:::sector
    n2(["a#34;]#59;#35;#60;b#62;#96;|"]):::commodity
    n3(["PL"]):::commodity
    n4{{"RA"}}:::consumer
    n5{"T"}:::determined
    n1 ==>|"Q:1"| n2
    n3 -->|"Q:2 P:3<br/>Q:Q0(S)"| n1
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
    Graph graph = make_graph(small_economy());
    ASSERT_TRUE(focus(graph, "px", 0));
    graph.nodes[0].description = "\xFF";
    EXPECT_EQ(
        draw(graph, "json"),
        "{\"version\":1,\"type\":\"graph\",\"model\":\"M<1>\",\"nodes\":[{\"id\":\"n1\","
        "\"name\":\"PX\",\"kind\":\"commodity\",\"label\":\"PX\",\"description\":\"\xEF\xBF\xBD\","
        "\"constraint\":false}],\"edges\":[]}\n");
}

// The names and the number of arrows that are left around a node.
string around(const string& middle, int depth) {
    Graph graph = make_graph(small_economy());
    if (!focus(graph, middle, depth)) return "no such node";
    string names;
    for (const Node& node : graph.nodes) names += node.name + " ";
    return names + std::to_string(graph.edges.size());
}

TEST(Graph, Nothing) {
    Graph graph;
    EXPECT_EQ(draw(graph, "table").substr(0, 7), "\n\nRows:");
    EXPECT_EQ(draw(graph, "dot").find("<b>"), string::npos);  // Graphviz refuses it empty
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
        graph.edges.push_back({node - 2, node - 1, Flow::makes, ""});
    }
    return graph;
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
    // The names of the columns stand upright: S01 to S45, then S46 to S60.
    EXPECT_EQ(lines[3].substr(0, 30) + "\n" + lines[4].substr(0, 30),
              "       | 0 0 0 0 0 0 0 0 0 1 1\n"
              "       | 1 2 3 4 5 6 7 8 9 0 1");
    EXPECT_EQ(lines[6].substr(0, 16), "GOOD01 | + . . .");
    EXPECT_EQ(lines[68].substr(0, 12) + lines[69].substr(0, 12), "       | 4 4       | 6 7");
}

// A character is as wide as another, however many bytes it has.
TEST(Graph, TableOfManyBytes) {
    Graph graph = wide_graph();
    graph.nodes[0].label = "\xC3\x84\xE2\x82\xAC";
    graph.nodes[1].label = "G\xC3\x9CTER1";
    const std::vector<string> upright = harness::lines_of(draw(graph, "table"));
    EXPECT_EQ(upright[2].substr(0, 12) + upright[3].substr(0, 13) + upright[4].substr(0, 14),
              "       |   S       | \xC3\x84 0       | \xE2\x82\xAC 2");
    EXPECT_EQ(upright[6].substr(0, 13), "G\xC3\x9CTER1 | + .");
    graph.nodes.resize(2);
    graph.edges.resize(1);
    const string lying = draw(graph, "table");
    EXPECT_EQ(lying.substr(0, lying.find("\nRows")),
              "WIDE\n\n       | \xC3\x84\xE2\x82\xAC\n-------+---\nG\xC3\x9CTER1 |  +\n");
}

TEST(Graph, Svg) {
    if (Folder().shell("command -v dot").status != 0) GTEST_SKIP() << "dot is not installed";
    string svg;
    string reason;
    EXPECT_TRUE(draw_svg(draw(make_graph(small_economy()), "dot"), svg, reason)) << reason;
    EXPECT_NE(svg.find("<text"), string::npos);
    EXPECT_FALSE(draw_svg("no graph", svg, reason));
    EXPECT_EQ(reason.find("Graphviz's `dot` failed: "), 0U) << reason;
}

// Columns of 28, 4, 36 and 24 characters, two blanks in front of each.
TEST(Info, Text) {
    Economy economy = small_economy();
    economy.names[1].arguments = {"A_LONG_SET", "ANOTHER_LONG_SET"};
    economy.names[2].description = "f\xC3\xBCnf W\xC3\xB6rter, more than one line has room for";
    for (int line = 20; line < 30; ++line) economy.names[2].references.push_back(line);
    const string text = info_text(economy, "a b.zlm", false);
    EXPECT_EQ(text.substr(0, text.find("\nConsumers")), R"~(M<1>  a b.zlm:3

Sectors                         Line  Description                           Used in lines
  Y(A_LONG_SET,ANOTHER_LONG_SET)
                                   5  "A" & b

Commodities                     Line  Description                           Used in lines
  PX                               7  fünf Wörter, more than one line has   20 21 22 23 24 25 26 27
                                      room for                              28 29
  PL                                                                        14 15 18
)~");
}

TEST(Info, SendsNothingButTextToTheTerminal) {
    Economy economy = small_economy();
    economy.model = "M\x1b[2J";
    economy.names = {name("Y\x9B", Kind::sector, 5, {}, "\xC3\xBC\x1b]0;x\x07\xC2\x9B")};
    economy.constraints = {"T\r"};
    const string odd = "\xEF\xBF\xBD";
    EXPECT_EQ(info_text(economy, "a\x1b.zlm", false),
              "M" + odd + "[2J  a" + odd + ".zlm:3\n\nSectors" + string(14, ' ') +
                  "  Line  Description  Used in lines\n  Y" + odd + string(17, ' ') +
                  "     5  \xC3\xBC" + odd + "]0;x" + odd + odd + "\n\nConstraints\n  T" + odd +
                  "\n");
}

TEST(Info, Json) {
    Economy economy = small_economy();
    economy.names.erase(economy.names.begin() + 1, economy.names.begin() + 5);
    EXPECT_EQ(info_json(economy, "\xE9.zlm"),
              "{\"version\":1,\"type\":\"model\",\"model\":\"M<1>\",\"path\":\"\xC3\xA9.zlm\","
              "\"line\":3,\"names\":[{\"name\":\"PL\",\"kind\":\"commodity\",\"dimension\":0,"
              "\"arguments\":[],\"description\":\"\",\"declared\":null,"
              "\"references\":[14,15,15,18]},{\"name\":\"Q0\",\"kind\":\"parameter\","
              "\"dimension\":null,\"arguments\":[\"S\"],\"description\":\"\","
              "\"declared\":null,\"references\":[]}],\"constraints\":[\"T\"]}\n");
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

// The signs of the benchmark tables in the examples themselves; the guide shows that of taxes.
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
         R"~({"from":"n1","to":"n10","flow":"taxes","label":"PL N:TAU; PK T:TK(S)"})~"},
        {"graph --format json --model WORK three/three.zlm",
         R"~({"from":"n5","to":"n3","flow":"endows","label":"Q:LS; Q:-75"})~"},
        {"graph --format json dynamic/dynamic.zlm",
         R"~({"from":"n5","to":"n3","flow":"uses","label":"Q:INV0 K:IMAX(T)"})~"},
        {"info taxes/taxes.zlm", "\nConstraints\n  TAU\n"},
        {"info regions/regions.zlm", "\n  BUY(RR,R)              71\n"},
    };
    for (const auto& fact : facts) {
        const string out = orvex(fact[0]);
        EXPECT_NE(out.find(fact[1]), string::npos) << fact[1] << "\n" << out;
    }
}

TEST(Examples, JsonFitsItsSchema) {
    if (Folder().shell("python3 -c 'import jsonschema'").status != 0)
        GTEST_SKIP() << "python3 with jsonschema is not installed";
    const harness::Result result = Folder().shell(
        "for model in '" EXAMPLES_DIR
        "'/*/*.zlm; do"
        " \"$ORVEX\" info --json \"$model\"; \"$ORVEX\" graph --format json \"$model\";"
        " done >all; python3 '" TESTS_DIR "/validate.py' '" DOCS_DIR
        "/data.schema.json' all"
        " | sort | uniq -c");
    EXPECT_EQ(result.out, "     14 valid\n") << result.err;
}

}  // namespace
