#include "frontend/expansion/data_files.h"

#include "frontend/base/bytes.h"
#include "frontend/base/csv.h"
#include "frontend/base/descriptors.h"
#include "frontend/base/files.h"
#include "frontend/base/streams.h"
#include "frontend/findings/failure.h"
#include "frontend/findings/place.h"
#include "frontend/findings/wording.h"
#include "frontend/syntax/source.h"

#include <algorithm>
#include <cerrno>
#include <unistd.h>
#include <utility>

namespace orvex::frontend {

namespace {

// Findings do not show longer lines.
constexpr std::size_t longest_shown = 400;

bool has_ending(std::string_view path, std::string_view ending) {
    return path.size() > ending.size() &&
           in_small_letters(path.substr(path.size() - ending.size())) == ending;
}

bool is_json(const DataText& text) {
    if (has_ending(text.path, ".json")) return true;
    return !has_ending(text.path, ".csv") && trimmed(text.bytes).starts_with('{');
}

bool read_text(const std::string& path, DataText& text) {
    text.path = path == "-" ? "<stdin>" : path;
    return path == "-" ? read_all(STDIN_FILENO, text.bytes) : read_file(path, text.bytes);
}

bool read_one(const std::string& path, DataFiles& files, std::vector<Finding>& findings) {
    DataText& text = files.texts.emplace_back();
    if (!read_text(path, text)) {
        findings.push_back(failure("file-unreadable",
                                   {{"path", path}, {"reason", system_message(errno)}},
                                   whole_file(path)));
        return false;
    }
    return is_json(text) ? read_json_data(files, findings) : read_csv_data(files, findings);
}

// The first row may name the columns.
bool is_header(const CsvRow& row) { return in_small_letters(row.cells.front()) == "name"; }

class CsvRows {
  public:
    CsvRows(DataFiles& files, std::vector<Finding>& findings)
        : files_(files),
          findings_(findings),
          text_(static_cast<std::uint32_t>(files.texts.size()) - 1),
          reader_(files.texts.back().bytes, files.unquoted) {}

    bool read() {
        CsvRow row;
        for (bool is_first = true; reader_.read(row); is_first = false) {
            if (is_first && is_header(row)) continue;
            if (!take(row)) return false;
        }
        if (reader_.fault().empty()) return true;
        return refuse(reader_.fault_offset(), reader_.fault(), {});
    }

  private:
    bool take(const CsvRow& row) {
        if (row.cells.size() < 2) return refuse(row.offset, "column", row.cells.front());
        DataRow taken;
        taken.text = text_;
        taken.offset = row.offset;
        taken.first_cell = static_cast<Index>(files_.cells.size());
        taken.cell_count = static_cast<Index>(row.cells.size()) - 2;
        taken.last = row.cells.back();
        for (std::size_t i = 0; i + 1 < row.cells.size(); ++i) {
            const std::string_view fault = fault_of_name(row.cells[i]);
            if (!fault.empty()) return refuse(row.offset, fault, row.cells[i]);
            const Index name = files_.names.add(row.cells[i]);
            if (i == 0) {
                taken.name = name;
            } else {
                files_.cells.push_back(name);
            }
        }
        files_.rows.push_back(taken);
        return true;
    }

    bool refuse(std::size_t offset, std::string_view variant, std::string_view text) {
        findings_.push_back(
            data_finding(files_, text_, offset, {{"text", std::string(text)}}, variant));
        return false;
    }

    DataFiles& files_;
    std::vector<Finding>& findings_;
    std::uint32_t text_;
    CsvReader reader_;
};

}  // namespace

bool read_csv_data(DataFiles& files, std::vector<Finding>& findings) {
    return CsvRows(files, findings).read();
}

bool read_data(const std::vector<std::string>& paths, DataFiles& files,
               std::vector<Finding>& findings) {
    bool is_whole = true;
    for (const std::string& path : paths) is_whole = read_one(path, files, findings) && is_whole;
    return is_whole;
}

bool is_data_path(std::string_view path) {
    return has_ending(path, ".json") || has_ending(path, ".csv");
}

std::string_view fault_of_name(std::string_view text) {
    if (trimmed(text).empty()) return "empty";
    const auto is_control = [](char c) { return static_cast<unsigned char>(c) < ' '; };
    return std::any_of(text.begin(), text.end(), is_control) ? "control" : "";
}

Span data_line(const DataText& text, std::size_t offset) {
    const std::string_view bytes = text.bytes;
    offset = std::min(offset, bytes.empty() ? 0 : bytes.size() - 1);
    Span span = whole_file(text.path);
    const std::string_view before = bytes.substr(0, offset);
    span.line = 1 + static_cast<int>(std::count(before.begin(), before.end(), '\n'));
    const std::size_t begin = before.rfind('\n') + 1;
    const std::string_view line =
        trim_end(bytes.substr(begin, std::min(bytes.find('\n', offset), bytes.size()) - begin));
    const std::size_t indent = std::min(line.find_first_not_of(white_space), line.size());
    span.begin = begin + indent;
    span.end = begin + line.size();
    if (line.size() > longest_shown) return span;
    span.text = line;
    span.column = column_of(line, indent);
    span.end_column = column_of(line, line.size());
    return span;
}

Finding data_finding(const DataFiles& files, std::uint32_t text, std::size_t offset,
                     const Values& values, std::string_view variant) {
    Finding finding =
        failure("data-malformed", values, data_line(files.texts[text], offset), variant);
    advise_near(finding, values);
    return finding;
}

void advise_near(Finding& finding, const Values& values) {
    const auto near = values.find("near");
    if (near != values.end() && !near->second.empty())
        set_help(finding, "did you mean " + back_quoted(near->second) + "?");
}

}  // namespace orvex::frontend
