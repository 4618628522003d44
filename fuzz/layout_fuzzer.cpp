// Lays out fuzzed input. The data have the same form as for the other fuzzers: the first byte
// chooses other blanks for the text, and the settings before the input are not used.
#include "agree.h"
#include "layout_properties.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 3) return 0;
    const std::string found =
        layout_properties::broken(agree::fuzzed_input({data, data + size}), data[0]);
    if (found.empty()) return 0;
    std::fprintf(stderr, "broken: %s\n", found.c_str());
    std::abort();
}
