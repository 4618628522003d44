// Converts texts between the translator's form and the library's, and counts the objects.
//
// Invariant: the library is open while an object exists, and is closed with the last one.
#include "companion/glue.h"

#include "text/text.h"

#include <algorithm>
#include <cstring>
#include <dlfcn.h>

namespace orvex::companion {

namespace {

constexpr int path_size = 512;
constexpr int longest_text = 255;

std::size_t size_of(int length) { return static_cast<std::size_t>(length); }

void pad_message(char* message, int length) {
    blankPad(message, static_cast<int>(strnlen(message, size_of(length))), length);
}

void count_object() {
    lock(objMutex);
    ++objectCount;
    unlock(objMutex);
}

// Second half of every creation; the first half loaded the library, or failed to.
int create_object(int loaded, Handle* handle, char* message, int length) {
    pad_message(message, length);
    if (loaded == 0) return 0;
    palXCreate(handle);
    if (*handle != 0) {
        count_object();
        return 1;
    }
    const View reason = "Error while creating object";
    blankPad(message, static_cast<int>(reason.copy(message, size_of(length))), length);
    return 0;
}

}  // namespace

void convertF2PAS(const char* text, unsigned char* out, int length, int max) {
    const View kept = trimmed({text, size_of(length)}).substr(0, size_of(max));
    out[0] = static_cast<unsigned char>(kept.size());
    std::copy(kept.begin(), kept.end(), out + 1);
}

void convertPAS2F(const unsigned char* in, char* out, int length) {
    std::fill_n(out, length, blank_char);
    std::memcpy(out, in + 1, size_of(std::min<int>(length, in[0])));
}

void convertF2C(const char* text, char* out, int length, int max) {
    const View kept = trimmed({text, size_of(length)});
    out[kept.copy(out, size_of(max - 1))] = '\0';
}

void blankPad(char* text, int used, int total) {
    if (total >= used) std::fill(text + used, text + total, blank_char);
}

int c_palcreate_(Handle* handle, char* message, int length) {
    return create_object(palGetReady(message, length), handle, message, length);
}

int c_palcreated_(Handle* handle, const char* dir, int dirLength, char* message, int length) {
    char where[path_size];
    convertF2C(dir, where, dirLength, path_size);
    return create_object(palGetReadyD(where, message, length), handle, message, length);
}

int c_palcreatel_(Handle* handle, const char* path, int pathLength, char* message, int length) {
    char where[path_size];
    convertF2C(path, where, pathLength, path_size);
    return create_object(palGetReadyL(where, message, length), handle, message, length);
}

void c_palsetsystemname_(Handle handle, const char* name, int length) {
    unsigned char text[longest_text + 1];
    convertF2PAS(name, text, length, longest_text);
    palSetSystemName(handle, text);
}

void c_palgetauditline_(char* line, Handle handle) {
    unsigned char text[longest_text + 1] = {};
    palGetAuditLine(handle, text);
    convertPAS2F(text, line, longest_text);
}

int c_palfree_(Handle* handle) {
    palXFree(handle);
    lock(objMutex);
    --objectCount;
    if (objectCount == 0 && isLoaded == 1) {
        dlclose(hLibGlobal);
        hLibGlobal = nullptr;
        isLoaded = 0;
    }
    unlock(objMutex);
    return 1;
}

}  // namespace orvex::companion
