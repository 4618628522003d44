#include "frontend/session/depfile.h"

#include <cstddef>

namespace orvex::frontend {

namespace {

void append_name(std::string& text, std::size_t& column, const std::string& name) {
    constexpr std::size_t last_column = 72;
    std::string escaped;
    for (std::size_t i = 0; i < name.size(); ++i) {
        if (name[i] == ' ' || name[i] == '\t') {
            // Backslashes in front of a blank would be taken for its escape: each is doubled.
            for (std::size_t j = i; j > 0 && name[j - 1] == '\\'; --j) escaped += '\\';
            escaped += '\\';
        } else if (name[i] == '#' || name[i] == ':') {
            escaped += '\\';
        } else if (name[i] == '$') {
            escaped += '$';
        }
        escaped += name[i];
    }
    if (column > 0 && column + 1 + escaped.size() > last_column) {
        text += " \\\n";
        column = 0;
    }
    if (!text.empty()) {
        text += ' ';
        ++column;
    }
    text += escaped;
    column += escaped.size();
}

}  // namespace

std::string depfile(const std::vector<std::string>& outputs,
                    const std::vector<std::string>& inputs) {
    std::string text;
    std::size_t column = 0;
    for (const std::string& output : outputs) append_name(text, column, output);
    text += ':';
    ++column;
    for (const std::string& input : inputs) append_name(text, column, input);
    return text + "\n";
}

}  // namespace orvex::frontend
