#include "codegen/loops.h"

#include "codegen/writer.h"
#include "notation/arguments.h"
#include "notation/statements.h"
#include "preproc.h"
#include "stop.h"

#include <algorithm>
#include <cstddef>

namespace orvex {

namespace {

Argument& argument(int number) { return arg[static_cast<std::size_t>(number)]; }

// The active set with that name (no trailing blanks), or null.
const Name* find_active(View name) {
    const auto used = set.begin() + 1 + nset;
    const auto found = std::find_if(set.begin() + 1, used,
                                    [name](const Name& entry) { return same(entry, name); });
    return found == used ? nullptr : &*found;
}

// Moves the extra indices directly after the own arguments. If there are seven of those, nothing
// moves.
void move_extra_indices() {
    for (int i = 1; i <= nxarg; ++i) argument(narg + i) = argument(maxarg + i);
}

void activate(const Argument& name) {
    if (nset >= maxset) ppstop(" *** SLOOP: set table overflows internal length of 1000");
    set[static_cast<std::size_t>(++nset)] = name.view();
}

// Activates the sets that are not active yet and returns them as "(S,T,".
Line new_set_list() {
    Line list = "(";
    for (int i = 1; i <= narg + nxarg; ++i) {
        const Argument& name = argument(i);
        if (notation::argument_kind(name) != notation::ArgumentKind::set) continue;
        if (name.length() > maxname) {
            ppstop(joined<maxline>({" *** SLOOP: set name length exceeds max of 65: ", name}));
        }
        symlenmx = std::max(symlenmx, name.length());
        if (find_active(name) != nullptr) continue;
        list.append(name, ",");
        activate(name);
    }
    return list;
}

// Opens the guard of an argument such as T+1, whose operator is at position `shift`.
void guard_shift(const Argument& text, int shift) {
    const Name* const active = find_active(trimmed(text.slice(1, shift - 1)));
    if (active == nullptr)
        pperror(joined<maxline>({" *** ORVPP: Lead or lag set not active: ", text}));
    notation::make_shift_guard(output, *active, text.from(shift));
    wrtzlm();
    ++nblkif;
}

}  // namespace

void sloop() {
    move_extra_indices();
    const Line list = new_set_list();
    const View sets = list.slice(1, list.length() - 1);  // without the last comma
    const bool has_sets = length_of(sets) >= 2;
    if (has_sets) {
        notation::make_loop(output, sets, condtn);
    } else if (!condtn.is_blank()) {
        notation::make_condition(output, condtn);
    } else {
        output.clear();
        return;
    }
    wrtzlm();
    ++(has_sets ? nloop : nblkif);
}

void leadlg() {
    for (int i = 1; i <= narg; ++i) {
        const Argument& text = argument(i);
        const notation::Shift shift = notation::shift_of(text);
        if (!shift.guarded) continue;
        if (shift.both) {
            pperror(joined<maxline>({" *** ORVPP: Both lead and lag operators: ", text}));
        }
        guard_shift(text, static_cast<int>(shift.at) + 1);
    }
}

void chkset() {
    for (int i = 1; i <= narg; ++i) {
        const Argument& text = argument(i);
        if (notation::is_element(text) || find_active(text) != nullptr) continue;
        pperror(joined<maxline>({" *** CHKSET: unrecognized set argument: ", text}));
    }
}

}  // namespace orvex
