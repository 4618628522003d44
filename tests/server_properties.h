// Properties that hold for the language server whatever its client sends, for its tests and the
// fuzzer.
#pragma once

#include <cstddef>
#include <string>

namespace server_properties {

// Opens a text, then edits it, asks about it and cancels requests, as the choices say, some 40
// times; now and then several messages wait. If the text has at most `asked_size` bytes at the end,
// every request is made about it. Empty, or the property that does not hold.
std::string broken(const std::string& text, const std::string& choices, std::size_t asked_size);

}  // namespace server_properties
