// README.md, docs/guide.md and docs/files.md teach by example. Each example is translated, and the
// outputs shown are compared with those that the program writes. This file also checks the links in
// all documents.
//
// The kind of a block follows its opening ```:
//
//     orvex NAME     a whole input, NAME.zlm; the same text in all documents
//     orvex          blocks of a model; the lines $MODEL:M and $OFFTEXT are put around them, and
//                    NAME is m
//     control        a control file, with which the last input is translated again; the first
//                    time it was with INP, SCR and ERR of NAME, NAME.scr and NAME.err
//     output FILE    a piece of FILE; all its pieces, in order, are the whole file
//     part FILE      lines of FILE; "..." marks lines left out in between
//     console        commands after "$ ", run in a folder that has the previous inputs NAME.zlm
//                    and the examples, and everything that they print
//
// FILE is the one from the last run that made a file with this name. Lines are compared without
// trailing blanks. An example must translate without errors, unless its error file is shown.
#include "harness.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <gtest/gtest.h>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace fs = std::filesystem;
using std::string;

namespace {

struct Block {
    string kind;  // empty for the lines between the blocks
    string name;
    string text;  // without trailing blanks
    int line = 0;
};

struct Translation {
    int line = 0;  // of the text that it translates, in the guide
    std::map<string, string> files;
    std::map<string, string> shown;  // of whole files, or empty
};

// The blocks of a document and the lines between them.
std::vector<Block> read_document(const fs::path& path) {
    static const std::regex trailing_blanks(" +$");
    static const std::regex fence("```(\\S*) ?(.*)");
    std::vector<Block> blocks(1);
    int number = 0;
    for (const string& line : harness::lines_of(harness::read_file(path.string()))) {
        ++number;
        std::smatch match;
        if (std::regex_match(line, match, fence)) {
            blocks.push_back({match[1], match[2], "", number + 1});
        } else {
            blocks.back().text += std::regex_replace(line, trailing_blanks, "") + "\n";
        }
    }
    return blocks;
}

Translation translate(const string& name, const string& input, const string& control, int line) {
    const harness::Folder folder;
    folder.write(name + ".zlm", input);
    folder.write("run.ctl", std::regex_replace(control, std::regex("@"), name));
    const harness::Result result = folder.run();
    EXPECT_EQ(std::to_string(result.status) + result.out + result.err, "0");
    Translation run = {line, folder.files(), {}};
    for (auto& [file, text] : run.files) text = std::regex_replace(text, std::regex(" +\n"), "\n");
    return run;
}

bool has_part(const string& file, const string& part) {
    static const std::regex gap("\\.\\.\\.\n");
    const string text = "\n" + file;
    std::size_t at = 0;
    for (std::sregex_token_iterator piece(part.begin(), part.end(), gap, -1), end; piece != end;
         ++piece) {
        at = text.find("\n" + piece->str(), at);
        if (at == string::npos || piece->length() == 0) return false;
        at += static_cast<std::size_t>(piece->length());
    }
    return true;
}

void show(std::vector<Translation>& runs, const Block& block) {
    auto run = runs.rbegin();
    while (run != runs.rend() && !run->files.contains(block.name)) ++run;
    ASSERT_TRUE(run != runs.rend()) << "no example leaves " << block.name;
    run->shown[block.name] += block.kind == "output" ? block.text : "";
    EXPECT_TRUE(block.kind == "output" || has_part(run->files[block.name], block.text))
        << "is no part of " << block.name << ":\n"
        << run->files[block.name];
}

void expect_as_shown(const Translation& run) {
    SCOPED_TRACE("line " + std::to_string(run.line));
    bool ends = false;
    for (const auto& [name, text] : run.files) {
        const bool is_error = name.ends_with(".err");
        EXPECT_TRUE(!is_error || run.shown.contains(name)) << text;
        ends = ends || is_error || text.find("\n$setglobal  n_models") != string::npos;
    }
    EXPECT_TRUE(ends) << "no complete model and no error";
    for (const auto& [name, text] : run.shown) {
        if (!text.empty()) {
            EXPECT_EQ(run.files.at(name), text) << name;
        }
    }
}

void run_session(const harness::Folder& folder, const Block& block) {
    std::vector<std::pair<string, string>> steps;  // a command, and what it prints
    for (const string& line : harness::lines_of(block.text)) {
        if (line.starts_with("$ ")) steps.emplace_back(line.substr(2), "");
        ASSERT_FALSE(steps.empty());
        if (!line.starts_with("$ ")) steps.back().second += line + "\n";
    }
    for (const auto& [command, shown] : steps) {
        const string path = "exec 2>&1; PATH=$(dirname \"$ORVEX\"):$PATH\n";
        const string printed = folder.shell(path + command).out;
        EXPECT_EQ(std::regex_replace(printed, std::regex(" +\n"), "\n"), shown) << command;
    }
}

class Document : public testing::TestWithParam<string> {};

TEST_P(Document, Examples) {
    static const std::set<string> others = {"", "sh", "text", "make", "ninja", "yaml"};
    std::vector<Translation> runs;
    string name;
    string input;
    const harness::Folder folder;
    fs::create_symlink(EXAMPLES_DIR, folder.path() + "/examples");
    for (const Block& block : read_document(DOCS_DIR "/" + GetParam())) {
        SCOPED_TRACE(GetParam() + ":" + std::to_string(block.line));
        if (block.kind == "orvex") {
            const bool whole = !block.name.empty();
            name = whole ? block.name : "m";
            input = whole ? block.text : "$MODEL:M\n" + block.text + "$OFFTEXT\n";
            folder.write(name + ".zlm", input);
            runs.push_back(translate(name, input, "INP @\nSCR @.scr\nERR @.err\n", block.line));
        } else if (block.kind == "control") {
            runs.push_back(translate(name, input, block.text, block.line));
        } else if (block.kind == "output" || block.kind == "part") {
            show(runs, block);
        } else if (block.kind == "console") {
            run_session(folder, block);
        } else {
            EXPECT_TRUE(others.contains(block.kind)) << "no such kind of block";
        }
    }
    ASSERT_FALSE(runs.empty());
    std::for_each(runs.begin(), runs.end(), expect_as_shown);
}

const string documents[] = {"guide.md", "files.md", "../README.md"};

INSTANTIATE_TEST_SUITE_P(Of, Document, testing::ValuesIn(documents), [](const auto& row) {
    return std::regex_replace(row.param, std::regex("[^a-zA-Z]"), "");
});

// A model with a file name, say tiny.zlm, is the same on every page.
TEST(Documents, ShowOneFileOfEachName) {
    std::map<string, string> shown;
    for (const string& page : documents) {
        for (const Block& block : read_document(DOCS_DIR "/" + page)) {
            if (block.kind != "orvex" || block.name.empty()) continue;
            const string& first = shown.try_emplace(block.name, block.text).first->second;
            EXPECT_EQ(block.text, first) << page << " has another " << block.name << ".zlm";
        }
    }
    EXPECT_TRUE(shown.contains("tiny"));
}

// The names of the headings in links: lower case, "-" for a blank, no other punctuation.
std::set<string> anchors_of(const fs::path& path) {
    std::set<string> anchors;
    for (const Block& block : read_document(path)) {
        for (const string& line : harness::lines_of(block.kind.empty() ? block.text : "")) {
            if (!line.starts_with("#")) continue;
            string anchor = std::regex_replace(line, std::regex("^#+ |[^A-Za-z0-9_ -]"), "");
            for (char& c : anchor) c = c == ' ' ? '-' : static_cast<char>(std::tolower(c));
            anchors.insert(anchor);
        }
    }
    return anchors;
}

// Follows the links of a document to files next to it and to headings, and counts them.
int follow_links(const fs::path& document) {
    static const std::regex link(R"(\]\(([^)#\s]*)(?:#([^)\s]*))?\))");
    int links = 0;
    for (const Block& block : read_document(document)) {
        const string prose = block.kind.empty() ? block.text : "";
        const string text = std::regex_replace(prose, std::regex("`[^`]*`"), "");
        for (std::sregex_iterator at(text.begin(), text.end(), link), end; at != end; ++at) {
            const string name = at->str(1);
            if (name.find("://") != string::npos) continue;
            const fs::path target = name.empty() ? document : document.parent_path() / name;
            const bool leads = !(*at)[2].matched || anchors_of(target).contains(at->str(2));
            EXPECT_TRUE(fs::exists(target) && leads) << document << ": " << at->str();
            ++links;
        }
    }
    return links;
}

TEST(Documents, LinksLeadSomewhere) {
    int links = 0;
    fs::recursive_directory_iterator file(fs::path(DOCS_DIR).parent_path());
    for (; file != fs::recursive_directory_iterator(); ++file) {
        const string name = file->path().filename();
        if (name == "build" || name == "node_modules" || name.starts_with("."))
            file.disable_recursion_pending();
        if (name.ends_with(".md")) links += follow_links(file->path());
    }
    EXPECT_GT(links, 0);
}

}  // namespace
