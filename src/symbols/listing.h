// The cross-reference listing of the symbol table.
#pragma once

#include "preproc.h"

#include <span>

namespace orvex {

// Appends the listing of the current table to the listing scratch file: every symbol in order of
// name, with its kind and the numbers of the input lines on which it occurs.
void symlst();

// Fills `indx` with the entry numbers from 1 to its size, in the order of their names.
void sortc(std::span<int> indx, const Table<Name, maxsym>& names);

// Puts the line numbers of the symbol's references into `list` (from its first element on), oldest
// first, and returns their count. If there are more than `list` holds, the newest are kept.
int getref(int isym, std::span<int> list);

}  // namespace orvex
