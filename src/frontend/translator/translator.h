// One run of the translator, started as the host does: with a control file in a private folder. And
// the files that the run leaves there.
#pragma once

#include "frontend/base/process.h"
#include "notation/limits.h"

#include <atomic>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace orvex::frontend {

// The folder for temporary files cannot be used: it is missing, full, ...
struct FolderFailure {
    std::string folder;
    int error = 0;  // errno
};

// "cannot use the temporary folder /tmp: ...".
std::string text_of(const FolderFailure& failure);

// A private temporary folder (in TMPDIR, or /tmp), removed with the object. Throws FolderFailure if
// none can be made.
class TempDir {
  public:
    TempDir();
    ~TempDir();
    TempDir(const TempDir&) = delete;
    TempDir(TempDir&&) = delete;
    TempDir& operator=(const TempDir&) = delete;
    TempDir& operator=(TempDir&&) = delete;

    const std::string& path() const { return path_; }

    // The parent folder.
    std::string parent() const { return path_.substr(0, path_.rfind('/')); }

  private:
    std::string path_;
};

// The longest value on a line of the control file.
constexpr std::size_t longest_setting = notation::record_columns;

// The control file's settings apart from the input and the error file.
struct RunSettings {
    // SCR: the path in the host's FILE statement.
    std::string put_file;
    // TIM: none if blank.
    std::string time;
    // NMO
    int first_model = 0;
    // NCO
    int first_constraint = 0;
    // Whether the texts of good models are wanted, or only the fact that they are good.
    bool keeps_outputs = true;
    // Ends the run once it is true; null if nothing does.
    const std::atomic<bool>* stop = nullptr;
};

// The two files of one model.
struct ModelOutput {
    std::string name;
    std::string generator;
    std::string header;
    // The translator accepted the model: both files were read, and the header file is complete.
    // Otherwise the run stopped in the model, and the texts are empty.
    bool complete = false;
};

// The result of a run. If `cause` is not empty, the result is unknown: only `err` is set, and no
// model counts as right or wrong. Otherwise there are two cases:
// - `failed`: a complete report was read. The last of `models` is the one it names; those before it
//   are complete, and those after it were not reached.
// - not `failed`: all models of the input are present and complete.
struct RunResult {
    // Standard error.
    std::string err;
    // Why the outputs show no result, as part of a sentence.
    std::string cause;
    bool failed = false;
    // The message of the report and the last line read, as the translator wrote them.
    std::string message;
    std::string last_record;
    // In the order of the input.
    std::vector<ModelOutput> models;
};

// The program to run: `given` if it is not empty, else orvexpp next to this program, else on PATH.
// Throws StartFailure if there is none.
std::string find_translator(const std::string& given);

// Reads the files that a run left in its folder, after the program exited normally; `names` are
// those of the models in its input, in order. Everything in the result is set except `err`; the
// texts of the outputs only if wanted.
RunResult read_outputs(const std::string& folder, const std::vector<std::string>& names,
                       bool keeps_outputs);

// Translates `input` with the program in the folder and reads what it wrote, as read_outputs does.
// The run's files are removed. Throws StartFailure if the program cannot be run, ends by a signal
// or with a status other than 0, or reports on its standard output why it could not begin (that
// text is the reason), and FolderFailure if a file of the run cannot be written or removed.
RunResult run_translator(const std::string& program, const TempDir& place, std::string_view input,
                         const std::vector<std::string>& names, const RunSettings& settings);

}  // namespace orvex::frontend
