// Properties that must hold for the fixes of any text.
#pragma once

#include <string>

namespace fix_properties {

// Makes the fixes of a text, in all ways, and the comments that allow its findings. Returns the
// property that does not hold; empty if all do.
std::string broken(const std::string& text);

}  // namespace fix_properties
