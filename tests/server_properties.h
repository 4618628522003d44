// What holds of the language server whatever its client sends, for its tests and the fuzzer.
#pragma once

#include <cstddef>
#include <string>

namespace server_properties {

// Opens a text, then edits it, asks about it and cancels, as the choices say, some 40 times;
// messages wait for one another now and then. A text that is at most `asked_size` bytes long at the
// end is asked everything. Empty, or the property that does not hold.
std::string broken(const std::string& text, const std::string& choices, std::size_t asked_size);

}  // namespace server_properties
