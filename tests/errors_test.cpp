// The advice in findings about errors, and the edits that correct them; and which names may be
// meant.
#include "frontend/rules/errors.h"

#include "frontend/findings/finding.h"
#include "frontend/model/build.h"
#include "frontend/rules/near_names.h"
#include "frontend/syntax/source.h"

#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

using orvex::frontend::Candidate;
using orvex::frontend::Confidence;
using orvex::frontend::Edit;
using orvex::frontend::Finding;
using orvex::frontend::Severity;
using orvex::frontend::Source;
using std::string;

namespace {

std::vector<Finding> errors_of(const string& text) {
    Source source;
    source.bytes = text;
    orvex::frontend::parse_source(source);
    std::vector<Finding> findings;
    orvex::frontend::add_errors(
        source, orvex::frontend::build_model(source.bytes, source.tree, 0, false), findings);
    return findings;
}

string help_of(const Finding& finding) {
    string help;
    for (const auto& remark : finding.remarks) {
        if (remark.severity == Severity::help) help += (help.empty() ? "" : "|") + remark.message;
    }
    return help;
}

// The text after the edits of a finding, applied from the last to the first.
string corrected(string text, const Finding& finding) {
    if (!finding.fix) return "";
    const std::vector<Edit>& edits = finding.fix->edits;
    for (auto edit = edits.rbegin(); edit != edits.rend(); ++edit)
        text.replace(edit->begin, edit->end - edit->begin, edit->text);
    return text;
}

const string head =
    "$MODEL:M\n$SECTORS:\n Y(R) X\n$COMMODITIES:\n PY(R) PX PL\n$CONSUMERS:\n RA\n$AUXILIARY:\n "
    "TAU\n";
const string tail = "$OFFTEXT\n";

// Records after the head, the help text, and the records after edits that are certain, or that may
// be wrong.
struct Row {
    string wrong;
    string help;
    string sure;
    string maybe;
};

const Row rows[] = {
    // Keywords.
    {"$PROD X\n", "put a colon directly after the keyword", "$PROD:X\n", ""},
    {"$DEMAND\tRA  S:1\n", "put a colon directly after the keyword", "$DEMAND:RA  S:1\n", ""},
    {"$PROD X  S:1\n", "put a colon directly after the keyword", "$PROD:X  S:1\n", ""},
    {"$PEPS\n", "put a colon directly after the keyword", "$PEPS:\n", ""},
    {"$SECTORS Z\n", "put a colon directly after the keyword", "", "$SECTORS:Z\n"},
    {"$ DEMAND:RA\n", "write `$DEMAND:`, without the blank", "$DEMAND:RA\n", ""},
    {"$  DEMAND RA\n", "write `$DEMAND:`, without the blank", "$DEMAND:RA\n", ""},
    {"$PROD         : X\n", "write `$PROD:`, without blanks", "$PROD: X\n", ""},
    {"$PRODUCTION :X\n", "did you mean `$PROD:`?", "", "$PROD:X\n"},
    {"$DEMNAD RA\n", "did you mean `$DEMAND:`?", "", "$DEMAND:RA\n"},
    {"$XQWZ:X\n", "write a keyword such as `$SECTORS:` or `$PROD:`", "", ""},
    {"$PRODY(R)\n O:PY(R)\n", "write `$PROD:Y(R)`", "$PROD:Y(R)\n O:PY(R)\n", ""},
    {"$PRODX  S:1\n O:PX\n", "write `$PROD:X`", "$PROD:X  S:1\n O:PX\n", ""},
    // Rows.
    {"$PROD:X\n! bread\n", "begin the line with `*` in column 1", "$PROD:X\n* bread\n", ""},
    {"$PROD:X\n  ! bread\n", "begin the line with `*` in column 1", "$PROD:X\n* ! bread\n", ""},
    {"$PROD:X\n  * bread\n", "begin the comment with `*` in column 1", "$PROD:X\n* bread\n", ""},
    {"$PROD:X\n-- bread\n", "begin the comment with `*` in column 1", "", "$PROD:X\n*-- bread\n"},
    {"$PROD:X\n  O PX  Q 1\n", "put a label and a colon before each value", "",
     "$PROD:X\n  O:PX  Q:1\n"},
    {"$PROD:X\n  O PX  1\n", "put a label and a colon before each value", "", ""},
    {"$DEMAND:RA\n D:PX\n $OFFTEXT\n", "move the `$` to column 1", "$DEMAND:RA\n D:PX\n$OFFTEXT\n",
     ""},
    {"$CONSTRAINT:TAU\n TAU =E= 0;\n TAU\n",
     "write the rest before the first `;`, which ends the constraint", "", ""},
    {"$DEMAND:RA\n D:PX  E:PL  Q:1\n", "begin a new line with `E:`: here it takes a value",
     "$DEMAND:RA\n D:PX\n E:PL  Q:1\n", ""},
    // Parentheses.
    {"$SECTORS:\n Z(R  V\n", "add `)`", "", "$SECTORS:\n Z(R)  V\n"},
    {"$SECTORS:\n Z(R, S\n", "add `)`", "", "$SECTORS:\n Z(R, S)\n"},
    {"$SECTORS:\n Z(R))  V\n", "remove this `)`", "", "$SECTORS:\n Z(R)  V\n"},
    {"$SECTORS:\n Z(R), V\n", "separate names by blanks", "", "$SECTORS:\n Z(R) V\n"},
    {"$SECTORS:\n Z(R),V\n", "separate names by blanks", "", "$SECTORS:\n Z(R) V\n"},
    {"$PROD:X\n O:PX#R Q:1\n", "write `#(R)`", "$PROD:X\n O:PX#(R) Q:1\n", ""},
    {"$PROD:X\n O:PX#R,S Q:1\n", "write `#(R,S)`", "", "$PROD:X\n O:PX#(R,S) Q:1\n"},
    {"$PROD:X\n O:PX#A+1\n", "write `#(A+1)`", "", "$PROD:X\n O:PX#(A+1)\n"},
    {"$PROD:X\n O:PX#(A$C Q:1\n", "add `)` after the sets", "", "$PROD:X\n O:PX#(A)$C Q:1\n"},
    {"$PROD:X\n O:PX#(A),B\n", "move it into the parentheses, or remove it", "",
     "$PROD:X\n O:PX#(A,B)\n"},
    {"$PROD:X\n O:PX  Q:A(\"N\"$(B)\n", "add `)`; a parenthesis after `$` does not close it", "",
     "$PROD:X\n O:PX  Q:A(\"N\")$(B)\n"},
    {"$PROD:X\n O:PX  Q:A(\"N'  P:1\n", "add `)`; a parenthesis after `$` does not close it", "",
     "$PROD:X\n O:PX  Q:A(\"N')  P:1\n"},
    {"$PROD:X\n O:PX  Q:A(\"N')\n", "put the element in double quotes",
     "$PROD:X\n O:PX  Q:A(\"N\")\n", ""},
    {"$PROD:X\n O:PX  Q:A(\"N)\n", "put the element in double quotes", "",
     "$PROD:X\n O:PX  Q:A(\"N\")\n"},
    {"$PROD:X\n O:PX  Q:(1+(G)  P:1\n", "add `)`", "", "$PROD:X\n O:PX  Q:(1+(G))  P:1\n"},
    {"$PROD:X\n O:PX$(G  Q:1\n", "add `)`", "", "$PROD:X\n O:PX$(G)  Q:1\n"},
    // Names. In the third of them RA has a block of its own, and X has none.
    {"$PROD:X\n I:PX  A:PL\n", "did you mean `RA`?", "", "$PROD:X\n I:PX  A:RA\n"},
    {"$PROD:RA\n", "did you mean `$DEMAND:RA`?", "", "$DEMAND:RA\n"},
    {"$DEMAND:RA\n$PROD:RA\n", "did you mean `X`?", "", "$DEMAND:RA\n$PROD:X\n"},
    {"$DEMAND:X\n", "did you mean `$PROD:X`?", "", "$PROD:X\n"},
    {"$PROD:PL\n", "did you mean `X`?", "", "$PROD:X\n"},
    {"$PROD:X\n O:PX\n$PROD:PL\n", "name a sector here, or give one of the two another name", "",
     ""},
    {"$PROD:X\n I:PX  A:TAU\n", "did you mean `N:TAU`?", "", "$PROD:X\n I:PX  N:TAU\n"},
    {"$PROD:X\n I:PX  T:TAU\n", "did you mean `N:TAU`?", "", "$PROD:X\n I:PX  N:TAU\n"},
    {"$PROD:X\n O:RA\n", "name a commodity here, or give one of the two another name", "", ""},
    {"$PROD:Y(R)\n O:PY\n", "write `PY(R)`: the sets are missing", "", "$PROD:Y(R)\n O:PY(R)\n"},
    {"$PROD:Y(R)\n O:PL(R)\n", "did you mean `PY`?", "", "$PROD:Y(R)\n O:PY(R)\n"},
    {"$PROD:Y(R)\n O:PY(R)  A:RA  N:TAU(R)\n", "write `TAU`, without sets", "",
     "$PROD:Y(R)\n O:PY(R)  A:RA  N:TAU\n"},
    {"$PROD:Y(R)\n O:PY(R,S)\n", "write `PY(R)`: there are too many sets", "",
     "$PROD:Y(R)\n O:PY(R)\n"},
    {"$PROD:X\n O:PX Q:A\n O:PX Q:A(R)\n", "give `A` the same sets everywhere", "", ""},
    {"$CONSTRAINT:TAX\n TAX =E= 0;\n", "did you mean `TAU`?", "", "$CONSTRAINT:TAU\n TAX =E= 0;\n"},
    {"$AUXILIARIES:\n PHI\n$CONSTRAINT:PHI\n PHI =E= 0;\n", "write `$AUXILIARY:`",
     "$AUXILIARY:\n PHI\n$CONSTRAINT:PHI\n PHI =E= 0;\n", ""},
    // Loops. All places with one cause are corrected.
    {"$PROD:Y(R)\n O:PY(R+2-1)\n", "did you mean `R+1`?", "", "$PROD:Y(R)\n O:PY(R+1)\n"},
    {"$PROD:Y(R)\n O:PY(R-3+3)\n", "did you mean `R`?", "", "$PROD:Y(R)\n O:PY(R)\n"},
    {"$PROD:Y(R)\n O:PY(R) Q:A(RR)\n", "did you mean `R`?", "", "$PROD:Y(R)\n O:PY(R) Q:A(R)\n"},
    {"$PROD:X\n O:PX Q:A(\"US\")\n O:PX Q:B(US) P:C(US)\n", "did you mean `\"US\"`?", "",
     "$PROD:X\n O:PX Q:A(\"US\")\n O:PX Q:B(\"US\") P:C(\"US\")\n"},
    {"$PROD:X\n O:PX Q:A('us')\n", "put the element in double quotes",
     "$PROD:X\n O:PX Q:A(\"us\")\n", ""},
    {"$PROD:X\n O:PX Q:A(1)\n", "put the element in double quotes", "$PROD:X\n O:PX Q:A(\"1\")\n",
     ""},
    {"$PROD:X\n O:PX Q:SUM(S,A(S)) P:1\n", "put the whole expression in parentheses", "",
     "$PROD:X\n O:PX Q:(SUM(S,A(S))) P:1\n"},
    // Reports.
    {"$REPORT:\n V:V1 O:PX$(A)\n", "move the condition to `V:V1`", "",
     "$REPORT:\n V:V1$(A) O:PX\n"},
    {"$REPORT:\n V:V1$(B) O:PX$(A)\n", "move the condition to `V:V1`", "", ""},
    {"$REPORT:\n V:V1 O:PX#(R)$(A)\n", "move the condition to `V:V1`", "", ""},
    {"$REPORT:\n V:PX O:PX\n", "name a report variable here, or give one of the two another name",
     "", ""},
    {"$REPORT:\n V:V1 O:PX V:V2 O:PX\n", "begin a new line with `V:`",
     "$REPORT:\n V:V1 O:PX\n V:V2 O:PX\n", ""},
    {"$REPORT:\n V:V1 O:PX PROD:X  V:V2 O:PX\n", "write a row for each report variable",
     "$REPORT:\n V:V1 O:PX PROD:X\n V:V2 O:PX\n", ""},
    {"$REPORT:\n V:V1 O:PX PRODN:X\n", "did you mean `PROD:`?", "",
     "$REPORT:\n V:V1 O:PX PROD:X\n"},
    {"$report:\n v:v1 o:pll\n", "did you mean `PL`?", "", "$report:\n v:v1 o:pl\n"},
    {"$REPORT:\n V:V1 O:PLL\n", "did you mean `PL`?", "", "$REPORT:\n V:V1 O:PL\n"},
};

// Each row is one finding with one line of help. A certain correction leaves no error.
TEST(Errors, AdviseAndCorrect) {
    for (const Row& row : rows) {
        const string text = head + row.wrong + tail;
        const std::vector<Finding> found = errors_of(text);
        ASSERT_EQ(found.size(), 1U) << row.wrong;
        const Finding& finding = found.front();
        EXPECT_EQ(help_of(finding), row.help) << row.wrong;
        const string fixed = row.sure + row.maybe;
        EXPECT_EQ(corrected(text, finding), fixed.empty() ? "" : head + fixed + tail) << row.wrong;
        if (!finding.fix) continue;
        EXPECT_EQ(finding.fix->confidence == Confidence::certain, !row.sure.empty()) << row.wrong;
        if (row.sure.empty()) continue;
        EXPECT_EQ(errors_of(corrected(text, finding)).size(), 0U) << row.sure;
    }
}

// The note says where a name got its meaning: where it is declared, or else first used. For a
// record that is not allowed, it says where the part begins that does not allow it.
TEST(Errors, NameTheFirstPlace) {
    const std::pair<string, string> notes[] = {
        {"$PROD:X\n I:PX  A:PL\n", "5:11 `PL` was declared here, as a commodity"},
        {"$PROD:X\n O:PX Q:A\n O:PX Q:A(R)\n", "11:9 `A` was first used here, without sets"},
        {"$PROD:Y(R)\n O:PY\n", "5:2 `PY` was declared here, with (R)"},
        {"$REPORT:\n V:V O:PX\n$REPORT:\n$SECTORS:\n Z\n",
         "10:1 the first report block begins here"},
        {"$PROD:X\n O:PX\n$ONTEXT\n", "1:1 the model begins here"},
    };
    for (const auto& [wrong, note] : notes) {
        string found;
        for (const Finding& finding : errors_of(head + wrong + tail)) {
            for (const auto& remark : finding.remarks) {
                if (remark.severity != Severity::note) continue;
                found += std::to_string(remark.span.line) + ":" +
                         std::to_string(remark.span.column) + " " + remark.message;
            }
        }
        EXPECT_EQ(found, note) << wrong;
    }
}

// Names without their keyword are one finding.
TEST(Errors, OfAMissingKeywordAreOne) {
    std::vector<Finding> found = errors_of("$MODEL:M\n Y X\n$PROD:Y\n O:PX\n$OFFTEXT\n");
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(help_of(found.front()), "write a keyword such as `$SECTORS:` before the names");
    found = errors_of("$MODEL:M\n$SECTORS:\n Y\n PX\n PL\n$PROD:Y\n O:PX\n I:PL\n$OFFTEXT\n");
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(help_of(found.front()),
              "check whether `$COMMODITIES:` is missing before the names: the model declares no "
              "commodity");
}

// A model that runs into the host's text is ended before it.
TEST(Errors, EndAModelBeforeTheHostsText) {
    const string model = "$MODEL:M\n$PROD:X\n O:PX\n";
    for (const string host : {"SOLVE M;\n X = 1;\n", "$ONTEXT\n", "$SETLOCAL A\nX\n"}) {
        const std::vector<Finding> found = errors_of(model + host);
        ASSERT_EQ(found.size(), 1U) << host;
        EXPECT_EQ(corrected(model + host, found.front()), model + "$OFFTEXT\n" + host);
    }
}

// The last line may be a wrong one of the model.
TEST(Errors, TakeNoRowForTheHostsText) {
    for (const auto& [last, help] :
         {std::pair("$PRODX", "write `$PROD:X`"),
          std::pair("$PROD X", "put a colon directly after the keyword"),
          std::pair("O PX", "put a label and a colon before each value"),
          std::pair(" PX", "put a label and a colon before each value")}) {
        const std::vector<Finding> found =
            errors_of("$MODEL:M\n$SECTORS:\n X\n$PROD:X\n O:PX\n" + string(last) + "\n");
        ASSERT_EQ(found.size(), 1U) << last;
        EXPECT_EQ(help_of(found.front()), help);
    }
}

TEST(NearNames, AreOfTheRightSizeAndMostlyUnused) {
    const Candidate used = {"PX", 0, false};
    const Candidate unused = {"PY", 0, true};
    const Candidate wide = {"PZ", 1, true};
    struct {
        string name;
        int dimension;
        std::vector<Candidate> candidates;
        string found;
    } const table[] = {
        {"PQ", 0, {used}, "PX"},
        {"PQ", 0, {used, unused}, "PY"},  // equally near: the unused one
        {"PQ", 0, {used, {"PW", 0, false}}, ""},
        {"PQ", 0, {unused, {"PW", 0, true}}, ""},
        {"PQ", 0, {wide}, ""},  // a different number of sets
        {"PQ", 1, {used, unused, wide}, "PZ"},
        {"PQ", -1, {wide}, "PZ"},
        {"PQ", 1, {{"PV", -1, false}}, "PV"},
        {"Z", 0, {{"X", 0, true}, {"Y", 0, false}}, "X"},  // too short to be compared
        {"Z", 0, {{"X", 0, true}, {"Y", 0, true}}, ""},
        {"Z", 0, {{"STEEL", 0, true}}, ""},
        {"STEEEL", 0, {{"STEEL", 0, false}, {"STEEL12", 0, true}}, "STEEL"},  // the nearer one
    };
    for (const auto& row : table)
        EXPECT_EQ(nearest_name(row.name, row.dimension, row.candidates), row.found) << row.name;
}

}  // namespace
