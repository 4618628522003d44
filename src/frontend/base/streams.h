// Standard output and standard error, with error handling.
#pragma once

#include <string>
#include <string_view>

namespace orvex::frontend {

enum class Colour { automatic, always, never };

// Text on its way to a descriptor. After a failed write the rest is dropped, and `error` keeps the
// errno of the first failure.
struct Stream {
    int descriptor = 1;
    std::string pending;
    int error = 0;
};

void put(Stream& stream, std::string_view text);
bool flush(Stream& stream);  // false if a write has failed

// The error message for a failed standard output, as a line.
std::string failure_line(const Stream& stream);

bool is_terminal(const Stream& stream);

// Whether to colour text on the stream: as the option says, else only on a capable terminal without
// NO_COLOR.
bool use_colour(const Stream& stream, Colour colour);

// Opens placeholders for closed standard descriptors, so that no file gets their numbers. From now
// on, a write to a closed pipe, or past the file size limit, fails instead of ending the program.
void guard_streams();

// The system's message for an errno.
std::string system_message(int error);

}  // namespace orvex::frontend
