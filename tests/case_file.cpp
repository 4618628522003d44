#include "case_file.h"

#include "harness.h"

#include <filesystem>
#include <set>
#include <sstream>
#include <stdexcept>

namespace harness {

namespace {

std::string replaced(std::string text, const std::string& mark, const std::string& meaning) {
    for (auto at = text.find(mark); at != std::string::npos; at = text.find(mark, at + 1))
        text.replace(at, mark.size(), meaning);
    return text;
}

// A line of a section with its escapes expanded. A "\" without meaning stays in it.
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

}  // namespace

void malformed(const std::string& origin, int line, const std::string& fault) {
    throw std::runtime_error(origin + ":" + std::to_string(line) + ": " + fault);
}

std::vector<std::string> lines_with_ends(const std::string& text) {
    std::vector<std::string> lines;
    for (std::size_t start = 0; start < text.size(); start += lines.back().size()) {
        const auto end = text.find('\n', start);
        lines.push_back(text.substr(start, end == std::string::npos ? end : end + 1 - start));
    }
    return lines;
}

std::vector<Section> read_case(const std::string& path) {
    std::vector<Section> sections;
    const std::vector<std::string> lines = lines_with_ends(read_file(path));
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

std::vector<std::string> names_in(const std::string& folder, const std::string& ending) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.is_directory() != ending.empty()) continue;
        if (entry.path().extension() == ending) names.push_back(entry.path().stem().string());
    }
    if (names.empty()) malformed(folder, 0, "nothing to test");
    return names;
}

}  // namespace harness
