#include "frontend/base/csv.h"

#include "frontend/base/bytes.h"

#include <algorithm>

namespace orvex::frontend {

namespace {

constexpr char quote = '"';
constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";
constexpr std::string_view blanks = " \t";

// The text with each pair of quotes replaced by one.
std::string with_single_quotes(std::string_view text) {
    std::string single;
    for (std::size_t at = 0; at < text.size(); ++at) {
        single += text[at];
        if (text[at] == quote) ++at;
    }
    return single;
}

}  // namespace

std::string csv_cell(std::string_view text) {
    if (text.find_first_of("\",\r\n") == std::string_view::npos) return std::string(text);
    std::string cell(1, quote);
    for (const char c : text) cell.append(c == quote ? 2 : 1, c);
    return cell + quote;
}

CsvReader::CsvReader(std::string_view bytes, std::deque<std::string>& unquoted)
    : bytes_(bytes), unquoted_(unquoted) {
    if (bytes.starts_with(byte_order_mark)) at_ = byte_order_mark.size();
}

void CsvReader::skip_blanks() {
    at_ = std::min(bytes_.find_first_not_of(blanks, at_), bytes_.size());
}

void CsvReader::end_line() {
    if (at_ < bytes_.size() && bytes_[at_] == '\r') ++at_;
    if (at_ < bytes_.size() && bytes_[at_] == '\n') ++at_;
}

// Does a comma, a line end or the end of the file come next?
bool CsvReader::ends_cell() const {
    if (at_ >= bytes_.size() || bytes_[at_] == ',' || bytes_[at_] == '\n') return true;
    return bytes_[at_] == '\r' && (at_ + 1 == bytes_.size() || bytes_[at_ + 1] == '\n');
}

bool CsvReader::read(CsvRow& row) {
    do {
        row.cells.clear();
        row.offset = at_;
        skip_blanks();
        if (at_ >= bytes_.size()) return false;
        while (read_cell(row) && at_ < bytes_.size() && bytes_[at_] == ',') ++at_;
        if (!fault_.empty()) return false;
        end_line();
    } while (row.cells.size() == 1 && row.cells.front().empty());
    return true;
}

bool CsvReader::read_cell(CsvRow& row) {
    skip_blanks();
    if (at_ < bytes_.size() && bytes_[at_] == quote) return read_quoted(row);
    const std::size_t begin = at_;
    while (!ends_cell()) ++at_;
    row.cells.push_back(trim_end(bytes_.substr(begin, at_ - begin), blanks));
    return true;
}

// A quote inside quotes is doubled.
bool CsvReader::read_quoted(CsvRow& row) {
    const std::size_t begin = at_ + 1;
    bool has_quotes = false;
    std::size_t end = bytes_.find(quote, begin);
    while (end != std::string_view::npos && end + 1 < bytes_.size() && bytes_[end + 1] == quote) {
        has_quotes = true;
        end = bytes_.find(quote, end + 2);
    }
    fault_offset_ = at_;
    if (end == std::string_view::npos) {
        fault_ = "quote";
        return false;
    }
    std::string_view text = bytes_.substr(begin, end - begin);
    if (has_quotes) text = unquoted_.emplace_back(with_single_quotes(text));
    at_ = end + 1;
    skip_blanks();
    if (!ends_cell()) fault_ = "quoted";
    row.cells.push_back(trimmed(text, blanks));
    return fault_.empty();
}

}  // namespace orvex::frontend
