#include "preproc.h"

namespace orvex {

// Each page touched costs time, and a small model touches only the first rows of the tables. So the
// long tables are next to each other, apart from the rest, and the names begin on a page.
constexpr std::size_t page_size = 4096;
Table<Reference, maxref> symref;
alignas(page_size) Table<Name, maxsym> symbol;
Table<Name, maxset> set;
Table<int, maxsym> symloc;
Table<char, maxsym> symdim;
Table<char, maxsym> symtyp;

Text<50> versn;
Line inpfil;
Line scrfil;
Line scrdir;
Line errfil;
Line hdrfil;
Line time;
int nmodel = 0;
int nconst = 0;

Text<notation::model_name_columns> model;
Text<5> unit;
bool startf = false;

Line record;
Line lstrec;
Line descrp;
int lineno = 0;
Text<notation::keyword_columns> keywrd;
bool funrec = false;

Text<notation::label_columns> label;
Line field;
Line condtn;
Line root;
Table<Argument, maxslot> arg;
int narg = 0;
int nxarg = 0;

Line output;
int nif = 0;
int nloop = 0;
int nblkif = 0;
int nset = 0;
int mset = 0;
int mblkif = 0;
int mloop = 0;

int nsym = 0;
int nref = 0;
int nrefign = 0;
int symlenmx = 0;

void reset_run() {
    versn = "ORVEX PREPROCESSOR VERSION 12/95";
    for (Line* const text : {&inpfil, &scrfil, &scrdir, &errfil, &hdrfil, &time}) text->clear();
    nmodel = 0;
    nconst = 0;
    model.clear();
    unit.clear();
    for (Line* const text : {&record, &lstrec, &descrp}) text->clear();
    lineno = 0;
    keywrd.clear();
    funrec = false;
    label.clear();
    reset_model();
}

void reset_model() {
    startf = false;
    for (Line* const text : {&root, &output, &field, &condtn}) text->clear();
    for (int* const count : {&narg, &nxarg, &nset, &mset, &nloop, &mloop, &nblkif, &mblkif, &nif,
                             &nsym, &nref, &nrefign, &symlenmx}) {
        *count = 0;
    }
}

}  // namespace orvex
