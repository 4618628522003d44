// What no whole run can test in single steps: texts and their operations, the splitter, the file
// units.
#include "codegen/writer.h"
#include "harness.h"
#include "input/fields.h"
#include "input/textops.h"
#include "preproc.h"
#include "stop.h"
#include "symbols/listing.h"
#include "text/numbers.h"
#include "unit.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/syscall.h>
#include <unistd.h>

using namespace orvex;

namespace {

// The system call whose next use in this program fails.
std::string failing;
bool fails(const char* call) {
    if (failing != call) return false;
    failing.clear();
    errno = EIO;
    return true;
}

}  // namespace

int rename(const char* from, const char* to) noexcept {
    return fails("rename") ? -1 : renameat(AT_FDCWD, from, AT_FDCWD, to);
}
int unlink(const char* path) noexcept { return fails("unlink") ? -1 : unlinkat(AT_FDCWD, path, 0); }
off_t lseek(int file, off_t offset, int whence) noexcept {
    return fails("lseek") ? -1 : syscall(SYS_lseek, file, offset, whence);
}
int ftruncate(int file, off_t length) noexcept {
    return fails("ftruncate") ? -1 : static_cast<int>(syscall(SYS_ftruncate, file, length));
}

namespace {

std::string times(int count, char c) { return std::string(static_cast<std::size_t>(count), c); }

TEST(Text, IsCutPaddedAndAppendedTo) {
    Text<5> text = "abcd  e";
    EXPECT_EQ(whole(text.padded()), "abcd ");
    text = text.from(2);  // a part of itself
    text.append("  ");
    text.append(text.slice(2, 3));
    text.append("x");
    EXPECT_EQ(text.view(), "bcdcd");
    text.blank_from(2);
    EXPECT_TRUE(text.has_room_for("1234") && !text.has_room_for("12345"));
    for (int i = 0; i < 3; ++i) text.append(text.view());
    EXPECT_EQ(text.slice(4, 99), "bb");
    EXPECT_EQ(Text<5>("abcde").slice(2, 3), "bc");
    EXPECT_EQ(joined<6>({"a ", "", " b", "cdef"}).view(), "a  bcd");
    EXPECT_EQ(joined<3>({"a ", " b", "c"}).view(), "a");
    Text<6> same = "same";
    const Text<6>& itself = same;
    same = itself;
    EXPECT_EQ(same.view(), "same");
}

TEST(Text, IsComparedAsIfPaddedByUnsignedCodes) {
    const View rows[][2] = {{{"a\0", 2}, "a"}, {"a\t", "a"},     {"ab\x1f", "ab "}, {"a", "a\""},
                            {"X", "X1"},       {"X1", "XA"},     {"Z", "_"},        {"", "\x80"},
                            {" a", "a"},       {"\x7f", "\x80"}, {"ab ", "ab\xff"}};
    for (const auto& [less, more] : rows) {
        EXPECT_LT(compare_padded(less, more), 0) << less << " and " << more;
        EXPECT_GT(compare_padded(more, less), 0) << more << " and " << less;
    }
    EXPECT_EQ(compare_padded("ab", "ab   "), 0);
    EXPECT_TRUE(Text<2>("ab") == View("ab  ") && Text<2>("ab") == Text<9>("ab  "));
    EXPECT_FALSE(Text<2>("ab") == View("ab\0", 3));
}

TEST(Text, HoldsNumbersInFixedWidths) {
    const std::tuple<int, View, View> rows[] = {
        {0, "    0", "000"},    {7, "    7", "007"},     {999, "  999", "999"},
        {1000, " 1000", "***"}, {99999, "99999", "***"}, {100000, "*****", "***"},
        {-1, "   -1", "***"},   {-9999, "-9999", "***"}, {-10000, "*****", "***"}};
    for (const auto& [value, blanks, zeros] : rows) {
        EXPECT_EQ(right_aligned<5>(value).view(), blanks);
        EXPECT_EQ(zero_filled<3>(value).view(), zeros);
    }
    EXPECT_EQ(decimal(-2147483647 - 1).view(), "-2147483648");
}

TEST(TextOperations, ChangeTheirBytesOnly) {
    const std::string last = times(79, ' ') + "A";
    const std::string tabs = times(79, '\t') + "A";
    const std::string two = times(78, ' ') + "AB";
    using Row = std::tuple<void (*)(Text<80>&), View, View>;
    const Row rows[] = {{lftjst, two, "AB"},
                        {lftjst, last, last},
                        {lftjst, tabs, tabs},
                        {lftjst, "\t \tA", "A"},
                        {lftjst, " A\tB", "A\tB"},
                        {upper, "@az{\xe4", "@AZ{\xe4"},
                        {lower, "@AZ[\xc4", "@az[\xc4"},
                        {strip, "a\r\tb\r", "a \tb"},
                        {stripup, "a\r\tb\r", "A \tB"},
                        {notab, "\ta\r\t", " a\r"}};
    for (const auto& [apply, before, after] : rows) {
        Text<80> text = before;
        apply(text);
        EXPECT_EQ(text.view(), after) << "from " << testing::PrintToString(before);
    }
    struct {
        Text<8> full = "no blank";
        Text<8> next = "next";
    } texts;
    upper(texts.full);
    EXPECT_EQ(texts.full.view(), "NO BLANK");
    EXPECT_EQ(texts.next.view(), "next");
    EXPECT_EQ(firstnonblank(Text<80>("\tA")), 1);
    EXPECT_EQ(firstnonblank(Text<80>(last)), 80);
    EXPECT_EQ(firstnonblank(Text<80>("")), 0);
}

// The rows of a data file: routine, record, and the label, value and record that remain, or the
// message.
TEST(Splitter, CutsTheLeftmostFieldOrEntry) {
    std::istringstream rows(harness::read_file(CASES_DIR "/splitter.rows"));
    std::string row;
    std::getline(rows, row);
    while (std::getline(rows, row)) {
        const auto bar = row.find('|', row.find('|') + 1);
        record = row.substr(7, bar - 7);
        label = row.substr(0, 6);
        std::string result;
        try {
            label == "getfld" ? getfld(record, label, field) : freefd();
            for (const View cell : {label.view(), field.view(), record.view()})
                result.append("|").append(cell);
        } catch (const ErrorStop& stop) {
            result.append("|").append(stop.message);
        }
        EXPECT_EQ(result, row.substr(bar)) << row;
    }
}

// Lines of up to 700 bytes, with trailing blanks and NUL bytes, in total larger than any buffer.
std::vector<std::string> many_lines() {
    std::vector<std::string> lines = {"", " ", times(longest_line, 'x')};
    for (int i = 0; i < 2000; ++i) {
        lines.push_back(times(i % 700 + 1, i % 3 == 0 ? ' ' : '\0'));
        lines.back().front() = '#';
    }
    return lines;
}

std::vector<std::string> lines_of(int unit_number) {
    std::vector<std::string> lines;
    for (View line; read_line(unit_number, line);) lines.emplace_back(line);
    return lines;
}

TEST(References, AreTheNewestInTheirOrder) {
    symref[1] = {10, 0};
    symref[2] = {20, 1};
    symref[3] = {30, 2};
    symloc[1] = 3;
    std::array<int, 4> list = {};
    EXPECT_EQ(getref(1, list), 3);
    EXPECT_EQ(list, (std::array{10, 20, 30, 30}));
    EXPECT_EQ(getref(1, std::span(list).first(2)), 2);
    EXPECT_EQ(list, (std::array{20, 30, 30, 30}));
}

// Lines in a scratch file are cut, trimmed and never empty.
std::string scratch_form(const std::string& line) {
    const std::string text(trimmed(View(line).substr(0, 255)));
    return text.empty() ? " " : text;
}

TEST(Units, GiveBackTheLinesThatTheyGot) {
    const harness::Folder folder;
    open_scratch(klst);
    ASSERT_TRUE(open_output(kgen, folder.path() + "/lines"));
    ASSERT_TRUE(open_output(khdr, folder.path() + "/copied"));
    for (const std::string& line : many_lines())
        for (const int unit_number : {klst, kgen})
            write_line(unit_number, {View(line).substr(0, 1), "", line.substr(!line.empty())});
    filcpy(klst, khdr);
    close_all_units();
    ASSERT_TRUE(open_input(kinp, folder.path() + "/lines"));
    ASSERT_TRUE(open_input(kctl, folder.path() + "/copied"));
    EXPECT_TRUE(lines_of(kinp) == many_lines());
    auto copied = many_lines();
    std::transform(copied.begin(), copied.end(), copied.begin(), scratch_form);
    EXPECT_TRUE(lines_of(kctl) == copied);
    close_all_units();
}

// The output's buffer fills up in the middle of a text that is copied to it from memory.
TEST(Units, CopyOverTheEndOfTheBuffer) {
    const harness::Folder folder;
    ASSERT_TRUE(open_output(khdr, folder.path() + "/copied"));
    open_scratch(klst);
    std::string own;
    std::string listed;
    for (int i = 0; i < 1000; ++i) {
        const std::string line = std::to_string(i) + times(200, 'x');
        write_line(khdr, {"own ", line});
        write_line(klst, {line});
        own += "own " + line + "\n";
        listed += line + "\n";
    }
    filcpy(klst, khdr);
    close_all_units();
    EXPECT_TRUE(folder.read("copied") == own + listed);
}

TEST(Units, ReadALineLongerThanTheBufferAndOneWithoutLineEnd) {
    const harness::Folder folder;
    folder.write("lines", times(600'000, 'x') + "\nnext\n" + times(300'000, 'y') + "\n\nlast");
    ASSERT_TRUE(open_input(kinp, folder.path() + "/lines"));
    auto lines = lines_of(kinp);
    for (std::string& line : lines) line = line.substr(0, longest_line);
    const std::vector<std::string> read = {times(longest_line, 'x'), "next",
                                           times(longest_line, 'y'), "", "last"};
    EXPECT_TRUE(lines == read && !line_was_ended(kinp));
    close_all_units();
}

TEST(Units, CutALineForTheConsole) {
    testing::internal::CaptureStderr();
    write_standard_error({"a", times(longest_line - 2, 'x'), "bc", "d"});
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "a" + times(longest_line - 2, 'x') + "b\n");
}

// Neither the old text nor half of the new one ever has the final name.
TEST(Units, GiveAFileItsNameWhenItIsClosed) {
    const harness::Folder folder;
    const std::string name = folder.path() + "/file";
    for (const bool restarted : {false, true}) {
        folder.write("file", "old\n");
        ASSERT_TRUE(open_output(khdr, name));
        for (const std::string& line : many_lines()) write_line(khdr, {line});
        EXPECT_EQ(folder.read("file"), "(absent)");
        if (restarted) restart_output(khdr);
        write_line(khdr, {"new"});
        close_unit(khdr);
        EXPECT_TRUE(folder.read("file").ends_with("\nnew\n") != restarted);
        EXPECT_EQ(folder.read("file") == "new\n", restarted);
        EXPECT_EQ(folder.files().size(), 1);
    }
    EXPECT_FALSE(open_output(khdr, folder.path()) || open_input(kinp, folder.path()));
    EXPECT_FALSE(file_exists(folder.path()) || file_exists("  ") || file_exists(View("a\0", 2)));
}

// An old file that cannot be removed is overwritten; a new one that cannot be finished does not
// exist.
TEST(Units, KeepAFileThatFailsFromItsName) {
    for (const auto& [call, left] :
         {std::pair("unlink", "new\n"), std::pair("rename", "(absent)"),
          std::pair("ftruncate", "(absent)"), std::pair("lseek", "(absent)")}) {
        const harness::Folder folder;
        folder.write("file", "old\n");
        failing = call;
        open_scratch(klst);
        for (const std::string& line : many_lines()) write_line(klst, {line});
        ASSERT_TRUE(open_output(khdr, folder.path() + "/file"));
        depend_on(khdr, {klst});
        filcpy(klst, khdr);
        restart_output(khdr);
        write_line(khdr, {"new"});
        testing::internal::CaptureStderr();
        close_unit(khdr);
        const std::string said = testing::internal::GetCapturedStderr();
        EXPECT_EQ(said.ends_with("/file: Input/output error\n"), std::string(call) != "unlink")
            << call;
        EXPECT_EQ(folder.read("file"), left) << call;
        EXPECT_EQ(folder.files().size(), left[0] == '(' ? 0 : 1) << call;
    }
}

TEST(Levels, AreClosedOnlyWhereOneIsOpen) {
    nloop = 0;
    closel(Level::loop);
    EXPECT_EQ(nloop, 0);
}

}  // namespace
