// Single faults: each row edits a correct model, and lists all findings that `orvex check` must
// then report. The lines of tests/single/*.rows are:
//
//   a text in brackets        the name of a model, which goes on to the next line that is "---"
//   NUMBER|TEXT               replaces that line of the model
//   NUMBER+|TEXT              puts a line after it
//   NUMBER-|                  removes it
//   > LINE:COLUMN: LEVEL: MESSAGE [CODE]
//   > none                    the edited model is right
//   # TEXT                    a comment
//
// The edits before a ">" belong together, and so do the findings up to the next edit.
#include "harness.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <map>
#include <string>
#include <vector>

using harness::lines_of;
using std::string;

namespace {

struct Row {
    string place;  // of its first line: "values.rows:12"
    string model;
    std::vector<string> edits;
    string findings;  // one per line
};

std::vector<Row> read_rows(const string& path) {
    std::vector<Row> rows;
    string model;
    bool in_model = false;
    bool is_open = false;  // the last row has no findings yet
    int number = 0;
    for (const string& line : lines_of(harness::read_file(path))) {
        ++number;
        if (in_model) {
            in_model = line != "---";
            if (in_model) model += line + "\n";
        } else if (line.starts_with("[")) {
            model.clear();
            in_model = true;
        } else if (line.starts_with("> ") && !rows.empty()) {
            if (line != "> none") rows.back().findings += line.substr(2) + "\n";
            is_open = false;
        } else if (!line.empty() && !line.starts_with("#")) {
            if (!is_open) {
                const string name = path.substr(path.rfind('/') + 1);
                rows.push_back({name + ":" + std::to_string(number), model, {}, ""});
            }
            rows.back().edits.push_back(line);
            is_open = true;
        }
    }
    EXPECT_FALSE(in_model || is_open) << path << " ends too early";
    return rows;
}

string edited(const Row& row) {
    std::vector<string> lines = lines_of(row.model);
    for (const string& edit : row.edits) {
        std::size_t digits = 0;
        const std::size_t line = std::stoul(edit, &digits);
        const std::size_t bar = edit.find('|');
        if (bar == string::npos || line == 0 || line > lines.size()) return "wrong edit: " + edit;
        string& text = lines[line - 1];
        const string wanted = edit.substr(bar + 1);
        text = edit[digits] == '+' ? text + "\n" + wanted : edit[digits] == '-' ? "\1" : wanted;
    }
    string text;
    for (const string& line : lines) text += line == "\1" ? "" : line + "\n";
    return text;
}

// The findings of all rows, by the name of the file that has the row's text.
std::map<string, string> check(const std::vector<Row>& rows) {
    const harness::Folder folder;
    for (std::size_t i = 0; i < rows.size(); ++i)
        folder.write(std::to_string(i) + ".zlm", edited(rows[i]));
    std::map<string, string> findings;
    const string shown = folder.shell("\"$ORVEX\" check -q --format short *.zlm").out;
    for (const string& line : lines_of(shown)) {
        const std::size_t colon = line.find(':');
        findings[line.substr(0, colon)] += line.substr(colon + 1) + "\n";
    }
    return findings;
}

TEST(SingleFaults, GiveTheirFindingsAndNoOthers) {
    std::size_t count = 0;
    for (const auto& file : std::filesystem::directory_iterator(TESTS_DIR "/single")) {
        const std::vector<Row> rows = read_rows(file.path().string());
        std::map<string, string> findings = check(rows);
        for (std::size_t i = 0; i < rows.size(); ++i) {
            EXPECT_EQ(findings[std::to_string(i) + ".zlm"], rows[i].findings)
                << rows[i].place << ":\n"
                << edited(rows[i]);
        }
        count += rows.size();
    }
    EXPECT_GT(count, 0U);
}

}  // namespace
