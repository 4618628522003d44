// Models mean the same after a rename. Every name of every example is replaced by another one of
// the same length that occurs neither in its file nor in its outputs, and the translator runs. The
// old name is gone from the outputs, and if it is put back they are the same as before.
#include "frontend/abilities/rename.h"

#include "frontend/abilities/name_places.h"
#include "frontend/syntax/expressions.h"
#include "frontend/syntax/reading.h"
#include "harness.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace fs = std::filesystem;
using namespace orvex::frontend;
using std::string;

namespace {

// The words of a text in capitals, and the characters between them.
std::vector<string> words_of(const string& text) {
    std::vector<string> words;
    bool in_word = false;
    for (const char c : capitals(text)) {
        if (!in_word || !is_name_byte(c)) words.emplace_back();
        words.back() += c;
        in_word = is_name_byte(c);
    }
    return words;
}

// In capitals, with one word replaced by another. The lines of the symbol listing are sorted.
string with_word(const string& text, const string& word, const string& other) {
    string all;
    for (const string& each : words_of(text)) all += each == word ? other : each;
    const std::size_t listing = std::min(all.find("SYMBOL LISTING"), all.size());
    std::vector<string> lines = harness::lines_of(all.substr(listing));
    std::sort(lines.begin(), lines.end());
    all.resize(listing);
    for (const string& line : lines) all += line + "\n";
    return all;
}

// Is a word between these two a name? Labels, attributes, elements, macros and "=E=" are not.
bool is_between_name_ends(const string& before, const string& after) {
    return after != ":" && after != "%" && string(".\"%=").find(before) == string::npos;
}

// A line of an output without the description of a name, and without a label that it prints.
string without_other_words(const string& line) {
    const std::size_t label = line.find("'+");
    if (line.starts_with("{") && label != string::npos && line[label + 2] != '\'')
        return line.substr(line.find(':', label));
    if (line.starts_with("{")) return line;
    const string text = line.substr(0, line.find(" Complementary equation(s)"));
    return text.substr(0, text.find("    ", text.find_first_not_of(' ')));
}

// The lines of an output that still have a name, not counting the echo of the input.
string lines_with(const string& output, const string& name) {
    string found;
    for (const string& line : harness::lines_of(output.substr(0, output.find(" PREPROCESSOR ")))) {
        const std::vector<string> words = words_of(" " + without_other_words(line) + " ");
        for (std::size_t at = 1; at + 1 < words.size(); ++at) {
            if (words[at] == name && is_between_name_ends(words[at - 1], words[at + 1]))
                found += line + "\n";
        }
    }
    return found;
}

// Folders with a file m.zlm each, and the translator's outputs for it.
class RenamedNames : public testing::Test {
  protected:
    void write(const string& name, const string& text) const {
        fs::create_directory(folder_.path() + "/" + name);
        folder_.write(name + "/m.zlm", text);
    }

    // In the folders where it has not run yet.
    void translate() const {
        folder_.write("run.ctl", "INP m.zlm\nSCR m.scr\nERR m.err\n");
        const auto result = folder_.shell(
            "for f in */; do set -- $f*.GEN\n"
            "if [ ! -e \"$1\" ]; then cd $f; \"$ORVEXPP\" ../run.ctl; cd ..; fi\ndone");
        ASSERT_EQ(result.status, 0) << result.err;
    }

    std::map<string, string> outputs(const string& folder) const {
        std::map<string, string> found;
        for (const auto& entry : fs::directory_iterator(folder_.path() + "/" + folder)) {
            const string name = entry.path().filename().string();
            if (name != "m.zlm") found[name] = harness::read_file(entry.path().string());
        }
        return found;
    }

    // Renames each name of a file that was translated.
    void rename_all(const string& file) {
        Document document;
        set_text(document, folder_.read(file + "/m.zlm"));
        read_text(document);
        string texts = document.source.bytes;
        for (const auto& [name, text] : outputs(file)) texts += text;
        const std::vector<string> words = words_of(texts);
        const std::set<string> known(words.begin(), words.end());
        std::set<std::pair<Index, string>> done;
        for (const UsePlace& place : document.uses) {
            const auto target = target_at(document, use_of(document, place).range.begin);
            ASSERT_TRUE(target);
            const bool is_new = done.emplace(target->model, target->name).second;
            if (is_new && is_plain_name(target->name)) rename(document, file, *target, known);
        }
    }

    void expect_same_outputs() const {
        for (const Row& row : renamed_) {
            const auto after = outputs(row.folder);
            for (const auto& [name, text] : outputs(row.file)) {
                const string renamed = after.contains(name) ? after.at(name) : "";
                EXPECT_EQ(with_word(renamed, row.new_name, row.name), with_word(text, "", ""))
                    << row.file << ": " << row.name << " as " << row.new_name;
                if (!name.starts_with(row.model)) continue;
                EXPECT_EQ(lines_with(renamed, row.name), "")
                    << row.file << ": " << row.name << " as " << row.new_name;
            }
        }
    }

    std::size_t count() const { return renamed_.size(); }

  private:
    struct Row {
        string folder;  // of the renamed file
        string file;    // folder of the original file
        string model;   // the owner of the name, with "."; empty for a host name
        string name;
        string new_name;
    };

    void rename(const Document& document, const string& file, const Target& target,
                const std::set<string>& known) {
        string new_name;
        for (const char c : string("XJZKVUWHGQ_YBFMLCNARDEIOPST")) {
            new_name = string(target.name.size(), c);
            if (!known.contains(new_name)) break;
        }
        const Renaming renaming = rename_at(document, target.place.begin, new_name);
        EXPECT_EQ(renaming.refusal, "") << file << ": " << target.name << " as " << new_name;
        EXPECT_FALSE(renaming.places.empty()) << file << ": " << target.name;
        string text = document.source.bytes;
        for (const RenamedPlace& place : renaming.places)
            text.replace(place.range.begin, new_name.size(), new_name);
        const string folder = file + "-" + std::to_string(renamed_.size());
        write(folder, text);
        const bool is_of_host = target.model == no_index;
        renamed_.push_back({folder, file,
                            is_of_host ? "" : document.models[target.model].name + ".", target.name,
                            new_name});
    }

    harness::Folder folder_;
    std::vector<Row> renamed_;
};

TEST_F(RenamedNames, LeaveTheOutputsAsTheyWere) {
    std::vector<string> files;
    for (const char* const folder : {EXAMPLES_DIR, TESTS_DIR "/correct"}) {
        for (const auto& entry : fs::recursive_directory_iterator(folder)) {
            if (entry.path().extension() != ".zlm") continue;
            files.push_back(entry.path().stem().string());
            write(files.back(), harness::read_file(entry.path().string()));
        }
    }
    translate();
    for (const string& file : files) {
        ASSERT_FALSE(outputs(file).empty() || outputs(file).contains("m.err")) << file;
        rename_all(file);
    }
    translate();
    expect_same_outputs();
    EXPECT_GT(count(), 500U);
}

}  // namespace
