// The models built from a tree agree with the translator: agree.cpp has the rules.
#include "agree.h"

#include "case_file.h"
#include "frontend/findings/messages.h"
#include "harness.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <string>

namespace fs = std::filesystem;
using std::string;

namespace {

void expect_agreement(const string& input, unsigned skipped = 0) {
    EXPECT_EQ(agree::difference(input, skipped), "") << "without models " << skipped << " of:\n"
                                                     << input.substr(0, 5000);
}

// The input alone, and between two models: the last fields of the one before belong to an opening
// record, and the one after continues them. Any of the three may be left out.
void expect_agreement_anywhere(const string& input) {
    expect_agreement(input);
    const string before = "$MODEL:BEFORE\n$PROD:Y(S)  s:1\n O:P  Q:1\n$PROD:Z\n$OFFTEXT\ntext\n";
    const string after = "\n$MODEL:AFTER\n+ t:0 A:B\n O:P(S)\n\n+ Q:1\n$OFFTEXT\n";
    const string all = string(before).append(input).append(after);
    for (unsigned skipped = 0; skipped < 8; ++skipped) expect_agreement(all, skipped);
}

TEST(Agree, OnExamples) {
    for (const string& name : harness::names_in(EXAMPLES_DIR, "")) {
        const string path = string(EXAMPLES_DIR "/").append(name).append("/" + name + ".zlm");
        if (fs::exists(path)) expect_agreement_anywhere(harness::read_file(path));
    }
}

TEST(Agree, OnCases) {
    for (const string& name : harness::names_in(CASES_DIR, ".case")) {
        for (const auto& section : harness::read_case(CASES_DIR "/" + name + ".case"))
            if (section.kind == "given") expect_agreement_anywhere(section.text);
    }
}

TEST(Agree, OnMessageSamples) {
    for (const auto& entry : orvex::frontend::message_index()) {
        expect_agreement_anywhere(entry.wrong);
        expect_agreement_anywhere(entry.corrected);
    }
}

// Inputs that once made a difference, and state that carries over between records: models without
// their first and last lines.
TEST(Agree, OnRows) {
    for (const string lines : {
             "$SECTORS:\n )Y(R",
             "$SECTORS:\n Y(R$(A",
             "$PROD:Y\n O:P#R(S$(A",
             "$SECTORS:\n Y(T)\n$AUXILIARIES:\n T",
             "$PROD:Y(T)\n O:P(T\r-1)  I:P(T\t+1)",
             "$PROD:Y\n O:P  T:A#(R)",
             "$REPORT:\n V:X  O:P  PROD::Y",
             "$REPORT:\n+ V:X",
             "$ PROD:Y",
             "$PROD Y\t:Z",
             "$PROD:Y\n O:P(S)\n I:P  Q:A(S)",
             "$PROD:Y(S)\n O:P\n I:P  Q:A(S)\n$PROD:Z\n O:P  Q:A(S)",
             "$PROD:Y\n O:P  R.TL:A(R)  Q:B(R)\n I:P  Q:B(R)",
             "$PRICES:\n P(S)\n$REPORT:\n V:X(S)  O:P(S)\n V:Z  O:P(S)",
             "$PROD:Y\n O:P\n* text\n\n I:Q\n*\n+ A:C\n K:A",
             "$PROD:Y\n$PEPS: 1\n+ A:P\n O:P\n+ A:C\n$PEPS:\n+ A:C",
             "$CONSTRAINT:V\n V =E= 0;\n O:P",
             "$AUXILIARY:\n V\n$CONSTRAINT:V\n$PEPS:\n+ A:C\n O:P\n$CONSTRAINT:V\n;\n+ A:C",
         })
        expect_agreement_anywhere("$MODEL:M\n" + lines + "\n$OFFTEXT\n");
}

// A tree has the most bytes per token if all lines are short.
TEST(Agree, OnShortLines) {
    for (const string line : {"", "x", ":", "+", "$", "$A", "$PEPS:", "$PROD:", "$REPORT:\n:"}) {
        string lines = "$MODEL:M\n";
        for (int i = 0; i < 1000; ++i) lines += line + "\n";
        expect_agreement(lines);
    }
}

TEST(Agree, OnFindingsOfTheFuzzers) {
    if (!fs::exists(FINDINGS_DIR)) return;
    for (const auto& file : fs::directory_iterator(FINDINGS_DIR))
        expect_agreement_anywhere(agree::fuzzed_input(harness::read_file(file.path().string())));
}

}  // namespace
