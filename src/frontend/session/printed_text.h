// A printed text, which is read several times: a file, or standard input.
#pragma once

#include "frontend/accounts/balance.h"
#include "frontend/accounts/line_place.h"

#include <cstddef>
#include <map>
#include <string>
#include <sys/types.h>
#include <vector>

namespace orvex::frontend {

// Does a file contain a printed text, rather than a model in the host's text? Its name or its first
// line tells. Standard input does unless its name in messages says otherwise.
bool is_printed(const std::string& path, const std::string& shown_path);

// Owns the descriptor.
class PrintedText {
  public:
    // Opens a file, or standard input for "-". If it cannot be read twice, such as a pipe, it is
    // first copied to an unnamed temporary file.
    explicit PrintedText(const std::string& path);
    PrintedText(const PrintedText&) = delete;
    PrintedText(PrintedText&&) = delete;
    PrintedText& operator=(const PrintedText&) = delete;
    PrintedText& operator=(PrintedText&&) = delete;
    ~PrintedText();

    // The errno if the text cannot be read, or 0.
    int error() const { return error_; }

    // Reads it from its start, with line numbers from 1.
    bool pass(const LineSink& sink);

    // The texts of these lines.
    std::map<LinePlace, std::string> texts_of(const std::vector<LinePlace>& lines);

  private:
    void copy();

    int descriptor_ = -1;
    off_t start_ = 0;
    int error_ = 0;
};

}  // namespace orvex::frontend
