// orvex as users call it: command lines with their status and output, and the files left in the
// folder.
#include "frontend/base/descriptors.h"
#include "frontend/base/files.h"
#include "frontend/base/jobs.h"
#include "frontend/base/line_stream.h"
#include "frontend/base/process.h"
#include "frontend/cli/reporter.h"
#include "frontend/session/depfile.h"
#include "harness.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <stdexcept>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using harness::Folder;
using harness::Result;
namespace fs = std::filesystem;
namespace frontend = orvex::frontend;

// A model without errors, of ten lines after its name.
std::string model(const std::string& name, const std::string& more_commodities = "",
                  const std::string& production = "$PROD:Y") {
    return "$MODEL:" + name + "\n$SECTORS:\n  Y\n$COMMODITIES:\n  PY  PL" + more_commodities +
           "\n$CONSUMERS:\n  RA\n" + production +
           "\n  O:PY  Q:1\n  I:PL  Q:1\n$DEMAND:RA\n  D:PY\n  E:PL  Q:1\n$OFFTEXT\n";
}

// good, bad (an unknown keyword on line 8), warn (PX is not used), two (M and N), row (M, a bad N,
// and O), and folders.
void write_files(const Folder& folder) {
    for (const char* name : {"models/inner/.hidden", "empty"}) {
        fs::create_directories(folder.path() + "/" + name);
    }
    folder.write("good.zlm", model("M"));
    folder.write("bad.zlm", model("M", "", "$PORD:Y"));
    folder.write("warn.zlm", model("M", "  PX"));
    folder.write("two.zlm", model("M") + model("N"));
    folder.write("row.zlm", model("M") + model("N", "", "$PORD:Y") + model("O"));
    folder.write("-odd.zlm", model("ODD"));
    folder.write("models/b.zlm", model("B", "  PX"));
    folder.write("models/inner/a.zlm", model("A", "  PX"));
    folder.write("models/inner/.hidden/c.zlm", "$MODEL:C\n$BAD:\n");
    folder.write("models/other.txt", "$MODEL:C\n$BAD:\n");
    fs::create_directory_symlink("..", folder.path() + "/models/inner/loop");
}

constexpr const char* nothing = nullptr;

struct CommandLine {
    const char* command;  // after "orvex", for the shell
    int status;
    const char* out;  // a part of it; if empty, there is no output
    const char* err;
};

const CommandLine command_lines[] = {
    {"check good.zlm", 0, nothing, "checked 1 file: no errors, no warnings\n"},
    {"check bad.zlm", 1, "error[keyword-unknown]: ",
     "for more about an error: orvex explain keyword-unknown\n1 error in 1 file\n"},
    {"check /dev/zero", 2, "cannot read `/dev/zero`: it is larger than 256 MiB", "1 error in 1"},
    {"check good.zlm --translator none", 2, "error[translator-failed]",
     "translator-failed\n1 error\n"},
    {"check -q bad.zlm --color always", 1, "\x1b[1;31merror[keyword-unknown]\x1b[", nothing},
    {"check bad.zlm good.zlm warn.zlm", 1, "bad.zlm:8:1", "1 error, 1 warning in 3 files\n"},
    {"check warn.zlm --error-on-warnings", 1, "warning[name-unused]: ", "1 warning in 1 file\n"},
    {"check warn.zlm --warn name-unused=error", 1, "error[name-unused]: ", "1 error in 1 file\n"},
    {"check bad.zlm warn.zlm models --statistics --max-errors 1 --format short", 1,
     "[name-unused]\n3  warning  name-unused\n1  error    keyword-unknown\n",
     "1 error, 3 warnings"},
    {"check -q good.zlm --statistics", 0, nothing, nothing},
    {"check bad.zlm --exit-zero", 0, "error[keyword-unknown]: ", "1 error in 1 file\n"},
    {"check warn.zlm --error-on-warnings --exit-zero --format json --statistics", 0,
     "\"status\":0,\"statistics\":[{\"code\":\"name-unused\",\"severity\":\"warning\",\"count\":1}]"
     "}\n",
     nothing},
    {"check none.zlm --exit-zero", 2, "[file-unreadable]", "1 error in 1 file\n"},
    {"check bad.zlm --exit-zero --report text=none/r", 2, "[output-unwritable]",
     "2 errors in 1 file\n"},
    {"translate bad.zlm --exit-zero", 2, nothing,
     "`--exit-zero` is not an option of `translate`\n"},
    {"check warn.zlm --warn error --warn name-unused=off", 0, nothing, "no errors"},
    {"lsp --log log <<END >o; echo $?; cat log\nContent-Length: 37\r\n\r\n"
     R"({"jsonrpc":"2.0","id":1,"method":"x"})"
     "\nEND\n",
     0, "1\norvex lsp: the server is not initialized\n", nothing},
    {"check none.zlm", 2, "error[file-unreadable]: cannot read `none.zlm`: No such file",
     "1 error in 1 file\n"},
    {"check none.zlm bad.zlm", 2, "bad.zlm:8:1", "2 errors in 2 files\n"},
    {"check", 2, nothing, "error: no file is given\n"},
    {"check models", 0, "models/b.zlm:5:", "2 warnings in 2 files\n"},
    {"check models/inner models ./models/b.zlm", 0, "models/b.zlm:5:", "2 warnings in 2 files\n"},
    {"check empty", 2, nothing, "error: no *.zlm file in `empty`\n"},
    {"check 'models/*.z?m' 'mod*/inner/*' '[g]ood.zlm'", 0,
     "models/inner/a.zlm:5:", "2 warnings in 3 files\n"},
    {"translate -q '*two.zlm' --depfile d; cat d", 0, ": two.zlm\n", nothing},
    {"check 'models/*.gms'", 2, nothing, "error: no file matches `models/*.gms`\n"},
    {"--version; mv bad.zlm '?.ZLM'; \"$ORVEX\" check '?.ZLM' --format short", 1, "\n?.ZLM:8:1",
     "1 error in 1 file\n"},
    {"--version; mv bad.zlm models/c.Zlm; \"$ORVEX\" check models --format short", 1,
     "models/c.Zlm:8:1", "in 3 files\n"},
    {"translate models", 2, nothing, "error: `models` is a folder\n"},
    {"fmt --check good.zlm models --format short; grep -c PROD good.zlm", 0,
     "good.zlm:2:1: error: `orvex fmt` would change the layout of this file [layout-differs]\n",
     "would format 3 files\n3 errors in 3 files\n"},
    {"fmt good.zlm; \"$ORVEX\" fmt --check good.zlm", 0, nothing,
     "formatted 1 file\nwould format no files\n"},
    {"fmt --diff good.zlm >p; echo $?; patch -s good.zlm p; \"$ORVEX\" fmt -q --diff good.zlm", 0,
     "1\n", "would format 1 file\n"},
    {"fmt row.zlm; echo $?; \"$ORVEX\" fmt -q --diff row.zlm", 1, "\n1\n",
     "formatted 1 file; 1 model with errors left unchanged\n1 error in 1 file\n"},
    {"fmt - <row.zlm >o; grep -c OFFTEXT o", 0, "3\n", "error[keyword-unknown]: "},
    {"fmt none.zlm good.zlm", 2, "[file-unreadable]", "formatted 1 file\n"},
    {"fmt --check --diff good.zlm", 1, "\n+++ good.zlm\n", "error[layout-differs]: "},
    {"fmt --model M good.zlm", 2, nothing, "`--model` is not an option of `fmt`\n"},
    {"--version; chmod 640 good.zlm; ln -s good.zlm l; \"$ORVEX\" fmt -q l; ls -l l good.zlm", 0,
     "rw-r-----", nothing},
    {"--version; ln -s good.zlm l; \"$ORVEX\" fmt -q l; readlink l; \"$ORVEX\" fmt --check "
     "good.zlm",
     0, "\ngood.zlm\n", "would format no files\n"},
    {"check - --stdin-filename x.zlm <bad.zlm", 1, "x.zlm:8:1", "1 error"},
    {"check - <&-", 2, "cannot read `<stdin>`", "1 error"},
    {"check - - <good.zlm", 2, nothing, "`-` is given twice"},
    {"chekc good.zlm", 2, nothing, "unknown command `chekc`\nhelp: did you mean `check`?\n"},
    {"CHECK good.zlm", 2, nothing, "unknown command `CHECK`\nhelp: did you mean `check`?\n"},
    {"chekc --help", 2, nothing, "unknown command `chekc`\nhelp: did you mean `check`?\n"},
    {"-h nosuch", 2, nothing,
     "unknown command `nosuch`\nhelp: `orvex --help` lists the commands\n"},
    {"good.zlm", 2, nothing, "help: did you mean `orvex check good.zlm`?\n"},
    {"check --fromat short good.zlm", 2, nothing, "help: did you mean `--format`?\n"},
    {"check --FORMAT=short good.zlm", 2, nothing, "help: did you mean `--format`?\n"},
    {"check good.zlm --format Short", 2, nothing, "not `Short`: did you mean `short`?\n"},
    {"check warn.zlm --warn Name-Unused=off", 0, nothing, "no errors, no warnings\n"},
    {"info --json good.zlm", 2, nothing, "option `--json`\nhelp: write `--format json`\n"},
    {"graph --mermaid good.zlm", 2, nothing, "help: write `--format mermaid`\n"},
    {"codes --json", 2, nothing, "help: `orvex codes --help` lists the options\n"},
    {"check -x good.zlm", 2, nothing, "error: unknown option `-x`\n"},
    {"fmt --depfil x good.zlm", 2, nothing,
     "error: unknown option `--depfil`\nhelp: `orvex fmt --help` lists the options\n"},
    {"translate --depfil x good.zlm", 2, nothing, "help: did you mean `--depfile`?\n"},
    {"check good.zlm --format sort", 2, nothing, "not `sort`: did you mean `short`?\n"},
    {"graph good.zlm --format short", 2, nothing, "must be dot, svg, mermaid, json or table"},
    {"check good.zlm -j 0", 2, nothing, "`--jobs` must be a number from 1 to 256, not `0`\n"},
    {"check good.zlm --max-errors -1", 2, nothing, "`--max-errors` must be a number from 0"},
    {"check good.zlm --first-model 99", 2, nothing, "a number from 0 to 98"},
    {"check good.zlm --warn nme-unused=off", 2, nothing, "did you mean `name-unused`?"},
    {"check good.zlm --warn keyword-unknown=off", 2, nothing, "is for warnings"},
    {"check good.zlm --time \"$(printf 'a\\nINP b')\"", 2, nothing, "control characters"},
    {"check good.zlm --model", 2, nothing, "error: `--model` needs a value\n"},
    {"check --model= good.zlm", 2, nothing, "error: `--model` needs a value\n"},
    {"check good.zlm --quiet=no", 2, nothing, "error: `--quiet` takes no value\n"},
    {"check good.zlm --depfile d", 2, nothing, "error: `--depfile` is not an option of `check`\n"},
    {"check good.zlm --unsafe-fixes", 2, nothing, "`--unsafe-fixes` needs `--fix` or `--diff`\n"},
    {"translate good.zlm --fix", 2, nothing, "error: `--fix` is not an option of `translate`\n"},
    {"check --fix - <good.zlm", 0, "$OFFTEXT\n", "no errors, no warnings\n"},
    {"check --fix - <bad.zlm", 1, "$PORD:Y\n", "error[keyword-unknown]"},
    {"check warn.zlm --warn NAME-Unused=error", 1, "error[name-unused]: ", "1 error in 1 file\n"},
    {"explain NAME-Unused", 0, "warning[name-unused]", nothing},
    {"graph good.zlm --depth 1", 2, nothing, "error: `--depth` needs `--focus`\n"},
    {"graph good.zlm --focus PYY", 2, nothing, "help: did you mean `PY`?\n"},
    {"graph two.zlm --focus pyy", 2, nothing, "help: did you mean `PY`?\n"},
    {"graph good.zlm --focus PX", 2, nothing, "is named `PX`\n\n"},
    {"check --report short=- good.zlm", 2, nothing, "`--report` needs a file name"},
    {"check --report json=good.zlm good.zlm", 2, nothing, "is an input"},
    {"--format short check bad.zlm", 1, "bad.zlm:8:1: error: ", "1 error in 1 file\n"},
    {"-q bad.zlm check", 2, nothing, "unknown command `bad.zlm`"},
    {"-j1 -q check -- -odd.zlm", 0, nothing, nothing},
    {"check --bogus -j 0 --help", 0, "usage: orvex check ", nothing},
    {"check good.zlm -qh", 0, "usage: orvex check ", nothing},
    {"help graph", 0, "usage: orvex graph ", nothing},
    {"help", 0, "examples:\n  orvex check model.zlm ", nothing},
    {"help chekc", 2, nothing, "unknown command `chekc`\nhelp: did you mean `check`?\n"},
    {"--version", 0, "orvex 0.1.0\n", nothing},
    {"", 0, "examples:\n  orvex check model.zlm ", nothing},
    {"--quiet", 2, nothing, "error: no command is given\n"},
    {"check --bogus --format json", 2, R"("code":"usage","message":"unknown option `--bogus`")",
     nothing},
    {"check empty --format=sarif", 2, R"("ruleId":"usage")", nothing},
    {"translate --format json", 2, nothing, R"("code":"usage")"},
    {"check --bogus good.zlm --report json=r --report=sarif=s; cat r", 0,
     R"("message":"unknown option `--bogus`")", "error: unknown option `--bogus`\n"},
    {"check --report sarif=r --model; grep -c usage r", 0, "2\n", "`--model` needs a value\n"},
    {"translate models --format json --report short=r; cat r", 0,
     "error: `models` is a folder [usage]\n", R"("code":"usage")"},
    {"check --report short=none/r --bogus", 2, "[output-unwritable]", "option `--bogus`\n"},
    {"check --report json=good.zlm good.zlm --bogus; cat good.zlm", 0, "$MODEL:M\n",
     "error: unknown option"},
    {"check --report json=models/b.zlm models; cat models/b.zlm", 0, "$MODEL:B\n", "is an input"},
    {"--bogus --report json=bad.zlm check - <bad.zlm; cat bad.zlm", 0, "$PORD:Y\n",
     "option `--bogus`\n"},
    {"check good.zlm --format json", 0, R"({"version":2,"type":"summary","files":1,"errors":0)",
     nothing},
    {"check bad.zlm -q --report short=r >/dev/null; cat r", 0, "bad.zlm:8:1: error: ", nothing},
    {"check bad.zlm good.zlm --format junit", 1,
     "<testcase name=\"no findings\" classname=\"good.zlm\"/>", nothing},
    {"check --bogus --format junit", 2, "<testcase name=\"usage\" classname=\"orvex\">", nothing},
    {"check bad.zlm --report short=none/r", 2, "cannot write `none/r`: No such file", "2 errors"},
    {"check good.zlm --translator ./none", 2, "error[translator-failed]: ", "1 error"},
    {"--version; export TMPDIR=none; \"$ORVEX\" check good.zlm", 2,
     "error[temporary-folder-unusable]: cannot use the temporary folder `none`: No such file",
     "1 error"},
    {"--version; (ulimit -f 0; TMPDIR=$PWD/empty \"$ORVEX\" check good.zlm) | cat", 0,
     "/empty`: File too large\n", nothing},
    {"--version; printf '#!/bin/sh\necho \" *** Cannot write file: M.GEN: No space left\" >&2\n' "
     ">full; chmod +x full; TMPDIR=empty \"$ORVEX\" check --translator ./full good.zlm --format "
     "short",
     2, "/empty`: No space left [temporary-folder-unusable]\n", "1 error in 1 file\n"},
    {"--version; n=$(printf 'a\nb.zlm'); cp bad.zlm \"$n\"; \"$ORVEX\" check \"$n\"", 2,
     "error[file-name-unusable]: the put file cannot be named after `a\uFFFDb.zlm`: it contains "
     "a line end",
     "1 error in 1 file\n"},
    {"--version; n=$(printf 'a\nb.zlm'); cp good.zlm \"$n\"; "
     "\"$ORVEX\" translate --put-file p --depfile d \"$n\"; ls *.GEN",
     0, "M.GEN\n", "cannot write `d`: make cannot read a name with a line end\n"},
    {"--version; n=$(printf '%0252d'); cp good.zlm $n; \"$ORVEX\" check $n", 2,
     "it is longer than 255 characters\n", "1 error in 1 file\n"},
    {"check bad.zlm >/dev/full", 2, nothing, "cannot write standard output: No space left"},
    {"codes >&-", 2, nothing, "cannot write standard output: Bad file descriptor"},
    {"codes | head -n 1", 0, "control-unreadable", nothing},
    {"explain keyword-unknwon", 2, nothing, "help: did you mean `keyword-unknown`?\n"},
    {"explain Keyword-Unknown", 0, "error[keyword-unknown]: ", nothing},
    {"info bad.zlm --format json", 1, R"({"version":2,"type":"model","model":"M")",
     R"({"version":2,"type":"finding","severity":"error","code":"keyword-unknown")"},
    {"graph bad.zlm --format json", 1, nothing, R"({"version":2,"type":"finding")"},
    {"graph good.zlm --format json --focus P", 2, nothing, R"("code":"usage")"},
    {"info bad.zlm", 1, "M  bad.zlm:1\n", "error[keyword-unknown]"},
    {"info warn.zlm", 0, "PX", nothing},
    {"graph two.zlm --format svg", 2, nothing, "`--format svg` draws one model"},
    {"graph good.zlm warn.zlm --format svg", 2, nothing, "help: name one with `--model`\n"},
    {"graph two.zlm --format mermaid", 2, nothing, "`--format mermaid` draws one model, but"},
    {"graph good.zlm warn.zlm --format mermaid", 2, nothing, "help: name one with `--model`\n"},
    {"graph two.zlm --format mermaid --model N", 0, "flowchart LR\n", nothing},
    {"graph bad.zlm two.zlm --format svg --report short=r; cat r", 0,
     "[keyword-unknown]\nerror: `--format svg` draws one model, but there are more [usage]\n",
     "2 errors in 2 files\n"},
    {"graph good.zlm --focus P --report short=r; cat r", 0,
     "error: no sector, commodity, consumer or auxiliary variable is named `P` [usage]\n",
     "error[usage]: "},
    {"translate --model NN two.zlm", 1, nothing, "error[model-unknown]: no model is named `NN`"},
    {"translate --model n two.zlm good.zlm", 0, nothing, "wrote 2 files\n"},
    {"translate --header h two.zlm", 2, nothing,
     "`--header` names the file of one model, but there are 2\n"},
    {"translate --header h --model N two.zlm; ls", 0, "\nh\n", "wrote 2 files\n"},
    {"translate -q two.zlm; sed -i s/PL/PZ/ M.GEN; \"$ORVEX\" translate two.zlm --format json", 0,
     nothing, R"("written":["M.GEN"],"unchanged":["M.HDR","N.GEN","N.HDR"]})"},
    {"translate bad.zlm --format json", 1, nothing, R"("written":[],"unchanged":[]})"},
    {"translate --out good.zlm/x good.zlm", 2, nothing,
     "error[output-unwritable]: cannot write `good.zlm/x/M.GEN`: Not a directory"},
    {"translate good.zlm two.zlm", 1, nothing,
     "error[output-repeated]: output `M.GEN` is also written by another model"},
    // A statement that the translator cuts is an error, even with all warnings off.
    {"--version; sed \"s/Q:1/Q:$(printf %0240d 7)/\" good.zlm >long.zlm; "
     "\"$ORVEX\" translate --warn off long.zlm; ls *.GEN",
     2, "orvex", "error[statement-cut]: the statement for the value of `Q:` has 259 columns"},
    {"translate bad.zlm; ls *.GEN *.HDR", 2, nothing, "1 error in 1 file\n"},
    {"translate warn.zlm --error-on-warnings; ls *.GEN", 2, nothing, "1 warning in 1 file\n"},
    {"translate good.zlm two.zlm --out o; ls o", 0, "N.GEN\nN.HDR\n",
     "wrote 2 files; 2 models not translated\n2 errors in 2 files\n"},
    {"translate -q two.zlm bad.zlm --format short; ls *.HDR", 0, "N.HDR\n",
     "two.zlm:1:1: error: output `M.GEN` is also written by another model [output-repeated]\n"},
    {"translate good.zlm two.zlm -q --format json", 1, nothing,
     R"("message":"this model has the same name","spans":[{"path":"good.zlm","line":1,)"},
    {"translate good.zlm two.zlm --model N; ls *.GEN", 0, "N.GEN\n", "wrote 2 files\n"},
    {"translate - two.zlm <good.zlm -q --format short", 1, nothing, "<stdin>:1:1: error: output"},
    {"--version; cat good.zlm two.zlm >t; \"$ORVEX\" translate t; ls *.GEN", 0, "N.GEN\n",
     "wrote 2 files; 2 models not translated\n1 error in 1 file\n"},
    {"--version; echo '* none' >e; \"$ORVEX\" translate --warn off e", 1, "orvex",
     "error[model-missing]: the file has no `$MODEL:` line"},
    {"--version; echo '* none' >e; \"$ORVEX\" translate --warn model-missing=off e", 0, "orvex",
     "wrote no files\n"},
    {"translate --header new/folder/h good.zlm; ls new/folder", 0, "h\n", "wrote 2 files\n"},
    {"translate --header bad.zlm/h good.zlm; ls *.GEN", 2, nothing,
     "cannot write `bad.zlm/h`: Not a directory"},
    {"translate good.zlm --depfile ./x --report json=x", 2, nothing,
     "`./x` is given for two outputs"},
    {"translate good.zlm --depfile o/../M.HDR; ls M.GEN", 2, nothing,
     "error[output-repeated]: output `M.HDR` is also a report or the depfile"},
    {"--version; mkfifo f; timeout 9 \"$ORVEX\" check --report json=f good.zlm", 2,
     "error[output-unwritable]: cannot write `f`: no program reads from it\n", "1 error"},
    {"--version; mkfifo f; timeout 9 \"$ORVEX\" translate --depfile f good.zlm; ls *.GEN", 0,
     "M.GEN\n", "cannot write `f`: no program reads from it\n"},
    {"--version; mkfifo f; timeout 9 \"$ORVEX\" translate --header f good.zlm; ls *.GEN", 2,
     "orvex", "cannot write `f`: no program reads from it\n"},
    {"--version; mkfifo f; cat f >r & sleep 0.1; \"$ORVEX\" check -q --report short=f bad.zlm; "
     "wait; cat r",
     0, "\nbad.zlm:8:1", nothing},
    {"translate --header /dev/full good.zlm; ls *.GEN", 2, nothing,
     "cannot write `/dev/full`: No space left"},
    {"--version; printf '#!/bin/sh\necho what >&2\n' >mute; chmod +x mute; "
     "\"$ORVEX\" check --translator ./mute good.zlm",
     2, "mute ended before it had read the model: what", "1 error in 1 file\n"},
    {"--version; cp bad.zlm b.zlm; ln -s models/inner ln; "
     "\"$ORVEX\" check --format short ln/../b.zlm b.zlm",
     1, "\nb.zlm:8:1: error", "1 error, 1 warning in 2 files\n"},
    {"translate row.zlm; ls *.GEN", 0, "M.GEN\n", "wrote 2 files; 2 models not translated\n"},
    {"check --translator /bin/true good.zlm", 2, "true ended before it had read the model",
     "1 error in 1 file\n"},
    {"translate - <good.zlm; grep stdin.scr M.HDR", 0, "stdin.scr", "wrote 2 files\n"},
    // A translator that reads another model than the one given: it accepts an error, or stops
    // without one.
    {"--version; printf '#!/bin/sh\nsed -i s/PORD/PROD/ input\nexec \"$ORVEXPP\" \"$@\"\n' >kind; "
     "chmod +x kind; \"$ORVEX\" translate --translator ./kind --format short bad.zlm",
     0, "orvex 0.1.0\n",
     "bad.zlm:8:1: warning: the translator accepts what `orvex` refuses: unknown keyword `$PORD` "
     "[translator-disagrees]\nwrote 2 files\n1 warning in 1 file\n"},
    {"--version; printf '#!/bin/sh\nsed -i s/DEMAND/DAMAND/ input\nexec \"$ORVEXPP\" \"$@\"\n' "
     ">hard; "
     "chmod +x hard; \"$ORVEX\" check --translator ./hard --format short good.zlm",
     1,
     "good.zlm:1:1: error: the translator refuses what `orvex` accepts: unknown keyword `$DAMAND` "
     "[translator-disagrees]\n",
     "1 error in 1 file\n"},
    // The server runs the translator while it waits for its client.
    {"--version; echo '#!/none' >x; chmod +x x\n"
     "m() { printf 'Content-Length: %d\\r\\n\\r\\n%s' ${#1} \"$1\"; }\n"
     R"({ m '{"jsonrpc":"2.0","id":1,"method":"initialize","params":{"capabilities":{}}}')"
     "\n"
     R"(m '{"jsonrpc":"2.0","method":"textDocument/didOpen","params":{"textDocument":)"
     R"({"uri":"file:///m.zlm","languageId":"orvex","version":1,"text":"$MODEL:M"}}}')"
     "\nfor i in $(seq 100); do [ -s log ] || sleep 0.1; done; } |\n"
     "\"$ORVEX\" lsp --log log --translator ./x >o; cat log",
     0, "orvex lsp: the translator cannot be run: cannot run ", nothing},
};

void expect_text(const std::string& stream, const char* text, const char* name) {
    if (text == nothing) {
        EXPECT_EQ(stream, "") << name;
    } else {
        EXPECT_NE(stream.find(text), std::string::npos) << name << " without " << text << ":\n"
                                                        << stream;
    }
}

TEST(Commands, StatusAndStreams) {
    for (const CommandLine& line : command_lines) {
        SCOPED_TRACE(line.command);
        const Folder folder;
        write_files(folder);
        const Result result = folder.shell(std::string("\"$ORVEX\" ") + line.command);
        EXPECT_EQ(result.status, line.status);
        expect_text(result.out, line.out, "standard output");
        expect_text(result.err, line.err, "standard error");
    }
}

TEST(Commands, OnePictureIsShownBesideFilesWithErrors) {
    const Folder folder;
    write_files(folder);
    folder.write("dot", "#!/bin/sh\necho picture\n");
    const Result result = folder.shell(
        "chmod +x dot; PATH=\"$PWD:$PATH\" \"$ORVEX\" graph --format svg bad.zlm good.zlm bad.zlm");
    EXPECT_EQ(result.out, "picture\n");
    EXPECT_EQ(result.status, 1);
}

TEST(Commands, WithoutGraphvizThereIsNoPicture) {
    const Folder folder;
    write_files(folder);
    const Result result = folder.shell("PATH=none \"$ORVEX\" graph --format svg good.zlm");
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(
        result.err,
        "error[graphviz-failed]: the picture cannot be drawn: Graphviz's `dot` is not installed\n"
        " --> good.zlm\n"
        "  = help: install Graphviz (in Debian the package `graphviz`), or choose a format that "
        "needs no other program: `dot`, `mermaid`, `json` or `table`\n\n"
        "for more about an error: orvex explain graphviz-failed\n1 error in 1 file\n");
}

// Values of PATH, and the end of the message from the orvexpp that is run, or that there is none.
constexpr const char* paths[][2] = {
    {"$PWD/none:$PWD/one:$PWD/two", "model: one"},
    {"two:one", "model: two"},
    {"plain:folder:one", "model: one"},
    {":one", "model: here"},
    {"none::one", "model: here"},
    {"plain", "orvexpp is neither next to orvex nor in PATH"},
    {"", "orvexpp is neither next to orvex nor in PATH"},
};

TEST(Commands, FindTheTranslatorAlongPath) {
    const Folder folder;
    write_files(folder);
    folder.shell(
        "mkdir bin none plain folder folder/orvexpp; cp \"$ORVEX\" bin/orvex\n"
        "for name in one two here plain; do mkdir -p $name\n"
        "  printf '#!/bin/sh\necho %s >&2\n' $name >$name/orvexpp; done\n"
        "chmod +x one/orvexpp two/orvexpp here/orvexpp; mv here/orvexpp .");
    for (const auto& [path, says] : paths) {
        const Result result = folder.shell(std::string("PATH=\"") + path +
                                           "\" bin/orvex check --format short good.zlm");
        EXPECT_EQ(result.status, 2) << path;
        expect_text(result.out, says, path);
    }
}

// Neither a program that cannot be started nor one that has ended leaves a descriptor open.
TEST(Processes, LeaveNoDescriptors) {
    const auto open_descriptors = [] {
        int count = 0;
        for (int descriptor = 0; descriptor < 256; ++descriptor)
            count += static_cast<int>(::fcntl(descriptor, F_GETFD) != -1);
        return count;
    };
    const int before = open_descriptors();
    for (const bool is_tied : {false, true}) {
        frontend::Program program{{"/nowhere/program"}};
        program.is_tied = is_tied;
        try {
            frontend::run_process(program);
            ADD_FAILURE() << "it was started";
        } catch (const frontend::StartFailure& failure) {
            EXPECT_EQ(failure.reason, "cannot run /nowhere/program: No such file or directory");
            EXPECT_EQ(failure.error, ENOENT);
        }
        EXPECT_EQ(open_descriptors(), before) << is_tied;
        program.words = {"true"};
        EXPECT_EQ(frontend::run_process(program).status, 0);
        EXPECT_EQ(open_descriptors(), before) << is_tied;
    }
}

// A terminal; `shown` reads what has been written to it.
class Terminal {
  public:
    Terminal() : screen_(::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK)) {
        ::grantpt(screen_);
        ::unlockpt(screen_);
        line_ = ::open(::ptsname(screen_), O_RDWR | O_NOCTTY);
    }
    ~Terminal() {
        ::close(line_);
        ::close(screen_);
    }
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    int descriptor() const { return line_; }
    std::string shown() const {
        char bytes[1000];
        const ssize_t count = ::read(screen_, bytes, sizeof bytes);
        return {bytes, bytes + std::max<ssize_t>(count, 0)};
    }

  private:
    int screen_;
    int line_ = -1;
};

// Nothing in the first second, then a line every tenth of a second, which the next output erases.
TEST(Progress, IsALineOfATerminal) {
    using namespace std::chrono_literals;
    const Terminal terminal;
    ::setenv("TERM", "xterm", 1);
    frontend::Reporter reporter;
    reporter.err.descriptor = terminal.descriptor();
    frontend::begin(reporter);
    frontend::show_progress(reporter, 1, 60);
    EXPECT_EQ(terminal.shown(), "");
    reporter.shown -= 1s;
    frontend::show_progress(reporter, 2, 60);
    EXPECT_EQ(terminal.shown(), "\r\x1b[K2 of 60 files");
    frontend::show_progress(reporter, 3, 60);
    EXPECT_EQ(terminal.shown(), "");
    frontend::put_output(reporter, "");
    EXPECT_EQ(terminal.shown(), "");
    reporter.shown -= 100ms;
    frontend::show_progress(reporter, 60, 60);
    EXPECT_EQ(terminal.shown(), "");
    frontend::hide_progress(reporter);
    EXPECT_EQ(terminal.shown(), "\r\x1b[K");
    frontend::hide_progress(reporter);
    EXPECT_EQ(terminal.shown(), "");
    for (const bool quiet : {false, true}) {
        reporter.options.quiet = quiet;
        reporter.options.format = quiet ? frontend::Format::text : frontend::Format::json;
        frontend::begin(reporter);
        reporter.shown -= 1s;
        frontend::show_progress(reporter, 1, 60);
        EXPECT_EQ(terminal.shown(), "");
    }
}

TEST(Commands, ABrokenPipeIsAnError) {
    const Folder folder;
    const Result result =
        folder.shell("{ sleep 0.2; \"$ORVEX\" codes; echo status $? >&2; } | true");
    EXPECT_EQ(result.err, "error: cannot write standard output: Broken pipe\nstatus 2\n");
}

TEST(Translate, WritesWhatTheTranslatorWrites) {
    const Folder folder;
    write_files(folder);
    folder.write("run.ctl", "INP two\nSCR put\nERR err\nTIM T1\nNMO 4\n");
    folder.run();
    const Result result = folder.shell(
        "mkdir old; mv *.GEN *.HDR old; \"$ORVEX\" translate two.zlm --out new/out "
        "--put-file put --time T1 --first-model 4; diff -r old new/out && ls old | wc -l");
    EXPECT_EQ(result.err + result.out, "wrote 4 files\n4\n");
}

TEST(Translate, UnchangedAndFailedModelsAreNotTouched) {
    const Folder folder;
    folder.write("two.zlm", model("N") + model("M"));
    folder.shell("\"$ORVEX\" translate two.zlm; touch -t 200001010000 *.GEN *.HDR mark");
    // N gets a description, which only its header file shows. M now has an error.
    folder.write("two.zlm", model("N", " ! Labour") + model("M", "", "$PORD:Y"));
    const Result result = folder.shell(
        "\"$ORVEX\" translate two.zlm; echo $?; find . -newer mark -name '*.[GH]*'; ls *.GEN");
    EXPECT_EQ(result.out, "1\n./N.HDR\nM.GEN\nN.GEN\n");
    EXPECT_NE(result.err.find("wrote 1 file, 1 unchanged; 1 model not translated\n"),
              std::string::npos)
        << result.err;
}

TEST(Translate, NeverWritesAnInput) {
    const Folder folder;
    folder.write("M.GEN", model("M"));
    fs::create_symlink("M.GEN", folder.path() + "/link.zlm");
    for (const char* arguments : {"M.GEN", "link.zlm", "./link.zlm --out .",
                                  "link.zlm --depfile M.GEN", "link.zlm --header M.GEN --out o"}) {
        const Result result = folder.shell(std::string("\"$ORVEX\" translate ") + arguments);
        EXPECT_NE(result.status, 0) << arguments;
        EXPECT_NE(result.err.find("`M.GEN` is an input"), std::string::npos) << arguments << '\n'
                                                                             << result.err;
        EXPECT_EQ(folder.read("M.GEN"), model("M"));
    }
}

TEST(Translate, PutFileKeepsModesLinksAndDevices) {
    const Folder folder;
    const std::string path = folder.path() + "/file";
    const std::string link = folder.path() + "/link";
    fs::create_symlink("file", link);
    bool changed = false;
    ASSERT_TRUE(frontend::put_file(link, "one", changed));  // the link led nowhere until now
    EXPECT_EQ(folder.read("file"), "one");
    ::chmod(path.c_str(), 0640);
    ASSERT_TRUE(frontend::put_file(link, "two", changed));
    EXPECT_TRUE(changed);
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_EQ(folder.read("file"), "two");
    EXPECT_EQ(static_cast<unsigned>(fs::status(path).permissions()), 0640U);
    ASSERT_TRUE(frontend::put_file(path, "two", changed));
    EXPECT_FALSE(changed);
    EXPECT_TRUE(frontend::put_file("/dev/null", "text", changed));
    EXPECT_FALSE(frontend::put_file("/dev/full", "text", changed));
    EXPECT_EQ(errno, ENOSPC);
    EXPECT_FALSE(frontend::put_file(folder.path(), "text", changed));
    EXPECT_EQ(errno, EISDIR);
    EXPECT_EQ(folder.files().size(), 1U);
    // The first failure counts, and that of closing too.
    EXPECT_FALSE(frontend::close_written(-1, true));
    EXPECT_EQ(errno, EBADF);
    errno = ENOSPC;
    EXPECT_FALSE(frontend::close_written(-1, false));
    EXPECT_EQ(errno, ENOSPC);
}

// Pieces of the text end within its lines.
TEST(LineStream, GivesTheLinesOfATextOfAnyLength) {
    std::vector<std::string> lines;
    for (std::size_t i = 0; i < 2000; ++i) lines.emplace_back(i % 700, "ab"[i % 2]);
    lines.emplace_back(frontend::longest_line + 1, 'c');
    lines.emplace_back("last");
    std::string text;
    for (const std::string& line : lines) text += line + '\n';
    text.pop_back();
    lines[lines.size() - 2].pop_back();  // it is cut
    const Folder folder;
    folder.write("text", text);
    const int file = ::open((folder.path() + "/text").c_str(), O_RDONLY | O_CLOEXEC);
    std::vector<std::string> found;
    EXPECT_TRUE(frontend::for_each_line(file, [&](auto line) { found.emplace_back(line); }));
    EXPECT_TRUE(found == lines);
    ::close(file);
    EXPECT_FALSE(frontend::for_each_line(file, [](auto) {}));
}

TEST(Descriptors, ReadASingleByte) {
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    EXPECT_EQ(::write(ends[1], "a", 1), 1);
    ::close(ends[1]);
    std::string text;
    EXPECT_TRUE(frontend::read_all(ends[0], text, 5));
    EXPECT_EQ(text, "a");
    ::close(ends[0]);
}

// make finds the output, and asks for the input, under their real names.
void expect_names_in_make(const std::string& output, const std::string& input) {
    const Folder folder;
    folder.write("d", frontend::depfile({output, "other"}, {input, "last"}));
    folder.write("names", output + '\n' + input + '\n');
    folder.write("last", "");
    folder.write(input, "");
    const Result found = folder.shell(
        "{ read -r output; read -r input; } <names\n"
        "make -s -f d -- \"$output\" && make -s -f d other && rm -- \"$input\" &&\n"
        "! make -s -f d other 2>said && grep -F -e \"'$input'\" said");
    EXPECT_EQ(found.status, 0) << folder.read("d") << found.out << found.err << folder.read("said");
}

TEST(Translate, ADepfileIsReadByMake) {
    for (const char* const name :
         {"a b", "a;b", "a|b", "a%b", "a#b", "a$b", "a:b", "a=b", R"(a\b)", R"(a\ b)", R"(a\#b)",
          R"(a\;b)", R"(a\\;b)", R"(a\%b)", R"(a\|b)", "a;b|c%d e#f g"}) {
        SCOPED_TRACE(name);
        expect_names_in_make(name, std::string("in ") + name);
    }
    EXPECT_EQ(frontend::depfile({"a b", "c$d"}, {"x#y"}), "a\\ b c$$d: x\\#y\n");
    // A line has 72 columns.
    for (const auto& [size, gap] : {std::pair(70, " "), std::pair(71, " \\\n ")}) {
        const std::string longest(static_cast<std::size_t>(size), 'b');
        EXPECT_EQ(frontend::depfile({"a", longest}, {"c"}), "a" + (gap + longest) + ": \\\n c\n");
    }
    const Folder folder;
    const std::string input = R"(an $odd #name\ .zlm)";
    folder.write(input, model("M"));
    folder.write("good.zlm", model("N"));
    folder.shell(R"("$ORVEX" translate --out 'o u$t' --depfile d 'an $odd #name\ .zlm' good.zlm)");
    EXPECT_EQ(folder.read("d"),
              "o\\ u$$t/M.GEN o\\ u$$t/M.HDR o\\ u$$t/N.GEN o\\ u$$t/N.HDR: \\\n"
              " an\\ $$odd\\ \\#name\\\\\\ .zlm good.zlm\n");
}

void write_many(const Folder& folder, int count) {
    for (int i = 0; i < count; ++i) {
        const std::string name = std::to_string(i);
        folder.write("f" + name + ".zlm", model("M" + name, i % 3 == 1 ? "  PX" : "",
                                                i % 5 == 2 ? "$PORD:Y" : "$PROD:Y"));
    }
}

TEST(Jobs, ManyThreadsGiveTheBytesOfOne) {
    const Folder folder;
    write_many(folder, 60);
    const Result result = folder.shell(
        "for j in 1 2; do \"$ORVEX\" check -j $j *.zlm >out$j 2>err$j; echo $?\n"
        "\"$ORVEX\" translate -q -o $j -j $j *.zlm 2>translated$j; done; ls 1 | wc -l\n"
        "diff -r 1 2; cmp out1 out2; cmp err1 err2; cmp translated1 translated2; tail -n 1 err1");
    EXPECT_EQ(result.out, "1\n1\n96\n12 errors, 20 warnings in 60 files\n");
}

// The largest memory use so far of any program started by this one, in KiB.
long most_memory() {
    rusage usage{};
    ::getrusage(RUSAGE_CHILDREN, &usage);
#ifdef __APPLE__
    return usage.ru_maxrss / 1024;
#else
    return usage.ru_maxrss;
#endif
}

// If kept, the results of 900 files would take 2 MiB. A sanitizer needs more memory from the start,
// and keeps freed memory.
TEST(Jobs, MemoryDoesNotGrowWithTheFiles) {
    constexpr long most_growth = 1024;  // in KiB
    const Folder folder;
    write_many(folder, 1000);
    const Result hundred = folder.shell(
        "(ulimit -v 400000; \"$ORVEX\" --version) || exit 99\n"
        "\"$ORVEX\" check -j 2 f?.zlm f??.zlm 2>&1 | tail -n 1");
    if (hundred.status == 99) GTEST_SKIP() << "the program keeps memory that is given back";
    const long memory = most_memory();
    EXPECT_NE(hundred.out.find("20 errors, 33 warnings in 100 files\n"), std::string::npos);
    const Result thousand = folder.shell("\"$ORVEX\" check -j 2 *.zlm 2>&1 | tail -n 1");
    EXPECT_EQ(thousand.out, "200 errors, 333 warnings in 1000 files\n");
    EXPECT_LT(most_memory() - memory, most_growth) << memory;
}

TEST(Jobs, AKilledRunLeavesWholeOutputs) {
    const Folder folder;
    write_many(folder, 30);
    const Result result = folder.shell(
        "export TMPDIR=\"$PWD\"; \"$ORVEX\" translate -q -o whole *.zlm 2>/dev/null\n"
        "for t in 1 2 3 5 7 9; do\n"
        "  timeout -s KILL 0.0$t \"$ORVEX\" translate -q -j 2 -o killed *.zlm 2>/dev/null\n"
        "  for f in killed/*; do [ ! -e \"$f\" ] || cmp \"$f\" \"whole/${f#*/}\"; done\n"
        "done\n"
        "\"$ORVEX\" translate -q -j 2 -o killed *.zlm 2>/dev/null\n"
        "diff -r -x '.orvex-*' whole killed && ls whole | wc -l");
    EXPECT_EQ(result.out, "48\n");
}

std::string unused_names(int count) {
    std::string names;
    for (int i = 0; i < count; ++i) names += "\n Q" + std::to_string(i);
    return names;
}

// A report that is too large for the limit leaves the old file unchanged.
TEST(Translate, AFailedWriteLeavesTheOldFile) {
    const Folder folder;
    folder.write("many.zlm", model("M", unused_names(40)));
    const Result result = folder.shell(
        "echo old >r.json\n"
        "(ulimit -f 16; \"$ORVEX\" check --report json=r.json many.zlm; echo $?) 2>&1 |\n"
        "  grep -e '^error' -e '^2$'; cat r.json; ls -A");
    EXPECT_EQ(result.out,
              "error[output-unwritable]: cannot write `r.json`: File too large\n2\nold\n"
              "many.zlm\nr.json\n");
}

// Too little memory for one file ends neither the run nor the other files. Under a sanitizer the
// program needs more than the limit to start.
TEST(Commands, MissingMemoryNamesTheFile) {
    const Folder folder;
    write_files(folder);
    const Result result = folder.shell(
        "ulimit -v 400000; \"$ORVEX\" --version >&2 || exit 99\n"
        "truncate -s 250M large.zlm; \"$ORVEX\" check --format short bad.zlm large.zlm warn.zlm");
    if (result.status == 99) GTEST_SKIP() << "the limit is too small to start the program";
    EXPECT_EQ(result.status, 2);
    EXPECT_NE(result.out.find("\nlarge.zlm: error: not enough memory for `large.zlm` "
                              "[memory-exhausted]\nwarn.zlm:5:"),
              std::string::npos)
        << result.out;
}

// Commands that wait for something, and the signal.
const char* const waits[][2] = {
    {"translate --header full good.zlm", "TERM"},
    {"translate --depfile full --model N two.zlm", "HUP"},
    {"check fifo good.zlm", "TERM"},
    {"check -j 1 --translator ./silent good.zlm bad.zlm", "INT"},
    {"check -j 2 --translator ./silent good.zlm bad.zlm", "HUP"},
    {"check -j 2 --translator ./deaf good.zlm bad.zlm", "TERM"},
    {"check --report json=full many.zlm", "INT"},
    {"graph --format svg good.zlm", "INT"},
    {"graph --format svg good.zlm", "HUP"},
};

TEST(Jobs, ASignalEndsEveryWait) {
    for (const auto& [command, signal] : waits) {
        SCOPED_TRACE(command);
        const Folder folder;
        write_files(folder);
        folder.write("silent", "#!/bin/sh\necho $$ >>\"$HERE/pids\"; exec sleep 9\n");
        folder.write("deaf",
                     "#!/bin/sh\ntrap '' TERM\nexec >&- 2>&-\necho $$ >>\"$HERE/pids\"\n"
                     "while :; do sleep 0.1; done\n");
        folder.write("M.GEN", "old");
        folder.write("many.zlm", model("M", unused_names(200)));
        const Result result = folder.shell(
            "mkfifo fifo full; exec 9<>full; dd if=/dev/zero of=full oflag=nonblock bs=4096 2>&-\n"
            "chmod +x silent deaf; mkdir tmp bin; export "
            "HERE=\"$PWD\" TMPDIR=\"$PWD/tmp\" PATH=\"$PWD/bin:$PATH\"; cp silent bin/dot\n"
            "timeout -k 5 --preserve-status -s " +
            std::string(signal) + " 0.2 \"$ORVEX\" " + command +
            " >out 2>&1; kill -l $?; cat M.GEN; grep error out; ls -A tmp; ls .orvex*\n"
            "for p in $(cat pids); do kill -0 $p && echo $p stays; done");
        EXPECT_EQ(result.out, signal + std::string("\nold"));
    }
}

// It gets no other signal, and can tidy up.
TEST(Jobs, ASignalIsHandedOnToAProgram) {
    const Folder folder;
    write_files(folder);
    folder.write("hears",
                 "#!/bin/sh\nfor s in HUP INT TERM; do trap \"echo $s >>'$HERE/heard'; exit\" $s; "
                 "done\nkill -s SIGNAL $PPID; while :; do sleep 0.05; done\n");
    const Result result = folder.shell(
        "export HERE=\"$PWD\"; for s in HUP INT TERM; do\n"
        "sed \"s/SIGNAL/$s/\" hears >now; chmod +x now; \"$ORVEX\" check --translator ./now "
        "good.zlm\n"
        "done; cat heard");
    EXPECT_EQ(result.out, "HUP\nINT\nTERM\n");
}

#ifdef __linux__
// A signal that cannot be caught: the system ends `dot`. Which process reaps it depends on the
// system.
TEST(Jobs, DotDoesNotOutliveOrvex) {
    const Folder folder;
    write_files(folder);
    folder.write("dot", "#!/bin/sh\necho $$ >pid; exec sleep 9\n");
    const Result result = folder.shell(
        "chmod +x dot; mkdir tmp; PATH=\"$PWD:$PATH\" TMPDIR=\"$PWD/tmp\" \"$ORVEX\" graph "
        "--format svg good.zlm & while [ ! -s pid ]; do sleep 0.1; done\n"
        "state() { sed 's/.*) \\(.\\).*/\\1/' /proc/$(cat pid)/stat 2>/dev/null || echo gone; }\n"
        "kill -KILL $!; for i in 1 2 3 4 5 6 7 8; do sleep 0.1; done; state");
    EXPECT_TRUE(result.out == "gone\n" || result.out == "Z\n") << result.out;
}
#endif

void fail_at_7(std::size_t index) {
    if (index == 7) throw std::runtime_error("seven");
}

// The result of 50 jobs of which one fails, on its thread or where its result is taken.
std::string failure(int jobs, bool on_thread) {
    try {
        frontend::in_order(
            50, jobs, [&](std::size_t index, int) { fail_at_7(on_thread ? index : 0); },
            [&](std::size_t index) { fail_at_7(on_thread ? 0 : index); });
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return "none";
}

TEST(Jobs, ResultsComeInOrderAndNobodyRunsFarAhead) {
    for (const int jobs : {1, 2, 5}) {
        std::atomic<std::size_t> started = 0;
        std::size_t taken = 0;
        std::atomic<int> faults = 0;
        const std::size_t ahead = 8 * static_cast<std::size_t>(jobs);
        frontend::in_order(
            200, jobs,
            [&](std::size_t, int worker) {
                ++started;
                faults += static_cast<int>(worker < 0 || worker >= jobs);
            },
            [&](std::size_t index) {
                faults += static_cast<int>(index != taken++ || started > index + ahead);
            });
        EXPECT_EQ(taken, 200U);
        EXPECT_EQ(faults, 0) << jobs;
        EXPECT_EQ(failure(jobs, true) + failure(jobs, false), "sevenseven");
    }
}

// The manual and the completions list every option of the program.
TEST(Documents, NameEveryOption) {
    const Result result = Folder().shell(
        "for command in translate check info graph expand explain lsp codes; do\n"
        "  \"$ORVEX\" $command --help | sed '1,/^options:/d' | grep -oE -e '--[a-z-]+'\n"
        "done | sort -u >options; cd '" DOCS_DIR
        "/..'\n"
        "has() { grep -qw -e \"$2\" $1 || echo \"$1 has no $2\"; }\n"
        "while read -r option; do name=${option#--}\n"
        "  has man/orvex.1 \"Fl -$name\"; has completions/bash/orvex \"$option\"\n"
        "  has completions/zsh/_orvex \"$name\"; has completions/fish/orvex.fish \"-l $name\"\n"
        "done <\"$OLDPWD/options\"; [ $(wc -l <\"$OLDPWD/options\") -gt 20 ] && echo many");
    EXPECT_EQ(result.out, "many\n") << result.err;
}

// Each completion that bash offers after --warn is accepted. They include each warning except that
// of the symbol listing.
TEST(Documents, CompletionsOfferTheWarnings) {
    const Folder folder;
    folder.write("good.zlm", model("M"));
    folder.write("complete", ". '" DOCS_DIR
                             "/../completions/bash/orvex'; orvex() { \"$ORVEX\" \"$@\"; }\n"
                             "COMP_WORDS=(orvex check \"$@\"); COMP_CWORD=$(($# + 1))\n"
                             "_orvex; printf '%s\\n' \"${COMPREPLY[@]}\"\n");
    const Result result = folder.shell(
        "bash complete --warn '' >offered; sed 's/=$/=off/' offered | while read -r level\n"
        "do \"$ORVEX\" check -q --warn $level good.zlm; done\n"
        "echo $(($(\"$ORVEX\" codes | grep -cE ' (warning|note|off) ') - $(grep -c = offered)))\n"
        "bash complete --warn name-unused =; bash complete --warn = name-unused = w\n"
        "bash complete --warn = name-unu; bash complete --report =; bash complete --format s");
    EXPECT_EQ(result.out,
              "1\noff\nnote\nwarning\nerror\nwarning\nname-unused=\n"
              "text=\nshort=\njson=\nsarif=\ngithub=\njunit=\nshort\nsarif\n");
    EXPECT_EQ(result.err, "");
}

}  // namespace
