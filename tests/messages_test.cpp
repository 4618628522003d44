// docs/messages.md is the table of the error tests: its form, both examples of every entry run
// through the real program, and its agreement with the messages in the sources.
#include "harness.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <map>
#include <ostream>
#include <regex>
#include <set>
#include <string>
#include <vector>

using harness::Folder;
using harness::lines_of;
using std::string;

namespace {

using Texts = std::map<string, string>;

struct Entry {
    string code;
    Texts parts;  // facts and blocks; a repeated fact has one line for each occurrence
    int paragraphs = 0;
    string faults;  // in its form
};

void PrintTo(const Entry& entry, std::ostream* out) { *out << entry.code; }

const std::regex fact_form(
    "- (?:(Message): `(.+)`|(Says|Help)(?: \\([a-z ]+\\))?: (.+)|(Where): `<([a-z]+>` is "
    "`.+)`|(Ends): "
    "(error|overflow|stdout|stderr|file"
    "|listing|finding)|(Level): (off|note|warning|error)|(Status|Line): "
    "([1-9][0-9]*)|(Leaves|Unreachable): "
    "(.+))");
const std::regex block_kinds(
    "(wrong|corrected)(-command)?|(corrected-)?(control|data)|setup|run|stdout|model");

void read_fact(Entry& entry, const string& line) {
    std::smatch match;
    if (!std::regex_match(line, match, fact_form)) entry.faults += line + "\n";
    for (std::size_t name = 1; name + 1 < match.size(); name += 2) {
        if (match[name].matched) entry.parts[match[name]] += match.str(name + 1) + "\n";
    }
}

// The introduction, with the files that an example does not give, and the entries after it.
std::vector<Entry> read_page() {
    std::vector<Entry> page(1);
    string block;  // the kind of the open block
    string before;
    for (const string& line : lines_of(harness::read_file(DOCS_DIR "/messages.md"))) {
        Entry& entry = page.back();
        if (line == "```") {
            block.clear();
        } else if (!block.empty()) {
            entry.parts[block] += line + "\n";
        } else if (line.starts_with("```")) {
            block = line.substr(3);
            const bool is_new = entry.parts.emplace(block, "").second;
            if (!is_new || !std::regex_match(block, block_kinds)) entry.faults += line + "\n";
        } else if (line.starts_with("## ")) {
            page.emplace_back().code = line.substr(3);
        } else if (line.starts_with("- ") && page.size() > 1) {
            read_fact(entry, line);
        } else if (before.empty() && !line.empty() && !line.starts_with("# ")) {
            ++entry.paragraphs;
        }
        before = line;
    }
    return page;
}

const std::vector<Entry>& page() {
    static const std::vector<Entry> read = read_page();
    return read;
}

// Does only `orvex` report it? check_test.cpp runs those examples.
bool is_finding(const Entry& entry) { return entry.parts.at("Ends") == "finding\n"; }

std::vector<Entry> entries() { return {page().begin() + 1, page().end()}; }

class Messages : public testing::TestWithParam<Entry> {
  protected:
    bool has(const string& part) const { return parts.contains(part); }
    string part(const string& name, const string& otherwise) const {
        return has(name) ? parts.at(name) : otherwise;
    }

    // Replaces <name> and <name:width> by the values of the example.
    string filled(string text, Texts values = {}) const {
        static const std::regex place("<([a-z]+)(:([0-9]+))?>");
        for (const string& line : lines_of(part("Where", ""))) {
            const std::size_t end = line.find(">` is `");
            values[line.substr(0, end)] = line.substr(end + 7);
        }
        for (std::smatch match; std::regex_search(text, match, place);) {
            string value = values.at(match[1]);
            if (match[3].matched) value.resize(std::stoul(match[3]), ' ');
            text = match.prefix().str() + value + match.suffix().str();
        }
        return text;
    }

    // Runs the wrong or the corrected example, and reads the files that the run leaves.
    void translate(const string& kind) {
        const bool wrong = kind == "wrong";
        const Texts& usual = page().front().parts;
        const string shell = "VARIANTS='" VARIANTS_DIR "'\n";
        const string command = "\"$ORVEXPP\" run.ctl";
        const Folder folder;
        input = part(kind, usual.at("model"));
        if (has(kind + "-command")) input = folder.shell(parts[kind + "-command"]).out;
        folder.write("m.zlm", input);
        folder.write("run.ctl", part(wrong ? "control" : "corrected-control", usual.at("control")));
        EXPECT_EQ(folder.shell(shell + (wrong ? part("setup", ":") : ":")).status, 0);
        Texts before = folder.files();
        result = folder.shell(shell + (wrong ? part("run", command) : command));
        files = folder.files();
        names.clear();
        for (const auto& [name, text] : files) {
            if (!before.contains(name)) names += name + "\n";
        }
        for (const auto& [name, text] : before) EXPECT_EQ(files[name], text) << name;
    }

    void expect_run(int status, const string& out, const string& err, const string& left) {
        EXPECT_EQ(result.status, status);
        EXPECT_EQ(result.out, out);
        EXPECT_EQ(result.err, err);
        EXPECT_EQ(names, left);
    }

    void expect_file(const string& name, const string& start, const string& end) {
        EXPECT_TRUE(files[name].starts_with(start) && files[name].ends_with(end))
            << name << ":\n"
            << files[name] << "\nshould begin with:\n"
            << start << "\nand end with:\n"
            << end;
    }

    void expect_complete() {
        const bool constrained = input.find("\n$CONSTRAINT:") != string::npos;
        expect_run(0, "", "", "M.GEN\nM.HDR\n");
        expect_file("M.GEN", "$OFFLISTING\n\n",
                    "\n\nOPTION LIMROW=0;\nOPTION LIMCOL=0;\nPUT / '$PEPS:1.E-6'/;\n"
                    "PUT / '$SOLVE'/;\nPUTCLOSE   ORV;\nM.INTEGER1 = M.INTEGER1 + 1;\n");
        expect_file("M.HDR", "$OFFLISTING\n\n",
                    string("\n\n$OFFTEXT\n\n$setglobal  n_models   1\n$setglobal  n_constr   ") +
                        (constrained ? "1" : "0") + "\nM.INTEGER1=1;\n");
    }

    // The report of a fault in the model, with that line as the last one read.
    void expect_report(const string& message, std::size_t line) {
        const string record = lines_of(input).at(line - 1) + "\n";
        const string fault = "M\n\n" + message + "\n Last input record:\n\n" + record + "\n";
        const string block =
            "$ERROR  ERROR ENCOUNTERED IN PREPROCESSOR \n"
            "$LOG  ERROR DETECTED BY ORVEX PREPROCESSOR \n\n$ONTEXT\n\n\n"
            "ORVEX PREPROCESSOR - ERROR\n\n Error preprocessing model:" +
            fault + "$OFFTEXT\n$ABORT Compilation aborted.\n";
        expect_run(0, "", "", "M.GEN\nM.HDR\nm.err\n");
        EXPECT_EQ(files["m.err"],
                  "\n Error preprocessing: " + fault + " See file M.HDR for details.\n");
        EXPECT_EQ(files["M.GEN"].find("PUTCLOSE"), string::npos);
        if (parts["Ends"] == "overflow\n") {
            EXPECT_EQ(files["M.HDR"], block);
            return;
        }
        expect_file("M.HDR", "$OFFLISTING\n\n*  ORVEX MODEL DECLARATION FILE\n",
                    "\n\n$OFFTEXT\n\n" + block);
        // Line 1 of the listing is the one after the model's name; 248 columns of each line are
        // kept.
        const string number = std::to_string(line - 1);
        const string echo = string(5 - number.size(), ' ') + number + "  " + record.substr(0, 248);
        const string listing = echo + (echo.back() == '\n' ? "" : "\n") + " \n \nSymbol Listing\n";
        EXPECT_NE(files["M.HDR"].find("\n" + listing), string::npos) << listing << files["M.HDR"];
    }

    // A message that is not a report.
    void expect_message(const string& message) {
        const string ends = parts["Ends"];
        const string one_line = message.substr(0, message.size() - 1);
        const string out = filled(part("stdout", "<message>\n"), {{"message", one_line}});
        const string left = std::regex_replace(part("Leaves", ""), std::regex(" "), "\n");
        expect_run(std::stoi(part("Status", "0")), ends == "stdout\n" ? out : "",
                   ends == "stderr\n" ? message : "", left);
        if (ends == "file\n") {
            EXPECT_EQ(files[left.substr(0, left.size() - 1)], message);
        }
        if (ends != "listing\n") return;
        expect_complete();
        EXPECT_NE(files["M.HDR"].find("\nSymbol Listing\n \n" + message + " \n"), string::npos);
    }

    Texts parts = GetParam().parts;
    string input;  // the text of m.zlm
    harness::Result result;
    Texts files;   // all files after the run
    string names;  // of those made by the run
};

TEST_P(Messages, Examples) {
    EXPECT_EQ(GetParam().faults, "");
    EXPECT_EQ(GetParam().paragraphs, 2) << "one on the cause, one on what to change";
    EXPECT_TRUE(has("Says") && has("Ends"));
    EXPECT_NE(has("Message"), is_finding(GetParam()));
    const bool reports = parts["Ends"] == "error\n" || parts["Ends"] == "overflow\n";
    EXPECT_EQ(has("Level"), is_finding(GetParam()));
    if (has("Unreachable") || is_finding(GetParam()) || HasFailure()) return;
    ASSERT_EQ(has("Line"), reports);
    ASSERT_TRUE(!reports || has("wrong") || has("wrong-command"));
    ASSERT_EQ(has("wrong") + 2 * has("wrong-command"),
              has("corrected") + 2 * has("corrected-command"));

    const string message = filled(parts["Message"]);
    translate("wrong");
    if (reports) {
        expect_report(message, std::stoul(parts["Line"]));
    } else {
        expect_message(message);
    }
    translate("corrected");
    expect_complete();
    EXPECT_EQ(files["M.HDR"].find("Warning"), string::npos);
}

INSTANTIATE_TEST_SUITE_P(Index, Messages, testing::ValuesIn(entries()), [](const auto& row) {
    return std::regex_replace(row.param.code, std::regex("[^a-zA-Z0-9]"), "_");
});

// The string literals in the sources that are messages, recognised by words that only messages
// have.
std::set<string> messages_in(const string& source) {
    static const std::regex token(R"re(//.*|'(?:\\.|[^'\\])'|R"\((.*?)\)"|"((?:\\.|[^"\\])*)")re");
    static const std::regex mark(
        R"(\*\*\* |FFOPEN|INVALID INPUT|[cC]ould not |Error while|^Warning| references are|FIX ME)"
        R"(|Preprocessor failure|^\$ABORT Check)");
    std::set<string> messages;
    for (const string& line : lines_of(source)) {
        for (std::sregex_iterator at(line.begin(), line.end(), token), end; at != end; ++at) {
            const string literal = at->str(1) + at->str(2);
            if (std::regex_search(literal, mark)) messages.insert(literal);
        }
    }
    return messages;
}

TEST(MessageIndex, HasTheMessagesOfTheSourcesAndNoOthers) {
    std::set<string> codes;
    std::map<string, bool> indexed;  // the messages, and whether the sources have them
    for (Entry entry : entries()) {
        EXPECT_TRUE(std::regex_match(entry.code, std::regex("[a-z]+(-[a-z]+)*"))) << entry.code;
        EXPECT_TRUE(codes.insert(entry.code).second) << entry.code << " is there twice";
        if (is_finding(entry)) continue;
        for (const string& message : lines_of(entry.parts["Message"])) indexed[message] = false;
    }
    ASSERT_FALSE(indexed.empty());
    for (const auto& file : std::filesystem::recursive_directory_iterator(SOURCE_DIR)) {
        const string path = file.path().string();
        if (!file.is_regular_file() || path.find("/standin/") != string::npos ||
            path.find("/frontend/") != string::npos) {
            continue;
        }
        for (const string& literal : messages_in(harness::read_file(path))) {
            bool known = false;
            for (auto& [message, in_sources] : indexed) {
                if (message.find(literal) != string::npos) known = in_sources = true;
            }
            EXPECT_TRUE(known) << path << " has a message that the index lacks: " << literal;
        }
    }
    for (const auto& [message, in_sources] : indexed)
        EXPECT_TRUE(in_sources) << "the sources have no such message: " << message;
}

}  // namespace
