#include "symbols/table.h"

#include "notation/keywords.h"
#include "preproc.h"
#include "stop.h"
#include "text/bytes.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>

namespace orvex {

namespace {

// A message followed by a name.
Message about(View text, View name) { return joined<Message::size>({text, name}); }

constexpr std::size_t at(int entry) { return static_cast<std::size_t>(entry); }

// What a search compares first: a name's last four characters, as one number. The names of a model
// share their beginnings more often than their ends. The numbers are contiguous, so that a compiler
// can compare a block of them at once. Those of unused entries have no meaning and survive a reset:
// a match counts only up to nsym.
using Mark = std::uint32_t;
constexpr int block_size = 32;
Table<Mark, maxsym + block_size> symmrk;

Mark mark_of(View name) {
    Bytes<sizeof(Mark)> last{};
    copy_piece(last.data(), name.substr(name.size() - std::min(name.size(), sizeof(Mark))));
    Mark mark = 0;
    std::memcpy(&mark, last.data(), sizeof(Mark));
    return mark;
}

// The entries of a block that have the mark, one bit for each.
std::uint32_t matches_in_block(int first, Mark mark) {
    static constexpr auto bits = [] {
        std::array<std::uint32_t, block_size> row{};
        for (int place = 0; place < block_size; ++place) row[at(place)] = 1U << place;
        return row;
    }();
    std::uint32_t matches = 0;
    for (int place = 0; place < block_size; ++place) {
        const auto equal = static_cast<Mark>(symmrk[at(first + place)] == mark);
        matches |= bits[at(place)] & (0U - equal);  // for vector instructions, without a branch
    }
    return matches;
}

// The entry with that name (no trailing blanks), or 0.
int find_symbol(View name) {
    const Mark mark = mark_of(name);
    for (int first = 1; first <= nsym; first += block_size) {
        for (auto matches = matches_in_block(first, mark); matches != 0; matches &= matches - 1) {
            const int entry = first + std::countr_zero(matches);
            if (entry <= nsym && same(symbol[at(entry)], name)) return entry;
        }
    }
    return 0;
}

// The entry of the field's name (place 0) or of one of its arguments, or 0. Fields share most of
// their sets, and each name is looked up twice, so the entry last found in the same place is tried
// first. `latest` survives a reset: it is only a guess, and counts only if the entry is in use and
// has the name.
int find_in_field(int place, View name) {
    static Table<int, maxslot> latest;
    int& entry = latest[at(place)];
    if (entry == 0 || entry > nsym || !same(symbol[at(entry)], name)) entry = find_symbol(name);
    return entry;
}

// A value that begins with a parenthesis is an expression, which has no name of its own.
bool root_is_name() { return !root.is_blank() && root[1] != '('; }

// Raises symlenmx to the length of the name, if that is longer.
void checksymlen(View name) {
    name = trimmed(name);
    if (length_of(name) > maxname) {
        ppstop(about(" *** ADDSYM: symbol name length exceeds max of 65: ", name));
    }
    symlenmx = std::max(symlenmx, length_of(name));
}

// Adds an entry.
void incrnsym() {
    if (nsym >= maxsym) ppstop(" *** ADDSYM: symbol table overflows internal length of 1000");
    ++nsym;
}

// Records a reference to the entry on the current line, if there is room.
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
    symbol[at(nsym)] = name;
    symmrk[at(nsym)] = mark_of(symbol[at(nsym)]);
    symtyp[at(nsym)] = typ;
    symdim[at(nsym)] = static_cast<char>(dimension);
    symloc[at(nsym)] = 0;
    addref(nsym);
}

[[noreturn]] void type_mismatch(int entry) {
    pperror(about(" *** ADDSYM: symbol type mismatch: ", symbol[at(entry)]));
}

void add_root(char typ) {
    checksymlen(root);
    const int entry = find_in_field(0, root);
    if (entry == 0) {
        if (startf && notation::is_variable(typ))
            pperror(about(" *** ADDSYM: Undeclared variable : ", root));
        enter(root, typ, narg);
        return;
    }
    if (symtyp[at(entry)] != typ) type_mismatch(entry);
    if (symdim[at(entry)] != narg) {
        pperror(about(" *** ADDSYM: symbol dimension error:", symbol[at(entry)]));
    }
}

void add_set(int place) {
    const View name = arg[at(place)];
    checksymlen(name);
    const int entry = find_in_field(place, name);
    if (entry == 0) {
        enter(name, notation::set_type, 0);
    } else if (symtyp[at(entry)] != notation::set_type) {
        type_mismatch(entry);
    }
}

}  // namespace

void addsym(char typ) {
    if (!root_is_name()) return;
    add_root(typ);
    for (int j = 1; j <= narg; ++j) add_set(j);
}

void chkref() {
    if (!root_is_name()) return;
    if (const int entry = find_in_field(0, root); entry != 0) addref(entry);
    for (int j = 1; j <= narg; ++j) {
        if (const int entry = find_in_field(j, arg[at(j)]); entry != 0) addref(entry);
    }
}

void chksym(View name, char typ) {
    const int entry = find_symbol(trimmed(name));
    if (entry == 0) pperror(joined<maxline>({" *** Unrecognized symbol: ", name}));
    if (symtyp[at(entry)] != typ) pperror(joined<maxline>({" *** Symbol type mismatch: ", name}));
}

}  // namespace orvex
