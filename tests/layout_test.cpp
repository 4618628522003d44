// Models have one standard layout, and keep their meaning.
#include "case_file.h"
#include "frontend/findings/messages.h"
#include "harness.h"
#include "layout_properties.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <string>

namespace fs = std::filesystem;
using std::string;

namespace {

void expect_whole(const string& text) { EXPECT_EQ(layout_properties::broken(text, 1), ""); }

struct Row {
    string name;
    string given;  // the lines between $MODEL and $OFFTEXT
    string laid_out;
};

const Row rows[] = {
    {"capitals, and names as declared",
     R"(
$sectors:
 Y(s)
$commodities:
 pY(S)
$auxiliary:
 Tau
$prod:y(S)$y.l(s)  rr.tl:1 va:0.5
 o:PY(s)  q:(2*TAU)  n:tau
 i:py("a")  Q:x0  va:
$constraint:TAU
 tau =e= sum(s, y(s));
$report:
 v:Rep(s)  o:py(s)
$peps:1.e-6
)",
     R"(

$SECTORS:
  Y(s)

$COMMODITIES:
  pY(S)

$AUXILIARY:
  Tau

$PROD:Y(S)$Y.l(s)  RR.TL:1  VA:0.5
  O:pY(s)    Q:(2*Tau)  N:Tau
  I:pY("a")  Q:x0       VA:

$CONSTRAINT:Tau
 Tau =e= sum(s, Y(s));

$REPORT:
  V:Rep(s)  O:pY(s)

$PEPS:1.e-6
)"},
    {"blanks of values, of blank labels and after a keyword stay",
     R"(
$SECTORS:   text
 Y
$PROD: Y   S: 1
O:P(S,  T)   Q:1  2   P  :5   T:
 junk   I:X0 (G)   Q:   A:C T:R
+Q:1   P:2
)",
     R"(

$SECTORS:   text
  Y

$PROD:Y  S:1
  O:P(S,  T)     Q:1  2   P  :5  T:
  junk I:X0 (G)  Q:              A:C  T:R
+Q:1                             P:2
)"},
    {"runs line up by themselves, a wide field moves its own row",
     R"(
$PROD:Y
O:PY Q:1
I:PL(S) Q:10 P:2
I:PK Q:(A+B+C+D+E+F+G+H+I+J+K) P:2
+ A:C T:R
* a comment parts
I:PM

+ Q:1
)",
     R"(

$PROD:Y
  O:PY     Q:1
  I:PL(S)  Q:10  P:2
  I:PK     Q:(A+B+C+D+E+F+G+H+I+J+K)  P:2
+          A:C   T:R
* a comment parts
  I:PM

+ Q:1
)"},
    {"rows out of the columns make none wider, and what follows a comment is by itself",
     R"(
$PROD:Y
 O:P Q:1 P:1 A:H T:2
 I:L$(SOMETHING GT 0.000001) Q:1 P:(1+TTTTTTTTTT) A:H T:1
* why
+ Q:1
 I:PLAND Q:1
)",
     R"(

$PROD:Y
  O:P  Q:1  P:1  A:H  T:2
  I:L$(SOMETHING GT 0.000001)  Q:1  P:(1+TTTTTTTTTT)  A:H  T:1
* why
+ Q:1
  I:PLAND  Q:1
)"},
    {"a plus in column 1 of a declaration stays there",
     R"(
$SECTORS:
Y  ! output
+ Z ! of what
)",
     R"(

$SECTORS:
  Y   ! output
+  Z  ! of what
)"},
    {"descriptions of a block line up",
     R"(
$SECTORS:  ! as it is
Y(S) ! output
  ZZ(S,T)$(ORD(T) GT 1)   ! later
 A   LONGNAME(S,T)$(ORD(T) GT 1)! too wide
  ! alone

* so
X! not far
)",
     R"(

$SECTORS:  ! as it is
  Y(S)                   ! output
  ZZ(S,T)$(ORD(T) GT 1)  ! later
  A  LONGNAME(S,T)$(ORD(T) GT 1)  ! too wide
  ! alone

* so
  X                      ! not far
)"},
    {"one blank line before a block and its comments, none in constraints",
     R"(


$PEPS:1


$PEPS:2
* above
$AUXILIARY:
  T
$CONSTRAINT:T

T

 =E= 1;
* here
$CONSTRAINT:T
 T =G= 0

$PROD:Y
  O:P
$PEPS:1
$PEPS:2

)",
     R"(

$PEPS:1

$PEPS:2

* above
$AUXILIARY:
  T

$CONSTRAINT:T

T

 =E= 1;

* here
$CONSTRAINT:T
 T =G= 0

$PROD:Y
  O:P

$PEPS:1
$PEPS:2

)"},
};

string times(std::size_t count, const string& text) {
    string all;
    while (count-- > 0) all += text;
    return all;
}

// The columns of a line count from 1; two blanks separate its fields.
const Row long_rows[] = {
    // 2 + 14 * 6 + 13 * 2 columns: the twelfth field ends in column 96.
    {"an entry is broken", "\n\n$PROD:Y\n  O:P(S) " + times(13, " Q:A(S)") + " ! so\n",
     "\n\n$PROD:Y\n  O:P(S)" + times(11, "  Q:A(S)") + "\n+         Q:A(S)  Q:A(S)  ! so\n"},
    {"in no place where a field has a blank label",
     "\n\n$PROD:Y\n  O:P(S) " + times(12, " Q:A(S)") + "  :2 Q:A(S)\n",
     "\n\n$PROD:Y\n  O:P(S)  Q:A(S)    " + times(10, "  Q:A(S)") +
         "\n+         Q:A(S)  :2  Q:A(S)\n"},
    {"what cannot be broken does not line up",
     "\n\n$PROD:Y\n  O:P(S)\n  I:P(" + times(30, "S") + ") Q:(" + times(60, "A") + ")\n+ P:1\n",
     "\n\n$PROD:Y\n  O:P(S)\n  I:P(" + times(30, "S") + ")\n+ Q:(" + times(60, "A") + ")\n+ P:1\n"},
    {"names go on in a further line, the last with its description",
     "\n\n$SECTORS:\n " + times(12, " ABCDEFGH") + " Z Y ! text\n",
     "\n\n$SECTORS:\n" + times(10, "  ABCDEFGH") + "\n  ABCDEFGH  ABCDEFGH  Z\n  Y  ! text\n"},
    {"names that a comment allows are not broken",
     "\n\n$SECTORS:\n* orvex: allow name-unused\n " + times(12, " ABCDEFGH") + "\n",
     "\n\n$SECTORS:\n* orvex: allow name-unused\n" + times(12, "  ABCDEFGH") + "\n"},
    {"a record of a report, an opening and a description are not",
     "\n\n$PROD:Y " + times(20, " A:1.25") + "\n  O:P ! " + times(50, "text") + "\n",
     "\n\n$PROD:Y" + times(20, "  A:1.25") + "\n  O:P  ! " + times(50, "text") + "\n"},
};

string model(const string& lines) { return "$MODEL:M" + lines + "$OFFTEXT\n"; }

void expect_laid_out(const Row& row) {
    EXPECT_EQ(layout_properties::laid_out(model(row.given)), model(row.laid_out)) << row.name;
    expect_whole(model(row.given));
}

TEST(Layout, HasOneWay) {
    for (const Row& row : rows) expect_laid_out(row);
    for (const Row& row : long_rows) expect_laid_out(row);
}

// Also if the file ends inside a model, and if lines have more columns than are read.
TEST(Layout, KeepsLineEnds) {
    const string fields = times(10, " Q:A(S)");
    const string wide = times(10, "  Q:A(S)");
    for (const string end : {"\n", "\r\n"}) {
        const string head = "$MODEL:M" + end + end + "$PROD:Y" + end;
        EXPECT_EQ(layout_properties::laid_out(head + " O:P(S)" + fields + fields),
                  head + "  O:P(S)" + wide + "  Q:A(S)" + end + "+         Q:A(S)" +
                      times(8, "  Q:A(S)"));
        const string longer = "  i:P   Q:1" + times(250, " ") + "! so" + end;
        EXPECT_EQ(layout_properties::laid_out(head + longer + " i:P Q:1" + end),
                  head + longer + "  I:P  Q:1" + end);
    }
}

TEST(Layout, KeepsTheMeaningOfExamples) {
    for (const string& name : harness::names_in(EXAMPLES_DIR, "")) {
        const string path = string(EXAMPLES_DIR "/").append(name).append("/" + name + ".zlm");
        if (fs::exists(path)) expect_whole(harness::read_file(path));
    }
    for (const auto& file : fs::directory_iterator(TESTS_DIR "/correct"))
        expect_whole(harness::read_file(file.path().string()));
}

TEST(Layout, KeepsTheMeaningOfCases) {
    for (const string& name : harness::names_in(CASES_DIR, ".case")) {
        for (const auto& section : harness::read_case(CASES_DIR "/" + name + ".case"))
            if (section.kind == "given") expect_whole(section.text);
    }
    for (const auto& entry : orvex::frontend::message_index()) {
        expect_whole(entry.wrong);
        expect_whole(entry.corrected);
    }
}

}  // namespace
