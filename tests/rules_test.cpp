// The rules' findings in models with errors, and how findings with one cause are joined.
#include "frontend/model/build.h"
#include "frontend/rules/host_text.h"
#include "frontend/rules/rule.h"
#include "frontend/syntax/source.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <vector>

using orvex::frontend::Finding;
using orvex::frontend::Index;
using orvex::frontend::Model;
using orvex::frontend::Severity;
using orvex::frontend::Source;
using std::string;

namespace {

std::vector<Finding> find(const string& text) {
    Source source;
    source.bytes = text;
    orvex::frontend::parse_source(source);
    std::vector<Finding> findings;
    orvex::frontend::run_file_rules(source, findings);
    const orvex::frontend::HostText host = orvex::frontend::read_host_text(source);
    for (Index i = 0; i < orvex::frontend::model_count(source.tree); ++i) {
        const Model model = orvex::frontend::build_model(source.bytes, source.tree, i, false);
        orvex::frontend::run_model_rules(source, host, model, findings);
    }
    std::stable_sort(findings.begin(), findings.end(),
                     [](const Finding& a, const Finding& b) { return a.span.line < b.span.line; });
    return findings;
}

// "LINE:COLUMN CODE", one per line.
string places(const string& text) {
    string shown;
    for (const Finding& finding : find(text)) {
        shown += std::to_string(finding.span.line) + ":" + std::to_string(finding.span.column) +
                 " " + finding.code + "\n";
    }
    return shown;
}

// The notes and suggestions of the first finding with that code.
string remarks(const string& text, const string& code) {
    string shown;
    for (const Finding& finding : find(text)) {
        if (finding.code != code) continue;
        for (const auto& remark : finding.remarks) {
            const bool is_own =
                remark.severity == Severity::note || remark.message.starts_with("did you mean");
            if (is_own) shown += remark.message + "\n";
        }
        break;
    }
    return shown;
}

// A model without findings, whose accounts are not checked because it has a condition: the names
// declared as auxiliary variables are on line 9, the rows of Y begin on line 11, those of RA follow
// them, and the rest is at the end.
string model(const string& declared = "", const string& rows = "  O:PY  Q:1\n  I:PL  Q:1\n",
             const string& rest = "", const string& demand = "  D:PY\n  E:PL$(1)  Q:1\n") {
    return "$MODEL:M\n$SECTORS:\n  Y\n$COMMODITIES:\n  PY  PL\n$CONSUMERS:\n  RA\n$AUXILIARY:\n  " +
           declared + "\n$PROD:Y\n" + rows + "$DEMAND:RA\n" + demand + rest + "$OFFTEXT\n";
}

struct Row {
    string text;
    string findings;
};

TEST(Rules, SayNothingOfWhatAnErrorTouches) {
    const Row rows[] = {
        {model(), ""},
        // A row that is not closed, or lacks its colons: it may be the input.
        {model("", "  O:PY  Q:1\n  I:PL(\n"), ""},
        {model("", "  O:PY  Q:1\n  I PL Q 1\n"), ""},
        // Only the first colon is missing: the row is an input, not an entry Q.
        {model("", "  O:PY  Q:1\n  I PL  Q:1\n"), "12:3 text-ignored\n"},
        // An input of a consumer: it may be PL; RA is known to have an endowment.
        {model("", "  O:PY  Q:1\n  I:RA  Q:1\n"), ""},
        // An output of a consumer: it may be PY.
        {model("", "  O:RA  Q:1\n  I:PL  Q:1\n"), ""},
        // TAU is not declared: that is the only finding; T is not a similar auxiliary variable.
        {model("ABCDEF", "  O:PY  Q:(ABCDEF)\n  I:PL  Q:1\n", "$CONSTRAINT:TAU\n  TAU =E= 1;\n"),
         ""},
        // TAUX means TAU, but BETA still has no constraint.
        {model("TAU  BETA", "  O:PY  Q:(TAU)\n  I:PL  Q:(BETA)\n",
               "$CONSTRAINT:TAUX\n  TAU =E= 1;\n"),
         "9:8 constraint-missing\n"},
        // What is after column 255 of line 17 is not read, and may be the relation.
        {model("TAU", "  O:PY  Q:(TAU)\n  I:PL  Q:1\n",
               "$CONSTRAINT:TAU\n  TAU" + string(250, ' ') + " =E= 1;\n"),
         "17:256 line-too-long\n"},
        // After an unknown keyword the name may be declared.
        {"$MODEL:M\n$SECTORS:\n  Y\n$XQWZ:\n  PY  PL\n$CONSUMERS:\n  RA\n$PROD:Y\n  O:PY  Q:1\n"
         "  I:PL  Q:1\n$DEMAND:RA\n  D:PY\n  E:PL  Q:1\n$OFFTEXT\n",
         ""},
        // After a missing end nothing is judged: the missing $OFFTEXT is the error.
        {"$MODEL:M\n$SECTORS:\n  Y\n$COMMODITIES:\n  PY  PL\n$ONTEXT\n", ""},
        // An unreadable continuation may be the rate; an entry may include the lines after it.
        {model("", "  O:PY  Q:1\n  I:PL  Q:1  A:RA\n+ T 0.1\n"), ""},
        {model("", "  O:PY  Q:1\n  I PL\n+ Q:1\n"), ""},
        // The row that is wrong may belong to the nest.
        {model("", "+ VA:1\n  O:PY  Q:1\n  I:PL(\n"), ""},
        {model("", "+ VA:1\n  O:PY  Q:1\n  I:RA  Q:1\n"), ""},
        // The nest may be in the part of the opening line that cannot be read.
        {model("", "+ VA 1\n  O:PY  Q:1\n  I:PL  Q:1  VA:\n"), ""},
    };
    for (const Row& row : rows) EXPECT_EQ(places(row.text), row.findings) << row.text;
}

TEST(Rules, JudgeTheRestOfAModelWithErrors) {
    const Row rows[] = {
        // Line 12 has no end; Q: and T: of the previous row are judged.
        {model("TAU", "  O:PY  Q:  T:0.1\n  I:PL(\n"),
         "9:3 name-unused\n11:9 value-missing\n11:13 tax-receiver-missing\n"},
        // PX has an error, and PZ is not used.
        {"$MODEL:M\n$SECTORS:\n  Y\n$COMMODITIES:\n  PY  PL  KAPITAL\n$CONSUMERS:\n  RA\n$PROD:Y\n"
         "  O:PY  Q:1\n  I:PL  Q:W(R)\n$DEMAND:RA\n  D:PY\n  E:PL  Q:1\n$OFFTEXT\n",
         "5:11 name-unused\n"},
        // The wrong sets of PL do not affect other commodities.
        {"$MODEL:M\n$SECTORS:\n  Y\n$COMMODITIES:\n  PY  PL  KAP\n$CONSUMERS:\n  RA\n$PROD:Y\n"
         "  O:PY  Q:1\n  I:PL(R)  Q:1\n  I:KAP  Q:1\n$DEMAND:RA\n  D:PY\n  E:PL  Q:1\n$OFFTEXT\n",
         "5:11 commodity-unsupplied\n"},
    };
    for (const Row& row : rows) EXPECT_EQ(places(row.text), row.findings) << row.text;
}

TEST(Rules, JoinFindingsWithOneCause) {
    const Row rows[] = {
        // Line 14: RA demands PYY, a misspelt PY, which is therefore not unused.
        {model("", "  O:PY  Q:1\n  I:PL  Q:1\n", "", "  D:PYY\n  E:PL  Q:1\n"),
         "14:5 name-undeclared\n"},
        // A misspelt block: Y does have one.
        {"$MODEL:M\n$SECTORS:\n  STEEL\n$COMMODITIES:\n  PY  PL\n$CONSUMERS:\n  RA\n"
         "$PROD:STEAL\n  O:PY  Q:(STEEL)\n  I:PL  Q:1\n$DEMAND:RA\n  D:PY\n  E:PL  Q:1\n$OFFTEXT\n",
         "8:7 name-undeclared\n"},
        // For each kind without declarations, one name: PY on line 3.
        {"$MODEL:M\n$PROD:Y\n  O:PY  Q:1\n  I:PL  Q:1\n$DEMAND:RA\n  D:PY\n  E:PL  Q:1\n$OFFTEXT\n",
         "2:7 name-undeclared\n3:5 name-undeclared\n5:9 name-undeclared\n"},
        // Names after the keyword, with a comma, and a joined entry are read as they were meant.
        {"$MODEL:M\n$SECTORS:\n  Y\n$COMMODITIES:\n  PY, PL\n$CONSUMERS: RA\n$PROD:Y\n"
         "  O:PY  Q:1  I:PL  Q:1\n$DEMAND:RA\n  D:PY\n  E:PL  Q:1\n$OFFTEXT\n",
         "5:3 name-invalid\n6:13 keyword-text-ignored\n8:14 entry-joined\n"},
        // A misspelt label, and a "+" that is indented or joined to its label.
        {model("", "  OO:PY  Q:1\n  I:PL  Q:1\n"), "11:3 entry-label-invalid\n"},
        {model("", "  O:PY  Q:1\n  I:PL  Q:1  A:RA\n  + T:0.1\n"), "13:3 line-indented\n"},
        {model("", "  O:PY  Q:1\n  I:PL  Q:1  A:RA\n+T:0.1\n"), "13:1 plus-joined\n"},
        // Without a value, some labels name a nest, here each of them twice; the others lack
        // theirs.
        {model("", "  O:PY  Q:1\n  I:PL  Q:1  O:  I:  D:  E:  V:  W:  O:  I:  D:  E:  V:  W:\n"),
         "12:14 nest-undeclared\n12:18 nest-undeclared\n12:22 nest-undeclared\n"
         "12:26 nest-undeclared\n12:30 nest-undeclared\n12:34 nest-undeclared\n"},
        {model("", "  O:PY  Q:1\n  I:PL  Q:1  A:  N:  R:  S:  T:  P:  K:\n"),
         "12:14 value-missing\n12:18 value-missing\n12:22 value-missing\n12:26 value-missing\n"
         "12:30 value-missing\n12:34 value-missing\n12:38 value-missing\n"},
        // The same owner in two reports is one finding.
        {model("", "  O:PY  Q:1\n  I:PL  Q:1\n",
               "$REPORT:\n V:V1  O:PY  PROD:YYY\n V:V2  O:PY  PROD:YYY\n"),
         "17:19 name-undeclared\n"},
    };
    for (const Row& row : rows) EXPECT_EQ(places(row.text), row.findings) << row.text;
}

// Names that occur only in expressions, conditions and constraints count as used; in quotes or
// after a point they do not.
TEST(Rules, KnowNamesInExpressions) {
    const auto with = [](const string& rows, const string& constraint) {
        return model("TAU  BETA", rows,
                     "$CONSTRAINT:TAU\n  " + constraint + ";\n$CONSTRAINT:BETA\n  1 =E= 0;\n");
    };
    const string plain = "  O:PY  Q:1\n  I:PL  Q:1\n";
    EXPECT_EQ(places(with(plain, "TAU =E= BETA")), "");
    EXPECT_EQ(places(model("TAU", "  O:PY$(TAU GT 0)  Q:1\n  I:PL  Q:1\n")),
              "9:3 constraint-missing\n");
    EXPECT_EQ(places(model("TAU", "  O:PY  Q:(1+TAU)\n  I:PL  Q:1\n")), "9:3 constraint-missing\n");
    EXPECT_EQ(places(model("TAU", "  O:PY  Q:W(\"TAU\")\n  I:PL  Q:(1+W.TAU)\n")),
              "9:3 name-unused\n");
}

TEST(Rules, NameTheMissingBlock) {
    const std::vector<Finding> found = find(
        "$MODEL:M\n$SECTORS:\n  Y  Z\n$COMMODITIES:\n  PY  PL\n$CONSUMERS:\n  RA  RB\n"
        "$PROD:Y\n  O:PY  Q:(Z)  A:RB  T:1\n  I:PL  Q:1\n$DEMAND:RA\n  D:PY\n  E:PL  Q:1\n"
        "$OFFTEXT\n");
    string messages;
    for (const Finding& finding : found) messages += finding.message + "\n";
    EXPECT_EQ(messages, "sector `Z` has no `$PROD` block\nconsumer `RB` has no `$DEMAND` block\n");
}

TEST(Rules, ListTheOtherPlaces) {
    EXPECT_EQ(remarks(model("", "  O:PY  Q:1\n$PEPS:1\n  I:PL  Q:1\n  I:PL  Q:2\n  I:PL  Q:3\n"),
                      "entry-outside-block"),
              "the same in lines 14 and 15\n");
    EXPECT_EQ(remarks(model("", "  O:PY  Q:1\n  I:PL  Q:1\n  I:PLL  Q:1\n  I:PLL  Q:(PLL)\n", "",
                            "  D:PY\n  E:PLL  Q:1\n"),
                      "name-undeclared"),
              "also used in lines 14, 17\ndid you mean `PL`?\n");
    string rows;
    for (int i = 10; i < 22; ++i) rows += "  I:P" + std::to_string(i) + "  Q:1\n";
    // P10 to P21 are on lines 3 to 14; P10 is the finding, which lists 10 of the others.
    const std::vector<Finding> found =
        find("$MODEL:M\n$PROD:Y\n" + rows + "  I:P11  Q:2\n$OFFTEXT\n");
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[1].remarks.front().message,
              "not declared either: `P11` (lines 4, 15), `P12` (line 5), `P13` (line 6), "
              "`P14` (line 7), `P15` (line 8), `P16` (line 9), `P17` (line 10), `P18` (line 11), "
              "`P19` (line 12), `P20` (line 13) and 1 more");
}

// An undeclared name after a keyword of a block, or where a report names a block, is compared with
// the names of the kind that has such blocks; only those with as many sets, if these are known.
TEST(Rules, SuggestNamesOfTheKindOfTheBlock) {
    const string head =
        "$MODEL:M\n$SECTORS:\n  BREAD(R)\n$COMMODITIES:\n  PB(R)  PL  BRAND(R)\n"
        "$CONSUMERS:\n  HOME\n";
    const string inputs = "\n  O:PB(R)  Q:1\n  I:PL  Q:1\n  I:BRAND(R)  Q:1\n";
    const string production = "$PROD:BREAD(R)" + inputs;
    const Row rows[] = {
        {head + "$PROD:BREAND(R)" + inputs, "did you mean `BREAD`?\n"},
        {head + "$PROD:BREAND" + inputs, ""},
        {head + production + "$DEMAND:HOMES\n  D:PL\n", "did you mean `HOME`?\n"},
        {head + production + "$REPORT:\n  V:V1(R)  O:PB(R)  PROD:BREAND(R)\n",
         "did you mean `BREAD`?\n"},
        {head + production + "$REPORT:\n  V:V1  D:PL  DEMAND:HOMES\n", "did you mean `HOME`?\n"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(remarks(row.text, "name-undeclared"), row.findings) << row.text;
}

// The text after the edits of its only finding, with their confidence: "certain: TEXT".
string corrected(const string& text) {
    const std::vector<Finding> found = find(text);
    if (found.size() != 1 || !found.front().fix) return places(text) + "has no fix";
    const auto& fix = *found.front().fix;
    string result = text;
    for (auto edit = fix.edits.rbegin(); edit != fix.edits.rend(); ++edit)
        result.replace(edit->begin, edit->end - edit->begin, edit->text);
    const bool is_certain = fix.confidence == orvex::frontend::Confidence::certain;
    EXPECT_TRUE(!is_certain || places(result).empty()) << result;
    return (is_certain ? "certain: " : "maybe: ") + result;
}

TEST(Rules, CorrectValuesArgumentsAndNames) {
    const Row rows[] = {
        {"Q:60*2", "certain: Q:(60*2)"},
        {"Q:A - B", "certain: Q:(A - B)"},
        {"Q:A GT 0", "maybe: Q:(A GT 0)"},
        {"Q:1;", "certain: Q:1"},
        {"Q:1\xC2\xA0", "certain: Q:1 "},
        {"Q:\xE2\x88\x92"
         "A",
         "certain: Q:-A"},
        {"Q:A\xE2\x80\x93"
         "B\xE2\x80\x94"
         "1",
         "certain: Q:(A-B-1)"},
        {"Q:4O\xE2\x80\x93"
         "1",
         "maybe: Q:4O-1"},
        {"Q:3O", "maybe: Q:30"},
        {"Q:o.5l", "maybe: Q:0.51"},
        {"Q:\"w\"", "maybe: Q:w"},
        {"Q:1,5", "maybe: Q:1.5"},
        {"Q:w[\"a\"]", "maybe: Q:w(\"a\")"},
        {"Q:1 P 2", "maybe: Q:1 P: 2"},
        {"Q:1\xC2\xA0P:2", "certain: Q:1 P:2"},
        {"Q:1$(A\xE2\x88\x92"
         "B)",
         "certain: Q:1$(A-B)"},
        {"Q:W#(R)", "maybe: Q:W"},
    };
    for (const Row& row : rows) {
        const auto in_model = [](const string& field) {
            return model("", "  O:PY  Q:1\n  I:PL  " + field + "\n");
        };
        const std::size_t space = row.findings.find(' ') + 1;
        EXPECT_EQ(corrected(in_model(row.text)),
                  row.findings.substr(0, space) + in_model(row.findings.substr(space)));
    }
    const auto with = [](const string& names, const string& pl) {
        return "$MODEL:M\n$SECTORS:\n  Y\n$COMMODITIES:\n  " + names +
               "\n$CONSUMERS:\n  RA\n$PROD:Y\n  O:PY  Q:1\n  I:" + pl +
               "  Q:1\n$DEMAND:RA\n  D:PY\n  E:PL(R)  Q:1\n$OFFTEXT\n";
    };
    EXPECT_EQ(corrected(with("PY,PX, PL(R)\n*", "PL(R)  Q:1\n  I:PX  Q:1\n  O:PX")),
              "certain: " + with("PY PX  PL(R)\n*", "PL(R)  Q:1\n  I:PX  Q:1\n  O:PX"));
    EXPECT_EQ(corrected(with("PY  PL(R)", "PL((R))")), "certain: " + with("PY  PL(R)", "PL(R)"));
    EXPECT_EQ(corrected(with("PY  PL(R)", "PL('us')")),
              "certain: " + with("PY  PL(R)", "PL(\"us\")"));
    EXPECT_EQ(corrected(with("PY  PL(R)", "PL(2020)")),
              "maybe: " + with("PY  PL(R)", "PL(\"2020\")"));
    EXPECT_EQ(corrected(with("PY  PL(R)", "PL(R R)")), "10:8 argument-invalid\nhas no fix");
    EXPECT_EQ(corrected(with("PY  PL(R)", "PL[R]")), "maybe: " + with("PY  PL(R)", "PL(R)"));
}

TEST(Rules, CompareSetsWithThoseOfTheDeclaration) {
    const auto with = [](const string& sets) {
        return "$MODEL:M\n$SECTORS:\n  Y(G)\n$COMMODITIES:\n  P(G,R)  Q(\"a\",T)\n$CONSUMERS:\n  "
               "RA\n"
               "$PROD:Y(G)\n  O:P(G,R)  Q:1\n  I:P" +
               sets +
               "  Q:1\n$DEMAND:RA\n  D:P(G,R)\n  E:P(G,R)  Q:1\n  E:Q(S,T)  Q:1\n  D:Q(S,T)\n"
               "$OFFTEXT\n";
    };
    const Row rows[] = {
        {"(G,R)", ""},
        {"(\"a\",R)", ""},
        {"(G+1,R)", ""},
        {"(R,G)", "10:5 set-order-differs\n"},
        {"(\"a\",G)", "10:5 set-order-differs\n"},
        {"(H,R)", "10:5 set-differs\n"},
        {"(R,H)", "10:5 set-differs\n"},
        {"(G,R2)", "10:5 set-differs\n"},
    };
    for (const Row& row : rows) EXPECT_EQ(places(with(row.text)), row.findings) << row.text;
}

TEST(Rules, CorrectRowsBlocksAndDescriptions) {
    const string taxed = "  O:PY  Q:1\n  I:PL  Q:1  A:RA\n";
    const auto described = [&](const string& text) {
        return model("TAU  " + text, taxed + "+ N:TAU\n", "$CONSTRAINT:TAU\n  TAU =E= 1;\n");
    };
    const Row rows[] = {
        // A "+" goes into column 1, and a blank stays after it.
        {model("", taxed + "  T:0.1\n"), "certain: " + model("", taxed + "+ T:0.1\n")},
        {model("", taxed + " T:0.1\n"), "certain: " + model("", taxed + "+ T:0.1\n")},
        {model("", taxed + "T:0.1\n"), "certain: " + model("", taxed + "+ T:0.1\n")},
        {model("", taxed + "\tT:0.1\n"), "certain: " + model("", taxed + "+\tT:0.1\n")},
        // A rate without a receiver, a second price, and a row without a previous one.
        {model("", "  O:PY  Q:1\n  I:PL  Q:1\n  T:0.1\n"),
         "maybe: " + model("", "  O:PY  Q:1\n  I:PL  Q:1\n+ T:0.1\n")},
        {model("", "  O:PY  Q:1\n  I:PL  P:1\n  P:2\n"),
         "maybe: " + model("", "  O:PY  Q:1\n  I:PL  P:1\n+ P:2\n")},
        {model("", "  S:1\n  O:PY  Q:1\n  I:PL  Q:1\n"),
         "maybe: " + model("", "+ S:1\n  O:PY  Q:1\n  I:PL  Q:1\n")},
        // All lines of a row, but not a comment between them.
        {model("", "  O:PY  Q:1\n  I:PL  Q:1\n  I:PL\n* twice\n+ Q:1\n"),
         "maybe: " + model("", "  O:PY  Q:1\n  I:PL  Q:1\n* twice\n")},
        // A nest in all its rows, and the elasticity of the block.
        {model("", "+ VA:1\n  O:PY  Q:1\n  I:PL  Q:1  VB:\n  I:PL  Q:2  VB:\n"),
         "maybe: " + model("", "+ VA:1\n  O:PY  Q:1\n  I:PL  Q:1  VA:\n  I:PL  Q:2  VA:\n")},
        {model("", "+ d:1\n  O:PY  Q:1\n  I:PL  Q:1\n"),
         "maybe: " + model("", "+ s:1\n  O:PY  Q:1\n  I:PL  Q:1\n")},
        // With little words it is certainly a description.
        {described("of all  taxes"), "certain: " + described("! of all  taxes")},
        {described("Average rate"), "maybe: " + described("! Average rate")},
        // The host's comment, with the line end of the file; and one that is misspelt or indented.
        {"SET A;\n" + model(), "certain: SET A;\n$ONTEXT\n" + model()},
        {"SET A;\n$ONTEX\n\n" + model(), "certain: SET A;\n$ONTEXT\n\n" + model()},
        {"  $ontext\n" + model(), "certain: $ONTEXT\n" + model()},
        {"SET A;\r\n$MODEL:M\r\n" + model().substr(9),
         "certain: SET A;\r\n$ONTEXT\r\n$MODEL:M\r\n" + model().substr(9)},
    };
    for (const Row& row : rows) EXPECT_EQ(corrected(row.text), row.findings) << row.text;
}

// The table has each code once per scope.
TEST(Rules, HaveOneRowForACodeAndScope) {
    const auto rules = orvex::frontend::rules();
    for (const auto& rule : rules) {
        EXPECT_EQ(1, std::count_if(rules.begin(), rules.end(),
                                   [&](const auto& other) {
                                       return other.code == rule.code && other.scope == rule.scope;
                                   }))
            << rule.code;
    }
}

}  // namespace
