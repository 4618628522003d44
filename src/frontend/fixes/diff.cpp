#include "frontend/fixes/diff.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <span>
#include <utility>

namespace orvex::frontend {

namespace {

constexpr std::size_t context = 3;  // lines around a change

// Lines of the text, counted from 0, the end exclusive, and the text that replaces them.
struct Change {
    std::size_t first = 0;
    std::size_t last = 0;
    std::string text;
};

// The first line of a text, with its line end.
std::string_view first_line(std::string_view text) {
    return text.substr(0, std::min(text.find('\n'), text.size() - 1) + 1);
}

class Lines {
  public:
    explicit Lines(std::string_view text) : text_(text) {
        for (std::size_t at = 0; at < text.size(); at += first_line(text.substr(at)).size())
            begins_.push_back(at);
        count_ = begins_.size();
        // Another line may begin after the last line end.
        if (text.empty() || text.ends_with('\n')) begins_.push_back(text.size());
    }

    std::size_t count() const { return count_; }
    std::string_view line(std::size_t index) const {
        return first_line(text_.substr(begins_[index]));
    }

    // The edits as changes of whole lines. Adjacent ones are merged.
    std::vector<Change> changes(const std::vector<Edit>& edits) const {
        std::vector<Change> made;
        for (std::size_t i = 0; i < edits.size();) {
            Change change;
            change.first = line_at(edits[i].begin);
            std::size_t at = begins_[change.first];
            do {
                change.text.append(part(at, edits[i].begin)).append(edits[i].text);
                at = edits[i++].end;
            } while (i < edits.size() && edits[i].begin <= end_of(change, at));
            const std::size_t end = end_of(change, at);
            change.text += part(at, end);
            change.last = static_cast<std::size_t>(
                std::lower_bound(begins_.begin(), begins_.end(), end) - begins_.begin());
            made.push_back(std::move(change));
        }
        return made;
    }

  private:
    std::size_t line_at(std::size_t offset) const {
        const auto after = std::upper_bound(begins_.begin(), begins_.end(), offset);
        return static_cast<std::size_t>(after - begins_.begin()) - 1;
    }

    std::string_view part(std::size_t begin, std::size_t end) const {
        return text_.substr(begin, end - begin);
    }

    // Where a change that is complete up to `at` ends: there, if both its text and the replaced
    // text end with a whole line; otherwise at the end of the line.
    std::size_t end_of(const Change& change, std::size_t at) const {
        const std::size_t line = line_at(at);
        const bool is_whole = change.text.empty() || change.text.ends_with('\n');
        if (begins_[line] == at && is_whole) return at;
        return line + 1 < begins_.size() ? begins_[line + 1] : text_.size();
    }

    std::string_view text_;
    std::vector<std::size_t> begins_;
    std::size_t count_ = 0;
};

void put_line(std::string& body, char mark, std::string_view line) {
    body.append(1, mark).append(line);
    if (!line.ends_with('\n')) body += "\n\\ No newline at end of file\n";
}

// "12,3"; an empty range is named after the line before it.
std::string range(std::size_t first, std::size_t count) {
    return std::to_string(count == 0 ? first : first + 1) + "," + std::to_string(count);
}

// The hunk of some changes. `shift` is how far earlier hunks have moved its lines; it is updated.
std::string hunk(const Lines& lines, std::span<const Change> changes, std::size_t& shift) {
    const std::size_t first = changes.front().first - std::min(context, changes.front().first);
    const std::size_t last = std::min(changes.back().last + context, lines.count());
    std::string body;
    std::size_t put = 0;
    std::size_t at = first;
    const auto keep_to = [&](std::size_t end) {
        for (; at < end; ++at, ++put) put_line(body, ' ', lines.line(at));
    };
    for (const Change& change : changes) {
        keep_to(change.first);
        for (; at < change.last; ++at) put_line(body, '-', lines.line(at));
        for (std::string_view rest = change.text; !rest.empty(); ++put) {
            put_line(body, '+', first_line(rest));
            rest.remove_prefix(first_line(rest).size());
        }
    }
    keep_to(last);
    const std::string head =
        "@@ -" + range(first, last - first) + " +" + range(first + shift, put) + " @@\n";
    shift += put - (last - first);
    return head + body;
}

// A path as `patch` reads it.
std::string shown_path(const std::string& path) {
    const auto is_special = [](char c) {
        return static_cast<unsigned char>(c) < ' ' || c == '"' || c == '\\';
    };
    // A TAB ends a path that has blanks in it.
    if (std::none_of(path.begin(), path.end(), is_special))
        return path + (path.find(' ') == std::string::npos ? "" : "\t");
    std::string text = "\"";
    for (const char c : path) {
        if (!is_special(c)) {
            text += c;
            continue;
        }
        const auto byte = static_cast<unsigned char>(c);
        text += '\\';
        for (const unsigned shift : {6U, 3U, 0U})
            text += static_cast<char>('0' + ((byte >> shift) & 7U));
    }
    return text + '"';
}

}  // namespace

std::string unified_diff(const std::string& path, std::string_view text,
                         const std::vector<Edit>& edits) {
    if (edits.empty()) return {};
    const Lines lines(text);
    const std::vector<Change> changes = lines.changes(edits);
    std::string diff = "--- " + shown_path(path) + "\n+++ " + shown_path(path) + "\n";
    std::size_t shift = 0;
    for (auto first = changes.begin(); first != changes.end();) {
        auto last = first + 1;
        while (last != changes.end() && last->first - (last - 1)->last <= 2 * context) ++last;
        diff += hunk(lines, {first, last}, shift);
        first = last;
    }
    return diff;
}

}  // namespace orvex::frontend
