// What the front end reads: files of models, a run of the translator, and the two files that it writes.
#include "frontend/reading/economy.h"
#include "frontend/reading/generator.h"
#include "frontend/reading/header.h"
#include "frontend/reading/source.h"
#include "frontend/reading/translator.h"
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

void split(Source& source, const std::string& text) {
    source.bytes = text;
    split_source(source);
}

// A letter for the kind of each line, and the line of its block.
std::string kinds(const Source& source) {
    std::string all;
    for (const SourceLine& line : source.lines) {
        all += "om-*$+ea"[static_cast<int>(line.kind)];
        if (line.block > 0) all += std::to_string(line.block);
        all += ' ';
    }
    return all;
}

std::string models(const Source& source) {
    std::string all;
    for (const ModelText& model : source.models) {
        all += "[" + model.name + "] " + std::to_string(model.line) + "-" +
               std::to_string(model.last) + (model.closed ? " " : "? ");
    }
    return all;
}

TEST(Source, SortsLinesAndFindsModels) {
    struct Row {
        std::string text;
        std::string kinds;
        std::string models;
    };
    const std::string long_blank(255, ' ');
    const Row rows[] = {
        {"", "", ""},
        {"* no model\n$SECTORS:", "o o ", ""},
        {" $MODEL:M\n$model: \tm n \t\n", "o m ", "[M N \t] 2-2? "},
        {"$MODEL:0123456789012345678901234567890123\n$offtextual", "m $2 ",
         "[0123456789012345678901234567890] 1-2 "},
        {"$MODEL:" + std::string(248, ' ') + "M\n", "m ", "[] 1-1? "},
        {"x\r\n$MODEL:A\r\n  Y\r\n$OFFTEXT\r\nx\n$MODEL:../b\0c\n*\n\t \r \n+ Q:1\n"s,
         "o m e $4 o m * - + ", "[A] 2-4 [../B\0C] 6-9? "s},
        {"$MODEL:M\n" + long_blank + "$X\n! text\n +\n$OFFTEXT", "m - e e $5 ", "[M] 1-5 "},
        // A body ends with its first ";", not one in a comment, or in front of a keyword.
        {"$MODEL:M\n$CONSTRAINT:T\n* ;\n+ X\n\nY =E= 1 ! ;\n$OFFTEXT;\nV:X\n$OFFTEXT",
         "m $2 *2 a2 -2 a2 a2 e2 $9 ", "[M] 1-9 "},
        {"$MODEL:M\n$constraint :T\nX\n$PROD:Y\nX\n$CONSTRAINTS:T\nX\n", "m $2 a2 $4 e4 $6 e6 ",
         "[M] 1-7? "},
    };
    for (const Row& row : rows) {
        Source source;
        split(source, row.text);
        EXPECT_EQ(kinds(source), row.kinds) << row.text;
        EXPECT_EQ(models(source), row.models) << row.text;
    }
}

TEST(Source, KeepsTheBytesOfLines) {
    Source source;
    split(source, "a\r\r\n\n\0b\rc\r"s);
    ASSERT_EQ(source.lines.size(), 3U);
    EXPECT_EQ(source.lines[0].text, "a\r");
    EXPECT_EQ(source.lines[1].offset, 4U);
    EXPECT_EQ(source.lines[2].text, "\0b\rc"s);
}

TEST(Source, CountsLinesAsTheTranslatorDoes) {
    Source source;
    split(source, "x\n$MODEL:A\n1\n$OFFTEXT\nx\n$MODEL:B\n$OFFTEXT\n$MODEL:C\n4\n5\n");
    const std::vector<bool> without_b = {false, true, false};
    const int expected[][3] = {{0, 0, 0},  {1, 3, 3},  {2, 4, 4}, {3, 7, 9},
                               {4, 9, 10}, {5, 10, 0}, {6, 0, 0}, {-1, 0, 0}};
    for (const auto& row : expected) {
        EXPECT_EQ(file_line(source, row[0], {}), row[1]) << row[0];
        EXPECT_EQ(file_line(source, row[0], without_b), row[2]) << row[0];
    }
}

TEST(Source, FindsPlacesInALine) {
    EXPECT_EQ(record_of(" o:p\tq:\xC3\xBC \r! Text"), " O:P Q:\xC3\xBC");
    EXPECT_EQ(record_of(std::string(255, 'a') + "b"), std::string(255, 'A'));

    EXPECT_EQ(column_of("a\xC3\xBC\xE2\x82\xAC\xF0\x9F\x98\x80z", 10), 5);
    EXPECT_EQ(column_of("abc", 9), 4);
    for (const char* const no_utf8 :
         {"\xFCzz", "zz\xC3", "\xC0\x80z", "\xED\xA0\x80", "z\xE2\x82z"})
        EXPECT_EQ(column_of(no_utf8, 2), 3) << no_utf8;
}

TEST(Source, FindsWholeNames) {
    struct Row {
        const char* line;
        const char* word;
        std::size_t from;
        std::size_t found;
    };
    constexpr auto npos = std::string_view::npos;
    const Row rows[] = {
        {"PX X x(X)", "x", 0, 3},  {"PX X x(X)", "X", 4, 5},      {"X_ 1X X1", "X", 0, npos},
        {"Q:1 ! X", "X", 0, npos}, {"P(\"t1\")", "\"T1\"", 0, 2}, {"X", "", 0, npos},
        {"P(T+1)", "T+1", 0, 2},   {"P(T+10)", "T+1", 0, npos},   {"X", "X", 7, npos}};
    for (const Row& row : rows)
        EXPECT_EQ(find_word(row.line, row.word, row.from), row.found) << row.line;
}

// A header file: as the translator lays it out, with texts that look like its headings.
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

TEST(Header, IsReadByItsPlan) {
    const Header header = read_header(header_text, 99998);
    ASSERT_EQ(header.variables.size(), 3U);
    EXPECT_EQ(header.variables[0].entry, "Y(S, T)");
    EXPECT_EQ(header.variables[0].description, "EQUATION DUMMY01  Artificial equation for model:");
    EXPECT_EQ(header.variables[1].entry + "|" + header.variables[1].description,
              "EQUATION|(of) no   use");
    EXPECT_EQ(header.variables[2].entry + header.variables[2].description, "X (I)");
    EXPECT_EQ(joined(header.constraints, " "), "TAU T.U");
    EXPECT_EQ(header.constraint_text,
              "\nEQUATION EQ_001 Complementary equation(s) for TAU;\n"
              "EQ_001..\n/; THE MODEL:\n\n");
    EXPECT_EQ(header.first_line, 99999);
    EXPECT_EQ(header.last_line, 100001);
    EXPECT_TRUE(header.references_lost);
    ASSERT_EQ(header.symbols.size(), 3U);
    EXPECT_EQ(numbers(find_symbol(header, "\"T 1\"")->references), "99998");
    EXPECT_EQ(numbers(find_symbol(header, "TAU")->references), "1 2 3 4 5 6 7 8 9 10 11 101");
    EXPECT_EQ(kind_with_article(find_symbol(header, "TAU")->kind), "an auxiliary variable");
    EXPECT_EQ(find_symbol(header, "X")->kind, Kind::report);
    EXPECT_EQ(find_symbol(header, "NOBODY"), nullptr);
}

TEST(Header, OfAnErrorBlockIsEmpty) {
    EXPECT_TRUE(read_header("$ERROR  ERROR\nPOSITIVE VARIABLES\nX\n", 0).variables.empty());
    for (std::size_t size = 0; size <= header_text.size(); ++size)
        EXPECT_LE(read_header(std::string_view(header_text).substr(0, size), 0).symbols.size(), 3U);
}

// FORM label|name(arguments)|value|condition
std::string shown(const Statement& statement) {
    static const char* const forms[] = {"banner", "name",  "head",      "more",  "value", "option",
                                        "loop",   "guard", "condition", "close", "other"};
    return forms[static_cast<int>(statement.form)] + " "s + statement.label + "|" +
           reference(statement) + "|" + statement.value + "|" + statement.condition;
}

TEST(Generator, TakesStatementsApart) {
    const char* const rows[][2] = {
        {"PUT'$SECTORS:'/;", "banner $SECTORS|||"},
        {"PUT / '$REPORT:'/;", "banner $REPORT|||"},
        {"PUT /,'Y';", "head |Y||"},
        {"PUT /,'$PROD:Y''.'S.TL'.US';", "head $PROD|Y(S,\"US\")||"},
        {"PUT /,'O:X''.'T.TE(T+1)'.'F(I.TL;", "head O|X(T+1,F(I)||"},
        {"PUT /,'O:IT'S''.'I.TL;", "head O|IT'S(I)||"},
        {"PUT /,'O:IT'S'", "head O|IT'S||"},
        {"PUT /,'+Q:1';", "head +Q|1||"},
        {"PUT /,;", "head |||"},
        {"PUT /,'.'I.TL;", "head |(I)||"},
        {"PUT /'+','A:RA''.'R.TL;", "more A|RA(R)||"},
        {"PUT'PROD:Y''.'R.TL;", "more PROD|Y(R)||"},
        {"PUT '        ';", "other |||"},
        {"PUT /,'+Q:'Y0(S);", "value Q||Y0(S)|"},
        {"PUT /,'+Q:' ;", "value Q|||"},
        {"PUT /,'+','Q:'(-5);", "value Q||-5|"},
        {"PUT /,'+','K:'(A)*(B);", "value K||(A)*(B)|"},
        {"PUT /,'+',R.TL,':'1;", "value R.TL||1|"},
        {"PUT /,'+',R.TL,'(S)'':'E(R);", "value R.TL(S)||E(R)|"},
        {"PUT /,'$PEPS:1.E-8'", "option $PEPS||PEPS:1.E-8|"},
        {"LOOP((S,T)$(P(S)),", "loop |(S,T)||(P(S))"},
        {"LOOP((S),", "loop |(S)||"},
        {"LOOP(R,", "loop |(R)||"},
        {"IF(ABS(F(S,T)) GT ORVEPS,", "guard |||F(S,T)"},
        {"IF ((A) OR (B),", "condition |||(A) OR (B)"},
        {"IF ( ( (ORD(T)+1 GE 1) * (ORD(T)+1 LE CARD(T )) ),",
         "condition |||( (ORD(T)+1 GE 1) * (ORD(T)+1 LE CARD(T )) )"},
        {"IF ((ABS(F(S,T)) GT ORVEPS),PUT /,'+T:'F(S,T);  );",
         "value T||F(S,T)|(ABS(F(S,T)) GT ORVEPS)"},
        {"IF ((A,PUT 1), PUT /'+','A:RA' );", "more A|RA||(A,PUT 1)"},
        {");", "close |||"},
        {"PUT /;", "other |||"},
        {"", "other |||"},
    };
    for (const auto& row : rows) {
        const auto statements = read_generator("{   12}      "s + row[0]);
        ASSERT_EQ(statements.size(), 1U);
        EXPECT_EQ(shown(statements[0]), row[1]) << row[0];
        EXPECT_EQ(statements[0].line, 12);
        EXPECT_EQ(statements[0].level, 2) << row[0];
    }
}

// A declared name may look like a labelled field.
TEST(Generator, KnowsDeclarationsAndNumbers) {
    const auto statements = read_generator(
        "PUT   ORV,'$MODEL:M'/;\n\n"
        "{    1}  PUT'$SECTORS:'/;\n"
        "{*****}  PUT /,'Y:X''.'S.TL;\n"
        "{99999}  PUT /;\n"
        "{    4}    PUT /,'O:X';\n"
        "{   x\n{    5} \n");
    ASSERT_EQ(statements.size(), 4U);
    EXPECT_EQ(shown(statements[1]), "name |Y:X(S)||");
    EXPECT_EQ(statements[1].line, 0);
    EXPECT_EQ(statements[2].line, 99999);
    EXPECT_EQ(shown(statements[3]), "head O|X||");
}

// Runs the real translator on a text.
RunResult translated(const Source& source, const RunSettings& settings = {}) {
    std::vector<std::string> names;
    for (const ModelText& model : source.models) names.push_back(model.name);
    const Workplace place;
    RunResult result =
        run_translator(find_translator(ORVEXPP_EXE), place, source.bytes, names, settings);
    EXPECT_TRUE(fs::is_empty(place.path()));
    return result;
}

TEST(Translator, LeavesTheOutputsOfTheModels) {
    Source source;
    split(source,
          "$MODEL:..\n$SECTORS:\n  Y\n$OFFTEXT\n"
          "$MODEL:B\n$CONSTRAINT: X\n$OFFTEXT\n$MODEL:C\n$OFFTEXT\n");
    const RunResult result = translated(source, {"a b.scr", "1:2", 8, 6});
    EXPECT_TRUE(result.failed);
    EXPECT_EQ(result.message, " *** Unrecognized symbol: X");
    EXPECT_EQ(result.last_record, "$CONSTRAINT: X");
    ASSERT_EQ(result.models.size(), 2U);
    EXPECT_TRUE(result.models[0].complete);
    EXPECT_FALSE(result.models[1].complete);
    EXPECT_NE(result.models[0].header.find("FILE ORV09 /\"a b.scr\"/;"), std::string::npos);
    EXPECT_NE(result.models[0].header.find("n_constr   6\n"), std::string::npos);
    EXPECT_NE(result.models[0].generator.find("==\"1:2\" $EXIT"), std::string::npos);
    EXPECT_EQ(translated(source).models[0].generator.find("$EXIT"), std::string::npos);
}

std::string failure_of(const std::string& program, const std::string& input,
                       const RunSettings& settings) {
    try {
        const Workplace place;
        run_translator(find_translator(program), place, input, {}, settings);
    } catch (const StartFailure& failure) {
        return failure.reason;
    }
    return "none";
}

TEST(Translator, SaysWhyItCouldNotRun) {
    const harness::Folder folder;
    const auto script = [&](const std::string& name, const std::string& text) {
        folder.write(name, "#!/bin/sh\n" + text + "\n");
        fs::permissions(folder.path() + "/" + name, fs::perms::owner_all);
        return folder.path() + "/" + name;
    };
    const std::string quiet = script("quiet", "cat; ls -A >&2");
    folder.write("text", "");
    struct Row {
        std::string program;
        std::string input;
        RunSettings settings;
        std::string reason;
    };
    const std::string here = folder.path();
    const Row rows[] = {
        {quiet, "", {}, "none"},
        {script("killed", "kill -9 $$"), "", {}, here + "/killed was ended by signal 9"},
        {script("failed", "echo no; echo ' *** a' >&2; echo b >&2; exit 2"),
         "",
         {},
         here + "/failed ended with status 2: *** a b"},
        {script("talks", "echo ' *** a  '; echo; echo ' b'"), "", {}, "*** a b"},
        {script("much", "printf %0300000d 0"), "", {}, std::string(300000, '0')},
        {"/nowhere/orvexpp", "", {}, "/nowhere/orvexpp: No such file or directory"},
        {here + "/text", "", {}, here + "/text: Permission denied"},
        {here, "", {}, here + " is not a program"},
        {ORVEXPP_EXE, "$MODEL:a/b\n", {}, "FFOPEN: error opening file A/B.GEN"},
        {quiet, "", {std::string(255, 'p'), "", 9999, -999}, "none"},
        {quiet,
         "",
         {std::string(256, 'p'), "", 0, 0},
         "the path of the put file is longer than 255 characters"},
        {quiet, "", {"", "1\n2", 0, 0}, "the time stamp holds a line end or a NUL"},
        {quiet,
         "",
         {"", "", 10000, 0},
         "the starting number of the models has more than four characters"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(failure_of(row.program, row.input, row.settings), row.reason) << row.program;
}

std::string row(const std::vector<Field>& fields) {
    std::string all;
    for (const Field& field : fields) {
        all += " " + field.label + ":" + field.text + (field.name.empty() ? "" : "=" + field.name) +
               "@" + std::to_string(field.line);
    }
    return all;
}

// Its blocks, one row each with its entries.
std::vector<std::string> blocks(const Economy& economy) {
    std::vector<std::string> all;
    for (const Block& block : economy.blocks) {
        all.push_back(block.label + ":" + block.reference + "@" + std::to_string(block.line) +
                      row(block.fields));
        for (const Entry& entry : block.entries) {
            all.push_back("  " + entry.label + ":" + entry.reference + "@" +
                          std::to_string(entry.line) + row(entry.fields));
        }
    }
    return all;
}

// kind dimension (arguments) description declared: references
std::string shown(const Economy& economy, const char* name) {
    const Name* const found = find_name(economy, name);
    if (found == nullptr) return "none";
    return std::string(kind_name(found->kind)) + " " + std::to_string(found->dimension) + " (" +
           joined(found->arguments, ",") + ") '" + found->description + "' " +
           std::to_string(found->declared) + ": " + numbers(found->references);
}

// The translator writes entries of one field after it has read the next record; the first model is left
// out, so that its lines are not counted.
Economy economy_behind_another() {
    Source source;
    split(source,
          "$MODEL:A\n$OFFTEXT\n"
          "$MODEL:B\n$SECTORS:\n Y(S)  V$W0 ! a; b\n$COMMODITIES:\n P(S)\n"
          "$PROD:Y(S) s:0.5\n+ A:1\n"  // line 7
          "O:P(S)\n\n* text\nI:N(S)\nI:N(S)\n+ Q:M(S)*2 A:H N:T\nK:X1(S)\n"
          "I:P(\"a\") T:-F(S)$G\n"  // line 16
          "$DEMAND:H\nD:C\n$REPORT:\nV:R(S) I:P(S) PROD:Y(S)\n$PROD:V\n"
          "$REPORT:\nV:U$Z W:H\n$OFFTEXT\n");
    std::string input = source.bytes;
    input.replace(0, 1, "*");
    const Workplace place;
    const RunResult result = run_translator(ORVEXPP_EXE, place, input, {"B"}, {});
    EXPECT_EQ(result.message, "");
    return read_economy(source, 1, {true, false}, result.models.at(0));
}

TEST(Economy, HasTheBlocksOfTheModel) {
    const Economy economy = economy_behind_another();
    EXPECT_EQ(economy.model + std::to_string(economy.line), "B3");
    EXPECT_EQ(joined(blocks(economy), "\n"),
              "PROD:Y(S)@8 S:0.5@8 A:1@9\n"
              "  O:P(S)@10\n"
              "  I:N(S)@13\n"
              "  I:N(S)@14 Q:M(S)*2@15 A:H=H@15 N:T=T@15 K:X1(S)@16\n"
              "  I:P(\"A\")@17 T:-F(S)@17\n"
              "DEMAND:H@18\n"
              "  D:C@19\n"
              "REPORT:@20\n"
              "  V:R(S)@21 I:P(S)=P@21 PROD:Y(S)=Y@21\n"
              "  V:U@24 W:H=H@24\n"
              "PROD:V@22");
}

TEST(Economy, HasTheNamesOfTheModel) {
    const Economy economy = economy_behind_another();
    const char* const names[][2] = {
        {"Y", "sector 1 (S) '' 5: 5 8 21"},
        {"V", "sector 0 () 'a' 5: 5 22"},
        {"N", "commodity 1 (S) '' 0: 13 14"},
        {"C", "commodity 0 () '' 0: 19"},
        {"M", "parameter 1 (S) '' 0: 15"},
        {"U", "report variable 0 () '' 24: 24"},
        {"S", "set 0 () '' 0: 5 8 10 13 14 15 16 17 21 21 21"},
        {"W0", "none"},
    };
    for (const auto& name : names) EXPECT_EQ(shown(economy, name[0]), name[1]) << name[0];
    for (const char* const word : {"W0", "G", "Z"})
        EXPECT_NE(find_word(economy.free_text, word), std::string::npos) << word;
    EXPECT_EQ(find_word(economy.free_text, "H"), std::string::npos);
}

TEST(Economy, OfAnExample) {
    const std::string folder = EXAMPLES_DIR "/taxes/";
    Source source;
    ASSERT_TRUE(read_source(folder + "taxes.zlm", source));
    const Economy economy =
        read_economy(source, 0, {},
                     {"TAXES", harness::read_file(folder + "expected/TAXES.GEN"),
                      harness::read_file(folder + "expected/TAXES.HDR"), true});
    const auto all = blocks(economy);
    ASSERT_EQ(all.size(), 17U);
    EXPECT_EQ(all[2], "  I:PL@52 Q:LD(S)@52 A:GOVT=GOVT@53 N:TAU=TAU@53");
    EXPECT_EQ(all[16], "  E:PK@73 Q:10@73");
    EXPECT_EQ(shown(economy, "TAU"),
              "auxiliary variable 0 () 'Rate of the new tax on labour' 45: 45 53");
    EXPECT_EQ(shown(economy, "C0"), "parameter 1 (S) '' 0: 60");
    EXPECT_EQ(joined(economy.constraints, " "), "TAU");
    EXPECT_NE(find_word(economy.free_text, "G"), std::string::npos);
    EXPECT_EQ(find_word(economy.free_text, "TAU"), std::string::npos);
}

}  // namespace
