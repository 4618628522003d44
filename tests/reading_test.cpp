// What the front end reads: files of models, a run of the translator, and the two files that it
// writes.
#include "frontend/model/economy.h"
#include "frontend/syntax/source.h"
#include "frontend/translator/generator.h"
#include "frontend/translator/header.h"
#include "frontend/translator/translator.h"
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

// A letter for the kind of each line, and the line of its block; then the models.
std::string sorted(const std::string& text) {
    Source source;
    split(source, text);
    std::string all;
    for (const SourceLine& line : source.lines) {
        all += "om-*$+ea"[static_cast<int>(line.kind)];
        if (line.block > 0) all += std::to_string(line.block);
        all += ' ';
    }
    for (const ModelText& model : source.models) {
        all += "[" + model.name + "] " + std::to_string(model.line) + "-" +
               std::to_string(model.last) + (model.closed ? " " : "? ");
    }
    return all;
}

TEST(Source, SortsLinesAndFindsModels) {
    const std::string long_blank(255, ' ');
    const std::string rows[][2] = {
        {"* no model\n$SECTORS:", "o o "},
        {" $MODEL:M\n$model: \tm n \t\n", "o m [M N \t] 2-2? "},
        {"$MODEL:0123456789012345678901234567890123\n$offtextual",
         "m $2 [0123456789012345678901234567890] 1-2 "},
        {"$MODEL:" + std::string(248, ' ') + "M\n", "m [] 1-1? "},
        {"x\r\n$MODEL:A\r\n  Y\r\n$OFFTEXT\r\nx\n$MODEL:../b\0c\n*\n\t \r \n+ Q:1\n"s,
         "o m e $4 o m * - + [A] 2-4 [../B\0C] 6-9? "s},
        {"$MODEL:M\n" + long_blank + "$X\n! text\n +\n$OFFTEXT", "m - e e $5 [M] 1-5 "},
        // A body ends with its first ";", not one in a comment, or in front of a keyword.
        {"$MODEL:M\n$CONSTRAINT:T\n* ;\n+ X\n\nY =E= 1 ! ;\n$OFFTEXT;\nV:X\n$OFFTEXT",
         "m $2 *2 a2 -2 a2 a2 e2 $9 [M] 1-9 "},
        {"$MODEL:M\n$constraint :T\nX\n$PROD:Y\nX\n$CONSTRAINTS:T\nX\n",
         "m $2 a2 $4 e4 $6 e6 [M] 1-7? "},
    };
    for (const auto& row : rows) EXPECT_EQ(sorted(row[0]), row[1]) << row[0];
}

TEST(Source, KeepsTheBytesOfLines) {
    Source source;
    split(source, "a\r\r\n\n\0b\rc\r"s);
    std::string lines;
    for (const SourceLine& line : source.lines)
        lines.append(line.text).append("|" + std::to_string(line.offset) + " ");
    EXPECT_EQ(lines, "a\r|0 |4 \0b\rc|5 "s);
}

TEST(Source, CountsLinesAsTheTranslatorDoes) {
    Source source;
    split(source, "x\n$MODEL:A\n1\n$OFFTEXT\nx\n$MODEL:B\n$OFFTEXT\n$MODEL:C\n4\n5\n");
    std::vector<int> all;
    std::vector<int> without_b;
    for (int line = -1; line <= 6; ++line) {
        all.push_back(file_line(source, line, {}));
        without_b.push_back(file_line(source, line, {false, true, false}));
    }
    EXPECT_EQ(numbers(all), "0 0 3 4 7 9 10 0");
    EXPECT_EQ(numbers(without_b), "0 0 3 4 9 10 0 0");
}

TEST(Source, FindsPlacesInALine) {
    EXPECT_EQ(record_of(" o:p\tq:\xC3\xBC \r! Text"), " O:P Q:\xC3\xBC");
    EXPECT_EQ(record_of(std::string(255, 'a') + "b"), std::string(255, 'A'));

    EXPECT_EQ(column_of("a\xC3\xBC\xE2\x82\xAC\xF0\x9F\x98\x80z", 10), 5);
    EXPECT_EQ(column_of("abc", 9), 4);
    for (const char* const no_utf8 : {"\xFCzz", "zz\xC3", "\xC0\x80z", "\xED\xA0\x80",
                                      "\xE0\x9F\xBF", "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80"})
        EXPECT_EQ(column_of(no_utf8, 2), 3) << no_utf8;
}

TEST(Source, FindsWholeNames) {
    struct Row {
        const char *line, *word;
        std::size_t from, found;
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

std::string shown(const Header& header) {
    std::string all;
    for (const Variable& variable : header.variables)
        all += variable.entry + "|" + variable.description + "\n";
    for (const Symbol& symbol : header.symbols) {
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

// LINE.LEVEL FORM label|name(arguments)|value|condition
std::string shown(const Statement& statement) {
    static const char* const forms[] = {"banner", "name",  "head",      "more",  "value", "option",
                                        "loop",   "guard", "condition", "close", "other"};
    return numbers({statement.line}) + "." + numbers({statement.level}) + " " +
           forms[static_cast<int>(statement.form)] + " " + statement.label + "|" +
           reference(statement) + "|" + statement.value + "|" + statement.condition;
}

TEST(Generator, TakesStatementsApart) {
    const char* const rows[][2] = {
        {"PUT /,'$PROD:Y''.'S.TL'.US';", "head $PROD|Y(S,\"US\")||"},
        {"PUT /,'O:X''.'T.TE(T+1)'.'F(I.TL;", "head O|X(T+1,F(I)||"},
        {"PUT /,'O:IT'S''.'I.TL;", "head O|IT'S(I)||"},
        {"PUT /,'+Q:1';", "head +Q|1||"},
        {"PUT /,;", "head |||"},
        {"PUT /,'.'I.TL;", "head |(I)||"},
        {"PUT /,'+Q:' ;", "value Q|||"},
        {"PUT /,'+','Q:'(-5);", "value Q||-5|"},
        {"PUT /,'+',R.TL,':'1;", "value R.TL||1|"},
        {"PUT /,'+',R.TL,'(S)'':'E(R);", "value R.TL(S)||E(R)|"},
        {"PUT /,'$PEPS:1.E-8'", "option $PEPS||PEPS:1.E-8|"},
        {"LOOP((S,T)$(P(S)),", "loop |(S,T)||(P(S))"},
        {"IF(ABS(F(S,T)) GT ORVEPS,", "guard |||F(S,T)"},
        {"IF ( ( (ORD(T)+1 GE 1) * (ORD(T)+1 LE CARD(T )) ),",
         "condition |||( (ORD(T)+1 GE 1) * (ORD(T)+1 LE CARD(T )) )"},
        {"IF ((ABS(F(S,T)) GT ORVEPS),PUT /,'+T:'F(S,T);  );",
         "value T||F(S,T)|(ABS(F(S,T)) GT ORVEPS)"},
        {"IF ((A,PUT 1), PUT /'+','A:RA' );", "more A|RA||(A,PUT 1)"},
        {");", "close |||"},
        {"", "other |||"},
    };
    for (const auto& row : rows) {
        const auto statements = read_generator("{   12}      "s + row[0]);
        ASSERT_EQ(statements.size(), 1U);
        EXPECT_EQ(shown(statements[0]), "12.2 "s + row[1]) << row[0];
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
    std::string all;
    for (const Statement& statement : statements) all += shown(statement) + "\n";
    EXPECT_EQ(all,
              "1.0 banner $SECTORS|||\n0.0 name |Y:X(S)||\n99999.0 other |||\n4.1 head O|X||\n");
}

TEST(Translator, LeavesTheOutputsOfTheModels) {
    const Workplace place;
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

// Of models A and B, of which B is right, has an unknown keyword, or a name that is too long.
constexpr const char* right = "$SECTORS:\n Y";
constexpr const char* stopped = "$PORD:Y";
const std::string overflowing = "$SECTORS:\n " + std::string(66, 'N');

struct Damage {
    // The text of B.
    std::string model;
    const char* command;
    // The cause; else the message and the models, "+" where they are complete.
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
        const RunResult result = read_outputs(folder.path(), {"A", "B"});
        std::string models = result.cause + result.message + (result.failed ? " " : "");
        for (const ModelOutput& model : result.models) {
            models += model.name + (model.complete ? "+" : "");
        }
        EXPECT_EQ(models, damage.result) << damage.command;
    }
}

std::string failure_of(const std::string& program, const RunSettings& settings = {}) {
    try {
        const Workplace place;
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
        {script("kill -9 $$"), script_path + " was ended by signal 9"},
        {script("echo no; echo ' *** a' >&2; echo b >&2; exit 2"),
         script_path + " ended with status 2: *** a b"},
        {script("echo ' *** a  '; echo; echo ' b'"), "*** a b"},
        {script("printf %0300000d 0"), std::string(300000, '0')},
        {script("cat; ls -A >&2"), "none"},
        {failure_of(script_path, {long_path, "", 9999, -999}), "none"},
        {failure_of(script_path, {long_path + "p", "", 0, 0}),
         "the path of the put file is longer than 255 characters"},
        {failure_of(script_path, {"", "1\n2", 0, 0}), "the time stamp holds a line end or a NUL"},
        {failure_of(script_path, {"", "", 10000, 0}),
         "the starting number of the models has more than four characters"},
    };
    for (const auto& row : rows) EXPECT_EQ(row[0], row[1]);
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
std::string blocks(const Economy& economy) {
    std::string all;
    for (const Block& block : economy.blocks) {
        all += block.label + ":" + block.reference + "@" + numbers({block.line}) +
               row(block.fields) + "\n";
        for (const Entry& entry : block.entries)
            all += "  " + entry.label + ":" + entry.reference + "@" + numbers({entry.line}) +
                   row(entry.fields) + "\n";
    }
    return all;
}

// kind name dimension (arguments) description declared: references
std::string shown(const Economy& economy, const char* name) {
    const Name& found = *find_name(economy, name);
    return std::string(kind_name(found.kind)) + " " + name + " " + numbers({found.dimension}) +
           " (" + joined(found.arguments, ",") + ") '" + found.description + "' " +
           numbers({found.declared}) + ": " + numbers(found.references);
}

// The translator writes entries of one field after it has read the next record; the first model is
// left out, so that its lines are not counted.
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

TEST(Economy, HasTheBlocksAndNamesOfTheModel) {
    const Economy economy = economy_behind_another();
    EXPECT_EQ(economy.model + std::to_string(economy.line), "B3");
    EXPECT_EQ(blocks(economy),
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
              "PROD:V@22\n");
    std::string names;
    for (const char* const name : {"Y", "V", "N", "C", "M", "U", "S"})
        names += shown(economy, name) + "\n";
    EXPECT_EQ(names,
              "sector Y 1 (S) '' 5: 5 8 21\n"
              "sector V 0 () 'a' 5: 5 22\n"
              "commodity N 1 (S) '' 0: 13 14\n"
              "commodity C 0 () '' 0: 19\n"
              "parameter M 1 (S) '' 0: 15\n"
              "report variable U 0 () '' 24: 24\n"
              "set S 0 () '' 0: 5 8 10 13 14 15 16 17 21 21 21\n");
    EXPECT_EQ(find_name(economy, "W0"), nullptr);
    for (const char* const word : {"W0", "G", "Z", "H"})
        EXPECT_EQ(find_word(economy.free_text, word) == std::string::npos, *word == 'H') << word;
}

}  // namespace
