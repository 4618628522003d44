// Edits: which fixes are made together, their results, and their diff. The fixes of findings, each
// made on the examples of docs/messages.md.
#include "fix_properties.h"
#include "frontend/findings/messages.h"
#include "frontend/fixes/choice.h"
#include "frontend/fixes/diff.h"
#include "frontend/fixes/revision.h"
#include "harness.h"

#include <gtest/gtest.h>
#include <map>
#include <random>
#include <regex>
#include <set>
#include <string>
#include <utility>
#include <vector>

using harness::Folder;
using namespace orvex::frontend;
using std::string;
using Edits = std::vector<Edit>;

namespace {

Finding with_fix(Confidence confidence, const Edits& edits) {
    Finding finding;
    finding.fix = Fix{confidence, edits};
    return finding;
}

string shown(const Edits& edits) {
    string text;
    for (const Edit& edit : edits) {
        text += std::to_string(edit.begin) + "-" + std::to_string(edit.end) + ":" + edit.text + " ";
    }
    return text;
}

TEST(Choice, TakesTheFirstOfThoseThatTouch) {
    const Confidence certain = Confidence::certain;
    struct {
        std::vector<Finding> findings;
        Confidence least;
        string edits;
    } const rows[] = {
        {{with_fix(certain, {{4, 6, "b"}}), with_fix(certain, {{1, 2, "a"}})},
         certain,
         "1-2:a 4-6:b "},
        // All edits of a fix or none; the third one does not touch the first.
        {{with_fix(certain, {{4, 6, "b"}}), with_fix(certain, {{1, 2, "a"}, {5, 7, "c"}}),
          with_fix(certain, {{0, 2, "d"}})},
         certain,
         "0-2:d 4-6:b "},
        // Nested, and at the same place; adjacent edits do not touch.
        {{with_fix(certain, {{3, 9, "b"}}), with_fix(certain, {{4, 5, "c"}})}, certain, "3-9:b "},
        {{with_fix(certain, {{4, 5, "c"}}), with_fix(certain, {{3, 9, "b"}})}, certain, "4-5:c "},
        {{with_fix(certain, {{3, 3, "x"}}), with_fix(certain, {{3, 3, "y"}})}, certain, "3-3:x "},
        {{with_fix(certain, {{3, 5, "x"}}), with_fix(certain, {{5, 5, "y"}})},
         certain,
         "3-5:x 5-5:y "},
        {{with_fix(Confidence::maybe, {{1, 1, "x"}}), with_fix(certain, {{5, 5, "y"}}), Finding()},
         certain,
         "5-5:y "},
        {{with_fix(Confidence::maybe, {{1, 1, "x"}}),
          with_fix(Confidence::placeholders, {{5, 5, "y"}})},
         Confidence::placeholders,
         "1-1:x "},
    };
    for (const auto& row : rows) {
        const Choice choice = choose_fixes(row.findings, row.least);
        EXPECT_EQ(shown(choice.edits), row.edits);
    }
}

// The text after two rounds of edits is the original with the edits that the revision returns.
TEST(Revision, JoinsEditsOfSeveralRounds) {
    struct {
        Edits first;
        Edits second;
        string text;
        string edits;
    } const rows[] = {
        {{}, {}, "0123456789", ""},
        {{{2, 4, "ab"}}, {{3, 5, "X"}}, "01aX56789", "2-5:aX "},
        {{{2, 2, "abcd"}}, {{3, 5, ""}}, "01ad23456789", "2-2:ad "},
        {{{2, 8, ""}}, {{2, 2, "new"}}, "01new89", "2-8:new "},
        {{{0, 1, ""}, {9, 10, "z"}}, {{0, 0, "A"}, {8, 9, "Z"}}, "A12345678Z", "0-1:A 9-10:Z "},
        {{{4, 4, "x"}}, {{4, 5, ""}}, "0123456789", ""},
    };
    for (const auto& row : rows) {
        Revision revision("0123456789");
        revision.apply(row.first);
        revision.apply(row.second);
        EXPECT_EQ(revision.text(), row.text);
        EXPECT_EQ(shown(revision.edits()), row.edits);
    }
}

TEST(Diff, IsTheUnifiedForm) {
    const string ten = "1\n2\n3\n4\n5\n6\n7\n8\n9\n10\n";
    struct {
        string text;
        Edits edits;
        string diff;
    } const rows[] = {
        {"a\nb\nc\nd\ne\n", {{4, 5, "C"}}, "@@ -1,5 +1,5 @@\n a\n b\n-c\n+C\n d\n e\n"},
        // Whole lines are inserted and removed without the lines around them.
        {"a\nb\n", {{2, 2, "new\n"}}, "@@ -1,2 +1,3 @@\n a\n+new\n b\n"},
        {"a\nb\n", {{0, 2, ""}}, "@@ -1,2 +1,1 @@\n-a\n b\n"},
        {"a\nb\n", {{4, 4, "c\n"}}, "@@ -1,2 +1,3 @@\n a\n b\n+c\n"},
        // A line that is broken, and lines that are joined; two edits on a line.
        {"ab cd\nx\n", {{2, 3, "\n  "}}, "@@ -1,2 +1,3 @@\n-ab cd\n+ab\n+  cd\n x\n"},
        {"ab\ncd\n", {{2, 3, " "}}, "@@ -1,2 +1,1 @@\n-ab\n-cd\n+ab cd\n"},
        {"abc\n", {{0, 1, "A"}, {2, 3, "C"}}, "@@ -1,1 +1,1 @@\n-abc\n+AbC\n"},
        // Two hunks; the first moves the second.
        {ten,
         {{0, 0, "0\n"}, {18, 20, "ten"}},
         "@@ -1,3 +1,4 @@\n+0\n 1\n 2\n 3\n@@ -7,4 +8,4 @@\n 7\n 8\n 9\n-10\n+ten\n"},
        // A last line without an end: it stays like that, gets one, or is new.
        {"a\nb",
         {{2, 3, "B"}},
         "@@ -1,2 +1,2 @@\n a\n-b\n\\ No newline at end of file\n+B\n"
         "\\ No newline at end of file\n"},
        {"a", {{0, 0, "x\n"}}, "@@ -1,1 +1,2 @@\n+x\n a\n\\ No newline at end of file\n"},
        {"a", {{1, 1, "\nb\n"}}, "@@ -1,1 +1,2 @@\n-a\n\\ No newline at end of file\n+a\n+b\n"},
        {"a\n", {{2, 2, "b"}}, "@@ -1,1 +1,2 @@\n a\n+b\n\\ No newline at end of file\n"},
        {"", {{0, 0, "a\n"}}, "@@ -0,0 +1,1 @@\n+a\n"},
        {"a\r\nb\r\n", {{3, 3, "n\r\n"}}, "@@ -1,2 +1,3 @@\n a\r\n+n\r\n b\r\n"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(unified_diff("m", row.text, row.edits), "--- m\n+++ m\n" + row.diff);
        const Folder folder;
        folder.write("m", row.text);
        folder.write("diff", unified_diff("m", row.text, row.edits));
        const harness::Result patched = folder.shell("patch -s --binary m diff");
        EXPECT_EQ(folder.read("m"), edited(row.text, row.edits)) << row.diff << patched.out;
    }
    EXPECT_EQ(unified_diff("m", "a\n", {}), "");
}

TEST(Diff, NamesAnyPath) {
    const Edits edits = {{0, 0, "a\n"}};
    for (const string path : {"a b.zlm", "sub/x.zlm", "a\nb", "q\"\\.zlm", "\xC3\xA9\xFF"}) {
        const Folder folder;
        folder.shell("mkdir sub");
        folder.write(path, "old\n");
        folder.write("diff", unified_diff(path, "old\n", edits));
        EXPECT_EQ(folder.shell("patch -s -p0 <diff").out, "");
        EXPECT_EQ(folder.read(path), "a\nold\n");
    }
}

// The fixes of findings.

// The codes of the findings on a file, and those that have a fix of the requested confidence.
struct Codes {
    std::set<string> all;
    std::set<string> fixable;
};

// The codes for all files, by file name.
std::map<string, Codes> codes(const Folder& folder, const string& confidence) {
    static const std::regex form("\"code\":\"([a-z-]+)\".*?\"path\":\"([^\"]+)\"");
    std::map<string, Codes> found;
    for (const string& line :
         harness::lines_of(folder.shell("\"$ORVEX\" check --format json *.zlm").out)) {
        std::smatch parts;
        if (!std::regex_search(line, parts, form)) continue;
        Codes& codes = found[parts[2]];
        codes.all.insert(parts[1]);
        if (line.find("\"confidence\":\"" + confidence + "\"") != string::npos)
            codes.fixable.insert(parts[1]);
    }
    return found;
}

// Makes the fixes of all examples in the index. Returns how many have one for their own code.
int fix_examples(const string& confidence, const string& options) {
    const Folder folder;
    for (const MessageEntry& entry : message_index())
        if (!entry.wrong.empty()) folder.write(entry.code + ".zlm", entry.wrong);
    std::map<string, Codes> before = codes(folder, confidence);
    folder.shell("\"$ORVEX\" check " + options + " *.zlm");
    std::map<string, Codes> after = codes(folder, confidence);
    int count = 0;
    for (const MessageEntry& entry : message_index()) {
        const string file = entry.code + ".zlm";
        if (!before[file].fixable.contains(entry.code)) continue;
        ++count;
        for (const string& code : after[file].all) {
            EXPECT_TRUE(before[file].all.contains(code)) << code << " comes of fixing " << file;
            EXPECT_NE(code, entry.code) << "is still there:\n" << folder.read(file);
        }
    }
    return count;
}

TEST(Fixes, RemoveTheFindingsOfAllExamples) {
    EXPECT_GE(fix_examples("machine-applicable", "--fix"), 8);
    EXPECT_GE(fix_examples("maybe-incorrect", "--fix --unsafe-fixes"), 5);
}

// A model without findings, except in the names and rows given: the commodities are on line 5, and
// the rows of Y begin on line 9.
string model(const string& rows, const string& names = "  PY  PL\n") {
    return "$MODEL:M\n$SECTORS:\n  Y\n$COMMODITIES:\n" + names +
           "$CONSUMERS:\n  RA\n$PROD:Y  S:1\n" + rows +
           "$DEMAND:RA\n  D:PY\n  E:PL  Q:1\n$OFFTEXT\n";
}

string replaced(string text, const string& old, const string& wanted) {
    for (std::size_t at = text.find(old); at != string::npos;
         at = text.find(old, at + wanted.size()))
        text.replace(at, old.size(), wanted);
    return text;
}

// How applying the shown diff with `patch` fails to give the wanted text; empty if it does not.
string fault_of_diff(const string& text, const string& options, const string& wanted) {
    const Folder folder;
    folder.write("m.zlm", text);
    folder.shell("\"$ORVEX\" check -q --diff " + options + " m.zlm 2>/dev/null >diff");
    if (folder.read("m.zlm") != text) return "the file has been changed";
    folder.shell("patch -s --binary m.zlm diff");
    return folder.read("m.zlm") == wanted ? "" : "wrong:\n" + folder.read("diff");
}

struct FixRow {
    string rows, fixed;
    bool is_unsafe = false;
};

TEST(Fixes, MakeTheTextThatWasMeant) {
    const string long_value = "Q:(" + string(236, 'A') + ")";
    const FixRow rows[] = {
        {"  O:PY  Q:1\n  I:PL  Q:1\n", "  O:PY  Q:1\n  I:PL  Q:1\n"},
        // Several edits on a line, one of them in the next round.
        {"  O:PY  P:1  P:1  I:PL  I:PL  Q:1 ! two\n", "  O:PY  P:1\n  I:PL\n  I:PL  Q:1 ! two\n"},
        {"  O:PY  P:1\n+ P:1\n  I:PL  Q:1\n+ Q:1  P:2\n", "  O:PY  P:1\n  I:PL  Q:1\n+ P:2\n"},
        // Different values, and a line with a comment, stay.
        {"  O:PY  P:1  P:2\n  I:PL  Q:1\n+ Q:1 ! so\n",
         "  O:PY  P:1  P:2\n  I:PL  Q:1\n+ Q:1 ! so\n"},
        {"  O:PY\n  + A:RA\n+T:1\n\t+\tP:1\n  I:PL\n",
         "  O:PY\n+   A:RA\n+ T:1\n+\t \tP:1\n  I:PL\n"},
        // A "+" before the label of an entry may be another mistake.
        {"  O:PY\n+I:PL  Q:1\n  I:PL\n", "  O:PY\n+I:PL  Q:1\n  I:PL\n"},
        {"  O:PY\n  I:pll  Q:1\n  I:Pll\n", "  O:PY\n  I:pl  Q:1\n  I:PL\n", true},
        {"  O:PY  " + long_value + "  P:1.25\n  I:PL\n",
         "  O:PY  " + long_value + "\n+ P:1.25\n  I:PL\n", true},
        {"  O:PY\n  I:PL\n $PROD:Z\n  O:PY\n  I:PL\n", "  O:PY\n  I:PL\n$PROD:Z\n  O:PY\n  I:PL\n"},
        // Values without their labels, and with wrong ones.
        {"  O:PY  TAX:0.1  A:RA\n  I:PL 5\n", "  O:PY  T:0.1  A:RA\n  I:PL Q:5\n", true},
        {"  O:PY  -1\n  I:PL p=1.5  Q:2\n$PROD:Z  0.5\n  O:PY\n",
         "  O:PY  Q:-1\n  I:PL P:1.5  Q:2\n$PROD:Z  S:0.5\n  O:PY\n", true},
    };
    for (const FixRow& row : rows) {
        const string options = row.is_unsafe ? "--fix --unsafe-fixes" : "--fix";
        for (const string line_end : {"\n", "\r\n"}) {
            const Folder folder;
            const string text = replaced(model(row.rows), "\n", line_end);
            const string wanted = replaced(model(row.fixed), "\n", line_end);
            folder.write("m.zlm", text);
            folder.shell("\"$ORVEX\" check " + options + " m.zlm");
            EXPECT_EQ(folder.read("m.zlm"), wanted);
            EXPECT_EQ(folder
                          .shell("printf '%s' '" + text + "' | \"$ORVEX\" check -q " + options +
                                 " - 2>/dev/null")
                          .out,
                      wanted);
            EXPECT_EQ(fault_of_diff(text, options, wanted), "");
        }
    }
}

TEST(Fixes, MoveAndRemoveNames) {
    const std::pair<string, string> rows[] = {
        {"  PY  PL  PY\n", "  PY  PL\n"},
        {"  PY  PL\n  PY\n", "  PY  PL\n"},
        {"  PY  PL\n  PY ! again\n", "  PY  PL\n  PY ! again\n"},
        {"  PY\n  PY  PL ! both\n", "  PY\n  PL ! both\n"},
        {"  PY\n  PL  Wage\n", "  PY\n  PL  ! Wage\n"},
    };
    for (const auto& [names, fixed] : rows) {
        const string rest = "  O:PY\n  I:PL\n";
        EXPECT_EQ(fault_of_diff(model(rest, names), "--unsafe-fixes", model(rest, fixed)), "");
    }
    const string consumers = "$CONSUMERS:\n  RA\n";
    const string text = model("  O:PY\n  I:PL\n");
    EXPECT_EQ(fault_of_diff(replaced(text, consumers, "$CONSUMERS: RA ! us\n"), "",
                            replaced(text, consumers, "$CONSUMERS:\n  RA ! us\n")),
              "");
    // Words that are not used as names may be a comment.
    EXPECT_EQ(fault_of_diff(replaced(text, consumers, "$CONSUMERS: all of us\n  RA\n"), "",
                            replaced(text, consumers, "$CONSUMERS: all of us\n  RA\n")),
              "");
}

// A text with some bytes removed, doubled or inserted.
string damaged(string text, std::mt19937& random) {
    const string marks = "+$*!:, (\t\r\n\"'\xE2";
    for (int edits = 0; edits < 4 && !text.empty(); ++edits) {
        const std::size_t at = random() % text.size();
        const std::size_t size = 1 + random() % 12;
        switch (random() % 3) {
        case 0: text.erase(at, size); break;
        case 1: text.insert(at, text.substr(random() % text.size(), size)); break;
        default: text[at] = marks[random() % marks.size()];
        }
    }
    return text;
}

TEST(Fixes, KeepTheRestOfDamagedModels) {
    EXPECT_EQ(fix_properties::broken(""), "");
    std::mt19937 random(1);
    for (const MessageEntry& entry : message_index()) {
        EXPECT_EQ(fix_properties::broken(entry.wrong), "") << entry.wrong;
        for (int i = 0; i < 20; ++i) {
            const string text = damaged(entry.wrong, random);
            EXPECT_EQ(fix_properties::broken(text), "") << text;
        }
    }
}

// Files.

struct Command {
    string command;  // m.zlm has a fault that can be fixed, n.zlm has none
    string out;      // its output and the summary line
};

TEST(Files, KeepWhatIsNotEdited) {
    // A folder whose path is so long that m.zlm fits in it, but not a new file.
    const string deep =
        "x() { printf 'x%.0s' $(seq $1); }; p=.; while [ ${#p} -lt 3950 ]; do p=$p/$(x 100); done; "
        "p=$p/$(x $((4084 - ${#p}))); mkdir -p $p; cp m.zlm $p; ";
    const Command commands[] = {
        {"chmod 640 m.zlm; ln -s m.zlm l.zlm; orvex --fix l.zlm; stat -c %a m.zlm; readlink l.zlm; "
         "grep -c '^+ P' m.zlm",
         "fixed 1 finding in 1 file\nchecked 1 file: no errors, no warnings\n640\nm.zlm\n1\n"},
        {"touch -t 200001010000 n.zlm; orvex --fix n.zlm; find n.zlm -newermt 2001-01-01",
         "checked 1 file: no errors, no warnings\n"},
        // A name for which the path has no room: the new file cannot be made.
        {deep + "orvex --fix $p/m.zlm; echo $?; cmp m.zlm $p/m.zlm; ls -A $p",
         "1 error, 1 warning in 1 file\n2\nm.zlm\n"},

        {"cat m.zlm | orvex --fix /dev/stdin; echo $?", "1 error, 1 warning in 1 file\n2\n"},
        {"orvex --diff m.zlm n.zlm; echo $?; orvex --diff n.zlm; echo $?; cmp m.zlm old",
         "would fix 1 finding in 1 file\n1 warning in 2 files\n1\n"
         "checked 1 file: no errors, no warnings\n0\n"},
        // A model that only a fix reveals has an error.
        {"sed 's/^.MODEL:M/ &N/; s/PROD/XQWZ/' m.zlm | cat n.zlm - >w.zlm; cp w.zlm v; orvex --fix "
         "--unsafe-fixes "
         "w.zlm; cmp w.zlm v",
         "1 file left unchanged: there would be more errors\n1 warning in 1 file\n"},
        {"sed 's/^.MODEL:M/ &N/' m.zlm | cat n.zlm - >w.zlm; orvex --fix w.zlm; orvex --diff w.zlm",
         "1 more needs `--unsafe-fixes`\n1 warning in 1 file\n"
         "1 more needs `--unsafe-fixes`\n1 warning in 1 file\n"},
        {"orvex --add-allow --diff m.zlm; orvex --add-allow m.zlm; orvex m.zlm; "
         "grep -n allow m.zlm",
         "would allow 1 finding in 1 file\n1 warning in 1 file\nallowed 1 finding in 1 file\n"
         "checked 1 file: no errors, no warnings\nchecked 1 file: no errors, no warnings\n"
         "9:* orvex: allow plus-joined\n"},
    };
    for (const Command& row : commands) {
        const Folder folder;
        folder.write("m.zlm", model("  O:PY\n+P:1\n  I:PL\n"));
        folder.write("old", model("  O:PY\n+P:1\n  I:PL\n"));
        folder.write("n.zlm", model("  O:PY\n  I:PL\n"));
        const harness::Result result = folder.shell(
            "orvex() { \"$ORVEX\" check --format short \"$@\" >/dev/null 2>err; status=$?; "
            "grep -v ' \\[[a-z-]*\\]$' err; rm err; return $status; }\n" +
            row.command);
        EXPECT_EQ(result.out, row.out) << row.command << result.err;
    }
}

// A comment above each record with warnings, with the line ends of the file, and nothing else.
TEST(Allow, IsAddedToOldFiles) {
    const string rows = "  O:PY  P:1\n+P:1\n* so\n\n+ P:3\n  I:PL  Q:\n";
    const string allowed = "* orvex: allow plus-joined, label-repeated\n" +
                           replaced(rows, "  I", "* orvex: allow value-missing\n  I");
    // Once the findings are corrected, the comments are removed.
    const string corrected = "* orvex: allow plus-joined\n  O:PY  P:1\n+P:1\n* so\n\n  I:PL\n";
    for (const string line_end : {"\n", "\r\n"}) {
        const Folder folder;
        folder.write("m.zlm", replaced(model(rows), "\n", line_end));
        const string told = folder.shell("\"$ORVEX\" check --add-allow m.zlm").err;
        EXPECT_NE(told.find("allowed 3 findings in 1 file\n"), string::npos) << told;
        EXPECT_EQ(folder.read("m.zlm"), replaced(model(allowed), "\n", line_end));
        folder.shell(
            "sed -i 's/  Q:\\(\\r*\\)$/\\1/; /^+ P/d' m.zlm; \"$ORVEX\" check --fix m.zlm");
        EXPECT_EQ(folder.read("m.zlm"), replaced(model(corrected), "\n", line_end));
    }
    const Folder folder;
    folder.write("m.zlm", "TEXT\n");
    folder.shell("\"$ORVEX\" check --add-allow m.zlm");
    EXPECT_EQ(folder.read("m.zlm"), "* orvex: allow-file model-missing\nTEXT\n");
}

}  // namespace
