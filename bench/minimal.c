/* The smallest possible translator: it loads the companion library, reads the control file and the
   input, and replaces two old files by bytes embedded in the program: it writes each file under
   another name, removes the old one, and renames the new one. When it is compiled,
   COMPANION  is the name of the library,
   CONTROL, INPUT, GENERATOR, HEADER  are the names of the files,
   GENERATOR_BYTES, HEADER_BYTES  are the paths of the files with the bytes. */
#include <dlfcn.h>
#include <fcntl.h>
#include <stdio.h>
#include <unistd.h>

#define EMBED(symbol, path)                  \
    __asm__(".section .rodata\n" #symbol     \
            ":\n"                            \
            ".incbin \"" path "\"\n" #symbol \
            "_end:\n"                        \
            ".previous\n");                  \
    extern const char symbol[], symbol##_end[]

EMBED(generator, GENERATOR_BYTES);
EMBED(header, HEADER_BYTES);

static char buffer[1 << 18];

static int read_file(const char* name) {
    const int file = open(name, O_RDONLY | O_CLOEXEC);
    if (file < 0) return 0;
    while (read(file, buffer, sizeof buffer) > 0) continue;
    return close(file) == 0;
}

static int write_file(const char* name, const char* temporary, const char* bytes, const char* end) {
    const size_t size = (size_t)(end - bytes);
    const int file = open(temporary, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (file < 0) return 0;
    unlink(name);
    return write(file, bytes, size) == (ssize_t)size && close(file) == 0 &&
           rename(temporary, name) == 0;
}

int main(void) {
    const int done = dlopen(COMPANION, RTLD_NOW) != NULL && read_file(CONTROL) &&
                     read_file(INPUT) &&
                     write_file(GENERATOR, ".minimal-1", generator, generator_end) &&
                     write_file(HEADER, ".minimal-2", header, header_end);
    return done ? 0 : 1;
}
