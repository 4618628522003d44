// Entry points on one companion library object, with raw buffers on the translator's side.
//
// A translator text is a buffer of a given length, padded with blanks and not terminated. No length
// may be negative.
#pragma once

#include "companion/loader.h"

namespace orvex::companion {

// Translator text to a length-prefixed one without the trailing blanks, cut to `max` (at most 255)
// characters. `out` has room for `max` + 1 bytes.
void convertF2PAS(const char* text, unsigned char* out, int length, int max);

// Length-prefixed text to a translator text of `length` characters.
void convertPAS2F(const unsigned char* in, char* out, int length);

// Translator text to a zero-terminated one without the trailing blanks, in a buffer of `max` bytes
// (at least 1).
void convertF2C(const char* text, char* out, int length, int max);

// Makes a zero-terminated string of `used` characters a translator text of `total` characters.
void blankPad(char* text, int used, int total);

// Load the library and create an object; the last two take the directory or the full path of the
// library. They return 1 and leave `message` blank; or return 0, with the loader's message or that
// of library-refused in it.
int c_palcreate_(Handle* handle, char* message, int length);
int c_palcreated_(Handle* handle, const char* dir, int dirLength, char* message, int length);
int c_palcreatel_(Handle* handle, const char* path, int pathLength, char* message, int length);

// These need an object, and therefore a loaded library. `line` has room for 255 characters.
void c_palsetsystemname_(Handle handle, const char* name, int length);
void c_palgetauditline_(char* line, Handle handle);

// Frees the object, and unloads the library with the last one. Returns 1.
int c_palfree_(Handle* handle);

}  // namespace orvex::companion
