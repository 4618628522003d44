// The basis of tests of whole runs: a fresh folder, and the real program run in it.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace harness {

struct Result {
    int status = 0;  // exit status, or 128 plus the signal that ended it
    std::string out;
    std::string err;
};

// A private temporary folder, removed with the object.
class Folder {
  public:
    Folder();
    ~Folder();
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    const std::string& path() const { return path_; }

    // Writes, reads (an absent file reads as "(absent)") and lists its files.
    void write(const std::string& name, const std::string& text) const;
    std::string read(const std::string& name) const;
    std::map<std::string, std::string> files() const;

    // Runs the program here with these arguments and additions to the environment.
    Result run(const std::vector<std::string>& arguments = {"run.ctl"},
               const std::vector<std::string>& environment = {}) const;

    // The same for a shell command, in which "$ORVEXPP" and "$ORVEX" are the programs.
    Result shell(const std::string& command) const;

  private:
    Result run_command(const std::vector<std::string>& command) const;

    std::string path_;
};

std::string read_file(const std::string& path);

// The lines of a text, without their line ends.
std::vector<std::string> lines_of(const std::string& text);

}  // namespace harness
