// Comma-separated values (RFC 4180): cells separated by commas, in quotes if they contain commas,
// quotes or line ends. A line ends with LF or CR LF; empty lines are not rows.
#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace orvex::frontend {

// A cell as written to a file, in quotes if needed.
std::string csv_cell(std::string_view text);

struct CsvRow {
    std::size_t offset = 0;               // of its first byte
    std::vector<std::string_view> cells;  // without quotes, and without blanks around them
};

class CsvReader {
  public:
    // `unquoted` stores the texts of cells that contain quotes. Both must outlive the rows.
    CsvReader(std::string_view bytes, std::deque<std::string>& unquoted);

    // Reads the next row; false at the end, or if the file is malformed.
    bool read(CsvRow& row);

    // Why the file is malformed, as the name of a variant of the message; empty if it is not. And
    // where.
    std::string_view fault() const { return fault_; }
    std::size_t fault_offset() const { return fault_offset_; }

  private:
    bool read_cell(CsvRow& row);
    bool read_quoted(CsvRow& row);
    bool ends_cell() const;
    void skip_blanks();
    void end_line();

    std::string_view bytes_;
    std::deque<std::string>& unquoted_;
    std::size_t at_ = 0;
    std::string_view fault_;
    std::size_t fault_offset_ = 0;
};

}  // namespace orvex::frontend
