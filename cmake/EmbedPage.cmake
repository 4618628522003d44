# In script mode: writes SOURCE, a C++ file that holds the text of PAGE as `messages_page`.

file(READ ${PAGE} text)
# A page is longer than the literals that every compiler must take, but GCC and Clang take it.
file(WRITE ${SOURCE} "#include <string_view>

#pragma GCC diagnostic ignored \"-Woverlength-strings\"

namespace orvex::frontend {

extern const std::string_view messages_page;
const std::string_view messages_page = R\"page(${text})page\";

}  // namespace orvex::frontend
")
