// Whole runs: the cases of tests/cases, the examples, and several runs in one process. A new case
// file is found when this test is built again.
#include "driver/run.h"

#include "case_file.h"
#include "harness.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <map>
#include <string>
#include <vector>

namespace fs = std::filesystem;
using harness::Folder;
using harness::lines_with_ends;
using harness::malformed;
using harness::names_in;
using harness::read_case;
using harness::Section;

namespace {

using Lines = std::vector<std::string>;

// How many of the wanted lines match at an offset.
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
    const Lines want = lines_with_ends(section.text);
    const Lines got = lines_with_ends(text);
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

// The examples that have their own control file.
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
    auto named = folder.files();  // and those from before
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

// A run that stops leaves open levels, a symbol table and settings of every kind.
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
