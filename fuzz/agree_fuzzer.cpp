// Compares the translator with the tree and its models on fuzzed input. The data have the same form
// as for the other fuzzers: the first byte says which models are left out, and the settings before
// the input are not used.
#include "agree.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 3) return 0;
    const std::string found = agree::difference(agree::fuzzed_input({data, data + size}), data[0]);
    if (found.empty()) return 0;
    std::fprintf(stderr, "broken: %s\n", found.c_str());
    std::abort();
}
