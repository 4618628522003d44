# In script mode: writes SOURCE, a C++ file that holds the text of PAGE as NAME.

file(READ ${PAGE} text)
# A page is longer than the literals that every compiler must take, but GCC and Clang take it.
file(WRITE ${SOURCE} "#include <string_view>

#pragma GCC diagnostic ignored \"-Woverlength-strings\"

namespace orvex::frontend {

extern const std::string_view ${NAME};
const std::string_view ${NAME} = R\"page(${text})page\";

}  // namespace orvex::frontend
")
