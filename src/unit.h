// The files of a run, each known by its unit number, and the two console streams.
//
// A unit is an input file, a scratch file or a named output file, read and written through one
// static buffer, so that a run's memory does not grow with its files.
//
// A named output file is never half-written: the old file is removed when the unit is opened, the
// new text is written under a temporary name next to it, with the mode of the old file, and closing
// the unit renames it.
// Where that is impossible (a device, a FIFO, a symbolic link, a file with further links, a
// directory that takes no new file) it is written in place. If reading or writing fails, the run
// goes on: a message on standard error says so (read-failed, write-failed), and neither the file
// nor an output that depends on it gets its name.
#pragma once

#include "text/bytes.h"

#include <initializer_list>

namespace orvex {

constexpr int first_unit = 10;
constexpr int last_unit = 21;

// Thrown when a scratch text outgrows its memory and no file can be made to hold it.
struct ScratchFailure {
    int unit;
};

// Is there something with that name, other than a directory?
bool file_exists(View path);

// Opens a unit, after closing it if it was open. False if the file cannot be opened, which includes
// every blank name and directory.
bool open_input(int number, View path);
bool open_output(int number, View path);
void open_scratch(int number);

// The next line without its line end, or false at the end of the file and ever after. A last line
// without a line end counts. The view is valid until the next call; in a line longer than
// longest_line bytes, the bytes after that many are not meaningful.
constexpr int longest_line = 4096;
bool read_line(int number, View& line);

// Did the line just read have a line end? Only the last one of a file may lack it.
bool line_was_ended(int number);

// Writes one line, the pieces unchanged. A line of a scratch file takes the form in which it is
// copied from there: cut to 255 columns, without trailing blanks, a blank line as one blank.
// Precondition: together at most longest_line. Throws ScratchFailure.
void write_line(int number, std::initializer_list<View> pieces);

// Copies all lines of a scratch file to the end of an output file, and closes the scratch file.
void filcpy(int from, int to);

// Empties an output file, so that it can be written again from the start.
void restart_output(int number);

// The output is whole only if the other units are: it does not get its name if one of them has
// failed by the time it is closed.
void depend_on(int number, std::initializer_list<int> others);

// Gives up an output, if it is open: it does not get its name.
void discard_output(int number);

// Closes a unit, if it is open. A scratch file is gone then.
void close_unit(int number);

// Closes all units, the generator file before the header file: anyone who finds a header file also
// finds the generator file that belongs to it.
void close_all_units();

void write_standard_output(std::initializer_list<View> pieces);
void write_standard_error(std::initializer_list<View> pieces);

}  // namespace orvex
