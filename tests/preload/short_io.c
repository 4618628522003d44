/* Loaded before the C library with LD_PRELOAD: read() and write() as on a slow, interrupted or full
 * system. The standard streams are left alone.
 *
 *   SHORT_IO_BYTES  the most that one call transfers
 *   SHORT_IO_EINTR  set: every second call is interrupted before it transfers anything
 *   SHORT_IO_ROOM   how many bytes can be written in total before the disk is full
 */
#define _GNU_SOURCE
#include <dlfcn.h>
#include <errno.h>
#include <stdlib.h>
#include <unistd.h>

static size_t setting(const char* name, size_t otherwise) {
    const char* text = getenv(name);
    return text != NULL ? strtoul(text, NULL, 10) : otherwise;
}

static size_t smaller(size_t a, size_t b) { return a < b ? a : b; }

static int is_interrupted(void) {
    static int calls;
    return getenv("SHORT_IO_EINTR") != NULL && calls++ % 2 == 0;
}

ssize_t read(int file, void* bytes, size_t size) {
    ssize_t (*next)(int, void*, size_t) = (ssize_t(*)(int, void*, size_t))dlsym(RTLD_NEXT, "read");
    if (file <= STDERR_FILENO) return next(file, bytes, size);
    if (is_interrupted()) {
        errno = EINTR;
        return -1;
    }
    return next(file, bytes, smaller(size, setting("SHORT_IO_BYTES", size)));
}

ssize_t write(int file, const void* bytes, size_t size) {
    static size_t written;
    ssize_t (*next)(int, const void*, size_t) =
        (ssize_t(*)(int, const void*, size_t))dlsym(RTLD_NEXT, "write");
    if (file <= STDERR_FILENO) return next(file, bytes, size);
    if (is_interrupted()) {
        errno = EINTR;
        return -1;
    }
    const size_t room = setting("SHORT_IO_ROOM", written + size) - written;
    if (room == 0) {
        errno = ENOSPC;
        return -1;
    }
    const ssize_t done =
        next(file, bytes, smaller(smaller(size, room), setting("SHORT_IO_BYTES", size)));
    if (done > 0) written += (size_t)done;
    return done;
}
