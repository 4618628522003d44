// The front end's words: the index of messages, findings in each format, spelling, and explain.
#include "frontend/base/printable.h"
#include "frontend/base/spelling.h"
#include "frontend/commands/explain.h"
#include "frontend/findings/finding.h"
#include "frontend/findings/junit.h"
#include "frontend/findings/messages.h"
#include "frontend/findings/report.h"
#include "frontend/findings/wording.h"
#include "frontend/rules/rule.h"
#include "frontend/syntax/meant_keyword.h"
#include "harness.h"
#include "tools.h"

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

// Does a title have no capitals and no full stop outside its backticks?
bool is_plain(const string& title) {
    static const std::regex quoted("`[^`]+`");
    static const std::regex plain("(<[a-z]+>|[-a-z0-9 ,:;])+");
    return std::regex_match(std::regex_replace(title, quoted, ""), plain) &&
           title.find("  ") == string::npos && title.find(" :") == string::npos;
}

// How an entry differs from the page; empty if it does not.
string fault_of(const MessageEntry& entry, const string& page) {
    if (page.find("\n" + entry.text + "\n") == string::npos) return "not in the page";
    if (find_code(entry.code) != &entry) return "not found";
    if (entry.cause.empty() || entry.cure.empty()) return "a paragraph is missing";
    if ((entry.ends == "finding") == entry.level.empty()) return "Ends and Level do not fit";
    if (entry.ends == "finding") return "";
    if (!is_plain(title(entry))) return "not plain: " + title(entry);
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

// The page has the level of each rule, and no other warnings.
TEST(Index, HasTheLevelsOfTheRules) {
    std::map<string, Severity> of_rules;
    std::map<string, Severity> of_page;
    for (const Rule& rule : rules()) {
        if (rule.level != Severity::error) of_rules[string(rule.code)] = rule.level;
    }
    for (const MessageEntry& entry : message_index()) {
        const bool is_rule = entry.ends == "finding" && entry.level != "error";
        if (is_rule) of_page[entry.code] = level_of(entry);
    }
    EXPECT_EQ(of_rules, of_page);
}

// Nothing else in the sources of the front end looks like a code, except the blocks of an entry and
// the names of confidences in formats.
TEST(Index, HasEachCodeOfTheSources) {
    const std::regex literal("\"([a-z]+(-[a-z]+)+)\"");
    const std::regex other(
        "(wrong|corrected)-(command|control|data)|allow-file|(machine|maybe|has)-[a-z]+");
    std::size_t count = 0;
    for (const auto& file : std::filesystem::recursive_directory_iterator(SOURCE_DIR "/frontend")) {
        if (file.path().extension() != ".cpp") continue;
        const string text = harness::read_file(file.path());
        for (std::sregex_iterator at(text.begin(), text.end(), literal), end; at != end; ++at) {
            const string code = at->str(1);
            if (std::regex_match(code, other)) continue;
            EXPECT_NE(find_code(code), nullptr) << code << " of " << file.path();
            ++count;
        }
    }
    EXPECT_GT(count, 40U);
}

// A message of the translator ("|" for a line end), and below it its code, values and finding.
const char* const recognised = R"( *** ADDSYM: symbol dimension error:Y
dimension-mismatch name=Y: `Y` has a different number of sets here than before
 *** Symbol type mismatch: P
constraint-kind-mismatch name=P: `P` is not an auxiliary variable
 *** Unrecognized keyword:@
keyword-unknown keyword=: unknown keyword `$`
 *** ADDSYM: symbol type mismatch: I:, O:, D: or W:
kind-mismatch name=I:, O:, D: or W:: `I:, O:, D: or W:` is used for two different things
*** REPBLK: 2nd report field must be I:, O:, D: or W:. Find: Q
report-item-invalid label=Q: `Q:` cannot be the second field of a report row
 *** REPBLK: 3rd report field Q                    is not PROD or DEMAND.
report-block-invalid label=Q: `Q:` cannot be the third field of a report row
FFOPEN: error opening filem.zlm      with status OLD|
open-input-failed name=m.zlm: cannot open input file `m.zlm`
 *** Cannot find file: n| *** Nor can I find  : n.zlm|
input-missing name=n: cannot find input file `n` or `n.zlm`
 *** Cannot read file: a: b: c
read-failed name=a reason=b: c: cannot read `a`: b: c
 *** ADDSYM: Something new: X.
none: ADDSYM: Something new: X.
 *** ADDSYM: symbol type mismatch:X
none: ADDSYM: symbol type mismatch:X
 *** REPBLK: extra fields in report record. X
none: REPBLK: extra fields in report record. X
)";

TEST(Index, RecognisesMessages) {
    const std::vector<string> lines = harness::lines_of(recognised);
    for (std::size_t i = 0; i + 1 < lines.size(); i += 2) {
        string message = std::regex_replace(lines[i], std::regex("@"), " ");
        std::replace(message.begin(), message.end(), '|', '\n');
        const std::optional<Recognised> known = recognise(message);
        string read = known ? known->entry->code : "none";
        const auto values = known ? known->values : std::map<string, string>();
        for (const auto& [name, value] : values)
            read.append(" ").append(name).append("=").append(value);
        EXPECT_EQ(read + ": " + plain_words(message), lines[i + 1]);
    }
    EXPECT_FALSE(recognise(""));
}

TEST(Index, TakesHelpFromTheFirstSentence) {
    EXPECT_EQ(as_help("Correct the line. Or remove it."), "correct the line");
    EXPECT_EQ(as_help("Write `A. B` there."), "write `A. B` there");
    EXPECT_EQ(as_help("HDR names 1.5 files.") + as_help(""), "HDR names 1.5 files");
}

// Findings in each format.

const Finding usual{Severity::error,
                    "kind-mismatch",
                    "symbol type mismatch: `PX`",
                    {"model.zlm", 12, 7, 9, 120, 122, "    O:PX  Q:1"},
                    {{Severity::note,
                      "`PX` was declared here, as a sector",
                      {"model.zlm", 3, 5, 7, 30, 32, "    PX"}},
                     {Severity::help, "give the two things different names", {}}}};
const Finding whole_file{
    Severity::warning, "model-missing", "no model", {"a b,c:100%.zlm", 0, 1, 1, 0, 0, ""}, {}};
const Finding placeless{Severity::error,
                        "usage",
                        "unknown option `--fast`",
                        {},
                        {{Severity::help, "did you mean `--format`?", {}}}};

// With a fix of two edits, the second of which inserts a line.
const Finding fixed{
    Severity::warning,
    "plus-joined",
    "it is `+P`",
    {"m.zlm", 7, 1, 3, 60, 62, "+P:1"},
    {{Severity::help, "put a blank", {}}},
    Fix{Confidence::certain, {{61, 61, " ", 7, 2, 7, 2}, {64, 64, "\n*", 7, 5, 7, 5}}}};

Finding with_confidence(Confidence confidence) {
    Finding finding = fixed;
    finding.fix->confidence = confidence;
    return finding;
}

// A finding on one line of text.
Finding at(const string& text, int column, int end_column, const string& path = "m.zlm") {
    return {Severity::warning,
            "plus-joined",
            "it is `+P`",
            {path, 7, column, end_column, 0, 0, text},
            {}};
}

TEST(Text, IsLaidOutAroundTheLine) {
    EXPECT_EQ(rendered(placeless, false),
              "error[usage]: unknown option `--fast`\n  = help: did you mean `--format`?");
    EXPECT_EQ(rendered({Severity::warning,
                        "plus-joined",
                        "it",
                        {"m", 5, 1, 2, 0, 0, "+P"},
                        {{Severity::note, "so", {}}}},
                       true),
              "\x1b[1;33mwarning[plus-joined]\x1b[0m\x1b[1m: it\x1b[0m\n"
              "\x1b[1;34m --> \x1b[0mm:5:1\n"
              "\x1b[1;34m  |\x1b[0m\n"
              "\x1b[1;34m5 | \x1b[0m+P\n"
              "\x1b[1;34m  | \x1b[0m\x1b[1;33m^\x1b[0m\n"
              "\x1b[1;34m  |\x1b[0m\n"
              "\x1b[1;34m  = \x1b[0m\x1b[1mnote\x1b[0m: so");
    EXPECT_EQ(report_finding(Format::text, whole_file, true, false),
              "warning[model-missing]: no model\n --> a b,c:100%.zlm\n\n");
}

TEST(Text, ShowsAnyLine) {
    const string odd = "\xEF\xBF\xBD";
    const string hundred(100, 'x');
    const string sixty(60, 'y');
    struct {
        string text;
        int column, end_column;
        string line, carets;
    } const rows[] = {
        {"\tO:PX\tQ:1", 7, 10, "\tO:PX\tQ:1", "\t    \t^^^"},
        {"  P\xC3\x89X \xE2\x82\xAC", 3, 6, "  P\xC3\x89X \xE2\x82\xAC", "  ^^^"},
        {"\xC3\x89\tX", 3, 4, "\xC3\x89\tX", " \t^"},
        // Not UTF-8: each byte is a column, and shown as one character.
        {"\xC3\x89\xE9 Q:1", 5, 8, odd + odd + odd + " Q:1", "    ^^^"},
        {"\xF0\x9F\x98", 1, 2, odd + odd + odd, "^"},
        {"\x1b[2J \x7F\r", 2, 3, odd + "[2J " + odd + odd, " ^"},
        {string("\xC2\x9B\xE2") + "\x80\xAE-", 3, 4, odd + odd + "-", "  ^"},  // CSI; right to left
        {string("A\0B", 3), 3, 4, "A" + odd + "B", "  ^"},
        // A place past the end, an empty one, and one that continues too far.
        {"AB", 5, 6, "AB", "    ^"},
        {"AB", 1, 1, "AB", "^"},
        {"AB", 2, 99, "AB", " ^"},
        // Only a part of a long line is shown.
        {hundred + sixty, 160, 161, hundred + sixty, string(159, ' ') + "^"},
        {"z" + hundred + sixty, 1, 2, "z" + hundred + sixty.substr(7) + "...", "^"},
        {hundred + sixty + "z", 161, 162, "..." + hundred.substr(7) + sixty + "z",
         string(156, ' ') + "^"},
        {hundred + "yz" + hundred + hundred, 101, 103,
         "..." + string(50, 'x') + "yz" + hundred + "xx...", string(53, ' ') + "^^"},
        {string(400, 'x'), 201, 400, "..." + string(154, 'x') + "...",
         string(53, ' ') + string(104, '^')},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(rendered(at(row.text, row.column, row.end_column), false),
                  "warning[plus-joined]: it is `+P`\n --> m.zlm:7:" + std::to_string(row.column) +
                      "\n  |\n7 | " + row.line + "\n  | " + row.carets);
    }
    EXPECT_TRUE(rendered(at("", 1, 2), false).ends_with("\n  |\n7 |\n  | ^"));
}

TEST(Text, OffersWhatTheProgramCanDo) {
    const string start =
        "warning[plus-joined]: it is `+P`\n --> m.zlm:7:1\n  |\n7 | +P:1\n  | ^^\n"
        "  |\n  = help: put a blank";
    EXPECT_EQ(rendered(fixed, false), start + " (`check --fix` does this)");
    EXPECT_EQ(rendered(with_confidence(Confidence::maybe), false),
              start + " (`check --fix --unsafe-fixes` does this)");
    EXPECT_EQ(rendered(with_confidence(Confidence::placeholders), false), start);
}

TEST(Short, IsALineEach) {
    EXPECT_EQ(report_finding(Format::brief, usual, true, true),
              "model.zlm:12:7: error: symbol type mismatch: `PX` [kind-mismatch]\n");
    EXPECT_EQ(brief(whole_file), "a b,c:100%.zlm: warning: no model [model-missing]");
    EXPECT_EQ(brief(placeless), "error: unknown option `--fast` [usage]");
    EXPECT_EQ(brief({Severity::error, "", "no\x1b[m\nway", {"a\tb\xFF", 1, 1, 2, 0, 0, ""}, {}}),
              "a b\xEF\xBF\xBD:1:1: error: no\xEF\xBF\xBD[m\xEF\xBF\xBDway");
}

TEST(Github, EscapesWhatDividesACommand) {
    EXPECT_EQ(
        report_finding(Format::github, whole_file, false, false),
        "::warning title=model-missing,file=a b%2Cc%3A100%25.zlm,line=1,endLine=1::no model\n");
    EXPECT_EQ(
        report_finding(Format::github, {Severity::error, "usage", "50%: a,b", {}, {}}, true, false),
        "::error title=usage::50%25: a,b\n");
    EXPECT_EQ(report_finding(Format::github, usual, true, false),
              "::error title=kind-mismatch,file=model.zlm,line=12,endLine=12,col=7,endColumn=9::"
              "symbol type mismatch: `PX`%0Anote: `PX` was declared here, as a sector "
              "(model.zlm:3:5)%0Ahelp: give the two things different names\n");
}

const std::vector<CodeCount> statistics{{"name-unused", Severity::warning, 12},
                                        {"usage", Severity::error, 1}};

TEST(Json, IsAnObjectALine) {
    EXPECT_EQ(
        report_finding(Format::json, usual, true, true),
        R"({"version":2,"type":"finding","severity":"error","code":"kind-mismatch",)"
        R"("message":"symbol type mismatch: `PX`","spans":[{"path":"model.zlm","line":12,"column":7,)"
        R"("end_line":12,"end_column":9,"byte_start":120,"byte_end":122,"primary":true,)"
        R"("text":"    O:PX  Q:1"}],"children":[{"severity":"note",)"
        R"("message":"`PX` was declared here, as a sector","spans":[{"path":"model.zlm","line":3,)"
        R"("column":5,"end_line":3,"end_column":7,"byte_start":30,"byte_end":32,"primary":false,)"
        R"("text":"    PX"}]},{"severity":"help","message":"give the two things different names",)"
        R"("spans":[]}],"rendered":"error[kind-mismatch]: symbol type mismatch: `PX`\n)"
        R"(  --> model.zlm:12:7\n   |\n12 |     O:PX  Q:1\n   |       ^^\n   |\n)"
        R"(note: `PX` was declared here, as a sector\n  --> model.zlm:3:5\n   |\n3  |     PX\n)"
        R"(   |     ^^\n   = help: give the two things different names"})"
        "\n");
    EXPECT_EQ(
        report_tail(Format::json, {3, 2, 1, 4, 1}),
        R"({"version":2,"type":"summary","files":3,"errors":2,"warnings":1,"more":true,"hidden":4,"status":1})"
        "\n");
    Summary summary;
    summary.outputs = {{"a\xFF", "b"}, {}};
    summary.statistics = statistics;
    EXPECT_TRUE(
        report_tail(Format::json, summary)
            .ends_with("\"status\":0,\"written\":[\"a\xEF\xBF\xBD\",\"b\"],\"unchanged\":[],"
                       "\"statistics\":[{\"code\":\"name-unused\",\"severity\":\"warning\","
                       "\"count\":12},{\"code\":\"usage\",\"severity\":\"error\","
                       "\"count\":1}]}\n"));
}

TEST(Text, EndsWithStatistics) {
    Summary summary;
    EXPECT_EQ(report_tail(Format::text, summary), "");
    summary.statistics = statistics;
    EXPECT_EQ(report_tail(Format::text, summary), "12  warning  name-unused\n 1  error    usage\n");
    EXPECT_EQ(report_tail(Format::brief, summary), report_tail(Format::text, summary));
}

TEST(Json, HasTheEditsOfAFix) {
    const string json =
        report_finding(Format::json, with_confidence(Confidence::maybe), true, true);
    EXPECT_NE(json.find(R"("fix":{"confidence":"maybe-incorrect","edits":[{"line":7,"column":2,)"
                        R"("end_line":7,"end_column":2,"byte_start":61,"byte_end":61,"text":" "},)"
                        R"({"line":7,"column":5,"end_line":7,"end_column":5,"byte_start":64,)"
                        R"("byte_end":64,"text":"\n*"}]},"rendered":)"),
              string::npos)
        << json;
    const string sarif = report_finding(Format::sarif, fixed, true, true);
    EXPECT_NE(sarif.find(R"("fixes":[{"artifactChanges":[{"artifactLocation":{"uri":"m.zlm"},)"
                         R"("replacements":[{"deletedRegion":{"startLine":7,"startColumn":2,)"
                         R"("endLine":7,"endColumn":2},"insertedContent":{"text":" "}},)"
                         R"({"deletedRegion":{"startLine":7,"startColumn":5,"endLine":7,)"
                         R"("endColumn":5},"insertedContent":{"text":"\n*"}}]}],)"
                         R"("properties":{"confidence":"machine-applicable"},)"
                         R"("description":{"text":"put a blank"}}],"partialFingerprints")"),
              string::npos)
        << sarif;
}

TEST(Sarif, HasRelativeLocations) {
    Finding finding = usual;
    finding.span.path = std::filesystem::current_path().string() + "/a/m\xC3\xA9 1.zlm";
    finding.remarks.front().span.path = "/over:there/m.zlm";
    const string index = std::to_string(find_code("kind-mismatch") - message_index().data());
    const string start =
        R"({"ruleId":"kind-mismatch","ruleIndex":)" + index +
        R"(,"level":"error","message":{"text":"symbol type mismatch: `PX`\n)"
        R"(help: give the two things different names"},"locations":[{"physicalLocation":)"
        R"({"artifactLocation":{"uri":"a/m%C3%A9%201.zlm"},)"
        R"("region":{"startLine":12,"startColumn":7,"endColumn":9}}}],)"
        R"("relatedLocations":[{"physicalLocation":)"
        R"({"artifactLocation":{"uri":"file:///over%3Athere/m.zlm"},)"
        R"("region":{"startLine":3,"startColumn":5,"endColumn":7}},)"
        R"("message":{"text":"`PX` was declared here, as a sector"}}],)"
        R"("partialFingerprints":{"orvexLine/v1":")";
    const string result = report_finding(Format::sarif, finding, true, true);
    EXPECT_EQ(result.substr(0, start.size()), start);
    // The fingerprint stays the same when lines move or the path is written differently.
    const auto has_its_print = [&](const string& path, const string& text) {
        finding.span = {path, 99, 7, 9, 1000, 1002, text};
        return report_finding(Format::sarif, finding, true, false)
            .ends_with(result.substr(result.find("partialFingerprints")));
    };
    EXPECT_TRUE(has_its_print("a/m\xC3\xA9 1.zlm", usual.span.text));
    EXPECT_FALSE(has_its_print("a/m\xC3\xA9 1.zlm", usual.span.text + ' '));
}

// In a SARIF message {0} is a placeholder for an argument, and [a](b) a link.
TEST(Sarif, HasNoPlacesOfArgumentsAndNoLinks) {
    const string shown[][2] = {{"{0}", "{{0}}"},
                               {"[a](b)", R"(\\[a\\](b))"},
                               {R"(\[)", R"(\\\\\\[)"},
                               {R"(\a)", R"(\\a)"}};
    for (const auto& [text, escaped] : shown) {
        Finding finding = usual;
        finding.message = text;
        finding.remarks.front().message = text;
        finding.span.text = text;
        const string result = report_finding(Format::sarif, finding, true, true);
        const string in_message = R"("message":{"text":")";
        EXPECT_NE(result.find(in_message + escaped + R"(\nhelp: )"), string::npos) << result;
        EXPECT_NE(result.find(in_message + escaped + R"("})"), string::npos) << result;
    }
}

// They are invisible, or change how the rest is shown.
TEST(Text, ShowsHiddenCharacters) {
    const string replacement = "\xEF\xBF\xBD";
    for (const string hidden :
         {"\x1b", "\x7F", "\xC2\xAD", "\xD8\x9C", "\xE1\xA0\x8E", "\xE2\x80\x8B", "\xE2\x80\x8E",
          "\xE2\x80\xAE", "\xE2\x81\xA0", "\xE2\x81\xA6", "\xEF\xBB\xBF", "\xF3\xA0\x80\x80",
          "\xF3\xA0\x81\xBF"}) {
        EXPECT_EQ(printable("a" + hidden + "b"), "a" + replacement + "b");
    }
    for (const string shown : {"\xC2\xAE", "\xE2\x80\x8D", "\xE2\x80\x8C", "\xF0\x9F\x8D\x9E"})
        EXPECT_EQ(printable("a" + shown), "a" + shown);
}

TEST(Github, SaysThatThereIsMore) {
    const Summary summary{1, 1, 0, 1, 1};
    EXPECT_TRUE(
        report_tail(Format::github, summary).starts_with("::notice::there are more errors"));
    EXPECT_NE(report_tail(Format::sarif, summary).find("there are more errors"), string::npos);
}

// Schemas.

string report(Format format, const std::vector<Finding>& findings, std::size_t hidden = 0) {
    string text = report_head(format);
    for (const Finding& finding : findings) {
        text += report_finding(format, finding, &finding == findings.data(), false);
    }
    return text + report_tail(format, {1, findings.size(), 0, hidden, findings.empty() ? 0 : 1,
                                       OutputFiles{{"a"}, {}}, statistics});
}

const std::vector<Finding> all_kinds{usual,
                                     fixed,
                                     whole_file,
                                     placeless,
                                     at("\tO:\xC3\x89 Q:1", 5, 8),
                                     at("\xE9\xE9", 1, 2, "./a\xFF"),
                                     at("\x1b[2J\x01\"\\", 2, 3, "/a b#?.zlm"),
                                     at(string("A\0B", 3), 3, 4, "<stdin>")};

// Each edit of wrong.json removes something required, or makes a value invalid.
const string check_schemas =
    R"(for python in python3 /usr/bin/python3 none; do
"$python" -c 'import jsonschema' 2>/dev/null && break
done; [ $python != none ] || exit 99
for edit in 's/,"code":"[a-z-]*"//' 's/"line":12,//' 's/"line":12/"line":0/' \
    's/,"more":false//' 's/"more":false/"more":0/' 's/"version":2/"version":1/'
do sed "$edit" usual.json; done >wrong.json
sed 's/%FF/ /' all.sarif >wrong.sarif
valid() { "$python" ')" TESTS_DIR R"(/validate.py' "$@" | cut -d: -f1 | tr '\n' ' '; echo; }
valid ')" DOCS_DIR R"(/findings.schema.json' all.json none.json wrong.json
valid ')" TESTS_DIR R"(/sarif.schema.json' all.sarif none.sarif wrong.sarif
"$python" -c 'import json
run = json.load(open("all.sarif"))["runs"][0]
for result in run["results"]:
    rule = run["tool"]["driver"]["rules"][result["ruleIndex"]]
    uri = result["locations"][0]["physicalLocation"]["artifactLocation"]["uri"]
    print(result["ruleId"], rule["id"], uri)
print(run["tool"]["driver"]["informationUri"].split(":")[0])')";

TEST(Schemas, HoldForJsonAndSarif) {
    const harness::Folder folder;
    folder.write("all.json", report(Format::json, all_kinds));
    folder.write("none.json", report(Format::json, {}));
    folder.write("usual.json", report(Format::json, {usual}));
    folder.write("all.sarif", report(Format::sarif, all_kinds, 1));
    folder.write("none.sarif", report(Format::sarif, {}));
    const harness::Result result = folder.shell(check_schemas);
    if (result.status == 99) SKIP_WITHOUT("python3 with jsonschema (Debian: python3-jsonschema)");
    EXPECT_EQ(result.out,
              "valid valid valid valid valid valid valid valid valid valid "
              "invalid valid invalid valid invalid valid valid invalid valid invalid "
              "invalid invalid \n"
              "valid valid invalid \n"
              "kind-mismatch kind-mismatch model.zlm\n"
              "plus-joined plus-joined m.zlm\n"
              "model-missing model-missing a%20b%2Cc%3A100%25.zlm\n"
              "usage usage .\n"
              "plus-joined plus-joined m.zlm\n"
              "plus-joined plus-joined a%FF\n"
              "plus-joined plus-joined file:///a%20b%23%3F.zlm\n"
              "plus-joined plus-joined %3Cstdin%3E\n"
              "https\n")
        << result.err;
}

// JUnit.

string junit(const std::vector<Finding>& findings, std::size_t hidden = 0) {
    JunitReport report;
    add_file(report, "clean.zlm");
    add_file(report, "model.zlm");
    for (const Finding& finding : findings) add_finding(report, finding);
    return junit_text(report, {2, 0, 0, hidden, 0});
}

TEST(Junit, HasASuiteForEachFile) {
    const Finding note{
        Severity::note, "plus-joined", "a < b & \"c\"", {"m\n\xFF", 2, 1, 1, 0, 0, ""}, {}};
    EXPECT_EQ(
        junit({whole_file, note}, 3),
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<testsuites name=\"orvex\" tests=\"5\" failures=\"1\" errors=\"0\">\n"
        "<testsuite name=\"clean.zlm\" tests=\"1\" failures=\"0\" errors=\"0\">\n"
        "<testcase name=\"no findings\" classname=\"clean.zlm\"/>\n"
        "</testsuite>\n"
        "<testsuite name=\"model.zlm\" tests=\"1\" failures=\"0\" errors=\"0\">\n"
        "<testcase name=\"no findings\" classname=\"model.zlm\"/>\n"
        "</testsuite>\n"
        "<testsuite name=\"a b,c:100%.zlm\" tests=\"1\" failures=\"1\" errors=\"0\">\n"
        "<testcase name=\"model-missing\" classname=\"a b,c:100%.zlm\" file=\"a b,c:100%.zlm\">"
        "<failure type=\"warning\" message=\"no model\">warning[model-missing]: no model\n"
        " --&gt; a b,c:100%.zlm</failure></testcase>\n"
        "</testsuite>\n"
        "<testsuite name=\"m \xEF\xBF\xBD\" tests=\"1\" failures=\"0\" errors=\"0\">\n"
        "<testcase name=\"plus-joined at 2:1\" classname=\"m \xEF\xBF\xBD\" "
        "file=\"m \xEF\xBF\xBD\" line=\"2\"><system-out>note[plus-joined]: a &lt; b &amp; "
        "&quot;c&quot;\n --&gt; m\xEF\xBF\xBD\xEF\xBF\xBD:2:1\n  |\n2 |\n  | "
        "^</system-out></testcase>\n"
        "</testsuite>\n"
        "<testsuite name=\"orvex\" tests=\"1\" failures=\"0\" errors=\"0\">\n"
        "<testcase name=\"more errors\" classname=\"orvex\"><system-out>" +
            string(more_errors) +
            "</system-out></testcase>\n"
            "</testsuite>\n"
            "</testsuites>\n");
}

// Each suite with its counts, as an XML parser reads them, and its number of tests.
const char* const read_junit = R"(for python in python3 /usr/bin/python3 none; do
"$python" -c 'import xml.etree' 2>/dev/null && break
done; [ $python != none ] || exit 99
"$python" -c 'import sys, xml.etree.ElementTree as tree
for path in sys.argv[1:]:
    for suite in tree.parse(path).getroot():
        print(suite.get("tests"), suite.get("failures"), len(suite.findall("testcase")),
              len(suite.findall("testcase/failure")), ascii(suite.get("name")))' all.xml none.xml)";

TEST(Junit, IsWellFormedWithAnyBytes) {
    string bytes;
    for (int byte = 1; byte < 256; ++byte) bytes += static_cast<char>(byte);
    std::vector<Finding> findings = all_kinds;
    findings.push_back(at(bytes + string(1, '\0') + "]]>\xEF\xBF\xBE\xED\xA0\x80", 40, 42, bytes));
    findings.back().message = bytes;
    const harness::Folder folder;
    folder.write("all.xml", junit(findings));
    folder.write("none.xml", junit({}));
    const harness::Result result = folder.shell(read_junit);
    if (result.status == 99) SKIP_WITHOUT("python3");
    EXPECT_EQ(result.err, "");
    const std::vector<string> lines = harness::lines_of(result.out);
    ASSERT_EQ(lines.size(), 11U) << result.out;
    EXPECT_EQ(lines[0], "1 0 1 0 'clean.zlm'");
    EXPECT_EQ(lines[1], "1 1 1 1 'model.zlm'");
    EXPECT_EQ(lines[4], "1 1 1 1 'orvex'");
    EXPECT_EQ(lines[5], "1 1 1 1 './a\\ufffd'");
    EXPECT_TRUE(lines[8].starts_with("1 1 1 1 '\\ufffd\\ufffd")) << lines[8];
    EXPECT_EQ(lines[10], "1 0 1 0 'model.zlm'");
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
        {"PRDO", keywords, "PROD"},    // a swap is one step, and 4 / 3 allows one
        {"PRODUC", keywords, "PROD"},  // 6 / 3 allows two
        {"PRODUCT", keywords, ""},     // 7 / 3 allows two, three are needed
        {"prod", keywords, ""},        // the word itself
        {"PZ", {"PX", "PY"}, ""},      // equally near
        {"PZ", {"PX", "px"}, "PX"},    // one name twice
        {"PZA", {"PXA", "PYA", "PZAB", "PZ"}, ""},
        {"ABCDEF", {"ABC", "ABCDXY", "ABCDEX"}, "ABCDEX"},  // nearer than two that are equally near
        {"P", {"PX", "Q"}, "PX"},                           // one step, even in a short word
        {"AB", {"ABCD", "ABC"}, "ABC"},                     // the nearer one, not the first
        {"CA", {"ABC"}, ""},                                // no change within a swap
        {"P", {""}, ""},
        {"Q", {"P"}, ""},  // nothing in common
    };
    for (const auto& row : rows)
        EXPECT_EQ(nearest(row.word, row.candidates), row.found) << row.word;
    EXPECT_EQ(nearest_word("prod", keywords), "PROD");
    EXPECT_EQ(nearest_word("PROD", keywords), "");
    EXPECT_EQ(nearest_word("Prdo", keywords), "PROD");
}

TEST(Spelling, FindsAKeywordByItsStart) {
    const std::map<string, string> rows = {{"PRODUCTION", "PROD"}, {"COMM", "COMMODITIES"},
                                           {"PRO", "PROD"},        {"COM", ""},
                                           {"SECTOS", "SECTORS"},  {"MODELS", ""}};
    for (const auto& [word, keyword] : rows) {
        const orvex::notation::Keyword* const meant = meant_keyword(word);
        EXPECT_EQ(meant == nullptr ? "" : string(meant->word), keyword) << word;
    }
}

// explain and codes.

TEST(Explain, ShowsEachEntry) {
    for (const MessageEntry& entry : message_index()) {
        const string text = explain(entry.code, false);
        EXPECT_EQ(text.find("```"), string::npos) << entry.code;
        const bool wrong = !entry.wrong.empty() ||
                           entry.text.find("```wrong-command") != string::npos ||
                           entry.text.find("```control") != string::npos;
        EXPECT_EQ(text.find("\n\nWrong") != string::npos, wrong) << entry.code;
        EXPECT_EQ(text.find("own words") == string::npos, entry.ends == "finding") << entry.code;
    }
}

TEST(Explain, SaysWhatIsOddAboutAnEntry) {
    const string unreachable = explain("constraint-colon-missing", false);
    EXPECT_NE(unreachable.find("\n\nNo model causes this message: `$CONSTRAINT` without a "),
              string::npos);
    const string own = explain("plus-joined", true);
    EXPECT_TRUE(own.starts_with("\x1b[1;33mwarning[plus-joined]\x1b[0m\x1b[1m: ")) << own;
    EXPECT_EQ(explain("no-such", true), "");
}

TEST(Codes, AreListedWithLevelAndMessage) {
    const string list = list_codes();
    for (const char* const line :
         {"\ncontrol-label-unknown +error +the control file has an unknown label\n",
          "\nlisting-cut +warning +the model uses names more than 10000 times: the symbol listing "
          "lacks <count> uses",
          "\nname-unused +warning +<kind> `<name>` is declared but "}) {
        EXPECT_TRUE(std::regex_search(list, std::regex(line))) << line;
    }
    EXPECT_EQ(std::count(list.begin(), list.end(), '\n'), std::ssize(message_index()));
}

}  // namespace
