// Correct models in many styles, correct/*.zlm: `orvex check` must report nothing about them.
#include "harness.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <string>
#include <vector>

using std::string;

namespace {

// Files with a known false alarm, and the code of its finding. A row fails once its alarm is gone.
const std::map<string, string> known_alarms = {};

std::vector<string> files() {
    std::vector<string> names;
    for (const auto& file : std::filesystem::directory_iterator(TESTS_DIR "/correct"))
        names.push_back(file.path().stem().string());
    std::sort(names.begin(), names.end());
    return names;
}

// The codes at the ends of the lines; one empty code if there is no finding.
std::set<string> codes_in(const string& output) {
    std::set<string> codes;
    for (const string& line : harness::lines_of(output)) codes.insert(line.substr(line.rfind('[')));
    return codes.empty() ? std::set<string>{""} : codes;
}

class Correct : public testing::TestWithParam<string> {};

TEST_P(Correct, HasNoFinding) {
    const harness::Folder folder;
    folder.write("m.zlm", harness::read_file(TESTS_DIR "/correct/" + GetParam() + ".zlm"));
    const harness::Result result =
        folder.shell("\"$ORVEX\" check --quiet --max-errors 0 --format short m.zlm");
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.status, 0);
    const auto alarm = known_alarms.find(GetParam());
    const std::set<string> expected = {alarm == known_alarms.end() ? "" : alarm->second};
    EXPECT_EQ(codes_in(result.out), expected) << result.out;
}

INSTANTIATE_TEST_SUITE_P(Files, Correct, testing::ValuesIn(files()),
                         [](const auto& file) { return file.param; });

}  // namespace
