// Whole runs: the cases of tests/cases, the examples, and several runs in one process.
//
// A case file begins with the reason why it is there. What follows are sections, each opened by one
// of these lines and read in their order:
//
//     == given NAME     a file that stands in the folder before the run
//     == setup          shell commands before the run
//     == run            shell commands that make the run; without it, "$ORVEXPP" run.ctl
//     == status N       the exit status; without it, 0
//     == out, == err    all that is written on the two streams; without them, nothing
//     == file NAME      a whole file
//     == starts NAME, == ends NAME, == within NAME
//                       the first lines of a file, its last, or lines that follow each other in it
//
// A file that the run makes and no section names is a fault. In the text of a section "·" is a
// blank, \t, \r and \0 are these bytes, \(x*9) is nine times x, and a "\" at the end of a line
// takes away its line end. A new case is found when this file's test is built again.
#include "driver/run.h"

#include "harness.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <set>
#include <sstream>
#include <stdexcept>

namespace fs = std::filesystem;
using harness::Folder;

namespace {

using Lines = std::vector<std::string>;

struct Section {
    std::string kind;
    std::string name;
    std::string text;
    std::string origin;  // file that holds the section
    int line = 0;        // its number there
};

[[noreturn]] void malformed(const std::string& origin, int line, const std::string& fault) {
    throw std::runtime_error(origin + ":" + std::to_string(line) + ": " + fault);
}

Lines lines_of(const std::string& text) {
    Lines lines;
    for (std::size_t start = 0; start < text.size(); start += lines.back().size()) {
        const auto end = text.find('\n', start);
        lines.push_back(text.substr(start, end == std::string::npos ? end : end + 1 - start));
    }
    return lines;
}

std::string replaced(std::string text, const std::string& mark, const std::string& meaning) {
    for (auto at = text.find(mark); at != std::string::npos; at = text.find(mark, at + 1))
        text.replace(at, mark.size(), meaning);
    return text;
}

// A line of a section as it is meant. A "\" that means nothing is left in it.
std::string expanded(std::string line) {
    for (auto at = line.find("\\("); at != std::string::npos; at = line.find("\\(")) {
        const auto star = line.find('*', at);
        const auto end = line.find(')', star);
        std::string copies;
        for (int i = std::stoi(line.substr(star + 1, end - star - 1)); i > 0; --i)
            copies += line.substr(at + 2, star - at - 2);
        line.replace(at, end + 1 - at, copies);
    }
    line = replaced(replaced(line, "·", " "), "\\t", "\t");
    line = replaced(replaced(line, "\\r", "\r"), "\\0", std::string(1, '\0'));
    return replaced(line, "\\\n", "");
}

Section opened_section(const std::string& origin, int number, const std::string& line) {
    static const std::set<std::string> plain = {"setup", "run", "out", "err"};
    static const std::set<std::string> named = {"given", "file",   "starts",
                                                "ends",  "within", "status"};
    Section section = {"", "", "", origin, number};
    std::istringstream(line.substr(3)) >> section.kind >> section.name;
    if (!(section.name.empty() ? plain : named).contains(section.kind))
        malformed(origin, number, "no such section");
    return section;
}

std::vector<Section> read_case(const std::string& path) {
    std::vector<Section> sections;
    const Lines lines = lines_of(harness::read_file(path));
    int number = 0;
    for (const std::string& line : lines) {
        ++number;
        if (line.starts_with("== ")) {
            sections.push_back(opened_section(path, number, line));
        } else if (!sections.empty()) {
            sections.back().text += expanded(line);
            if (sections.back().text.find('\\') != std::string::npos)
                malformed(path, number, R"(a "\" without meaning)");
        }
    }
    if (lines.empty() || lines.front().starts_with("== ")) malformed(path, 1, "no reason given");
    if (sections.empty()) malformed(path, number, "no section");
    return sections;
}

// How many of the wanted lines stand at an offset.
std::size_t matching(const Lines& want, const Lines& got, std::size_t offset) {
    std::size_t count = 0;
    while (count < want.size() && offset + count < got.size() && got[offset + count] == want[count])
        ++count;
    return count;
}

std::size_t best_offset(const std::string& kind, const Lines& want, const Lines& got) {
    if (kind == "ends") return got.size() - std::min(got.size(), want.size());
    std::size_t best = 0;
    for (std::size_t offset = 0; kind == "within" && offset < got.size(); ++offset)
        if (matching(want, got, offset) > matching(want, got, best)) best = offset;
    return best;
}

void expect_text(const Section& section, const std::string& text) {
    const Lines want = lines_of(section.text);
    const Lines got = lines_of(text);
    const auto offset = best_offset(section.kind, want, got);
    const auto same = matching(want, got, offset);
    const bool open_end = section.kind == "starts" || section.kind == "within";
    if (want.empty() && open_end) malformed(section.origin, section.line, "nothing to find");
    if (same == want.size() && (open_end || offset + same == got.size())) return;
    const auto shown = [](const Lines& lines, std::size_t at) {
        return at < lines.size() ? testing::PrintToString(lines[at]) : "the end";
    };
    ADD_FAILURE_AT(section.origin.c_str(), section.line)
        << section.kind << " " << section.name << ", line " << offset + same + 1 << "\n  expected "
        << shown(want, same) << "\n  got      " << shown(got, offset + same);
}

// The names of the files with this ending, or of the folders, in a folder.
std::vector<std::string> names_in(const std::string& folder, const std::string& ending) {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder)) {
        if (entry.is_directory() != ending.empty()) continue;
        if (entry.path().extension() == ending) names.push_back(entry.path().stem().string());
    }
    if (names.empty()) malformed(folder, 0, "nothing to test");
    return names;
}

// The examples that are run by a control file of their own.
std::vector<std::string> examples() {
    std::vector<std::string> names = names_in(EXAMPLES_DIR, "");
    std::erase_if(names, [](const std::string& name) {
        return !fs::exists(EXAMPLES_DIR "/" + name + "/run.ctl");
    });
    return names;
}

std::string name_of(const testing::TestParamInfo<std::string>& info) { return info.param; }

class Case : public testing::TestWithParam<std::string> {};
INSTANTIATE_TEST_SUITE_P(All, Case, testing::ValuesIn(names_in(CASES_DIR, ".case")), name_of);

TEST_P(Case, Holds) {
    const auto sections = read_case(std::string(CASES_DIR) + "/" + GetParam() + ".case");
    const Folder folder;
    std::map<std::string, Section> single;
    single["run"].text = R"("$ORVEXPP" run.ctl)";
    single["status"].name = "0";
    for (const char* const stream : {"out", "err"}) single[stream].kind = stream;
    for (const Section& section : sections) {
        single[section.kind] = section;
        if (section.kind == "given") folder.write(section.name, section.text);
        if (section.kind == "setup") {
            EXPECT_EQ(folder.shell(section.text).status, 0) << "setup";
        }
    }
    auto named = folder.files();  // and those that were there before
    const harness::Result result = folder.shell(single["run"].text);
    EXPECT_EQ(std::to_string(result.status), single["status"].name);
    expect_text(single["out"], result.out);
    expect_text(single["err"], result.err);
    for (const Section& section : sections) {
        if (section.name.empty() || section.kind == "given" || section.kind == "status") continue;
        expect_text(section, folder.read(section.name));
        named[section.name];
    }
    for (const auto& [name, text] : folder.files())
        EXPECT_TRUE(named.contains(name)) << name << " is left, and no section names it";
}

void give_example(const Folder& folder, const std::string& name, const std::string& control) {
    const std::string source = EXAMPLES_DIR "/" + name + "/";
    folder.write(name + ".zlm", harness::read_file(source + name + ".zlm"));
    folder.write(control, harness::read_file(source + "run.ctl"));
}

class Example : public testing::TestWithParam<std::string> {};
INSTANTIATE_TEST_SUITE_P(All, Example, testing::ValuesIn(examples()), name_of);

TEST_P(Example, LeavesExactlyWhatIsExpected) {
    const Folder folder;
    give_example(folder, GetParam(), "run.ctl");
    auto named = folder.files();
    const harness::Result result = folder.run();
    EXPECT_EQ(std::to_string(result.status) + result.out + result.err, "0");
    for (const auto& entry : fs::directory_iterator(EXAMPLES_DIR "/" + GetParam() + "/expected")) {
        const std::string name = entry.path().filename().string();
        expect_text({"file", name, harness::read_file(entry.path()), entry.path(), 1},
                    folder.read(name));
        named[name];
    }
    EXPECT_EQ(folder.files().size(), named.size());
}

// A run that stops leaves open levels, a symbol table and settings of every kind behind.
TEST(Runs, InOneProcessAreLikeRunsOfTheirOwn) {
    const std::string settings = "SCD x-\nNCO 7\nNMO 3\nERR x.err\nMDL BAD\nHDR x.hdr\nTIM t\n";
    const std::string model = "$MODEL:BAD\n+ A:X\n$SECTORS:\n Y(S)\n$PROD:Y(S)$A ";
    const Folder here;
    const Folder there;
    for (const Folder* folder : {&here, &there}) {
        folder->write("overflow.ctl", settings + "INP overflow");
        folder->write("overflow.zlm", model + "Q:" + std::string(66, 'N'));
        folder->write("fault.ctl", settings + "INP fault");
        folder->write("fault.zlm", model + "\n O:P(T) Q:1\n$REPORT:\n V:R(S,T) O:P(T) X:1");
        for (const std::string& name : examples()) give_example(*folder, name, name + ".ctl");
    }
    const fs::path before = fs::current_path();
    for (const std::string& name : examples()) {
        for (const std::string& control : {std::string("overflow"), std::string("fault"), name}) {
            fs::current_path(here.path());
            EXPECT_EQ(orvex::run(control + ".ctl"), there.run({control + ".ctl"}).status);
            fs::current_path(before);
            for (const auto& [file, text] : there.files())
                expect_text({"file", file, text, control, 0}, here.read(file));
        }
    }
    EXPECT_EQ(here.files().size(), there.files().size());
}

}  // namespace
