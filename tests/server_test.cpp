// Properties that hold for the language server whatever its client sends: examples, cut off, under
// random edits and requests.
#include "harness.h"
#include "server_properties.h"

#include <cstddef>
#include <filesystem>
#include <gtest/gtest.h>
#include <random>
#include <string>

using std::string;

namespace {

TEST(Server, KeepsItsPromisesUnderRandomEdits) {
    constexpr std::size_t step = 197;
    std::mt19937 random(1);
    for (const auto& folder : std::filesystem::directory_iterator(EXAMPLES_DIR)) {
        if (!folder.is_directory()) continue;
        const string name = folder.path().filename().string();
        const string text = harness::read_file(folder.path() / (name + ".zlm"));
        for (std::size_t size = 0; size <= text.size(); size += step) {
            string choices(300, '\0');
            for (char& choice : choices) choice = static_cast<char>(random());
            EXPECT_EQ(server_properties::broken(text.substr(0, size), choices, step), "")
                << name << ", cut off at " << size;
        }
    }
}

}  // namespace
