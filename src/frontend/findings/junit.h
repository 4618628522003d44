// The JUnit XML format: a test suite for each file, containing a test for each finding.
#pragma once

#include "frontend/findings/finding.h"
#include "frontend/findings/report.h"

#include <cstddef>
#include <map>
#include <string>
#include <vector>

namespace orvex::frontend {

struct JunitSuite {
    std::string name;   // the path of the file; "orvex" for findings without one
    std::string cases;  // XML of its tests
    std::size_t tests = 0;
    std::size_t failures = 0;
};

// A suite begins with the number of its tests, so the report is kept until it is complete.
struct JunitReport {
    std::vector<JunitSuite> suites;
    std::map<std::string, std::size_t> places;  // of the suites, by name
};

// Adds the suite of a file. Without findings, it has a test that passes.
void add_file(JunitReport& report, const std::string& path);

// Adds a test to the suite of the finding's file: it fails for an error or a warning.
void add_finding(JunitReport& report, const Finding& finding);

// The whole report. Its XML is well-formed whatever bytes the findings contain.
std::string junit_text(const JunitReport& report, const Summary& summary);

}  // namespace orvex::frontend
