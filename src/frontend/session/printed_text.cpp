#include "frontend/session/printed_text.h"

#include "frontend/base/bytes.h"
#include "frontend/base/descriptors.h"
#include "frontend/base/line_stream.h"
#include "frontend/cli/inputs.h"
#include "notation/records.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <string_view>
#include <unistd.h>

namespace orvex::frontend {

namespace {

constexpr std::string_view printed_ending = ".scr";
constexpr std::string_view model_ending = ".zlm";

// Copies everything that can be read from one descriptor to the other.
bool copy_all(int from, int to) {
    std::array<char, std::size_t{1} << 16U> piece{};
    ssize_t count = 0;
    while ((count = read_some(from, piece.data(), piece.size())) > 0) {
        if (!write_all(to, {piece.data(), static_cast<std::size_t>(count)})) return false;
    }
    return count == 0;
}

// A temporary file that disappears with its descriptor, or -1 with errno set.
int open_nameless() {
    std::FILE* const file = std::tmpfile();
    if (file == nullptr) return -1;
    const int descriptor = ::dup(::fileno(file));
    std::fclose(file);
    return descriptor;
}

bool has_ending(const std::string& path, std::string_view ending) {
    return in_small_letters(path).ends_with(ending);
}

// Does the first non-blank line begin a model? In the host's text a model is in a comment, which
// begins earlier.
bool begins_with_model(const std::string& path) {
    const int file = open_file(path, O_RDONLY);
    if (file == -1) return false;
    std::array<char, 4096> start{};
    const ssize_t count = read_some(file, start.data(), start.size());
    ::close(file);
    if (count <= 0) return false;
    const std::string_view text(start.data(), static_cast<std::size_t>(count));
    return trimmed(text).starts_with(notation::model_keyword);
}

}  // namespace

bool is_printed(const std::string& path, const std::string& shown_path) {
    if (has_ending(shown_path, printed_ending)) return true;
    if (has_ending(shown_path, model_ending)) return false;
    return path == "-" || (!may_wait(path) && begins_with_model(path));
}

PrintedText::PrintedText(const std::string& path)
    : descriptor_(path == "-" ? ::dup(STDIN_FILENO) : open_file(path, O_RDONLY)) {
    if (descriptor_ == -1) {
        error_ = errno;
        return;
    }
    start_ = ::lseek(descriptor_, 0, SEEK_CUR);
    if (start_ == -1) copy();
}

PrintedText::~PrintedText() {
    if (descriptor_ != -1) ::close(descriptor_);
}

void PrintedText::copy() {
    start_ = 0;
    const int nameless = open_nameless();
    if (nameless == -1 || !copy_all(descriptor_, nameless)) error_ = errno;
    ::close(descriptor_);
    descriptor_ = nameless;
}

bool PrintedText::pass(const LineSink& sink) {
    if (error_ != 0) return false;
    LinePlace line = 0;
    const bool good =
        ::lseek(descriptor_, start_, SEEK_SET) != -1 &&
        for_each_line(descriptor_, [&](std::string_view text) { sink(text, ++line); });
    if (!good) error_ = errno;
    return good;
}

std::map<LinePlace, std::string> PrintedText::texts_of(const std::vector<LinePlace>& lines) {
    std::map<LinePlace, std::string> texts;
    for (const LinePlace line : lines) texts.try_emplace(line);
    if (texts.empty()) return texts;
    pass([&](std::string_view text, LinePlace line) {
        const auto wanted = texts.find(line);
        if (wanted != texts.end()) wanted->second = text;
    });
    return texts;
}

}  // namespace orvex::frontend
