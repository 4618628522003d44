/* Runs two sides alternately, A B A B, and measures each run from start to end:

       spawn RUNS SIDE -- SIDE

   A side is a folder to run in, then commands separated by ";"; "> FILE" sends the standard output
   of a command to a file, which is emptied first. If a command ends with a status other than 0, the
   program stops. Prints one line for each side: the lower quartile of its wall times in nanoseconds
   (other work of the machine can only add to a time), the median of its page faults and its largest
   resident size in KiB. */
#define _GNU_SOURCE
#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

enum { most_runs = 1000 };

extern char** environ;

struct side {
    char** words; /* the folder, the commands, a null pointer */
    long long nanoseconds[most_runs];
    long long faults[most_runs];
    long kibibytes;
};

static struct side sides[2];

static void fail(const char* what, const char* which) {
    fprintf(stderr, "spawn: %s: %s\n", what, which);
    exit(1);
}

static long long now(void) {
    struct timespec time;
    clock_gettime(CLOCK_MONOTONIC, &time);
    return time.tv_sec * 1000000000LL + time.tv_nsec;
}

/* Replaces the separator that ends a list of words by a null pointer; returns the words after. */
static char** cut(char** words, const char* separator) {
    while (*words != NULL && strcmp(*words, separator) != 0) ++words;
    if (*words == NULL) return words;
    *words = NULL;
    return words + 1;
}

static void run_command(char** words, const char* output, struct rusage* usage) {
    posix_spawn_file_actions_t actions;
    pid_t child;
    int status;
    posix_spawn_file_actions_init(&actions);
    if (output != NULL) {
        posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, output,
                                         O_WRONLY | O_CREAT | O_TRUNC, 0666);
    }
    if (posix_spawnp(&child, words[0], &actions, NULL, words, environ) != 0)
        fail("cannot start", words[0]);
    if (wait4(child, &status, 0, usage) != child || status != 0) fail("failed", words[0]);
    posix_spawn_file_actions_destroy(&actions);
}

/* The words of a command end with a null pointer, and so does its output. */
struct command {
    char** words;
    const char* output;
};

static int split(char** words, struct command* commands, int most) {
    int count = 0;
    while (*words != NULL) {
        char** const next = cut(words, ";");
        char** const output = cut(words, ">");
        if (count == most) fail("too many commands", *words);
        commands[count].words = words;
        commands[count++].output = *output;
        words = next;
    }
    return count;
}

static int ascending(const void* a, const void* b) {
    const long long left = *(const long long*)a;
    const long long right = *(const long long*)b;
    return (left > right) - (left < right);
}

/* The value below which `quarters` quarters of the values are. */
static long long quartile(int quarters, long long* values, int count) {
    qsort(values, (size_t)count, sizeof *values, ascending);
    return values[count * quarters / 4];
}

int main(int argc, char** argv) {
    enum { most_commands = 4 };
    struct command commands[2][most_commands];
    int counts[2];
    const int runs = argc > 1 ? atoi(argv[1]) : 0;
    if (runs < 1 || runs > most_runs) fail("number of runs", argc > 1 ? argv[1] : "none");

    sides[0].words = argv + 2;
    sides[1].words = cut(argv + 2, "--");
    for (int s = 0; s < 2; ++s) {
        if (sides[s].words[0] == NULL) fail("missing", s == 0 ? "side A" : "side B");
        counts[s] = split(sides[s].words + 1, commands[s], most_commands);
    }
    for (int run = 0; run < runs; ++run) {
        for (int s = 0; s < 2; ++s) {
            struct side* const side = &sides[s];
            if (chdir(side->words[0]) != 0) fail("no such folder", side->words[0]);
            const long long start = now();
            for (int c = 0; c < counts[s]; ++c) {
                struct rusage usage;
                run_command(commands[s][c].words, commands[s][c].output, &usage);
                side->faults[run] += usage.ru_minflt + usage.ru_majflt;
                if (usage.ru_maxrss > side->kibibytes) side->kibibytes = usage.ru_maxrss;
            }
            side->nanoseconds[run] = now() - start;
        }
    }
    for (int s = 0; s < 2; ++s) {
        printf("%lld %lld %ld\n", quartile(1, sides[s].nanoseconds, runs),
               quartile(2, sides[s].faults, runs), sides[s].kibibytes);
    }
    return 0;
}
