// Makes the fixes of fuzzed input. The data have the same form as for the other fuzzers; the
// settings before the input are not used.
#include "agree.h"
#include "fix_properties.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string found = fix_properties::broken(agree::fuzzed_input({data, data + size}));
    if (found.empty()) return 0;
    std::fprintf(stderr, "broken: %s\n", found.c_str());
    std::abort();
}
