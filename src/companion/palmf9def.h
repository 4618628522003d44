// The companion library as the translator sees it: operations on the handle of one object.
//
// The library is opened with the first object and closed with the last one.
#pragma once

#include "text/text.h"

#include <cstdint>

namespace orvex {

// The address of an object inside the library; 0 means no object.
using Handle = std::uint64_t;

// Create an object: from the library found by the system's own search, from the one in a directory,
// or from the one with a full path (each up to 511 characters). They return 1, with a blank
// message; or 0, with the reason:
//     Could not load shared library <path>: <reason of the system>
//     Could not load symbol '<name>': <reason of the system>     (also on standard output)
//     Error while creating object
// or, if the library refuses our version of its interface, its own message.
int palcreate(Handle& handle, Text<256>& message);
int palcreated(Handle& handle, View directory, Text<256>& message);
int palcreatel(Handle& handle, View path, Text<256>& message);

// Register the name of the calling system (only its first 255 characters count), and fetch the line
// that says who uses which library. If the library's function does not have the expected signature,
// the call prints
//     FIX ME in C glu: <function> could not be loaded or has wrong signature!
// on standard output and ends the process with status 123. `handle` must refer to an object.
void palsetsystemname(Handle handle, View name);
void palgetauditline(Text<255>& line, Handle handle);

// Frees the object that `handle` must refer to, and returns 1.
int palfree(Handle& handle);

}  // namespace orvex
