// Standard output and standard error, with their failures.
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
bool flush(Stream& stream);  // false where a write has failed

// What there is to say of a stream that has failed, as a line.
std::string failure_line(const Stream& stream);

bool is_terminal(const Stream& stream);

// Whether text on the stream is to have colours: as the option says, else on a terminal that knows
// them where NO_COLOR is not set.
bool use_colour(const Stream& stream, Colour colour);

// Puts something in place of closed standard descriptors, so that no file takes their number. A
// write to a closed pipe, or past the largest size that a file may have, fails from now on instead
// of ending the program.
void guard_streams();

// What the system says of an errno.
std::string system_message(int error);

}  // namespace orvex::frontend
