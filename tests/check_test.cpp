// The findings of `orvex check`: every code by its example in docs/messages.md; all errors of a
// file without their consequences, each at its place.
#include "frontend/findings/messages.h"
#include "harness.h"

#include <gtest/gtest.h>
#include <regex>
#include <string>
#include <vector>

using harness::Folder;
using orvex::frontend::MessageEntry;
using std::string;

namespace {

// The findings on m.zlm, one per line: "LINE:COLUMN CODE", or "CODE" for the whole file.
string check(const Folder& folder, const string& options = "") {
    const harness::Result result =
        folder.shell("\"$ORVEX\" check --quiet --format short " + options + " m.zlm");
    EXPECT_EQ(result.err, "");
    static const std::regex line_form("m\\.zlm:([0-9]+:[0-9]+)?(:)? ?[a-z]+: .*\\[([a-z-]+)\\]\n");
    return std::regex_replace(result.out, line_form, "$1 $3\n");
}

string check_text(const string& text, const string& options = "") {
    const Folder folder;
    folder.write("m.zlm", text);
    return check(folder, options);
}

string block(const MessageEntry& entry, const string& kind) {
    for (const orvex::frontend::Example& example : entry.examples) {
        if (example.kind == kind) return example.text;
    }
    return {};
}

// A pattern for the messages of a finding in the index: any text in place of each {name}.
string message_form(const MessageEntry& entry) {
    string forms;
    for (const auto& wording : entry.says) {
        const string plain =
            std::regex_replace(wording.text, std::regex(R"([.$()*+?|\\\[\]^])"), "\\$&");
        const string form = std::regex_replace(plain, std::regex("\\{[a-z]+\\}"), ".+");
        forms += (forms.empty() ? "" : "|") + form;
    }
    return "(" + forms + ")";
}

// Options that show a finding even if it is off by default.
string options_of(const MessageEntry& entry) {
    return entry.level == "off" ? "--warn " + entry.code + "=note" : "";
}

class Codes : public testing::TestWithParam<MessageEntry> {};

TEST_P(Codes, ExamplesOfTheIndex) {
    const MessageEntry& entry = GetParam();
    const Folder folder;
    const auto check_example = [&](const string& kind) {
        const string text = block(entry, kind);
        folder.write("m.zlm",
                     text.empty() ? folder.shell(block(entry, kind + "-command")).out : text);
        return "\n" + check(folder, options_of(entry));
    };
    std::smatch line;
    std::regex_search(entry.text, line, std::regex("\n- Line: ([0-9]+)"));
    const string place = line.empty() ? "" : line.str(1) + ":[0-9]+";
    const string wrong = check_example("wrong");
    EXPECT_TRUE(std::regex_search(wrong, std::regex("\n" + place + " " + entry.code + "\n")))
        << place << " " << entry.code << " is not in:" << wrong;
    const string shown =
        folder.shell("\"$ORVEX\" check -q --format short " + options_of(entry) + " m.zlm").out;
    const std::regex form(": [a-z]+: " + message_form(entry) + " \\[" + entry.code + "\\]");
    EXPECT_TRUE(std::regex_search(shown, form)) << message_form(entry) << " in:" << shown;
    EXPECT_EQ(check_example("corrected").find(entry.code), string::npos);
}

// The entries that the text of a model alone can cause.
std::vector<MessageEntry> caused_by_models() {
    std::vector<MessageEntry> entries;
    for (const MessageEntry& entry : orvex::frontend::message_index()) {
        const string wrong = block(entry, "wrong") + block(entry, "wrong-command");
        const bool by_model =
            entry.ends == "error" || entry.ends == "overflow" || entry.ends == "finding";
        if (by_model && !wrong.empty() && block(entry, "data").empty()) entries.push_back(entry);
    }
    return entries;
}

INSTANTIATE_TEST_SUITE_P(Index, Codes, testing::ValuesIn(caused_by_models()), [](const auto& row) {
    return std::regex_replace(row.param.code, std::regex("-"), "_");
});

// Faults in all kinds of blocks, some of which could cause others: names declared on a wrong line,
// a block with a wrong keyword, rows that continue a wrong one.
TEST(Check, ShowsEveryFaultAndNoConsequence) {
    EXPECT_EQ(check_text("* SET R / N, S /;\n"
                         "$MODEL:FAULTS\n"
                         "$SECTORS:\n"
                         "  Y(R)  X  Z\n"
                         "  W(R\n"         // 5: no end; W is still a sector
                         "$COMODITIES:\n"  // 6: still declares PA and PB
                         "  PA(R)  PB\n"
                         "$CONSUMERS:\n"
                         "  RA  X\n"  // 9: X is a sector
                         "$AUXILIARY:\n"
                         "  TAU\n"
                         "$PROD:Y(R)  s:1\n"
                         "  O:PA(R)  Q:1\n"
                         "  I:PA(T)  Q:1\n"                    // 14: T is a separate set
                         "  I:PB     Q:1      A:TAU  T:0.1\n"  // 15: TAU is not a consumer
                         "+          N:TAU(R\n"                // 16: no end
                         "  I:PB     Q:1\n"
                         "\n"
                         "* a comment\n"
                         "  I:PA(R)  Q:V(Q)\n"  // 20: Q is not active
                         "$PROD:X$(A\n"         // 21: the condition is not closed
                         "  O PB  Q 1\n"        // 22: the block of line 21 is open
                         "$PROD:Z\n"
                         "  O PB  Q 1\n"  // 24
                         "  I:PB  Q:1\n"
                         "+ junk\n"  // 26
                         "$DEMAND:RA\n"
                         "  D:PB(S,,T#\n"      // 28
                         "$CONSTRAINT:TAUX\n"  // 29
                         "  TAU =E= 0;\n"
                         "$CONSTRAINT:TAU\n"
                         "  TAU =E= 0;\n"
                         "$REPORT:\n"
                         "  V:V1(R)  O:PA(R)  PROD:Y(R)\n"
                         "  V:V2     O:PB     PROD:Z\n"
                         "  V:V3     Q:PB\n"  // 36
                         "  V:V4     W:RA\n"
                         "  V:V5     O:W      PROD:Z\n"  // 38: W is a sector
                         "$OFFTEXT\n"),
              "5:4 declaration-unclosed\n"
              "6:1 keyword-unknown\n"
              "9:7 kind-mismatch\n"
              "15:23 kind-mismatch\n"
              "16:17 argument-list-unclosed\n"
              "20:16 set-not-looped\n"
              "21:9 condition-unbalanced\n"
              "22:3 label-missing\n"
              "24:3 label-missing\n"
              "26:1 label-missing\n"
              "28:12 index-parenthesis-missing\n"
              "29:13 constraint-name-unknown\n"
              "36:12 report-item-invalid\n"
              "38:14 kind-mismatch\n");
}

// After a missing end nothing in a model can be judged.
TEST(Check, AMissingEndIsOneFault) {
    const string rows = "$SECTORS:\n  Y\n$COMMODITIES:\n  P\n$PROD:Y\n  O:P Q:1\n";
    EXPECT_EQ(
        check_text("$MODEL:A\n" + rows + "$ONTEXT\n$MODEL:B\n" + rows + "$OFFTEXT\n", "--warn off"),
        "8:1 keyword-colon-missing\n");
    EXPECT_EQ(check_text("$MODEL:A\n" + rows + "$MODEL:B\n$REPORT:\n" + rows, "--warn off"),
              "8:1 keyword-unknown\n");
}

// Rows that look wrong but are right, next to similar ones that are wrong.
TEST(Check, TellsRowsFromOddRows) {
    const string head = "$MODEL:M\n$SECTORS:\n  Y\n$COMMODITIES:\n  PY  PL\n$CONSUMERS:\n  RA\n";
    const string tail = "$DEMAND:RA\n  D:PY\n  E:PL  Q:1\n$OFFTEXT\n";
    struct {
        string block;
        string findings;
    } const rows[] = {
        {"$PROD:Y  S:1  VA(S):0.5  R.TL(VA):2\n"
         "  O:PY  Q:1\n"
         "I:PL  Q:1  VA:\n"
         "  K:2\n"
         "  I:PL  Q:(1 + A(B,C))  R.TL:  A:RA\n"
         "+ T:(Y0 (R))\n",
         ""},
        {"$PROD:Y\n  O:PY  Q:1  S:\n  I:PL  Q:1 A: T:1\n",
         "9:14 value-missing\n10:13 value-missing\n"},
        {"$PROD:Y  VA:  VB:  VA:1\n  O:PY\n  I:PL  VB:  VC:  VB:2\n",
         "8:10 value-missing\n8:15 value-missing\n8:20 label-repeated\n"
         "10:14 nest-undeclared\n10:19 label-unknown\n"},
        {"$PROD:Y\n  O:PY  Q:1\n  I:PL\n  Q:1\n  + T:1\n  VA:\n  D:PL\n",
         "11:3 entry-label-invalid\n12:3 line-indented\n13:3 entry-label-invalid\n14:3 "
         "entry-label-invalid\n"},
        {"$PROD:Y\n 1 O:PY  Q:1\n  I :PL\n+ a b Q:1\n  I:PL  Q :2\n",
         "9:2 text-ignored\n11:3 text-ignored\n"},
        {"$PROD:Y  S:0,5\n  O:PY  Q:1;  P:1)\n  I:PL  Q:1 - 2\n",
         "8:12 value-invalid\n9:11 value-invalid\n9:17 value-invalid\n10:11 value-invalid\n"},
        {"$PROD:Y\n  O:PY  Q:1  I:PL  Q:2  Q:3\n  I:PL  N:TAU\n",
         "9:14 entry-joined\n10:11 name-undeclared\n10:9 tax-receiver-missing\n"},
    };
    for (const auto& row : rows) EXPECT_EQ(check_text(head + row.block + tail), row.findings);
}

// Text after the sets of a name, next to text that is allowed there.
TEST(Check, FindsTextAfterTheSetsOfAName) {
    const string head = "$MODEL:M\n$SECTORS:\n  Y(R)\n$COMMODITIES:\n  P(R)\n$CONSUMERS:\n  C(R)\n";
    const string tail = "$DEMAND:C(R)\n  D:P(R)\n  E:P(R)  Q:1\n$OFFTEXT\n";
    EXPECT_EQ(check_text(head +
                         "$PROD:Y(R)$(A(R))  S:1\n  O:P(R)$(B GT 0)  Q:1\n"
                         "  I:P(R) #(R)  Q :1\n  I:P(\"a b\")  Q:1\n" +
                         tail),
              "");
    EXPECT_EQ(check_text(head +
                         "$PROD:Y(R) S 1\n  O:P(R)x  Q:1\n  I:P(R))  Q:1\n"
                         "  I:P(R)  Q  :1\n  I:P(R)  Q=1\n" +
                         tail),
              "8:12 text-ignored\n9:9 text-ignored\n10:9 text-ignored\n11:11 text-ignored\n"
              "11:13 label-unknown\n12:11 text-ignored\n");
}

// If the line shows more than the message, the help says it.
TEST(Check, HelpsWithTheCauseThatTheLineShows) {
    const string head = "$MODEL:M\n$COMMODITIES:\n  P\n$AUXILIARY:\n  T\n";
    const std::pair<string, string> rows[] = {
        {"$CONSTRAINT:T\n  T =E= 0;\n  P =G= 1;\n", "write the rest before the first `;`"},
        {"$PROD:Y\n  * owns\n", "begin the comment with `*` in column 1"},
        {"$PROD:Y\n O:P\n $OFFTEXT\n", "move the `$` to column 1"},
        {"$PROD:Y\n  O:P  Q:A('B')\n", "put the element in double quotes"},
        {"$PROD:Y(R)\n  O:P  Q:A(R,)\n", "name the set, or remove the comma"},
        {"$PROD:Y\n+ O:P\n", "begin a new line with `O:`: here it takes a value"},
        {"$PROD:Y  N:T\n", "move `N:` to an entry: here it takes a value"},
        {"$SECTORS:\n  Y  Part of A\n$CONSUMERS:\n  H  Owner of B\n",
         "put `!` before the description"},
    };
    for (const auto& [rest, help] : rows) {
        const Folder folder;
        folder.write("m.zlm", head + rest + "$OFFTEXT\n");
        const string text = folder.shell("\"$ORVEX\" check --warn off m.zlm").out;
        EXPECT_NE(text.find("= help: " + help), string::npos) << text;
    }
}

// Who uses what, and names that are used before they are declared.
TEST(Check, KnowsTheUsesOfNames) {
    const auto model = [](const string& endowment) {
        return "$MODEL:M\n$SECTORS:\n  Y\n$COMMODITIES:\n  PY  PG  PL\n$PROD:Y\n  O:PY  Q:1\n"
               "  O:PG  Q:1\n  I:PL  Q:2\n$DEMAND:RA\n  D:PY\n  E:PL  Q:2\n  E:PG  Q:" +
               endowment + "\n$CONSUMERS:\n  RA\n$OFFTEXT\n";
    };
    EXPECT_EQ(check_text(model("-1")), "");
    EXPECT_EQ(check_text(model("(-G0)")), "");
    EXPECT_EQ(check_text(model("G0")), "");
    EXPECT_EQ(check_text(model("1")), "5:7 commodity-unused\n");
}

// Beyond line 99999 the listing does not show where a name is used, but the tree does.
TEST(Check, CallsNoNameUnusedThatMayBeUsed) {
    string text = "$MODEL:M\n$SECTORS:\n  Y\n$COMMODITIES:\n  PY  PL\n$CONSUMERS:\n  RA\n";
    for (int line = 0; line < 100000; ++line) text += "*\n";
    text += "$PROD:Y\n  O:PY  Q:1\n  I:PL  Q:\n$DEMAND:RA\n  D:PY\n  E:PL  Q:1\n$OFFTEXT\n";
    EXPECT_EQ(check_text(text), "100010:9 value-missing\n");
}

// A model that is left out and has no end contains the next one, which then does not begin.
TEST(Check, PassesOverWhatIsLeftOut) {
    const string model = "$MODEL:A\n$PROD:Y\n  O P\n";
    const string text = model + "$OFFTEXT\n" + model + "$MODEL:B\n  O P\n$OFFTEXT\n$MODEL:C\n+ X\n";
    EXPECT_EQ(check_text(text, "--warn off"),
              "3:3 label-missing\n5:1 model-repeated\n12:1 label-missing\n");
    EXPECT_EQ(check_text(text, "--warn off --model c"), "12:1 label-missing\n");
}

}  // namespace
