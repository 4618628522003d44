// Tests that need a tool which is not on every machine.
#pragma once

#include <cstdlib>
#include <gtest/gtest.h>

namespace harness {

// Set where all tools must be there, so that no test is left out unnoticed.
inline bool tools_are_required() { return std::getenv("ORVEX_REQUIRE_TOOLS") != nullptr; }

}  // namespace harness

// Leaves the test: skipped, with the tool that is missing, or failed where tools are required.
#define SKIP_WITHOUT(tool)                                                       \
    do {                                                                         \
        if (harness::tools_are_required()) FAIL() << "missing here: " << (tool); \
        GTEST_SKIP() << "missing here: " << (tool);                              \
    } while (false)
