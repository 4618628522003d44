// Edits fuzzed input in the language server, and asks about it. The data have the same form as for
// the other fuzzers: the part before the input chooses the edits and requests; the input follows.
#include "agree.h"
#include "server_properties.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t asked_size = 200;
    const std::string choices(data, data + size);
    const std::string found =
        server_properties::broken(agree::fuzzed_input(choices), choices, asked_size);
    if (found.empty()) return 0;
    std::fprintf(stderr, "broken: %s\n", found.c_str());
    std::abort();
}
