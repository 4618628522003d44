#include "frontend/findings/messages.h"

namespace orvex::frontend {

const std::vector<MessageEntry>& message_index() {
    static std::vector<MessageEntry> none;
    return none;
}
const MessageEntry* find_code(std::string_view) { return nullptr; }
std::optional<Recognised> recognise(std::string_view) { return {}; }
std::string plain_words(std::string_view message, const std::map<std::string, std::string>&) {
    return std::string(message);
}
std::string as_help(std::string_view paragraph) { return std::string(paragraph); }

}  // namespace orvex::frontend
