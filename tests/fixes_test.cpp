// Edits: which fixes are made together, what comes of them, and their diff. The fixes of findings,
// each made on the examples of docs/messages.md.
#include "frontend/fixes/choice.h"
#include "frontend/fixes/diff.h"
#include "frontend/fixes/revision.h"
#include "harness.h"

#include <gtest/gtest.h>
#include <string>
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
        // All edits of a fix, or none; the third one is apart from the first.
        {{with_fix(certain, {{4, 6, "b"}}), with_fix(certain, {{1, 2, "a"}, {5, 7, "c"}}),
          with_fix(certain, {{0, 2, "d"}})},
         certain,
         "0-2:d 4-6:b "},
        // Within one another, at the same place; side by side is apart.
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

// The text after two rounds of edits is the original with the edits that the revision names.
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
        // Whole lines are put in and taken out without those around them.
        {"a\nb\n", {{2, 2, "new\n"}}, "@@ -1,2 +1,3 @@\n a\n+new\n b\n"},
        {"a\nb\n", {{0, 2, ""}}, "@@ -1,2 +1,1 @@\n-a\n b\n"},
        {"a\nb\n", {{4, 4, "c\n"}}, "@@ -1,2 +1,3 @@\n a\n b\n+c\n"},
        // A line that is broken, and lines that are joined; two edits in a line.
        {"ab cd\nx\n", {{2, 3, "\n  "}}, "@@ -1,2 +1,3 @@\n-ab cd\n+ab\n+  cd\n x\n"},
        {"ab\ncd\n", {{2, 3, " "}}, "@@ -1,2 +1,1 @@\n-ab\n-cd\n+ab cd\n"},
        {"abc\n", {{0, 1, "A"}, {2, 3, "C"}}, "@@ -1,1 +1,1 @@\n-abc\n+AbC\n"},
        // Two hunks, the second of which is moved by the first.
        {ten,
         {{0, 0, "0\n"}, {18, 20, "ten"}},
         "@@ -1,3 +1,4 @@\n+0\n 1\n 2\n 3\n@@ -7,4 +8,4 @@\n 7\n 8\n 9\n-10\n+ten\n"},
        // A last line without an end, which stays so, gets one, or is new.
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

}  // namespace
