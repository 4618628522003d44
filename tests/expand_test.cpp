// The output of orvex expand: rows of expressions, statements and data, and the whole examples of
// the index and of the guide.
#include "frontend/expansion/expand.h"

#include "frontend/base/bytes.h"
#include "frontend/base/csv.h"
#include "frontend/expansion/interpreter.h"
#include "frontend/findings/messages.h"
#include "harness.h"
#include "tools.h"

#include <algorithm>
#include <deque>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

namespace {

using harness::Folder;
using harness::Result;
using orvex::frontend::DataFiles;
using orvex::frontend::Finding;
using orvex::frontend::MessageEntry;
using std::string;

const char* const usual_data = R"({
  "sets": {"S": ["a", "B", "c"], "SUB": ["b"], "T": [1, 2, 3, 4], "MAP": [["A", "B"], ["B", "C"]],
           "NONE": []},
  "aliases": {"SS": "S"},
  "parameters": {"K": 5, "Z": 0, "N": -2, "X": {"A": 1, "B": 2, "C": 3}, "Y": {"A": {"B": 7}}}
})";

// The program alone, with data as text: its lines, each with "|" after it; or the code and variant
// of each flaw with the text at its place, or the line and message of each finding.
string printed(const string& generator, const string& data = usual_data) {
    DataFiles files;
    std::vector<Finding> findings;
    files.texts.push_back({"data", data});
    const bool is_read =
        data.starts_with("{") ? read_json_data(files, findings) : read_csv_data(files, findings);
    std::vector<orvex::frontend::Flaw> flaws;
    const auto program = orvex::frontend::read_program(generator, flaws);
    orvex::frontend::Data of_model;
    const bool has_data =
        is_read && make_data(files, program, {{"V", 1}, {"W", 0}}, of_model, findings);
    if (has_data) check_data(program, of_model, flaws);
    if (has_data && flaws.empty()) try_program(program, of_model, {}, flaws);
    string text;
    for (const Finding& finding : findings)
        text.append(std::to_string(finding.span.line)).append(" ").append(finding.message);
    for (const auto& flaw : flaws) {
        text.append(text.empty() ? "" : "; ").append(flaw.code);
        text.append(flaw.variant.empty() ? "" : " ").append(flaw.variant);
        text.append(" ").append(text_of(generator, flaw.place));
    }
    if (text.empty() && has_data) {
        run_program(program, of_model, {}, [&](std::string_view line, orvex::frontend::Range) {
            text.append(line).append("|");
        });
    }
    return text;
}

struct Row {
    string text;
    string result;
};

TEST(Csv, CellsAreReadAsTheyWereMeant) {
    const std::pair<string, string> cells[] = {
        {"A.B", "A.B"},       {"", ""}, {"A,B", "\"A,B\""}, {"a \"b\"", "\"a \"\"b\"\"\""},
        {"A\nB", "\"A\nB\""},
    };
    for (const auto& [text, written] : cells) {
        const string row = orvex::frontend::csv_cell(text);
        EXPECT_EQ(row, written);
        std::deque<string> unquoted;
        const string line = row + ",end\n";
        orvex::frontend::CsvReader reader(line, unquoted);
        orvex::frontend::CsvRow read;
        ASSERT_TRUE(reader.read(read)) << row;
        EXPECT_EQ(read.cells.front(), text);
    }
}

TEST(Expand, EvaluatesExpressions) {
    const Row rows[] = {
        // Numbers as printed.
        {"100000", "1e+05"},
        {"123456", "123456"},
        {"0.1", "0.1"},
        {".5", "0.5"},
        {"1.E-6", "1e-06"},
        {"2D2", "200"},
        {"1E-400", "0"},
        {"-Z", "0"},
        {"K/3", "1.6666666666666667"},
        // Precedence: $, **, * and /, + and -, comparisons, NOT, AND, OR and XOR.
        {"-2**2", "-4"},
        {"2**3**2", "64"},
        {"2+3*4", "14"},
        {"2-3-4", "-5"},
        {"24/4/2", "3"},
        {"2*K$Z+1", "1"},
        {"2**K$K", "32"},
        {"3 $ 1 ** 2", "9"},
        {"1+1 EQ 2", "1"},
        {"3 > 2 > 1", "0"},
        {"NOT 1 EQ 2", "1"},
        {"NOT Z AND Z", "0"},
        {"NOT (Z AND Z)", "1"},
        {"1 OR 0 AND 0", "1"},
        {"1 XOR 1 AND 0", "1"},
        {"1 XOR 1 OR 1", "1"},
        {"NOT NOT K", "1"},
        // Each operator.
        {"1 NE 2", "1"},
        {"1 <> 1", "0"},
        {"1 LT 1", "0"},
        {"1 <= 1", "1"},
        {"2 GE 3", "0"},
        {"3 >= 3", "1"},
        {"2 GT 1", "1"},
        {"1 LE 0", "0"},
        {"1 < 2", "1"},
        {"2 = 2", "1"},
        {"2 XOR 3", "0"},
        // Functions.
        {"ABS(-3)+MIN(4,2,3)+MAX(1)", "6"},
        {"SQRT(16)", "4"},
        {"EXP(0)+LOG(1)", "1"},
        {"POWER(N,3)", "-8"},
        {"CARD(T)+CARD(SS)+CARD(MAP)+CARD(NONE)", "9"},
        // Sums over sets with conditions; a place without a value is 0.
        {"SUM(S,X(S))", "6"},
        {"SUM(S$SUB(S),X(S))", "2"},
        {"SUM(S$(X(S) GT 1),ORD(S))", "5"},
        {"SUM((S,SS),Y(S,SS))", "7"},
        {"SUM((S,SS)$MAP(S,SS),X(S)*X(SS))", "8"},
        {"SUM(NONE,1)", "0"},
        {"SUM(S,SUM(SS$(ORD(SS) GT ORD(S)),1))", "3"},
        // Elements, places past the end, and wrapping round the end.
        {"X(\"b\")*10+X('A')", "21"},
        {"X(\"D\")", "0"},
        {"SUM(S,X(S+1))", "5"},
        {"SUM(S,X(S-1)*X(S))", "8"},
        {"SUM(S,X(S++1)*X(S))", "11"},
        {"SUM(S,X(S--1)*X(S))", "11"},
        {"SUM(S,X(S+K))", "0"},
        {"SUM(S,X(S+N))", "1"},
        {"SUM(S,X(S++4)*X(S))", "11"},
        {"SUM(S,SUB(S+1))", "1"},
        {"SUB(\"B\")+SUB(\"A\")", "1"},
        {"SUM(SUB,ORD(SUB)+X(SUB))", "3"},
        // The operand before "$" is evaluated only if it counts.
        {"(1/Z)$Z", "0"},
        {"ORVEPS", "1e-08"},
        {"ORVREPORT", "1"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(printed("{    1}  PUT (" + row.text + ");\n"), row.result + "|") << row.text;
}

TEST(Expand, RefusesOtherExpressions) {
    const Row rows[] = {
        {"ROUND(K)", "expression-unknown function ROUND"},
        {"X.L(\"A\")", "expression-unknown X.L"},
        {"%K%", "expression-unknown %K%"},
        {"[K]", "expression-unknown ["},
        {"K K", "expression-unknown K"},
        {"2*-3", "expression-unknown -"},
        {"K =E= 5", "expression-unknown =E="},
        {"EQ+1", "expression-unknown EQ"},
        {"POWER(2)", "expression-unknown POWER(2)"},
        {"X(S)", "expression-unknown function X"},
        {"SUM(S,1)+X(S)", "expression-unknown unlooped S"},
        {"X(1)", "expression-unknown 1"},
        {"ORD(S)", "expression-unknown unlooped S"},
        {"SUM(S,SUM(S,1))", "expression-unknown looped S"},
        {"SUM(SUB(S),1)", "expression-unknown ("},
        {"X(\"A\")+X(\"A\",\"B\")", "expression-unknown arguments X(\"A\",\"B\")"},
        {"Y(\"A\")", "expression-unknown elements Y"},
        {"SUM(MAP,1)", "expression-unknown elements MAP"},
        {"S", "expression-unknown elements S"},
        {"MISSING", "data-missing scalar MISSING"},
        {"SUM(KK,1)", "data-missing set KK"},
        {"SUM(S,X(S+K/2))", "expression-unknown /"},
        {"SUM(S,X(S+(K/2)))", "expression-unknown offset K/2"},
        // Each part must be finite, whatever the whole is.
        {"1/Z GT 5", "value-not-finite 1/Z"},
        {"Z AND LOG(Z)", "value-not-finite LOG(Z)"},
        {"N**0.5", "value-not-finite N**0.5"},
        {"EXP(1000)-EXP(1000)", "value-not-finite EXP(1000); value-not-finite EXP(1000)"},
        {"SUM(S,1/(X(S)-2))", "value-not-finite 1/(X(S)-2)"},
        {"1E999", "value-not-finite 1E999"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(printed("{    1}  PUT (" + row.text + ");\n"), row.result) << row.text;
}

// More levels than the columns of a statement allow.
TEST(Expand, LimitsTheDepth) {
    const auto nested = [](std::size_t depth) {
        string text = "{    1}  PUT ";
        for (std::size_t i = 0; i < depth; ++i) text += "(1+";
        return printed(text + "1" + string(depth, ')') + ";\n");
    };
    EXPECT_EQ(nested(300), "301|");
    EXPECT_EQ(nested(301), "expression-unknown (");
}

TEST(Expand, RunsStatements) {
    const Row rows[] = {
        {"PUT   ORV,'$MODEL:M'/;\n", "$MODEL:M|"},
        {"$OFFLISTING\n* PUT 'a';\n\nPUT / '$SOLVE'/;\nPUTCLOSE   ORV;\nOPTION LIMROW=0;\n"
         "M.INTEGER1 = M.INTEGER1 + 1;\n",
         "|$SOLVE|"},
        // Consecutive strings are allowed; blanks in them count.
        {"{    1}  PUT /,'Y''.'/'+T:'K;\n{    1}  PUT '        ';\n", "|Y.|+T:5        |"},
        // An option has no ";".
        {"{    1}  PUT /,'$PEPS:1.E-8'\n\n{    2}  PUT /;\n", "|$PEPS:1.E-8|"},
        {"{    1}  LOOP((S)$(X(S) NE 2),\n{    1}    PUT 'Y''.'S.TL/;\n{    1}  );\n", "Y.A|Y.C|"},
        {"{    1}  LOOP(S,\n{    1}    PUT '+',S.TL,':'X(S)/;\n{    1}  );\n", "+A:1|+B:2|+C:3|"},
        {"{    1}  LOOP((SUB,S),\n{    1}  PUT 'Z.'SUB.TL'.'S.TL'.'S.TE(S+1)'.'S.TE(S--1)/;\n);\n"
         "{    1}  );\n",
         "Z.B.A.B.C|Z.B.B.C.A|Z.B.C..B|"},
        {"{    1}  IF (ORVREPORT,\n{    1}  IF ((Z), PUT 'no' );\n{    1}  IF ((K),PUT 'K:'(-5);  "
         ");\n{    1}  );\n",
         "K:-5|"},
        // The guard of a lead.
        {"{    1}  LOOP((T),\n"
         "{    2}    IF ( ( (ORD(T)+1 GE 1) * (ORD(T)+1 LE CARD(T )) ),\n"
         "{    2}      PUT 'O:P''.'T.TE(T+1)/;\n{    2}    );\n{    2}  );\n",
         "O:P.2|O:P.3|O:P.4|"},
        // After a part that cannot be read, the rest is still read.
        {"{    1}  IF(ABS(K..B) GT ORVEPS,\n{    1}    PUT 'x'MISSING;\n{    1}  );\n"
         "{    2}  IF ((K), PUT 'x'S.XX; );\n{    3}  PUT FOO;\n",
         "expression-unknown .; expression-unknown S.XX; data-missing scalar MISSING; "
         "data-missing scalar FOO"},
        {"{    1}  LOOP((S),\n{    1}    PUT S.XX;\n{    1}  );\n{    1}  );\n",
         "expression-unknown S.XX; expression-unknown )"},
        {"{    1}  LOOP((S),\n{    1}    PUT S.TL;\n", "expression-unknown end "},
        {"{    1}  LOOP((S),\n{    1}    LOOP((S),\n{    1}    PUT 'x';\n{    1}  );\n{    1}  "
         ");\n",
         "expression-unknown looped S"},
    };
    for (const Row& row : rows) EXPECT_EQ(printed(row.text), row.result) << row.text;
}

// The generator text needs K, X over one set, the set S and whether elements are in MAP; V and W
// are variables.
TEST(Expand, ReadsDataFiles) {
    const string wanting =
        "{    1}  LOOP((S),\n{    1}    PUT S.TL'='X(S)' 'MAP(S,S)/;\n{    1}  );\n"
        "{    2}  PUT K;\n";
    const Row rows[] = {
        {"name,e,value\nS,b\nS,a\nX,A,1.5\nK,+2e1\nMAP,B,B\nV,A,3\nW,1\n", "B=0 1|A=1.5 0|20|"},
        // Quotes, blanks, CR LF, an empty line and a byte order mark.
        {"\xEF\xBB\xBF\"S\",\"b,\"\"c\"\"\"\r\n\r\n s , a \r\n\"X\", a,\"2\"\r\nMAP,A,A\r\nK,1",
         "B,\"C\"=0 0|A=2 1|1|"},
        {"{\"sets\":{\"s\":[2020,\"x\"],\"map\":[[\"X\",\"x\"]]},"
         "\"parameters\":{\"X\":{\"2020\":1},\"x\":{\"X\":2e0},\"k\":0}}",
         "2020=1 0|X=2 1|0|"},
        {"{\"sets\":{\"R\":[\"a\"],\"MAP\":[]},\"aliases\":{\"Q\":\"R\",\"S\":\"q\"},"
         "\"parameters\":{\"X\":{},\"K\":1}}",
         "A=0 0|1|"},
        {"S,A\nX,A,1\n", "data-missing MAP; data-missing scalar K"},
        {"{\"aliases\":{\"S\":\"S\"}}",
         "data-missing set S; data-missing X; data-missing MAP; data-missing scalar K"},
        {"S,A\nX,A,one\nMAP,A,A\nK,1\n", "2 `one` is not a number"},
        {"S,A\nX,A,inf\nMAP,A,A\nK,1\n", "2 `inf` is not a number"},
        {"S;A\n", "1 the row has only one column: `S;A`"},
        {"S,A\nX,A,B,1\n", "2 `X` is used with 1 argument: its rows need 3 columns, not 4"},
        {"S,A,1\n", "1 `S` is used with 1 argument: its rows need 2 columns, not 3"},
        {"K,A,1\n", "1 `K` is used with 0 arguments: its rows need 2 columns, not 3"},
        {"S,A\nX,A,1\nX,a,2\n", "3 `X` already has a different value here"},
        {"S,A\nX,,1\n", "2 a name or an element is empty"},
        {"S,\n", "1 a name or an element is empty"},
        {"S,\"A\nB\"\n", "1 a name or an element has a control character"},
        {"S,A\nX,\"A\n", "2 the cell has no closing quote"},
        {"S,\"A\"B\n", "1 there is text after the quote that ends the cell"},
        {"{\"set\":{}}", "1 unknown part `set`"},
        {"{\"sets\":\n{\"S\":{}}}", "2 `{` is not expected here"},
        {"{\"sets\":{\"S\":[[]]}}", "1 `[]` is not expected here"},
        {"{\"sets\":{\"S\":[\"A\",[\"A\",\"B\"]]}}",
         "1 the rows of `S` have different numbers of elements"},
        {"{\"parameters\":{\n\"K\":\n\"1\"}}", "3 `\"1\"` is not a number"},
        {"{\"parameters\":{\"X\":{\"A\":null}}}", "1 `null` is not a number"},
        {"{\"parameters\":{\"X\":{\"A\":1,\"B\":{\"C\":1}}}}",
         "1 the rows of `X` have different numbers of elements"},
        {"{\"aliases\":{\"S\":\"R\",\"s\":\"Q\"}}", "1 `S` is the alias of two sets"},
        {"{\"parameters\":{\"K\":1e999}}", "1 the JSON is not valid: number overflow"},
        {"{\"parameters\":\n{\"K\":1,}}", "2 the JSON is not valid: syntax error"},
    };
    for (const Row& row : rows) {
        const string text = printed(wanting, row.text);
        EXPECT_EQ(text.substr(0, row.result.size()), row.result) << row.text << "\n" << text;
        EXPECT_TRUE(text.size() == row.result.size() || text.find("JSON") != string::npos) << text;
    }
}

string block(const MessageEntry& entry, const string& kind) {
    for (const orvex::frontend::Example& example : entry.examples) {
        if (example.kind == kind) return example.text;
    }
    return {};
}

// The findings of an example, with their places.
string expanded(const MessageEntry& entry, const string& model, const string& data) {
    const Folder folder;
    const string text = block(entry, data);
    const string name = text.starts_with("{") ? "data.json" : "data.csv";
    folder.write("m.zlm", block(entry, model));
    folder.write(name, text);
    return folder.shell("\"$ORVEX\" expand -q --format short m.zlm --data " + name).err;
}

TEST(Expand, ExamplesOfTheIndex) {
    int count = 0;
    for (const MessageEntry& entry : orvex::frontend::message_index()) {
        if (block(entry, "data").empty()) continue;
        ++count;
        const string wrong = expanded(entry, "wrong", "data");
        const std::size_t line = entry.text.find("\n- Line: ");
        const string place =
            line == string::npos ? "data." : "m.zlm:" + entry.text.substr(line + 9, 2);
        EXPECT_TRUE(wrong.starts_with(place)) << wrong;
        EXPECT_NE(wrong.find("[" + entry.code + "]"), string::npos) << wrong;
        EXPECT_EQ(std::count(wrong.begin(), wrong.end(), '\n'), 1) << wrong;
        EXPECT_EQ(expanded(entry, "corrected", "corrected-data"), "") << entry.code;
    }
    EXPECT_EQ(count, 6);
}

// Each example with its data, as shown next to its outputs.
TEST(Expand, ExamplesOfTheGuide) {
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(EXAMPLES_DIR)) {
        const string name = entry.path().filename();
        const string folder = entry.path();
        if (!std::filesystem::exists(folder + "/run.ctl")) continue;
        const bool is_json = std::filesystem::exists(folder + "/data.json");
        const Result result =
            Folder().shell("\"$ORVEX\" expand --error-on-warnings " + folder + "/" + name +
                           ".zlm --data " + folder + "/data." + (is_json ? "json" : "csv"));
        EXPECT_EQ(result.err, "") << name;
        EXPECT_EQ(result.out, harness::read_file(folder + "/expanded.txt"));
        ++count;
    }
    EXPECT_EQ(count, 5);
}

struct CommandLine {
    string command;  // after "orvex expand"
    int status;
    string out;  // a part of it; if empty, there is no output
    string err;
};

bool has_text(const string& stream, const string& text) {
    return text.empty() ? stream.empty() : stream.find(text) != string::npos;
}

// m.zlm has the models ONE and TWO, both with Y over the set S. TWO divides by Z, which only a
// constraint uses in rule.zlm. bad.zlm has an error in the first of two models.
TEST(Expand, StatusAndStreams) {
    const string head = "$SECTORS:\n  Y(S)\n$COMMODITIES:\n  PY(S)  PL\n$CONSUMERS:\n  RA\n";
    const string tail = "  I:PL  Q:1\n$DEMAND:RA\n  D:PY(S)  Q:1\n  E:PL  Q:1\n$OFFTEXT\n";
    const string one = "$MODEL:ONE\n" + head + "$PROD:Y(S)\n  O:PY(S)  Q:X(S)\n" + tail;
    const string two = "$MODEL:TWO\n" + head + "$PROD:Y(S)\n  O:PY(S)  Q:(1/Z)\n" + tail;
    const string rule = "$MODEL:RULE\n" + head +
                        "$AUXILIARY:\n  T\n$PROD:Y(S)\n  O:PY(S)  Q:X(S)\n" +
                        string(tail).insert(tail.find("$OFFTEXT"), "$CONSTRAINT:T\n  PL =G= z;\n");
    string comments;
    for (int line = 0; line < 100000; ++line) comments += "*\n";
    const string many_lines = string(two).insert(two.find("$PROD"), comments);
    const CommandLine rows[] = {
        {"m.zlm --data d.json --set S=3", 2, "", "error: `--set` needs `--summary`"},
        {"m.zlm --summary --set S", 2, "", "`--set` must be NAME=N, not `S`"},
        {"d.json", 2, "", "error: no file is given"},
        {"- --data - <m.zlm", 2, "", "`-` is given twice"},
        {"m.zlm --data none.csv", 2, "", "cannot read `none.csv`: No such file"},
        {"empty.zlm", 1, "", "[model-missing]"},
        {"m.zlm --data d.json z.csv", 0, "\n$MODEL:TWO\n", ""},
        {"m.zlm d.json z.csv -q --warn data-name-unused=error", 0, "$MODEL:ONE\n", ""},
        {"rule.zlm d.json z.csv -q --error-on-warnings", 0, "$MODEL:RULE\n", ""},
        {"m.zlm d.json zero.csv -q --format short", 1, "$SOLVE\n",
         "m.zlm:23:15: error: the value of `1/Z` is not a finite number [value-not-finite]\n"},
        {"--model ONE m.zlm d.json z.csv", 0, "$MODEL:ONE\n", ""},
        {"--model ONE m.zlm --data - <d.json", 0, "Y.AGR\nY.MAN\n", ""},
        {"m.zlm d.json --format short -q", 1, "$MODEL:ONE\n",
         "m.zlm:23:17: error: no data for scalar `Z` [data-missing]\n"},
        // The generator file does not show the number of a line after 99999.
        {"long.zlm d.json --format short -q", 1, "",
         "long.zlm:100009:17: error: no data for scalar `Z` [data-missing]\n"},
        {"bad.zlm d.json z.csv -q --format short", 1, "$MODEL:ONE\n",
         "bad.zlm:8:1: error: unknown keyword `$PORD` [keyword-unknown]\n"},
        {"one.zlm odd.json -q --format short", 0, "$MODEL:ONE\n",
         "odd.json:2:2: warning: no set has the element `MEN` [element-unknown]\n"
         "odd.json:3:1: warning: no model uses `XX` [data-name-unused]\n"},
        {"one.zlm odd.json -q --format short --warn off", 0, "$MODEL:ONE\n", ""},
        {"one.zlm odd.json -q --error-on-warnings --format short", 1, "", "`MEN`"},
        {"one.zlm odd.json -q --warn element-unknown=error --format short", 1, "", "`MEN`"},
        {"one.zlm --summary d.json", 0, "  total                    6       13       7\n", ""},
        {"one.zlm --summary --set S=7", 0, "  $PROD:Y          8       7       14      14\n", ""},
        {"one.zlm --summary --set S=0", 0, "  $PROD:Y          8       0        0       0\n", ""},
        {"one.zlm --summary --set R=7", 1, "",
         "error[data-missing]: no number of elements for set"},
        {"one.zlm level.csv d.json -q --format short", 0, "$MODEL:ONE\n",
         "level.csv:1:1: warning: no variable `PL` has this number of elements"},
        {"one.zlm near.csv", 1, "", "  = help: did you mean `X1`?\n"},
        {"one.zlm d.json | head -n 1", 0, "$MODEL:ONE\n", ""},
    };
    for (const CommandLine& row : rows) {
        const Folder folder;
        folder.write("m.zlm", one + two);
        folder.write("one.zlm", one);
        folder.write("rule.zlm", rule);
        folder.write("long.zlm", many_lines);
        folder.write("bad.zlm", "$MODEL:BAD\n" + head + "$PORD:Y(S)\n$OFFTEXT\n" + one);
        folder.write("empty.zlm", "SET S;\n");
        folder.write("d.json",
                     "{\"sets\":{\"S\":[\"agr\",\"man\"]},\"parameters\":\n"
                     "{\"X\":{\"AGR\":1,\"MAN\":2}}}\n");
        folder.write("odd.json",
                     "{\"sets\":{\"S\":[\"AGR\",\"MAN\"]},\"parameters\":\n"
                     " {\"X\":{\"AGR\":1,\"MEN\":2},\n\"XX\":3}}\n");
        folder.write("near.csv", "S,AGR\nX1,AGR,1\n");
        folder.write("z.csv", "Z,2\n");
        folder.write("zero.csv", "Z,0\n");
        folder.write("level.csv", "PL,AGR,2\n");
        const Result result = folder.shell("\"$ORVEX\" expand " + row.command);
        EXPECT_EQ(result.status, row.status) << row.command;
        EXPECT_TRUE(has_text(result.out, row.out)) << row.command << "\n" << result.out;
        EXPECT_TRUE(has_text(result.err, row.err)) << row.command << "\n" << result.err;
    }
}

TEST(Expand, DataOfTheExamplesFitTheirSchema) {
    if (Folder().shell("python3 -c 'import jsonschema'").status != 0)
        SKIP_WITHOUT("python3 with jsonschema (Debian: python3-jsonschema)");
    const Result result =
        Folder().shell("python3 '" TESTS_DIR "/validate.py' '" DOCS_DIR
                       "/model-data.schema.json' '" EXAMPLES_DIR "'/*/data.json | sort | uniq -c");
    EXPECT_EQ(result.out, "      3 valid\n") << result.err;
}

}  // namespace
