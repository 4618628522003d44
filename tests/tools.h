// Tests that need a tool which not every machine has.
#pragma once

#include <cstdlib>
#include <gtest/gtest.h>

namespace harness {

// Set if all tools must be present, so that no test is skipped unnoticed.
inline bool tools_are_required() { return std::getenv("ORVEX_REQUIRE_TOOLS") != nullptr; }

}  // namespace harness

// Leaves the test: skipped, naming the missing tool, or failed if tools are required.
#define SKIP_WITHOUT(tool)                                                       \
    do {                                                                         \
        if (harness::tools_are_required()) FAIL() << "missing here: " << (tool); \
        GTEST_SKIP() << "missing here: " << (tool);                              \
    } while (false)
