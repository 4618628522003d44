// The shared state of the translator: what two files or more read or write. What only one file uses
// lives in that file. Everything here is plain static storage; reset_run() gives a run,
// reset_model() a model, its clean beginning. State that outlives them says so where it is.
#pragma once

#include "notation/limits.h"
#include "text.h"

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

// A table whose entries are counted from 1. Entry 0 stands for "none" and holds nothing.
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
extern Text<50> versn;  // version text, the first line of every listing
extern Line inpfil;     // path of the input file
extern Line scrfil;     // path of the file that the generated program writes
extern Line scrdir;     // put in front of the generator file's name
extern Line errfil;     // path of the error file; blank: none, and only one model is translated
extern Line hdrfil;     // path of the header file; blank: named after the model
extern Line time;       // time stamp of the generator file's consistency guard
extern int nmodel;      // number of the current model
extern int nconst;      // number of the latest constraint

// The model: set at its start
extern Text<notation::model_name_columns>
    model;            // its name; before its start, the name to look for (blank: any)
extern Text<5> unit;  // the put file's name in generated text
extern bool startf;   // a report block has begun: no new variables from here on

// The record: set by the record reader, consumed by the field splitter
extern Line record;  // the current record, upper case, without its comment
extern Line lstrec;  // the last line as read
extern Line descrp;  // the record's comment, behind its first "!"
extern int lineno;   // number of input lines read through getrec, over all models
extern Text<notation::keyword_columns> keywrd;  // keyword of the current keyword record
extern bool funrec;  // the fields belong to a block's opening record or its continuations

// The field: set by parse, or by the declaration reader
extern Text<notation::label_columns> label;  // its label, without the colon
extern Line field;                           // its value
extern Line condtn;                          // its condition in parentheses, or blank
extern Line root;  // the name part of its value, or a parenthesised expression
extern Table<Argument, maxslot>
    arg;           // own arguments from entry 1 on, extra indices from maxarg + 1 on
extern int narg;   // own arguments
extern int nxarg;  // extra indices

// The generated line and its open levels: kept by the line writer and the block writers
extern Line output;              // the statement being built
extern int nif;                  // open condition levels
extern int nloop;                // open LOOP levels
extern int nblkif;               // open block-IF levels
extern Table<Name, maxset> set;  // active sets: those that open LOOPs control, in order of opening
extern int nset;                 // active sets in use
extern int mset;                 // nset at the level of the current block
extern int mblkif;               // nblkif there
extern int mloop;                // nloop there

// The symbol table: kept by symbols/table, printed by symbols/listing
extern Table<Name, maxsym> symbol;  // names, in the order of their first occurrence
extern Table<char, maxsym> symtyp;  // type codes: A P C V D R S
extern Table<char, maxsym> symdim;  // numbers of arguments
extern Table<int, maxsym> symloc;   // row in symref of the newest reference, 0 for none
struct Reference {
    int line;   // input line number
    int older;  // row of the same symbol's reference before this one, 0 for none
};
extern Table<Reference, maxref> symref;
extern int nsym;      // symbols in use
extern int nref;      // references in use
extern int nrefign;   // references not recorded because symref was full
extern int symlenmx;  // length of the longest name met

// Gives all the state above the values that it has when the program starts, but not the entries of
// tables: they have no meaning beyond their counts.
void reset_run();

// Resets what belongs to one model: symbols, active sets, open levels and the field. Tables keep
// their entries as in reset_run().
void reset_model();

}  // namespace orvex
