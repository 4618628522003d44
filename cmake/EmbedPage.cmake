# In script mode: writes SOURCE, a C++ file that holds the text of PAGE as `messages_page`.

file(READ ${PAGE} text)
file(WRITE ${SOURCE} "#include <string_view>

namespace orvex::frontend {

extern const std::string_view messages_page;
const std::string_view messages_page = R\"page(${text})page\";

}  // namespace orvex::frontend
")
