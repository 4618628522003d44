// What must hold of the fixes of any text.
#pragma once

#include <string>

namespace fix_properties {

// Makes the fixes of a text, in all ways, and the comments that allow its findings. What does not
// hold then; empty where all does.
std::string broken(const std::string& text);

}  // namespace fix_properties
