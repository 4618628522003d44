// The companion library as the translator sees it: operations on the handle of one object.
//
// The library is opened with the first object and closed with the last one.
#pragma once

#include "text/text.h"

#include <cstdint>

namespace orvex {

// The address of an object inside the library; 0 means no object.
using Handle = std::uint64_t;

// Create an object: from the library that the system's own search finds, from the one in a
// directory, or from the one of a full path (each up to 511 characters). They return 1, with a
// blank message; or 0, with the reason:
//     Could not load shared library <path>: <reason of the system>
//     Could not load symbol '<name>': <reason of the system>     (also on standard output)
//     Error while creating object
// or, when the library refuses our version of its interface, what the library says.
int palcreate(Handle& handle, Text<256>& message);
int palcreated(Handle& handle, View directory, Text<256>& message);
int palcreatel(Handle& handle, View path, Text<256>& message);

// Register the name of the calling system (its first 255 characters count), and fetch the line
// about who uses which library. With a library whose function does not have the signature expected,
// the call prints
//     FIX ME in C glu: <function> could not be loaded or has wrong signature!
// on standard output and ends the process with status 123. `handle` must be an object's.
void palsetsystemname(Handle handle, View name);
void palgetauditline(Text<255>& line, Handle handle);

// Frees the object, which `handle` must be, and returns 1.
int palfree(Handle& handle);

}  // namespace orvex
