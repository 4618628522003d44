// The accounts of models: rows of printed texts, whole models with single faults in
// balance/faults.rows, the examples, and the output of the command.
#include "frontend/accounts/balance.h"

#include "frontend/base/bytes.h"
#include "frontend/base/decimals.h"
#include "frontend/base/line_stream.h"
#include "harness.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <map>
#include <optional>
#include <regex>
#include <set>
#include <string>
#include <utility>
#include <vector>

using harness::Folder;
using harness::lines_of;
using harness::read_file;
using harness::Result;
using orvex::frontend::Account;
using orvex::frontend::AccountKind;
using orvex::frontend::decimal_in;
using orvex::frontend::LineSink;
using orvex::frontend::ModelAccounts;
using orvex::frontend::shortest_decimal;
using std::string;

namespace {

using LevelTable = std::map<string, double>;

std::vector<ModelAccounts> balance(const string& text, const LevelTable& table = {}) {
    const auto levels = [&](std::string_view name) {
        const auto found = table.find(string(name));
        return found == table.end() ? nullptr : &found->second;
    };
    const auto pass = [&](const LineSink& sink) {
        std::size_t line = 0;
        for (const std::string_view row : orvex::frontend::lines_of(text)) sink(row, ++line);
        return true;
    };
    std::vector<ModelAccounts> models;
    EXPECT_TRUE(balance_text(pass, {levels}, models));
    return models;
}

// "Y 10=8+2 P 10=10 C 2=2?": revenue, cost and taxes, supply and demand, income and spending; "?"
// after an account with a gap, "??" after one that cannot be judged. Then "P:NAME=PRICE" for each
// wrong price, and "!LINE VARIANT" for each line that cannot be read.
string shown(const ModelAccounts& model) {
    string text;
    for (const orvex::frontend::AccountIndex index : by_kind(model.books)) {
        const Account& account = model.books.accounts[index];
        string sides = shortest_decimal(account.received) + "=" + shortest_decimal(account.paid);
        if (account.kind == AccountKind::commodity)
            sides = shortest_decimal(account.paid) + "=" + shortest_decimal(account.received);
        if (account.kind == AccountKind::sector)
            sides = shortest_decimal(account.received) + "=" + shortest_decimal(cost_of(account)) +
                    "+" + shortest_decimal(account.taxes);
        const auto& gaps = model.gaps.accounts;
        const bool has_gap = std::find(gaps.begin(), gaps.end(), index) != gaps.end();
        text.append(text.empty() ? "" : " ").append(account.name).append(" ").append(sides);
        text.append(has_gap ? "?" : "").append(is_unknown(account, model.gaps) ? "??" : "");
    }
    for (const auto& [line, price] : model.prices)
        text.append(" P:").append(price.entry.commodity + "=" + shortest_decimal(price.expected));
    for (const auto& fault : model.faults)
        text.append(" !").append(std::to_string(fault.line) + " ").append(fault.variant);
    return text;
}

// The lines of a model, with ";" between them.
string model(string lines) {
    std::replace(lines.begin(), lines.end(), ';', '\n');
    return "$MODEL:M\n" + lines + "\n$SOLVE\n";
}

struct Row {
    string lines;
    string accounts;
    LevelTable levels = {};
};

TEST(Decimals, AreWholeTexts) {
    const std::pair<string, double> numbers[] = {
        {"1.5", 1.5},   {"-.5", -0.5},  {"5.", 5},     {"007", 7}, {"1e3", 1000},
        {"1E+3", 1000}, {"25e-1", 2.5}, {"1e-400", 0}, {"-0", 0},
    };
    for (const auto& [text, number] : numbers) EXPECT_EQ(decimal_in(text), number) << text;
    for (const char* const text : {"", "-", ".", "-.", "e3", "1e", "1e+", "+1", "--1", " 1", "1 ",
                                   "1,5", "1.2.3", "0x10", "inf", "nan", "1e400"})
        EXPECT_EQ(decimal_in(text), std::nullopt) << text;
}

TEST(Accounts, FollowTheConventions) {
    const Row rows[] = {
        // Quantities: 1 for outputs and inputs without one, 0 for endowments.
        {"$PROD:Y;O:P;I:L;+Q:2", "Y 1=2+0? P 1=0? L 0=2?"},
        {"$DEMAND:C;E:L;D:P;+Q:1", "L 0=0 P 0=1? C 0=1?"},
        // The remaining income, in any order of the entries, even if it is zero.
        {"$DEMAND:C;D:P;E:L;+Q:5;D:R;+Q:2", "P 0=3? L 5=0? R 0=2? C 5=5"},
        {"$DEMAND:C;D:P;E:L;+Q:0.3;D:R;+Q:0.1;D:S;+Q:0.2",
         "P 0=0 L 0.3=0? R 0=0.1? S 0=0.2? C 0.3=0.30000000000000004"},
        // A second such demand: accounts that depend on it are unknown, the others are judged.
        {"$DEMAND:C;D:P;E:L;+Q:5;D:R", "P 0=0?? L 5=0? R 0=0?? C 5=0??"},
        // A negative endowment is spending; a variable multiplies it, and is 0 without a level.
        {"$DEMAND:C;E:L;+Q:5;E:L;+Q:-2", "L 5=2? C 5=2?"},
        {"$DEMAND:C;E:L;+Q:5;E:L;+Q:-5;+R:U", "L 5=1? C 5=1?", {{"U", 0.2}}},
        {"$DEMAND:C;E:L;+Q:5;E:L;+Q:-5;+R:U", "L 5=0? C 5=0?"},
        // Levels of activities and prices.
        {"$PROD:Y.A;O:P;+Q:3;I:L;+Q:12",
         "Y.A 12=12+0 P 12=0? L 0=12?",
         {{"Y.A", 2}, {"P", 2}, {"L", 0.5}}},
        // A tax lowers what a sector receives for an output, and raises what it pays for an input.
        {"$PROD:Y;O:P;+Q:10;+P:0.8;+A:G;+T:0.2;I:L;+Q:6;+P:1.5;+A:G;+T:0.5",
         "Y 10=6+5? P 10=0? L 0=6? G 5=0?"},
        {"$PROD:Y;O:P;+Q:10;+P:1.5;+A:G;+T:-0.5;I:L;+Q:15", "Y 10=15+-5 P 10=0? L 0=15? G -5=0?"},
        // Rates of one receiver and of several; the level of N: is a rate; A: alone pays nothing.
        {"$PROD:Y;I:L;+Q:10;+P:1.8;+A:G;+T:0.1;+N:TAU;+A:H;+T:0.2",
         "Y 0=10+8? L 0=10? G 6=0? "
         "H 2=0?",
         {{"TAU", 0.5}}},
        {"$PROD:Y;I:L;+Q:10;+P:1.3;+A:G;+A:H;+T:0.1;+T:0.2", "Y 0=10+3? L 0=10? G 1=0? H 2=0?"},
        {"$PROD:Y;I:L;+Q:10;+P:1.3;+T:0.1;+A:G;+T:0.2;+A:H", "Y 0=10+3? L 0=10? G 1=0? H 2=0?"},
        {"$PROD:Y;I:L;+Q:10;+P:1.1;+T:0.1;+A:G;+A:H", "Y 0=10+1? L 0=10? G 1=0? H 0=0"},
        {"$PROD:Y;I:L;+Q:10;+A:G;+N:TAU", "Y 0=10+0? L 0=10? G 0=0"},
        {"$PROD:Y;I:L;+Q:10;+T:0.1", "Y 0=10+0? L 0=10?"},
        // The reference price if the price is 1.
        {"$PROD:Y;O:P;+Q:1;+A:G;+T:0.25;I:L;+Q:1;+P:2",
         "Y 1=1+0.25? P 1=0? L 0=1? G 0.25=0? "
         "P:P=0.75 P:L=1"},
        {"$PROD:Y;I:L;+Q:1;+P:2", "Y 0=3+0? L 0=3?", {{"L", 3}}},
        {"$DEMAND:C;E:L;+Q:1;D:L;+P:2", "L 1=1 C 1=1"},
        // Nests, elasticities, limits and other entries do not count, even with names of labels.
        {"$PROD:Y;+S:0.5;+T:2;+Q:1;O:P;+Q:4;+K:9;+VA:;I:P;+T:;+Q:4;+Z:X;X:L;+Q:7;S:L;+A:G",
         "Y 4=4+0 P 4=4"},
        // All entries for a name count together, in the order of the declarations.
        {"$SECTORS:;X;Y;$COMMODITIES:;P;$CONSUMERS:;C;$PROD:Y;O:P;+Q:1;$DEMAND:C;D:P;+Q:1;"
         "$PROD:Y;I:P;+Q:1;$REPORT:;V:Z        D:P        DEMAND:C;$PEPS:1.E-6;",
         "X 0=0+0 Y 1=1+0 P 1=2? C 0=1?"},
    };
    for (const Row& row : rows) {
        const std::vector<ModelAccounts> models = balance(model(row.lines), row.levels);
        ASSERT_EQ(models.size(), 1U);
        EXPECT_EQ(shown(models.front()), row.accounts) << row.lines;
    }
}

TEST(Accounts, AreReadAsHostsPrintThem) {
    const Row rows[] = {
        {"$prod: y.agr ;  O:P  .AGR\t;+ Q :     100.00000000\r;I:L;+Q:  1.0000E+2",
         "Y.AGR 100=100+0 P.AGR 100=0? L 0=100?"},
        {"$PROD:Y;O:P.NEW YORK.X;+Q:EPS;I:L;+Q:+.5E0", "Y 0=0.5+0? P.NEW YORK.X 0=0 L 0=0.5?"},
        // Lines that cannot be read; no account is judged then.
        {"$PROD:Y;O:P;+Q:1,5;+P:****;+T:INF;+Q:1E999",
         "Y 1=0+0 P 1=0 !4 number !5 number !6 number "
         "!7 number"},
        {"$PROD:Y;O:P  Q:1;I:;+A:;hello", "Y 0=0+0 !3 name !4 name !6 line"},
        {"$PROD:;O:P", " !2 name"},
        {"O:P", " !2 label"},
        {"$SECTORS:;Y  ! Yes:;$OFFTEXT;$PROD:Y:1", " !4 model"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(shown(balance(model(row.lines)).front()), row.accounts) << row.lines;
    const string longest(orvex::frontend::longest_line, 'x');
    EXPECT_EQ(shown(balance(model("$PROD:Y;O:P;" + longest)).front()), "Y 1=0+0 P 1=0 !4 long");
    // Several models; text between them, and before the first, is ignored.
    const std::vector<ModelAccounts> models =
        balance("page 1\n" + model("$PROD:Y;O:P") + "O:Q\n$MODEL:N\n$DEMAND:C\nD:P\n+Q:1");
    ASSERT_EQ(models.size(), 2U);
    EXPECT_EQ(shown(models[0]), "Y 1=0+0? P 1=0?");
    EXPECT_EQ(models[1].name + " " + shown(models[1]), "N P 0=1? C 0=1?");
}

// A row of balance/faults.rows: "MODEL|LINE|TEXT|FINDINGS".
std::vector<string> cells_of(const string& row) {
    std::vector<string> cells;
    std::size_t begin = 0;
    for (std::size_t bar = 0; bar != string::npos; begin = bar + 1) {
        bar = row.find('|', begin);
        cells.push_back(row.substr(begin, bar == string::npos ? bar : bar - begin));
    }
    return cells;
}

string with_line(const string& text, std::size_t number, const string& line) {
    std::vector<string> lines = lines_of(text);
    lines.at(number - 1) = line;
    string result;
    for (const string& each : lines) result += each + "\n";
    return result;
}

// The path of the data for a model, or nothing.
string data_of(const string& folder, const string& model) {
    for (const string ending : {".json", ".csv"}) {
        if (std::filesystem::exists(folder + "/" + model + ending)) return model + ending;
    }
    return "";
}

// The findings of a text, in the form used in rows.
std::multiset<string> found_in(const string& text) {
    static const std::regex gap("error\\[account-unbalanced\\]: [a-z]+ `([^`]*)` .*");
    static const std::regex open("error\\[demand-quantity-missing\\]: consumer `([^`]*)` .*");
    static const std::regex place(" *--> [^:]*:([0-9]+):.*");
    std::multiset<string> found;
    string head;
    std::set<string> likely;
    bool has_gap = false;
    for (const string& line : lines_of(text)) {
        std::smatch parts;
        if (std::regex_match(line, parts, gap)) {
            found.insert(parts.str(1));
            has_gap = true;
        } else if (std::regex_match(line, parts, open)) {
            found.insert("open");
            found.insert(parts.str(1));
        } else if (line.starts_with("warning[price-mismatch]")) {
            head = "P@";
        } else if (line.starts_with("note: this may be the wrong entry")) {
            head = "@";
        } else if (std::regex_match(line, parts, place)) {
            if (head == "P@") found.insert(head + parts.str(1));
            if (head == "@") likely.insert(head + parts.str(1));
            head.clear();
        }
    }
    if (has_gap && likely.empty()) found.insert("@none");
    found.insert(likely.begin(), likely.end());
    return found;
}

// Runs the command on a model of tests/balance, with a line of the model or its data replaced.
Result balance_edited(const std::vector<string>& row) {
    const string source = TESTS_DIR "/balance";
    const Folder folder;
    string text = read_file(source + "/" + row[0] + ".zlm");
    const string data = data_of(source, row[0]);
    string values = data.empty() ? "" : read_file(source + "/" + data);
    if (row.size() > 1) {
        const bool in_data = row[1].starts_with("d");
        string& edited = in_data ? values : text;
        edited = with_line(edited, std::stoul(row[1].substr(in_data ? 1 : 0)), row[2]);
    }
    folder.write("m.zlm", text);
    if (!data.empty()) folder.write(data, values);
    return folder.shell("\"$ORVEX\" balance -q m.zlm " + (data.empty() ? "" : "--data " + data) +
                        " >/dev/null");
}

TEST(Balance, FindsTheAccountAndTheEntry) {
    std::set<string> models;
    std::size_t named = 0;
    std::size_t count = 0;
    for (const string& line : lines_of(read_file(TESTS_DIR "/balance/faults.rows"))) {
        if (line.empty() || line.starts_with("#")) continue;
        const std::vector<string> row = cells_of(line);
        ASSERT_EQ(row.size(), 4U) << line;
        if (models.insert(row[0]).second) {
            const Result whole = balance_edited({row[0]});
            EXPECT_EQ(whole.err, "") << row[0];
            EXPECT_EQ(whole.status, 0) << row[0];
        }
        std::multiset<string> expected;
        for (const string& cell : cells_of(std::regex_replace(row[3], std::regex(" "), "|")))
            expected.insert(cell);
        const Result result = balance_edited(row);
        EXPECT_EQ(found_in(result.err), expected) << line << "\n" << result.err;
        named += static_cast<std::size_t>(!expected.contains("@none"));
        ++count;
    }
    EXPECT_EQ(models.size(), 6U);
    EXPECT_GE(5 * named, 4 * count);
}

TEST(Balance, OfTheExamples) {
    const string examples = DOCS_DIR "/../examples";
    std::size_t count = 0;
    for (const string name : {"closed", "taxes", "regions", "dynamic", "three"}) {
        const string folder = examples + "/" + name;
        const string data = data_of(folder, "data");
        const Result result = Folder().shell("cd '" + folder + "'; \"$ORVEX\" balance " + name +
                                             ".zlm --data " + data + " --format csv");
        EXPECT_EQ(result.err, "all accounts balance\n") << name;
        for (const string& line : lines_of(result.out))
            count += static_cast<std::size_t>(line.ends_with(",0"));
    }
    // 9, 12, 22, 30 and 4, 5 and 10 accounts.
    EXPECT_EQ(count, 92U);
}

// The table at the top of examples/taxes/taxes.zlm, with its rows and columns in another order.
const char* const taxes_table = R"(,PY.AGR,py.man,PW,PG,PL,PK,HOUSE,GOVT,Y.AGR,Y.MAN,W,G
HOUSE,,,,,100,70,,,,,,
GOVT,,,,,,10,,,20,20,20,
"Y.AGR",100,,,,,,,,,,,
Y.MAN,,120,,,,,,,,,,
W,,,170,,,,,,,,,
G,,,,70,,,,,,,,
PY.AGR,,,,,,,,,,,70,30
PY.MAN,,,,,,,,,,,80,40
PW,,,,,,,170,,,,,
PG,,,,,,,0,70,,,,
PL,,,,,,,,,40,60,,
PK,,,,,,,,,40,40,,
)";

TEST(Balance, ComparesWithATableOfAccounts) {
    struct Case {
        string edit;  // for sed
        string findings;
    };
    const Case cases[] = {
        {"", ""},
        {"s/40,60/40.00001,60/", ""},
        {"s/40,60/45,60/", "12: `PL` receives 40 from `Y.AGR` in the model, but 45 in the table\n"},
        {"s/^PK,.*/PK,,,,,,,,,40,,,/",
         "13: `PK` receives 40 from `Y.MAN` in the model, but 0 in the table\n"},
        {"s/HOUSE/HAUS/",
         "2: account `HAUS` of the table is not in the model\n"
         "1: account `HOUSE` of the model is not in the table\n"},
        {"s/PG,PL/PL,PL/", "1: `PL` is in the table twice\n"},
        {"s/^PG/PW/", "11: `PW` is in the table twice\n"},
        {"s/40,60/forty,60/", "12: `forty` is not a number\n"},
        {"2s/$/,7/", "2: `7` has no account in the first row or column\n"},
        {"d", "1: the table has no names in its first row\n"},
        {"s/\"Y.AGR\"/\"Y.AGR/", "4: the cell has no closing quote\n"},
    };
    const Folder folder;
    folder.write("table.csv", taxes_table);
    for (const Case& each : cases) {
        const Result result = folder.shell(
            "cp '" DOCS_DIR "/../examples/taxes/'* .  2>/dev/null; sed '" + each.edit +
            "' table.csv >t.csv; \"$ORVEX\" balance -q taxes.zlm --data data.json --format sam "
            "--against t.csv --report short=found >own.csv 2>/dev/null; echo $?; "
            "sed -E 's/^t.csv:([0-9]+):1: error: (.*) \\[[a-z-]*\\]$/\\1: \\2/' found");
        EXPECT_EQ(result.out, (each.findings.empty() ? "0\n" : "1\n") + each.findings) << each.edit;
    }
    // It can read what it writes.
    EXPECT_EQ(folder
                  .shell("\"$ORVEX\" balance taxes.zlm --data data.json --against own.csv "
                         ">table; echo $?; head -4 table")
                  .out,
              "0\nTAXES  taxes.zlm:33\n\n"
              "Sectors       Revenue      Cost     Taxes       Gap\n"
              "  Y.AGR           100        80        20\n");
}

const char* const small = "$MODEL:A\n$PROD:Y\nO:P\n+Q:10\n$DEMAND:C.X\nD:P\n+Q:9\n$SOLVE\n";

TEST(Balance, PrintsTables) {
    const Folder folder;
    folder.write("a.scr", small);
    const auto shown_as = [&](const string& options) {
        return folder.shell("\"$ORVEX\" balance -q " + options + " a.scr 2>/dev/null").out;
    };
    EXPECT_EQ(shown_as(""),
              "A  a.scr:1\n\n"
              "Sectors       Revenue      Cost     Taxes       Gap\n"
              "  Y                10         0         0        10\n\n"
              "Commodities    Supply    Demand                 Gap\n"
              "  P                10         9                   1\n\n"
              "Consumers      Income  Spending                 Gap\n"
              "  C.X               0         9                  -9\n");
    EXPECT_EQ(shown_as("--format csv"),
              "model,kind,name,level,revenue,cost,taxes,supply,demand,income,spending,gap\n"
              "A,sector,Y,1,10,0,0,,,,,10\nA,commodity,P,1,,,,10,9,,,1\n"
              "A,consumer,C.X,,,,,,,0,9,-9\n");
    EXPECT_EQ(shown_as("--format sam"), "A,Y,P,C.X\nY,,10,\nP,,,9\nC.X,,,\n");
    EXPECT_EQ(shown_as("--format json"),
              R"({"version":2,"type":"balance","model":"A","path":"a.scr","line":1,"accounts":[)"
              R"({"kind":"sector","name":"Y","level":1.0,"revenue":10.0,"cost":0.0,"taxes":0.0,)"
              R"("gap":10.0,"balanced":false},{"kind":"commodity","name":"P","level":1.0,)"
              R"("supply":10.0,"demand":9.0,"gap":1.0,"balanced":false},{"kind":"consumer",)"
              R"("name":"C.X","income":0.0,"spending":9.0,"gap":-9.0,"balanced":false}]})"
              "\n");
}

// Options, streams and statuses.
TEST(Balance, ReadsTextsAndModels) {
    const Folder folder;
    folder.write("a.scr", small);
    folder.write("good.put", "\n$MODEL:A\n$DEMAND:C\nD:P\n+Q:3\nE:P\n+Q:2\n");
    folder.write("m.zlm",
                 "$MODEL:A\n$SECTORS:\n  Y\n$COMMODITIES:\n  P  L\n$CONSUMERS:\n  C\n"
                 "$PROD:Y\n  O:P\n  I:L\n$DEMAND:C\n  D:P\n  E:L  Q:1\n$OFFTEXT\n");
    folder.write("b.zlm", "* two\n$MODEL:A\n$OFFTEXT\n$MODEL:B\n$OFFTEXT\n");
    folder.write("none.zlm", "* no model\n");
    folder.write("levels.csv", "P,2\nC,1\n");
    const std::pair<string, string> rows[] = {
        // By the name, by the first line, and from standard input: a pipe and a file.
        {"a.scr", "1 3 errors"},
        {"good.put --tolerance 0.4", "0 all accounts balance"},
        {"good.put --tolerance 0.3", "1 2 errors"},
        {"m.zlm", "0 all accounts balance"},
        {"- <a.scr", "1 3 errors"},
        {"- --stdin-filename x.zlm <m.zlm", "0 all accounts balance"},
        {"a.scr --data levels.csv", "1 3 errors"},
        {"a.scr a.scr --model a", "1 6 errors"},
        // Errors in the files and the options.
        {"a.scr --model b", "1 1 error"},
        {"none.zlm", "1 1 error"},
        {"- </dev/null", "1 1 error"},
        {"- <m.zlm", "1 1 error"},
        {"none.scr", "2 1 error"},
        {".", "2 help: `orvex check` searches folders"},
        {"a.scr --against none.csv", "2 4 errors"},
        {"a.scr m.zlm", "2 "},
        {"b.zlm --against a.scr", "2 "},
        {"a.scr --tolerance 1", "2 "},
        {"a.scr --format table", "2 "},
    };
    for (const auto& [arguments, expected] : rows) {
        const Result result = folder.shell("cat a.scr | \"$ORVEX\" balance " + arguments +
                                           " 2>err >out; echo $?; " + "tail -n 1 err");
        EXPECT_TRUE(std::regex_replace(result.out, std::regex("\n"), " ").starts_with(expected))
            << arguments << ": " << result.out << folder.read("err");
    }
    EXPECT_EQ(folder
                  .shell("cat a.scr | \"$ORVEX\" balance -q - 2>&1 >/dev/null | grep -A1 ^error | "
                         "head -2")
                  .out,
              "error[account-unbalanced]: sector `Y` does not balance: revenue 10, cost 0, taxes "
              "0\n --> <stdin>:2:1\n");
}

}  // namespace
