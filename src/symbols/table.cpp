#include "symbols/table.h"

#include "preproc.h"
#include "stop.h"

namespace orvex {

namespace {

constexpr char set_type = 'S';

// A message followed by a name.
Message about(View text, View name) { return joined<Message::size>({text, name}); }

std::size_t at(int entry) { return static_cast<std::size_t>(entry); }

// The entry of that name, or 0.
int find_symbol(View name) {
    name = trimmed(name);
    if (length_of(name) > maxname) return 0;
    Name wanted;
    wanted.assign_clean(name);
    const auto first = symbol.begin() + 1;
    const auto end = first + nsym;
    const auto found =
        std::find_if(first, end, [&wanted](const Name& entry) { return wanted.is_same(entry); });
    return found == end ? 0 : static_cast<int>(found - symbol.begin());
}

// A value that begins with a parenthesis is an expression: it has no name of its own.
bool root_is_name() { return !root.is_blank() && root[1] != '('; }

bool is_variable(char typ) { return View("ACPV").find(typ) != View::npos; }

// Raises symlenmx to the length of the name.
void checksymlen(View name) {
    name = trimmed(name);
    if (length_of(name) > maxname) {
        ppstop(about(" *** ADDSYM: symbol name length exceeds max of 65: ", name));
    }
    symlenmx = std::max(symlenmx, length_of(name));
}

// Claims the next entry.
void incrnsym() {
    if (nsym >= maxsym) ppstop(" *** ADDSYM: symbol table overflows internal length of 1000");
    ++nsym;
}

// Records a reference of the entry on the current line, as long as there is room.
void addref(int isym) {
    if (nref >= maxref) {
        ++nrefign;
        return;
    }
    ++nref;
    symref[at(nref)] = {lineno, symloc[at(isym)]};
    symloc[at(isym)] = nref;
}

void enter(View name, char typ, int dimension) {
    incrnsym();
    symbol[at(nsym)].assign_clean(name);
    symtyp[at(nsym)] = typ;
    symdim[at(nsym)] = dimension;
    symloc[at(nsym)] = 0;
    addref(nsym);
}

[[noreturn]] void type_mismatch(int entry) {
    pperror(about(" *** ADDSYM: symbol type mismatch: ", symbol[at(entry)]));
}

void add_root(char typ) {
    checksymlen(root);
    const int entry = find_symbol(root);
    if (entry == 0) {
        if (startf && is_variable(typ)) pperror(about(" *** ADDSYM: Undeclared variable : ", root));
        enter(root, typ, narg);
        return;
    }
    if (symtyp[at(entry)] != typ) type_mismatch(entry);
    if (symdim[at(entry)] != narg) {
        pperror(about(" *** ADDSYM: symbol dimension error:", symbol[at(entry)]));
    }
}

void add_set(View name) {
    checksymlen(name);
    const int entry = find_symbol(name);
    if (entry == 0) {
        enter(name, set_type, 0);
    } else if (symtyp[at(entry)] != set_type) {
        type_mismatch(entry);
    }
}

}  // namespace

void addsym(char typ) {
    if (!root_is_name()) return;
    add_root(typ);
    for (int j = 1; j <= narg; ++j) add_set(arg[at(j)]);
}

void chkref() {
    if (!root_is_name()) return;
    if (const int entry = find_symbol(root); entry != 0) addref(entry);
    for (int j = 1; j <= narg; ++j) {
        if (const int entry = find_symbol(arg[at(j)]); entry != 0) addref(entry);
    }
}

void chksym(View name, char typ) {
    const int entry = find_symbol(name);
    if (entry == 0) pperror(joined<maxline>({" *** Unrecognized symbol: ", name}));
    if (symtyp[at(entry)] != typ) pperror(joined<maxline>({" *** Symbol type mismatch: ", name}));
}

}  // namespace orvex
