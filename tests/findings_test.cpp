// What the front end says: the index of messages in its words, findings in each format, spelling, explain.
#include "frontend/commands/explain.h"
#include "frontend/findings/finding.h"
#include "frontend/findings/messages.h"
#include "frontend/findings/report.h"
#include "frontend/findings/spelling.h"
#include "harness.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <iterator>
#include <map>
#include <optional>
#include <regex>
#include <string>
#include <vector>

using namespace orvex::frontend;
using std::string;

namespace {

// Messages.

TEST(Index, PutsAllMessagesOfTheTranslatorInPlainWords) {
    string words;
    for (const MessageEntry& entry : message_index()) {
        if (entry.ends != "finding") words += entry.code + ": " + title(entry) + "\n";
    }
    EXPECT_EQ(words,
              R"(control-file: internal ORVEX preprocessor error; )"
              R"(cannot access scratch file: `<path>`; possible cause: internal path names too long
control-label: invalid input to `orvexpp`
control-integer: invalid integer in run control file: `<label> <value>`
input-missing: cannot find file: `<name>`; nor can I find: `<name>.zlm`
input-header: preprocessor failure; check your ZELM installation
ffopen-output: error opening file `<name>`
ffopen-input: error opening file `<name>` with status OLD
ffopen-scratch: error opening unit <unit> with status SCRATCH
unit-read: cannot read file: `<name>`: <reason>
unit-write: cannot write file: `<name>`: <reason>
keyword-colon: invalid record - no `:` following keyword: `<keyword>`
keyword-order: function definitions must follow declarations
keyword-unknown: unrecognized keyword: `<keyword>`
getfld-blank: blank record
getfld-label: unlabelled entry
freefd-end: unexpected end of line
extarg-left: left parenthesis following `#` is missing
extarg-right: right parenthesis following `#` is missing
extarg-many: too many arguments
extarg-close: closing delimiter missing
extarg-invalid: invalid argument
rdarg-parentheses: parenthesis mismatch
rdarg-many: too many arguments
rdarg-close: closing delimiter missing
rdarg-seven: more than 7 arguments detected
rdarg-invalid: invalid argument
rdcond-close: closing parenthesis is missing
chkcnd-parentheses: parenthesis mismatch
chrfld-long: statement exceeds 255 characters
numfld-long: statement exceeds 255 characters
addsym-type: symbol type mismatch: `<name>`
addsym-dimension: symbol dimension error: `<name>`
addsym-undeclared: undeclared variable: `<name>`
addsym-length: symbol name length exceeds max of 65: `<name>`
addsym-full: symbol table overflows internal length of 1000
chksym-unknown: unrecognized symbol: `<name>`
chksym-type: symbol type mismatch: `<name>`
)"
              R"(symlst-references: the reference reporting limit of 10000 has been reached; )"
              R"(<count> references are not included in this symbol listing
sloop-length: set name length exceeds max of 65: `<name>`
sloop-full: set table overflows internal length of 1000
leadlg-both: both lead and lag operators: `<argument>`
leadlg-inactive: lead or lag set not active: `<argument>`
chkset-inactive: unrecognized set argument: `<argument>`
newrec-levels: logical error with `NBLKIF`
conblk-colon: syntax error in `$CONSTRAINT`
repblk-continuation: continuation records not permitted in `$REPORT:`
repblk-first: first report field must be `V`
repblk-single: syntax error in report record
repblk-condition: conditionals not permitted in report fields
repblk-second: 2nd report field must be `I:`, `O:`, `D:` or `W:`, found `<label>`
repblk-third: 3rd report field `<label>` is not `PROD` or `DEMAND`
repblk-extra: extra fields in report record
loader-library: could not load shared library `<path>`: <reason>
loader-symbol: could not load symbol `<name>`: <reason>
loader-version: could not create PAL object: <reason>
palcreate-object: error while creating object
glue-name: `palSetSystemName` could not be loaded or has wrong signature
glue-audit: `palGetAuditLine` could not be loaded or has wrong signature
)");
}

// Why an entry is not as the page has it; empty where it is.
string fault_of(const MessageEntry& entry, const string& page) {
    if (page.find("\n" + entry.text + "\n") == string::npos) return "not in the page";
    if (find_code(entry.code) != &entry) return "not found";
    if (entry.cause.empty() || entry.cure.empty()) return "a paragraph is missing";
    if ((entry.ends == "finding") == entry.level.empty()) return "Ends and Level do not fit";
    if (entry.ends == "finding") return "";
    const std::optional<Recognised> known = recognise(entry.messages.front() + "   ");
    if (!known) return "not recognised";
    return known->entry == &entry ? "" : "taken for " + known->entry->code;
}

TEST(Index, IsThePageAndKnowsEachMessage) {
    const string page = harness::read_file(DOCS_DIR "/messages.md");
    for (const MessageEntry& entry : message_index()) {
        EXPECT_EQ(fault_of(entry, page), "") << entry.code;
    }
    EXPECT_EQ(find_code("no-such"), nullptr);
}

TEST(Index, ReadsParagraphsAndExamples) {
    const MessageEntry* entry = find_code("control-integer");
    ASSERT_NE(entry, nullptr);
    EXPECT_EQ(
        entry->cause,
        "The value of NCO or NMO is not a whole number. Only its first four characters count.");
    ASSERT_EQ(entry->examples.size(), 2U);
    EXPECT_EQ(entry->examples[1].kind, "corrected-control");
    EXPECT_EQ(entry->examples[1].text, "INP m\nNCO 0\n");
    EXPECT_EQ(find_code("rdarg-many")->wrong,
              "$MODEL:M\n$PROD:Y\n  O:P(A,B,C,D,E,F,G,H,K)  Q:1\n$OFFTEXT\n");
}

TEST(Index, RecognisesMessages) {
    using Values = std::map<string, string>;
    struct {
        string message, code;
        Values values;
        string words;
    } const rows[] = {
        {" *** ADDSYM: symbol dimension error:Y",
         "addsym-dimension",
         {{"name", "Y"}},
         "symbol dimension error: `Y`"},
        {" *** Symbol type mismatch: P",
         "chksym-type",
         {{"name", "P"}},
         "symbol type mismatch: `P`"},
        {" *** Unrecognized keyword: ",
         "keyword-unknown",
         {{"keyword", ""}},
         "unrecognized keyword"},
        {" *** ADDSYM: symbol type mismatch: I:, O:, D: or W:",
         "addsym-type",
         {{"name", "I:, O:, D: or W:"}},
         "symbol type mismatch: `I:, O:, D: or W:`"},
        {" *** REPBLK: 3rd report field Q                    is not PROD or DEMAND.",
         "repblk-third",
         {{"label", "Q"}},
         "3rd report field `Q` is not `PROD` or `DEMAND`"},
        {"FFOPEN: error opening filem.zlm      with status OLD\n",
         "ffopen-input",
         {{"name", "m.zlm"}},
         "error opening file `m.zlm` with status OLD"},
        {" *** Cannot find file: n\n *** Nor can I find  : n.zlm\n",
         "input-missing",
         {{"name", "n"}},
         "cannot find file: `n`; nor can I find: `n.zlm`"},
        {" *** Cannot read file: a: b: c",
         "unit-read",
         {{"name", "a"}, {"reason", "b: c"}},
         "cannot read file: `a`: b: c"},
        {" *** ADDSYM: Something new: X.", "", {}, "something new: X"},
        {" *** ADDSYM: symbol type mismatch:X", "", {}, "symbol type mismatch:X"},
        {" *** REPBLK: extra fields in report record. X",
         "",
         {},
         "extra fields in report record. X"},
        {"", "", {}, ""},
    };
    for (const auto& row : rows) {
        const std::optional<Recognised> known = recognise(row.message);
        EXPECT_EQ(known ? known->entry->code : "", row.code) << row.message;
        EXPECT_EQ(known ? known->values : Values(), row.values) << row.message;
        EXPECT_EQ(plain_words(row.message, row.values), row.words);
    }
    // The name as the user wrote it.
    EXPECT_EQ(plain_words(" *** Unrecognized symbol: TAU", {{"name", "Tau"}}),
              "unrecognized symbol: `Tau`");
}

TEST(Index, TakesHelpFromTheFirstSentence) {
    const std::vector<std::vector<string>> rows{
        {"Correct the line. Or remove it.", "correct the line"},
        {"Write `A. B` there.", "write `A. B` there"},
        {"HDR names 1.5 files.", "HDR names 1.5 files"},
        {"`$X` is it", "`$X` is it"},
        {"", ""},
    };
    for (const auto& row : rows) EXPECT_EQ(as_help(row[0]), row[1]);
}

// Findings in each format.

const Finding usual{Severity::error,
                    "addsym-type",
                    "symbol type mismatch: `PX`",
                    {"model.zlm", 12, 7, 9, 120, 122, "    O:PX  Q:1"},
                    {{Severity::note,
                      "`PX` was declared here, as a sector",
                      {"model.zlm", 3, 5, 7, 30, 32, "    PX"}},
                     {Severity::help, "give the two things different names", {}}}};
const Finding whole_file{
    Severity::warning, "model-none", "no model", {"a b,c:100%.zlm", 0, 1, 1, 0, 0, ""}, {}};
const Finding placeless{Severity::error,
                        "usage",
                        "unknown option `--fast`",
                        {},
                        {{Severity::help, "did you mean `--format`?", {}}}};

// A finding on one line of text.
Finding at(const string& text, int column, int end_column, const string& path = "m.zlm") {
    return {Severity::warning,
            "line-plus",
            "it is `+P`",
            {path, 7, column, end_column, 0, 0, text},
            {}};
}

TEST(Text, IsLaidOutAroundTheLine) {
    EXPECT_EQ(rendered(usual, false),
              "error[addsym-type]: symbol type mismatch: `PX`\n"
              "  --> model.zlm:12:7\n"
              "   |\n"
              "12 |     O:PX  Q:1\n"
              "   |       ^^\n"
              "   |\n"
              "note: `PX` was declared here, as a sector\n"
              "  --> model.zlm:3:5\n"
              "   |\n"
              "3  |     PX\n"
              "   |     ^^\n"
              "   = help: give the two things different names");
    EXPECT_EQ(rendered(whole_file, false), "warning[model-none]: no model\n --> a b,c:100%.zlm");
    EXPECT_EQ(rendered(placeless, false),
              "error[usage]: unknown option `--fast`\n  = help: did you mean `--format`?");
    EXPECT_EQ(rendered({Severity::warning,
                        "line-plus",
                        "it",
                        {"m", 5, 1, 2, 0, 0, "+P"},
                        {{Severity::note, "so", {}}}},
                       true),
              "\x1b[1;33mwarning[line-plus]\x1b[0m\x1b[1m: it\x1b[0m\n"
              "\x1b[1;34m --> \x1b[0mm:5:1\n"
              "\x1b[1;34m  |\x1b[0m\n"
              "\x1b[1;34m5 | \x1b[0m+P\n"
              "\x1b[1;34m  | \x1b[0m\x1b[1;33m^\x1b[0m\n"
              "\x1b[1;34m  |\x1b[0m\n"
              "\x1b[1;34m  = \x1b[0m\x1b[1mnote\x1b[0m: so");
    EXPECT_EQ(report_finding(Format::text, whole_file, true, false),
              "warning[model-none]: no model\n --> a b,c:100%.zlm\n\n");
}

TEST(Text, ShowsAnyLine) {
    const string unknown = "\xEF\xBF\xBD";
    const string hundred(100, 'x');
    struct {
        string text;
        int column, end_column;
        string line, carets;
    } const rows[] = {
        {"\tO:PX\tQ:1", 7, 10, "\tO:PX\tQ:1", "\t    \t^^^"},
        {"  O:P\xC3\x89X \xE2\x82\xAC", 5, 8, "  O:P\xC3\x89X \xE2\x82\xAC", "    ^^^"},
        {"\xC3\x89\tX", 3, 4, "\xC3\x89\tX", " \t^"},
        // Not UTF-8: a column is a byte, and so is what is shown of it.
        {"\xC3\x89\xE9 Q:1", 5, 8, unknown + unknown + unknown + " Q:1", "    ^^^"},
        {"\xF0\x9F\x98", 1, 2, unknown + unknown + unknown, "^"},
        {"\xED\xA0\x80", 1, 2, unknown + unknown + unknown, "^"},  // a surrogate
        {"\xC0\x80", 1, 2, unknown + unknown, "^"},                // longer than needed
        {"\x1b[2J \x7F\r", 2, 3, unknown + "[2J " + unknown + unknown, " ^"},
        {string("\xC2\x9B\xE2") + "\x80\xAE"
                                  "A",
         3, 4, unknown + unknown + "A", "  ^"},  // CSI; right to left
        {string("A\0B", 3), 3, 4, "A" + unknown + "B", "  ^"},
        // A place behind the end, an empty one, one that goes on too far.
        {"AB", 5, 6, "AB", "    ^"},
        {"AB", 1, 1, "AB", "^"},
        {"AB", 2, 99, "AB", " ^"},
        {hundred + string(60, 'y'), 160, 161, hundred + string(60, 'y'), string(159, ' ') + "^"},
        {hundred + string(61, 'y'), 1, 2, hundred + string(54, 'y') + "...", "^"},
        {hundred + string(61, 'y'), 161, 162, "..." + string(93, 'x') + string(61, 'y'),
         string(156, ' ') + "^"},
        {hundred + "yz" + hundred + hundred, 101, 103,
         "..." + string(50, 'x') + "yz" + hundred + "xx...", string(53, ' ') + "^^"},
        {string(400, 'x'), 201, 400, "..." + string(154, 'x') + "...",
         string(53, ' ') + string(104, '^')},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(rendered(at(row.text, row.column, row.end_column), false),
                  "warning[line-plus]: it is `+P`\n --> m.zlm:7:" + std::to_string(row.column) +
                      "\n  |\n7 | " + row.line + "\n  | " + row.carets);
    }
    EXPECT_EQ(rendered(at("", 1, 2), false),
              "warning[line-plus]: it is `+P`\n --> m.zlm:7:1\n  |\n7 |\n  | ^");
}

TEST(Short, IsALineEach) {
    EXPECT_EQ(report_finding(Format::brief, usual, true, true),
              "model.zlm:12:7: error: symbol type mismatch: `PX` [addsym-type]\n");
    EXPECT_EQ(brief(whole_file), "a b,c:100%.zlm: warning: no model [model-none]");
    EXPECT_EQ(brief(placeless), "error: unknown option `--fast` [usage]");
    EXPECT_EQ(brief({Severity::error, "", "no\x1b[m\nway", {"a\tb\xFF", 1, 1, 2, 0, 0, ""}, {}}),
              "a b\xEF\xBF\xBD:1:1: error: no\xEF\xBF\xBD[m\xEF\xBF\xBDway");
}

TEST(Github, EscapesWhatDividesACommand) {
    EXPECT_EQ(report_finding(Format::github, usual, true, true),
              "::error title=addsym-type,file=model.zlm,line=12,endLine=12,col=7,endColumn=9"
              "::symbol type mismatch: `PX`\n");
    EXPECT_EQ(report_finding(Format::github, whole_file, false, false),
              "::warning title=model-none,file=a b%2Cc%3A100%25.zlm,line=1,endLine=1::no model\n");
    EXPECT_EQ(
        report_finding(Format::github, {Severity::error, "usage", "50%: a,b", {}, {}}, true, false),
        "::error title=usage::50%25: a,b\n");
}

TEST(Json, IsAnObjectALine) {
    EXPECT_EQ(
        report_finding(Format::json, usual, true, true),
        R"({"version":1,"type":"finding","severity":"error","code":"addsym-type",)"
        R"("message":"symbol type mismatch: `PX`","spans":[{"path":"model.zlm","line":12,"column":7,)"
        R"("end_line":12,"end_column":9,"byte_start":120,"byte_end":122,"primary":true,)"
        R"("text":"    O:PX  Q:1"}],"children":[{"severity":"note",)"
        R"("message":"`PX` was declared here, as a sector","spans":[{"path":"model.zlm","line":3,)"
        R"("column":5,"end_line":3,"end_column":7,"byte_start":30,"byte_end":32,"primary":false,)"
        R"("text":"    PX"}]},{"severity":"help","message":"give the two things different names",)"
        R"("spans":[]}],"rendered":"error[addsym-type]: symbol type mismatch: `PX`\n)"
        R"(  --> model.zlm:12:7\n   |\n12 |     O:PX  Q:1\n   |       ^^\n   |\n)"
        R"(note: `PX` was declared here, as a sector\n  --> model.zlm:3:5\n   |\n3  |     PX\n)"
        R"(   |     ^^\n   = help: give the two things different names"})"
        "\n");
    EXPECT_EQ(
        report_tail(Format::json, {3, 2, 1, true, 1}),
        R"({"version":1,"type":"summary","files":3,"errors":2,"warnings":1,"more":true,"status":1})"
        "\n");
}

TEST(Sarif, HasRelativeLocations) {
    Finding finding = usual;
    finding.span.path = std::filesystem::current_path().string() + "/a/m\xC3\xA9 1.zlm";
    finding.remarks.front().span.path = "/over:there/m.zlm";
    const string index = std::to_string(find_code("addsym-type") - message_index().data());
    const string result = report_finding(Format::sarif, finding, true, true);
    const string start =
        R"({"ruleId":"addsym-type","ruleIndex":)" + index +
        R"(,"level":"error","message":{"text":"symbol type mismatch: `PX`\n)"
        R"(help: give the two things different names"},"locations":[{"physicalLocation":)"
        R"({"artifactLocation":{"uri":"a/m%C3%A9%201.zlm"},)"
        R"("region":{"startLine":12,"startColumn":7,"endColumn":9}}}],)"
        R"("relatedLocations":[{"physicalLocation":)"
        R"({"artifactLocation":{"uri":"file:///over%3Athere/m.zlm"},)"
        R"("region":{"startLine":3,"startColumn":5,"endColumn":7}},)"
        R"("message":{"text":"`PX` was declared here, as a sector"}}],)"
        R"("partialFingerprints":{"orvexLine/v1":")";
    EXPECT_TRUE(result.starts_with(start)) << result << "\nshould begin with\n" << start;
    // The fingerprint stays where lines move and where the path is written in another way.
    Finding moved = finding;
    moved.span = {"a/m\xC3\xA9 1.zlm", 99, 7, 9, 1000, 1002, finding.span.text};
    Finding other = moved;
    other.span.text += ' ';
    const auto print = [](const Finding& of) {
        const string text = report_finding(Format::sarif, of, true, false);
        return text.substr(text.find("partialFingerprints"));
    };
    EXPECT_EQ(print(moved), print(finding));
    EXPECT_NE(print(other), print(finding));
}

TEST(Formats, HaveNames) {
    EXPECT_EQ(format_of("text"), Format::text);
    EXPECT_EQ(format_of("short"), Format::brief);
    EXPECT_EQ(format_of("json"), Format::json);
    EXPECT_EQ(format_of("sarif"), Format::sarif);
    EXPECT_EQ(format_of("github"), Format::github);
    EXPECT_FALSE(format_of("brief") || format_of("") || format_of("Text"));
}

// Schemas.

// Runs a command of the shell in which "$python" is an interpreter that has jsonschema; none where
// there is no such interpreter.
std::optional<string> with_python(const harness::Folder& folder, const string& command) {
    const string choice =
        "for python in python3 /usr/bin/python3 none; do\n"
        "\"$python\" -c 'import jsonschema' 2>/dev/null && break\ndone\n"
        "[ $python != none ] || exit 99\n";
    const harness::Result result = folder.shell(choice + command);
    if (result.status == 99) return {};
    EXPECT_EQ(result.status, 0) << result.err;
    return result.out;
}

string report(Format format, const std::vector<Finding>& findings) {
    string text = report_head(format);
    for (const Finding& finding : findings) {
        text += report_finding(format, finding, &finding == findings.data(), false);
    }
    return text + report_tail(format, {1, findings.size(), 0, false, findings.empty() ? 0 : 1});
}

const std::vector<Finding> all_kinds{usual,
                                     whole_file,
                                     placeless,
                                     at("\tO:\xC3\x89 Q:1", 5, 8),
                                     at("\xE9\xE9", 1, 2, "./a\xFF"),
                                     at("\x1b[2J\x01\"\\", 2, 3, "/a b#?.zlm"),
                                     at(string("A\0B", 3), 3, 4, "<stdin>")};

const char* const no_python = "no python3 with jsonschema (Debian: python3-jsonschema)";

TEST(Schema, HoldsForJson) {
    const harness::Folder folder;
    folder.write("all.json", report(Format::json, all_kinds));
    folder.write("none.json", report(Format::json, {}));
    const string span = R"("path":"m","column":1,"end_line":1,"end_column":1,"byte_start":0,)"
                        R"("byte_end":0,"primary":true,"text":"")";
    const string finding = R"({"version":1,"type":"finding","severity":"error","message":"m",)"
                           R"("children":[],"rendered":"m")";
    string wrong = finding + R"(,"code":"c","spans":[{"line":1,)" + span + "}]}\n";
    // The first is valid; each of the others lacks one thing, or has one that must not be.
    const std::vector<string> refused{
        finding + R"(,"spans":[]})",
        finding + R"(,"code":"c","spans":[{"line":0,)" + span + "}]}",
        finding + R"(,"code":"c","spans":[{)" + span + "}]}",
        R"({"version":1,"type":"summary","files":1,"errors":1,"warnings":0,"status":1})",
        R"({"version":1,"type":"summary","files":1,"errors":1,"warnings":0,"more":0,"status":1})",
        R"({"version":2,"type":"finding"})",
    };
    for (const string& line : refused) wrong += line + "\n";
    folder.write("wrong.json", wrong);
    const std::optional<string> out =
        with_python(folder, "\"$python\" '" TESTS_DIR "/validate.py' '" DOCS_DIR
                            "/findings.schema.json' all.json none.json wrong.json | cut -d: -f1");
    if (!out) GTEST_SKIP() << no_python;
    EXPECT_EQ(*out,
              "valid\nvalid\nvalid\nvalid\nvalid\nvalid\nvalid\nvalid\n"
              "valid\nvalid\n"
              "invalid\ninvalid\ninvalid\ninvalid\ninvalid\ninvalid\n");
}

TEST(Schema, HoldsForSarif) {
    const harness::Folder folder;
    const string all = report(Format::sarif, all_kinds);
    folder.write("all.json", all);
    folder.write("none.json", report(Format::sarif, {}));
    string wrong = all;
    wrong.replace(wrong.find("%FF"), 3, " ");
    folder.write("wrong.json", wrong);
    folder.write("rules.py",
                 "import json\n"
                 "run = json.load(open('all.json'))['runs'][0]\n"
                 "for result in run['results']:\n"
                 "    rule = run['tool']['driver']['rules'][result['ruleIndex']]\n"
                 "    uri = result['locations'][0]['physicalLocation']['artifactLocation']['uri']\n"
                 "    print(result['ruleId'], rule['id'], uri)\n");
    const std::optional<string> out =
        with_python(folder, "\"$python\" '" TESTS_DIR "/validate.py' '" TESTS_DIR
                            "/sarif.schema.json' all.json none.json wrong.json | cut -d: -f1\n"
                            "\"$python\" rules.py");
    if (!out) GTEST_SKIP() << no_python;
    EXPECT_EQ(*out,
              "valid\nvalid\ninvalid\n"
              "addsym-type addsym-type model.zlm\n"
              "model-none model-none a%20b%2Cc%3A100%25.zlm\n"
              "usage usage .\n"
              "line-plus line-plus m.zlm\n"
              "line-plus line-plus a%FF\n"
              "line-plus line-plus file:///a%20b%23%3F.zlm\n"
              "line-plus line-plus %3Cstdin%3E\n");
}

// Spelling.

TEST(Spelling, FindsTheNearest) {
    const std::vector<string> keywords{"SECTORS", "COMMODITIES", "CONSUMERS", "PROD", "DEMAND"};
    struct {
        string word;
        std::vector<string> candidates;
        string found;
    } const rows[] = {
        {"SECTOR", keywords, "SECTORS"},
        {"sectros", keywords, "SECTORS"},
        {"COMODITYS", keywords, "COMMODITIES"},
        {"PRDO", keywords, "PROD"},    // a swap is one step, and 4 / 3 allows one
        {"PRDOX", keywords, ""},       // 5 / 3 allows one
        {"PRODUC", keywords, "PROD"},  // 6 / 3 allows two
        {"PRODUCT", keywords, ""},     // 7 / 3 allows two, three are needed
        {"prod", keywords, ""},        // the word itself
        {"PZ", {"PX", "PY"}, "PX"},    // equally near: the first
        {"P", {"PX", "Q"}, "PX"},      // one step, however short the word
        {"P", {"QX"}, ""},
        {"AB", {"ABCD", "ABC"}, "ABC"},  // the nearer, not the first
        {"CA", {"ABC"}, ""},             // no change within a swap
        {"P", {""}, ""},
        {"", {"P"}, "P"},
        {"X", {}, ""},
    };
    for (const auto& row : rows)
        EXPECT_EQ(nearest(row.word, row.candidates), row.found) << row.word;
}

// explain and codes.

TEST(Explain, ShowsTheEntry) {
    EXPECT_EQ(explain("control-integer", false),
              R"(error[control-integer]: invalid integer in run control file: `<label> <value>`

The value of NCO or NMO is not a whole number. Only its first four characters
count.

Write a number of at most four characters, or leave the line out for 0.

The translator's own words:

    *** Invalid integer in run control file: <label> <value>

Wrong control file:

    INP m
    NCO none

Corrected control file:

    INP m
    NCO 0
)");
    const string unreachable = explain("conblk-colon", false);
    EXPECT_NE(unreachable.find("\n\nNo model leads to this message: `$CONSTRAINT` without a colon "
                               "is already refused\n"),
              string::npos)
        << unreachable;
    const string own = explain("line-plus", true);
    EXPECT_TRUE(own.starts_with("\x1b[1;33mwarning[line-plus]\x1b[0m\x1b[1m: ")) << own;
    EXPECT_EQ(own.find("own words"), string::npos);
    EXPECT_EQ(explain("no-such", true), "");
}

TEST(Explain, ShowsTheExamplesOfEachEntry) {
    for (const MessageEntry& entry : message_index()) {
        const string text = explain(entry.code, false);
        EXPECT_EQ(text.find("```"), string::npos) << entry.code;
        const bool wrong = !entry.wrong.empty() ||
                           entry.text.find("```wrong-command") != string::npos ||
                           entry.text.find("```control") != string::npos;
        EXPECT_EQ(text.find("\n\nWrong") != string::npos, wrong) << entry.code;
    }
}

TEST(Codes, AreListedWithLevelAndMessage) {
    const string list = list_codes();
    EXPECT_TRUE(std::regex_search(
        list, std::regex("\ncontrol-label +error +invalid input to `orvexpp`\n")));
    EXPECT_TRUE(
        std::regex_search(list, std::regex("\nsymlst-references +warning +the reference ")));
    EXPECT_TRUE(std::regex_search(
        list, std::regex("\nname-unused +warning +<kind> `<name>` is declared and ")));
    EXPECT_EQ(std::count(list.begin(), list.end(), '\n'), std::ssize(message_index()));
}

}  // namespace
