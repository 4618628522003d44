// One run of the translator, as the host starts it: a control file in a private folder, and what
// the run leaves there.
#pragma once

#include "frontend/base/process.h"
#include "notation/limits.h"

#include <atomic>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace orvex::frontend {

// The folder for temporary files cannot be used: it is not there, is full, ...
struct FolderFailure {
    std::string folder;
    int error = 0;  // errno
};

// "cannot use the temporary folder /tmp: ...".
std::string text_of(const FolderFailure& failure);

// A temporary folder of its own (in TMPDIR, or /tmp), gone with the object. Throws FolderFailure
// where none can be made.
class TempDir {
  public:
    TempDir();
    ~TempDir();
    TempDir(const TempDir&) = delete;
    TempDir(TempDir&&) = delete;
    TempDir& operator=(const TempDir&) = delete;
    TempDir& operator=(TempDir&&) = delete;

    const std::string& path() const { return path_; }

    // The folder that it is in.
    std::string parent() const { return path_.substr(0, path_.rfind('/')); }

  private:
    std::string path_;
};

// The longest value of a line of the control file.
constexpr std::size_t longest_setting = notation::record_columns;

// What the control file says beside the input and the error file.
struct RunSettings {
    // SCR: the path in the host's FILE statement.
    std::string put_file;
    // TIM: blank for none.
    std::string time;
    // NMO
    int first_model = 0;
    // NCO
    int first_constraint = 0;
    // Whether the texts of good models are wanted, or only that they are good.
    bool keeps_outputs = true;
    // Ends the run once it is true; null where nothing does.
    const std::atomic<bool>* stop = nullptr;
};

// The two files of one model.
struct ModelOutput {
    std::string name;
    std::string generator;
    std::string header;
    // The translator accepted the model: both files were read, and the header file to its closing
    // lines. Otherwise the run stopped in the model, and the texts are empty.
    bool complete = false;
};

// What a run came to. Where `cause` is not empty, nobody can tell: nothing but `err` is set then,
// and no model counts as right or wrong. Otherwise there are two ways:
// - `failed`: a whole report was read. The last of `models` is the one that it names; those before
//   it are complete, and those after it were not reached.
// - not `failed`: all models of the input are there, and complete.
struct RunResult {
    // Standard error.
    std::string err;
    // Why the outputs tell nothing, as part of a sentence.
    std::string cause;
    bool failed = false;
    // The message of the report and the last line read, as the translator wrote them.
    std::string message;
    std::string last_record;
    // In the order of the input.
    std::vector<ModelOutput> models;
};

// The program to run: `given` where it is not empty, else orvexpp beside this program, else along
// PATH. Throws StartFailure where there is none.
std::string find_translator(const std::string& given);

// Reads what a run that ended in good order left in its folder; `names` are those of the models
// that its input has, in their order. All of the result is set but `err`; the texts of the outputs
// only where they are wanted.
RunResult read_outputs(const std::string& folder, const std::vector<std::string>& names,
                       bool keeps_outputs);

// Translates `input` with the program in the folder and reads what it wrote, as read_outputs does.
// The run's files are removed. Throws StartFailure where the program cannot be run, ends
// by a signal or with another status than 0, or says on its standard output why it could not begin
// (its words are the reason), and FolderFailure where a file of the run cannot be written or
// removed.
RunResult run_translator(const std::string& program, const TempDir& place, std::string_view input,
                         const std::vector<std::string>& names, const RunSettings& settings);

}  // namespace orvex::frontend
