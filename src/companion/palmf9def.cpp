// Passes the translator's texts to the glue as raw buffers and takes its answers back.
//
// Invariant: every buffer passed on has exactly the length of its text.
#include "companion/palmf9def.h"

#include "companion/glue.h"

namespace orvex {

namespace {

template <typename Create>
int create(Handle& handle, Text<256>& message, Create entry) {
    char buffer[Text<256>::size];
    handle = 0;
    const int created = entry(buffer, Text<256>::size);
    message = View(buffer, sizeof buffer);
    return created;
}

}  // namespace

int palcreate(Handle& handle, Text<256>& message) {
    return create(handle, message, [&](char* buffer, int length) {
        return companion::c_palcreate_(&handle, buffer, length);
    });
}

int palcreated(Handle& handle, View directory, Text<256>& message) {
    return create(handle, message, [&](char* buffer, int length) {
        return companion::c_palcreated_(&handle, directory.data(), length_of(directory), buffer,
                                        length);
    });
}

int palcreatel(Handle& handle, View path, Text<256>& message) {
    return create(handle, message, [&](char* buffer, int length) {
        return companion::c_palcreatel_(&handle, path.data(), length_of(path), buffer, length);
    });
}

void palsetsystemname(Handle handle, View name) {
    companion::c_palsetsystemname_(handle, name.data(), length_of(name));
}

void palgetauditline(Text<255>& line, Handle handle) {
    char buffer[Text<255>::size];
    companion::c_palgetauditline_(buffer, handle);
    line = View(buffer, sizeof buffer);
}

int palfree(Handle& handle) { return companion::c_palfree_(&handle); }

}  // namespace orvex
