// Ten faults at once: every model in faults/*.zlm has about ten, as people make them, each in a
// separate place. One run of `orvex check` must show all of them, each at its place, and nothing
// else.
#include "frontend/findings/messages.h"
#include "harness.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <regex>
#include <set>
#include <string>
#include <vector>

using orvex::frontend::message_index;
using orvex::frontend::MessageEntry;
using std::string;

namespace {

// A finding in these tests: "LINE:COLUMN CODE", or "CODE" if it is about the whole file.
using Found = std::multiset<string>;

// A line "*~ 12 kind-mismatch, 20 set-not-looped" gives the columns and codes of the findings on
// the next line that is not of this form; a code without a column is about the whole file.
Found expected_in(const string& text) {
    static const std::regex item(" (?:([0-9]+) )?([a-z-]+)");
    Found expected;
    std::vector<std::smatch> items;
    const std::vector<string> lines = harness::lines_of(text);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (!lines[i].starts_with("*~")) continue;
        std::size_t fault = i;
        while (fault < lines.size() && lines[fault].starts_with("*~")) ++fault;
        for (std::sregex_iterator at(lines[i].begin(), lines[i].end(), item), end; at != end;
             ++at) {
            const string place =
                (*at)[1].matched ? std::to_string(fault + 1) + ":" + at->str(1) + " " : "";
            expected.insert(place + at->str(2));
        }
    }
    return expected;
}

Found found_in(const string& output) {
    static const std::regex form("[^:]*:(?:([0-9]+:[0-9]+):)? [a-z]+: .* \\[([a-z-]+)\\]");
    Found found;
    for (const string& line : harness::lines_of(output)) {
        std::smatch parts;
        if (!std::regex_match(line, parts, form)) ADD_FAILURE() << line;
        found.insert((parts[1].matched ? parts.str(1) + " " : "") + parts.str(2));
    }
    return found;
}

std::vector<string> files() {
    std::vector<string> names;
    for (const auto& file : std::filesystem::directory_iterator(TESTS_DIR "/faults"))
        names.push_back(file.path().stem().string());
    std::sort(names.begin(), names.end());
    return names;
}

string text_of(const string& name) {
    return harness::read_file(TESTS_DIR "/faults/" + name + ".zlm");
}

class Faults : public testing::TestWithParam<string> {};

TEST_P(Faults, AllInOneRun) {
    const string text = text_of(GetParam());
    const harness::Folder folder;
    folder.write("m.zlm", text);
    folder.write("counted",
                 "#!/bin/sh\necho run >>" + folder.path() + "/runs\nexec " ORVEXPP_EXE " \"$@\"\n");
    const harness::Result result = folder.shell(
        "chmod +x counted; \"$ORVEX\" check --translator ./counted --quiet "
        "--max-errors 0 --format short m.zlm");
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(found_in(result.out), expected_in(text)) << result.out;
    const string runs = folder.read("runs");
    const bool has_model = !expected_in(text).contains("model-missing");
    EXPECT_TRUE(has_model ? runs == "run\n" || runs == "run\nrun\n" : runs == "(absent)") << runs;
}

INSTANTIATE_TEST_SUITE_P(Files, Faults, testing::ValuesIn(files()),
                         [](const auto& file) { return file.param; });

// Can the text of a model alone cause the finding?
bool is_caused_by_model(const MessageEntry& entry) {
    const bool is_finding =
        entry.ends == "error" || entry.ends == "overflow" || entry.ends == "finding";
    const auto has = [&](const char* kind) {
        return std::any_of(entry.examples.begin(), entry.examples.end(),
                           [&](const auto& e) { return e.kind.starts_with(kind); });
    };
    return is_finding && entry.level != "off" && has("wrong") && !has("data");
}

TEST(FaultFiles, HaveEveryCodeThatAModelCanCause) {
    string all;
    for (const string& name : files()) all += text_of(name);
    std::set<string> codes;
    for (const string& found : expected_in(all)) codes.insert(found.substr(found.find(' ') + 1));
    for (const MessageEntry& entry : message_index()) {
        EXPECT_TRUE(!is_caused_by_model(entry) || codes.contains(entry.code)) << entry.code;
    }
}

}  // namespace
