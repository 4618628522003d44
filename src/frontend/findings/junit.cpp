#include "frontend/findings/junit.h"

#include "frontend/base/bytes.h"

#include <algorithm>
#include <string_view>

namespace orvex::frontend {

namespace {

constexpr std::string_view whole_run = "orvex";

// Does XML allow the character itself?
bool is_allowed(char32_t code) {
    const bool is_control = code < 0x20 || (code >= 0x7F && code < 0xA0);
    return !is_control && code != 0xFFFE && code != 0xFFFF;
}

void append_character(std::string& xml, std::string_view character, char32_t code) {
    constexpr std::string_view replacement = "\xEF\xBF\xBD";  // U+FFFD
    switch (code) {
    case '&': xml += "&amp;"; break;
    case '<': xml += "&lt;"; break;
    case '>': xml += "&gt;"; break;
    case '"': xml += "&quot;"; break;
    case '\t':
    case '\n': xml += character; break;
    default: xml += is_allowed(code) ? character : replacement;
    }
}

// A text for the content of an element. Bytes that are not UTF-8 and characters that XML forbids
// become U+FFFD.
std::string escaped(std::string_view text) {
    std::string xml;
    while (!text.empty()) {
        const Character character = decode(text);
        const std::size_t length = std::max<std::size_t>(character.length, 1);
        append_character(xml, text.substr(0, length), character.length == 0 ? 0 : character.code);
        text.remove_prefix(length);
    }
    return xml;
}

// Blanks replace line ends: readers of attributes do that anyway.
std::string attribute(std::string_view name, std::string_view value) {
    std::string text = escaped(value);
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c == '\n' || c == '\t'; }, ' ');
    return " " + std::string(name) + "=\"" + text + '"';
}

std::string counts(std::size_t tests, std::size_t failures) {
    return attribute("tests", std::to_string(tests)) +
           attribute("failures", std::to_string(failures)) + attribute("errors", "0");
}

// The start of a test, up to the end of its attributes.
std::string test_start(std::string_view name, std::string_view suite) {
    return "<testcase" + attribute("name", name) + attribute("classname", suite);
}

// The output of a test that passes.
std::string output(std::string_view text) {
    return "><system-out>" + escaped(text) + "</system-out></testcase>\n";
}

JunitSuite& suite_of(JunitReport& report, std::string_view path) {
    const std::string name(path.empty() ? whole_run : path);
    const auto [place, is_new] = report.places.emplace(name, report.suites.size());
    if (is_new) report.suites.push_back({name, {}, 0, 0});
    return report.suites[place->second];
}

// Tests of one suite are distinguished by their names.
std::string test_name(const Finding& finding) {
    if (finding.span.line == 0) return finding.code;
    return finding.code + " at " + std::to_string(finding.span.line) + ':' +
           std::to_string(finding.span.column);
}

std::string suite_text(JunitSuite suite) {
    if (suite.tests == 0) {
        suite.cases = test_start("no findings", suite.name) + "/>\n";
        suite.tests = 1;
    }
    return "<testsuite" + attribute("name", suite.name) + counts(suite.tests, suite.failures) +
           ">\n" + suite.cases + "</testsuite>\n";
}

}  // namespace

void add_file(JunitReport& report, const std::string& path) { suite_of(report, path); }

void add_finding(JunitReport& report, const Finding& finding) {
    JunitSuite& suite = suite_of(report, finding.span.path);
    suite.cases += test_start(test_name(finding), suite.name);
    if (!finding.span.path.empty()) suite.cases += attribute("file", finding.span.path);
    if (finding.span.line > 0) suite.cases += attribute("line", std::to_string(finding.span.line));
    ++suite.tests;
    const std::string text = rendered(finding, false);
    if (finding.severity != Severity::error && finding.severity != Severity::warning) {
        suite.cases += output(text);
        return;
    }
    ++suite.failures;
    suite.cases += "><failure" + attribute("type", severity_name(finding.severity)) +
                   attribute("message", finding.message) + '>' + escaped(text) +
                   "</failure></testcase>\n";
}

std::string junit_text(const JunitReport& report, const Summary& summary) {
    std::string suites;
    std::size_t tests = 0;
    std::size_t failures = 0;
    for (const JunitSuite& suite : report.suites) {
        suites += suite_text(suite);
        tests += std::max<std::size_t>(suite.tests, 1);
        failures += suite.failures;
    }
    if (summary.hidden > 0) {
        const std::string cases = test_start("more errors", whole_run) + output(more_errors);
        suites += suite_text({std::string(whole_run), cases, 1, 0});
        ++tests;
    }
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuites" +
           attribute("name", whole_run) + counts(tests, failures) + ">\n" + suites +
           "</testsuites>\n";
}

}  // namespace orvex::frontend
