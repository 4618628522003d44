// The XML form of JUnit: a test suite for each file, in it a test for each finding.
#pragma once

#include "frontend/findings/finding.h"
#include "frontend/findings/report.h"

#include <cstddef>
#include <map>
#include <string>
#include <vector>

namespace orvex::frontend {

struct JunitSuite {
    std::string name;   // the path of the file; "orvex" for findings about none
    std::string cases;  // XML of its tests
    std::size_t tests = 0;
    std::size_t failures = 0;
};

// A suite says first how many tests it has, so the report is kept until its end.
struct JunitReport {
    std::vector<JunitSuite> suites;
    std::map<std::string, std::size_t> places;  // of the suites, by name
};

// Adds the suite of a file. One without findings has a test that passes.
void add_file(JunitReport& report, const std::string& path);

// Adds a test to the suite of the finding's file: one that fails for an error or a warning.
void add_finding(JunitReport& report, const Finding& finding);

// The whole report. Its XML is well-formed whatever bytes the findings have.
std::string junit_text(const JunitReport& report, const Summary& summary);

}  // namespace orvex::frontend
