// The shared state of the translator: everything that at least two files read or write. What only
// one file uses is in that file. Everything here is plain static storage; reset_run() clears it for
// a run, reset_model() for a model. State that survives them says so where it is defined.
#pragma once

#include "notation/limits.h"
#include "text/text.h"

#include <array>
#include <cstddef>

namespace orvex {

// Capacities
constexpr int maxsym = notation::most_symbols;      // symbols of a model
constexpr int maxname = notation::name_columns;     // characters of a symbol or set name
constexpr int maxref = 10000;                       // references of a model
constexpr int maxset = notation::most_active_sets;  // active sets
constexpr int maxarg = notation::most_arguments;    // own arguments of a field
constexpr int maxslot = 20;                         // argument slots
constexpr int maxline = notation::record_columns;  // characters of a record and of a generated line

using Line = Text<maxline>;
using Name = Text<maxname>;
using Argument = Text<notation::argument_columns>;

// A table whose entries are counted from 1. Entry 0 means "none" and holds nothing.
template <typename Entry, int count>
using Table = std::array<Entry, static_cast<std::size_t>(count) + 1>;

// File units
constexpr int kinp = 10;  // input file
constexpr int kgen = 12;  // generator file
constexpr int klst = 13;  // listing scratch file
constexpr int khdr = 14;  // header file
constexpr int klvl = 15;  // levels scratch file
constexpr int kdum = 16;  // artificial-equation scratch file
constexpr int kerr = 17;  // error file
constexpr int kmdl = 19;  // model-statement scratch file
constexpr int kcon = 20;  // constraint scratch file
constexpr int kctl = 21;  // run control file

// The run: set by prepare_run and the run control file

// Version text, the first line of every listing.
extern Text<50> versn;
// Path of the input file.
extern Line inpfil;
// Path of the file that the generated program writes.
extern Line scrfil;
// Prefix of the generator file's name.
extern Line scrdir;
// Path of the error file; if blank, there is none, and only one model is translated.
extern Line errfil;
// Path of the header file; if blank, it is named after the model.
extern Line hdrfil;
// Time stamp of the generator file's consistency guard.
extern Line time;
// Number of the current model.
extern int nmodel;
// Number of the latest constraint.
extern int nconst;

// The model: set at its start

// Its name; before the model starts, the name to look for (blank: any).
extern Text<notation::model_name_columns> model;
// The put file's name in generated text.
extern Text<5> unit;
// A report block has begun: no new variables from here on.
extern bool startf;

// The record: set by the record reader, consumed by the field splitter

// The current record, upper case, without its comment.
extern Line record;
// The last line as read.
extern Line lstrec;
// The record's comment, after its first "!".
extern Line descrp;
// Number of input lines read through getrec, over all models.
extern int lineno;
// Keyword of the current keyword record.
extern Text<notation::keyword_columns> keywrd;
// The fields belong to a block's opening record or its continuations.
extern bool funrec;

// The field: set by parse, or by the declaration reader

// Its label, without the colon.
extern Text<notation::label_columns> label;
// Its value.
extern Line field;
// Its condition in parentheses, or blank.
extern Line condtn;
// The name part of its value, or a parenthesised expression.
extern Line root;
// Own arguments from entry 1 on, extra indices from maxarg + 1 on.
extern Table<Argument, maxslot> arg;
// Own arguments.
extern int narg;
// Extra indices.
extern int nxarg;

// The generated line and its open levels: kept by the line writer and the block writers

// The statement being built.
extern Line output;
// Open condition levels.
extern int nif;
// Open LOOP levels.
extern int nloop;
// Open block-IF levels.
extern int nblkif;
// Active sets: those that open LOOPs control, in order of opening.
extern Table<Name, maxset> set;
// Active sets in use.
extern int nset;
// nset at the level of the current block.
extern int mset;
// nblkif at that level.
extern int mblkif;
// nloop at that level.
extern int mloop;

// The symbol table: kept by symbols/table, printed by symbols/listing

// Names, in the order of their first occurrence.
extern Table<Name, maxsym> symbol;
// Type codes: A P C V D R S.
extern Table<char, maxsym> symtyp;
// Numbers of arguments.
extern Table<char, maxsym> symdim;
// Row in symref of the newest reference, 0 for none.
extern Table<int, maxsym> symloc;
struct Reference {
    // Input line number.
    int line;
    // Row of the same symbol's previous reference, 0 for none.
    int older;
};
extern Table<Reference, maxref> symref;
// Symbols in use.
extern int nsym;
// References in use.
extern int nref;
// References not recorded because symref was full.
extern int nrefign;
// Length of the longest name so far.
extern int symlenmx;

// Resets all the state above to its values at program start, except the entries of tables: they
// have no meaning beyond their counts.
void reset_run();

// Resets what belongs to one model: symbols, active sets, open levels and the field. Tables keep
// their entries as in reset_run().
void reset_model();

}  // namespace orvex
