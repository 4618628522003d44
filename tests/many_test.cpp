// The files of examples/many, used by their tools on a copy of the examples.
#include "harness.h"
#include "tools.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <string>

namespace {

using harness::Folder;
using std::string;
namespace fs = std::filesystem;

// The output of a shell script in a copy of examples/many next to the other examples, where "orvex"
// is on the path, models.txt lists the files and all/ has the outputs of one translation.
string printed_by(const string& script) {
    const Folder folder;
    fs::copy(EXAMPLES_DIR, folder.path(), fs::copy_options::recursive);
    return folder
        .shell(
            "PATH=\"${ORVEX%/*}:$PATH\"; unset ORVEX; cd many; exec 2>&1\n"
            "ls ../*/*.zlm >models.txt; orvex translate -q -o all ../*/*.zlm\n" +
            script)
        .out;
}

bool is_there(const string& command) { return Folder().shell(command).status == 0; }

// Changes for a command in $tool. For each: the status, the files translated, the outputs written.
// The clock of a file system may advance in steps of some milliseconds.
const char* const changes = R"(
build() {
    sleep 0.02; touch mark; sleep 0.02; eval "$1"
    $tool >log 2>&1; status=$?
    echo $status: $(sed -n 's/^.*orvex translate.*\/\(.*\).zlm$/\1/p' log | sort -u): \
        $(cd out; find . -newer ../mark -name '*.[GH]*' | sort)
}
build; diff -r -x '*.d*' all out; build
build 'sed "s/Price of services/Price/" ../closed/closed.zlm >c; cp c ../closed/closed.zlm'
build 'touch ../taxes/taxes.zlm'
build 'rm out/WORK.HDR'
build 'cp ../regions/regions.zlm r; sed 51s/PROD/PORD/ r >../regions/regions.zlm'
grep -c '^error.keyword-unknown.: unknown keyword `$PORD`' log
build 'cp r ../regions/regions.zlm'
build 'sed s/MODEL:WORK/MODEL:JOB/ ../three/three.zlm >t; cp t ../three/three.zlm'; build
)";

const char* const answers =
    "0: closed dynamic regions taxes three: ./BARTER.GEN ./BARTER.HDR ./CLOSED.GEN ./CLOSED.HDR "
    "./DYNAMIC.GEN ./DYNAMIC.HDR ./REGIONS.GEN ./REGIONS.HDR ./TAXES.GEN ./TAXES.HDR ./TRADE.GEN "
    "./TRADE.HDR ./WORK.GEN ./WORK.HDR\n"
    "0: :\n"
    "0: closed: ./CLOSED.HDR\n"
    "0: taxes:\n"
    "0: three: ./WORK.HDR\n"
    "FAILED: regions:\n"
    "1\n"
    "0: regions:\n"
    "0: three: ./JOB.GEN ./JOB.HDR\n"
    "0: :\n";

string with_status(string text, const string& status) {
    return text.replace(text.find("FAILED"), 6, status);
}

TEST(Many, MakeTranslatesWhatChanged) {
    if (!is_there("make --version | grep GNU")) SKIP_WITHOUT("GNU make (Debian: make)");
    EXPECT_EQ(printed_by(string("tool='make -j4'\n") + changes), with_status(answers, "2"));
    // A rule that depends on an output: it waits for the translation, and runs if that wrote the
    // output.
    EXPECT_EQ(
        printed_by(
            "echo 'copy: out/TAXES.HDR; cp $< $@; echo copied' >rule\n"
            "run() { sleep 0.02; make -s -j4 -f Makefile -f rule copy; }\n"
            "run; touch ../taxes/taxes.zlm; run\n"
            "sed 's/Public services/Parks/' ../taxes/taxes.zlm >t; cp t ../taxes/taxes.zlm; run\n"),
        "copied\ncopied\n");
}

TEST(Many, NinjaTranslatesWhatChanged) {
    EXPECT_EQ(printed_by(string("sh ninja.sh ../*/*.zlm; tool=ninja\n") + changes +
                         "ninja -t cleandead >log; ls out/WORK.* out/JOB.GEN 2>/dev/null\n"),
              with_status(answers, "1") + "out/JOB.GEN\n");
}

TEST(Many, TasksOfAnArrayMakeTheWhole) {
    EXPECT_EQ(
        printed_by(R"(
for i in 1 2 3 4 5; do sh array.sh $i; done; diff -r all out
OUT=two PER=3 SLURM_ARRAY_TASK_ID=2 sh array.sh; ls two
cp ../closed/closed.zlm 'a b.zlm'; ls a*.zlm >list
LIST=list OUT=blank PBS_ARRAY_INDEX=1 sh array.sh; ls blank
sh array.sh 6; echo $?
sed 51s/PROD/PORD/ ../regions/regions.zlm >a.zlm; echo a.zlm >list
LIST=list OUT=none sh array.sh 1 2>log; echo $?; ls none 2>&-)"),
        "BARTER.GEN\nBARTER.HDR\nTAXES.GEN\nTAXES.HDR\nTRADE.GEN\nTRADE.HDR\nWORK.GEN\nWORK.HDR\n"
        "CLOSED.GEN\nCLOSED.HDR\nno line 6 in models.txt\n2\n1\n");
}

TEST(Many, TheServiceShowsAndUploadsFindings) {
    const string out = printed_by(R"(
for python in python3 /usr/bin/python3 none; do
    "$python" -c 'import jsonschema, yaml' 2>/dev/null && break
done
[ $python != none ] || { echo none; exit; }
"$python" -c '
import yaml
steps = yaml.safe_load(open("models.yml"))["jobs"]["check"]["steps"]
print("\n".join(step["run"] for step in steps if "orvex check" in step.get("run", "")))
print("cp", steps[-1]["with"]["sarif_file"], "uploaded")' >commands
cp commands ..; cd ..; sed -i.old 51s/PROD/PORD/ regions/regions.zlm
sh commands | sed 's/%0Ahelp: did you mean `$PROD:`?.*//'; "$python" ')" TESTS_DIR
                                  R"(/validate.py' ')" TESTS_DIR R"(/sarif.schema.json' uploaded
grep -c '"uri":"regions/regions.zlm"' uploaded)");
    if (out == "none\n")
        SKIP_WITHOUT("python3 with jsonschema and yaml (Debian: python3-jsonschema, python3-yaml)");
    EXPECT_EQ(out,
              "::error title=keyword-unknown,file=regions/regions.zlm,line=51,endLine=51,col=1,"
              "endColumn=6::unknown keyword `$PORD`\nvalid\n1\n");
}

TEST(Many, ThePageShowsLinesOfTheFiles) {
    EXPECT_EQ(
        printed_by(
            R"(mkdir out; orvex translate -q -o out --depfile out/closed.d ../closed/closed.zlm
sh ninja.sh ../closed/closed.zlm
for pair in make:Makefile ninja:build.ninja yaml:models.yml; do
    sed -n '/^```'${pair%:*}'$/,/^```$/{/^```/d;p;}' ')" DOCS_DIR
            R"(/many-files.md' | sed 's/^ *//' >shown
    sed 's/^ *//' ${pair#*:} >has; grep -c . shown; grep -vxFf has shown
done)"),
        "5\n6\n8\n");
}

}  // namespace
