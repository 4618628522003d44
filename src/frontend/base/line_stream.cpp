#include "frontend/base/line_stream.h"

#include "frontend/base/descriptors.h"

#include <algorithm>
#include <string>
#include <sys/types.h>
#include <vector>

namespace orvex::frontend {

namespace {

// Appends to the start of a line as much of a part as there is room for.
void append_part(std::string& line, std::string_view part) {
    line.append(part.substr(0, longest_line - std::min(line.size(), longest_line)));
}

// Passes on all lines that end in the piece, and keeps the start of the next one.
void take_piece(std::string_view piece, std::string& kept,
                const std::function<void(std::string_view)>& work) {
    for (std::size_t end = piece.find('\n'); end != std::string_view::npos;
         end = piece.find('\n')) {
        if (kept.empty()) {
            work(piece.substr(0, std::min(end, longest_line)));
        } else {
            append_part(kept, piece.substr(0, end));
            work(kept);
            kept.clear();
        }
        piece.remove_prefix(end + 1);
    }
    append_part(kept, piece);
}

}  // namespace

bool for_each_line(int descriptor, const std::function<void(std::string_view)>& work) {
    constexpr std::size_t piece_size = std::size_t{1} << 16U;
    std::vector<char> piece(piece_size);
    std::string kept;
    ssize_t count = 0;
    while ((count = read_some(descriptor, piece.data(), piece.size())) > 0)
        take_piece({piece.data(), static_cast<std::size_t>(count)}, kept, work);
    if (count == 0 && !kept.empty()) work(kept);
    return count == 0;
}

}  // namespace orvex::frontend
