// What the front end reads: files with models, a run of the translator, and the two files that it
// writes.
#include "frontend/translator/translator.h"

#include "frontend/translator/header.h"
#include "harness.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;
using namespace orvex::frontend;
using namespace std::string_literals;

std::string joined(const std::vector<std::string>& texts, const char* between) {
    std::string all;
    for (const std::string& text : texts) all += (all.empty() ? "" : between) + text;
    return all;
}

std::string numbers(const std::vector<int>& values) {
    std::string all;
    for (const int value : values) all += (all.empty() ? "" : " ") + std::to_string(value);
    return all;
}

// A header file as the translator writes it, with texts that look like its headings.
const std::string header_text = R"($OFFLISTING

*  ORVEX MODEL DECLARATION FILE
FILE   ORV /"POSITIVE VARIABLES"/;
POSITIVE VARIABLES
Y(S, T)     EQUATION DUMMY01  Artificial equation for model:
EQUATION    (of) no   use
X (I)
EQUATION DUMMY**  Artificial equation for model: M;

*       Default initial values:

*       Constraints:

EQUATION EQ_001 Complementary equation(s) for TAU;
EQ_001..
/; THE MODEL:

*       The model:
MODEL M/DUMMY01
     EQ_001.TAU
     EQ_***.T.U
/;

$ONTEXT

ORVEX PREPROCESSOR VERSION 12/95
99999  Symbol Listing
*****  $OFFTEXT
*****

Symbol Listing
 
Warning: The reference reporting limit of 10000 has been reached:
 
Symbol        Type       References
============  =====      ==================================================
"T 1"         SET        99998*****
TAU           AUXIL          1    2    3    4    5    6    7    8    9   10
                            11
 
                           101
X             REPRT
NOBODY        THING          7

$OFFTEXT
$ERROR  ERROR ENCOUNTERED IN PREPROCESSOR 
X             PARAM          7
)";

std::string shown(const Header& header) {
    std::string all;
    for (const Variable& variable : header.variables)
        all += variable.entry + "|" + variable.description + "\n";
    for (const ListedSymbol& symbol : header.symbols) {
        all.append(kind_with_article(symbol.kind)).append(" ");
        all += symbol.name + " " + numbers(symbol.references) + "\n";
    }
    return all + numbers({header.first_line, header.last_line});
}

TEST(Header, IsReadByItsPlan) {
    const Header header = read_header(header_text, 99998);
    EXPECT_EQ(shown(header),
              "Y(S, T)|EQUATION DUMMY01  Artificial equation for model:\n"
              "EQUATION|(of) no   use\n"
              "X (I)|\n"
              "a set \"T 1\" 99998\n"
              "an auxiliary variable TAU 1 2 3 4 5 6 7 8 9 10 11 101\n"
              "a report variable X \n"
              "99999 100001");
    EXPECT_EQ(joined(header.constraints, " "), "TAU T.U");
    EXPECT_EQ(header.constraint_text,
              "\nEQUATION EQ_001 Complementary equation(s) for TAU;\n"
              "EQ_001..\n/; THE MODEL:\n\n");
    EXPECT_TRUE(header.references_lost);
    EXPECT_EQ(find_symbol(header, "X"), &header.symbols.back());
    EXPECT_EQ(find_symbol(header, "NOBODY"), nullptr);
}

TEST(Header, OfAnErrorBlockIsEmpty) {
    EXPECT_TRUE(read_header("$ERROR  ERROR\nPOSITIVE VARIABLES\nX\n", 0).variables.empty());
    for (std::size_t size = 0; size <= header_text.size(); ++size)
        EXPECT_LE(read_header(std::string_view(header_text).substr(0, size), 0).symbols.size(), 3U);
}

TEST(Translator, LeavesTheOutputsOfTheModels) {
    const TempDir place;
    const RunResult result =
        run_translator(ORVEXPP_EXE, place,
                       "$MODEL:..\n$SECTORS:\n  Y\n$OFFTEXT\n"
                       "$MODEL:B\n$CONSTRAINT: X\n$OFFTEXT\n$MODEL:C\n$OFFTEXT\n",
                       {"..", "B", "C"}, {"a b.scr", "1:2", 8, 6});
    EXPECT_TRUE(fs::is_empty(place.path()));
    EXPECT_TRUE(result.failed);
    EXPECT_EQ(result.message + "|" + result.last_record,
              " *** Unrecognized symbol: X|$CONSTRAINT: X");
    ASSERT_EQ(result.models.size(), 2U);
    const ModelOutput& whole = result.models[0];
    EXPECT_TRUE(whole.complete && !result.models[1].complete);
    EXPECT_NE(whole.header.find("FILE ORV09 /\"a b.scr\"/;"), std::string::npos);
    EXPECT_NE(whole.header.find("n_constr   6\n"), std::string::npos);
    EXPECT_NE(whole.generator.find("==\"1:2\" $EXIT"), std::string::npos);
}

// Models A and B, of which B is right, has an unknown keyword, or a name that is too long.
constexpr const char* right = "$SECTORS:\n Y";
constexpr const char* stopped = "$PORD:Y";
const std::string overflowing = "$SECTORS:\n " + std::string(66, 'N');

struct Damage {
    // The text of B.
    std::string model;
    const char* command;
    // The cause; or the message and the models, with "+" if they are complete.
    std::string result;
};

const Damage damages[] = {
    {right, ":", "A+B+"},
    {right, "rm B.HDR", "cannot read `B.HDR`: No such file or directory"},
    {right, "rm B.HDR; mkdir B.HDR", "cannot read `B.HDR`: Is a directory"},
    {right, "rm A.GEN; ln -s A.GEN A.GEN",
     "cannot read `A.GEN`: Too many levels of symbolic links"},
    {right, "rm ?.*", "it ended before it had read the model"},
    {right, "sed -i '$d' B.HDR", "`B.HDR` is not complete, and no report says why"},
    {right, "ln -s error error",
     "cannot read the translator's report: Too many levels of symbolic links"},
    {right, "mkdir error", "cannot read the translator's report: Is a directory"},
    {right, "echo ' *** Cannot find file: input' >error",
     "the translator's report is not complete: *** Cannot find file: input"},
    {stopped, ":", " *** Unrecognized keyword: PORD A+B"},
    {stopped, "rm B.*", " *** Unrecognized keyword: PORD A+B"},
    {stopped, "rm A.HDR", "cannot read `A.HDR`: No such file or directory"},
    {stopped, "rm error", "`B.HDR` is not complete, and no report says why"},
    {stopped, "rm error B.HDR", "cannot read `B.HDR`: No such file or directory"},
    {stopped, "sed -i 's/: B/: C/' error", "the translator's report is about another model, `C`"},
    {stopped, ": >error", "the translator's report is not complete"},
    {stopped, "sed -i '$d' error",
     "the translator's report is not complete: Error preprocessing: B *** Unrecognized keyword: "
     "PORD Last input record: $PORD:Y"},
    {overflowing, ":",
     " *** ADDSYM: symbol name length exceeds max of 65: " + std::string(66, 'N') + " A+B"},
    {overflowing, "rm error", "`B.HDR` is not complete, and no report says why"},
};

TEST(Translator, IsRightOnlyWithAllOutputs) {
    for (const Damage& damage : damages) {
        const harness::Folder folder;
        folder.write("input", "$MODEL:A\n$OFFTEXT\n$MODEL:B\n" + damage.model + "\n$OFFTEXT\n");
        folder.write("control", "INP input\nERR error\n");
        folder.run({"control"});
        folder.shell(damage.command);
        const RunResult result = read_outputs(folder.path(), {"A", "B"}, true);
        std::string models = result.cause + result.message + (result.failed ? " " : "");
        for (const ModelOutput& model : result.models) {
            models += model.name + (model.complete ? "+" : "");
        }
        EXPECT_EQ(models, damage.result) << damage.command;
    }
}

std::string failure_of(const std::string& program, const RunSettings& settings = {}) {
    try {
        const TempDir place;
        run_translator(find_translator(program), place, "$MODEL:a/b\n", {}, settings);
    } catch (const StartFailure& failure) {
        return failure.reason;
    }
    return "none";
}

TEST(Translator, SaysWhyItCouldNotRun) {
    const harness::Folder folder;
    const std::string here = folder.path() + "/";
    const auto script = [&](const std::string& text) {
        folder.write("script", "#!/bin/sh\n" + text + "\n");
        fs::permissions(here + "script", fs::perms::owner_all);
        return failure_of(here + "script");
    };
    folder.write("text", "");
    const std::string long_path(255, 'p');
    const std::string script_path = here + "script";
    const std::string rows[][2] = {
        {failure_of("/nowhere/orvexpp"), "/nowhere/orvexpp: No such file or directory"},
        {failure_of(here + "text"), here + "text: Permission denied"},
        {failure_of(folder.path()), folder.path() + " is not a program"},
        {failure_of(ORVEXPP_EXE), "FFOPEN: error opening file A/B.GEN"},
        {script("kill -9 $$"), script_path + " was stopped by signal 9"},
        {script("echo no; echo ' *** a' >&2; echo b >&2; exit 2"),
         script_path + " ended with status 2: *** a b"},
        {script("echo ' *** a  '; echo; echo ' b'"), "*** a b"},
        {script("printf %0300000d 0"), std::string(300000, '0')},
        {script("cat; ls -A >&2"), "none"},
        {failure_of(script_path, {long_path, "", 9999, -999}), "none"},
        {failure_of(script_path, {long_path + "p", "", 0, 0}),
         "the path of the put file is longer than 255 characters"},
        {failure_of(script_path, {"", "1\n2", 0, 0}),
         "the time stamp contains a line end or a NUL"},
        {failure_of(script_path, {"", "", 10000, 0}),
         "the starting number of the models has more than four characters"},
    };
    for (const auto& row : rows) EXPECT_EQ(row[0], row[1]);
}

}  // namespace
