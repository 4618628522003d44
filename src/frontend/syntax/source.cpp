#include "frontend/syntax/source.h"

#include "frontend/base/bytes.h"
#include "frontend/base/descriptors.h"
#include "frontend/base/files.h"

#include <algorithm>
#include <unistd.h>

namespace orvex::frontend {

namespace {

constexpr std::size_t columns = 255;  // what the translator reads of a line
constexpr std::size_t keyword_columns = 12;
constexpr std::size_t longest_model_name = 31;
constexpr std::string_view model_keyword = "$MODEL:";
constexpr std::string_view end_keyword = "$OFFTEXT";

bool is_blank_byte(char c) { return c == ' ' || c == '\t' || c == '\r'; }

// Does the text begin with the word, which is in upper case?
bool begins_with(std::string_view text, std::string_view word) {
    return text.size() >= word.size() && std::equal(word.begin(), word.end(), text.begin(),
                                                    [](char a, char b) { return a == upper(b); });
}

// The keyword of a record that begins with "$", without the "$", or nothing where it has no colon.
std::string_view keyword_of(std::string_view record) {
    const std::string_view text = record.substr(1, keyword_columns);
    const auto colon = text.find(':');
    return colon == std::string_view::npos ? std::string_view()
                                           : without_trailing_blanks(text.substr(0, colon));
}

std::string model_name(std::string_view line) {
    std::string name(line.substr(0, columns).substr(model_keyword.size()));
    std::replace(name.begin(), name.end(), '\r', ' ');
    name.erase(0, std::min(name.find_first_not_of(" \t"), name.size()));
    name.resize(std::min(name.size(), longest_model_name));
    name.resize(without_trailing_blanks(name).size());
    make_upper(name);
    return name;
}

// Gives the lines of one source their kinds, one after the other.
class Sorter {
  public:
    explicit Sorter(Source& source) : source_(source) {}

    void next(SourceLine& line) {
        ++number_;
        if (!in_model_) {
            if (begins_with(line.text, model_keyword)) open(line);
        } else {
            sort(line);
        }
    }

    void end() {
        if (in_model_) source_.models.back().last = number_;
    }

  private:
    void open(SourceLine& line) {
        line.kind = LineKind::model;
        source_.models.push_back({model_name(line.text), number_, number_, false});
        in_model_ = true;
        in_algebra_ = false;
        block_ = 0;
    }

    void sort(SourceLine& line) {
        const std::string_view read = line.text.substr(0, columns);
        line.block = block_;
        if (std::all_of(read.begin(), read.end(), is_blank_byte)) {
            line.kind = LineKind::blank;
        } else if (read.front() == '*') {
            line.kind = LineKind::comment;
        } else if (in_algebra_ && is_algebra(read)) {
            line.kind = LineKind::algebra;
        } else if (read.front() == '$') {
            open_block(line);
        } else {
            line.kind = read.front() == '+' ? LineKind::continuation : LineKind::entry;
        }
    }

    // The body ends with its first ";", or in front of a keyword.
    bool is_algebra(std::string_view read) {
        const bool last = read.substr(0, read.find('!')).find(';') != std::string_view::npos;
        const bool outside = !last && read.front() == '$';
        in_algebra_ = !last && !outside;
        return !outside;
    }

    void open_block(SourceLine& line) {
        line.kind = LineKind::keyword;
        line.block = block_ = number_;
        if (begins_with(line.text, end_keyword)) {
            source_.models.back().last = number_;
            source_.models.back().closed = true;
            in_model_ = false;
        } else {
            in_algebra_ = keyword_of(record_of(line.text)) == "CONSTRAINT";
        }
    }

    Source& source_;
    int number_ = 0;
    int block_ = 0;
    bool in_model_ = false;
    bool in_algebra_ = false;
};

bool equal_letters(std::string_view a, std::string_view b) {
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(),
                                              [](char x, char y) { return upper(x) == upper(y); });
}

}  // namespace

bool is_name_byte(char c) {
    return (c >= '0' && c <= '9') || (upper(c) >= 'A' && upper(c) <= 'Z') || c == '_';
}

std::string record_of(std::string_view line) {
    line = line.substr(0, columns);
    std::string record(line.substr(0, line.find('!')));
    std::replace_if(record.begin(), record.end(), is_blank_byte, ' ');
    record.resize(without_trailing_blanks(record).size());
    make_upper(record);
    return record;
}

bool is_indented(std::string_view line) {
    const std::size_t at = line.find_first_not_of(" \t");
    return at != std::string_view::npos && at != 0 && (line[at] == '$' || line[at] == '+');
}

std::string_view first_word(std::string_view text) {
    return text.substr(0, text.find_first_of(" \t:"));
}

void split_source(Source& source) {
    source.lines.clear();
    source.models.clear();
    source.lines.reserve(
        static_cast<std::size_t>(std::count(source.bytes.begin(), source.bytes.end(), '\n')) + 1);
    Sorter sorter(source);
    std::string_view rest = source.bytes;
    while (!rest.empty()) {
        const std::size_t offset = source.bytes.size() - rest.size();
        std::string_view text = take_line(rest);
        if (text.ends_with('\r')) text.remove_suffix(1);
        sorter.next(source.lines.emplace_back(SourceLine{text, offset, LineKind::outside, 0}));
    }
    sorter.end();
}

bool read_source(const std::string& file, Source& source) {
    const bool complete =
        file == "-" ? read_all(STDIN_FILENO, source.bytes) : read_file(file, source.bytes);
    if (complete) split_source(source);
    return complete;
}

const SourceLine& line_at(const Source& source, int line) {
    return source.lines[static_cast<std::size_t>(line) - 1];
}

int lines_before(const Source& source, std::size_t model, const std::vector<bool>& left_out) {
    int count = 0;
    for (std::size_t i = 0; i < model; ++i) {
        const bool counted = i >= left_out.size() || !left_out[i];
        if (counted) count += source.models[i].last - source.models[i].line;
    }
    return count;
}

int file_line(const Source& source, int number, const std::vector<bool>& left_out) {
    if (number < 1) return 0;
    for (std::size_t i = 0; i < source.models.size(); ++i) {
        if (i < left_out.size() && left_out[i]) continue;
        const ModelText& model = source.models[i];
        const int counted = model.last - model.line;
        if (number <= counted) return model.line + number;
        number -= counted;
    }
    return 0;
}

int column_of(std::string_view line, std::size_t at) {
    int column = 1;
    std::size_t end = 0;
    for (const std::string_view character : characters_of(line)) {
        end += character.size();
        if (end > at) break;
        ++column;
    }
    return column;
}

std::size_t find_word(std::string_view line, std::string_view word, std::size_t from) {
    line = line.substr(0, line.find('!'));
    if (word.empty()) return std::string_view::npos;
    for (std::size_t at = from; at + word.size() <= line.size(); ++at) {
        if (!equal_letters(line.substr(at, word.size()), word)) continue;
        const std::size_t end = at + word.size();
        const bool joined_before = at > 0 && is_name_byte(line[at - 1]) && is_name_byte(word[0]);
        const bool joined_behind =
            end < line.size() && is_name_byte(line[end]) && is_name_byte(word.back());
        if (!joined_before && !joined_behind) return at;
    }
    return std::string_view::npos;
}

}  // namespace orvex::frontend
