# shellcheck shell=bash
# Shared by the scripts next to this file, which source it: where the project is, how it is built,
# how an example is run.

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
program="$root/build/release/bin/orvexpp"
jobs=$(getconf _NPROCESSORS_ONLN 2>/dev/null || echo 2)

# build_preset PRESET [ARGUMENT...]: configure and build; the arguments go to cmake --build.
build_preset() {
    local preset=$1
    shift
    (cd "$root" && cmake --preset "$preset" && cmake --build --preset "$preset" -j "$jobs" "$@")
}

# tidy PRESET [ARGUMENT...]: clang-tidy on all sources, as the preset builds them.
tidy() {
    local preset=$1
    shift
    # It counts what it suppressed in the system's headers, which says nothing about these sources.
    (cd "$root" && find src -name '*.cpp' -print0 |
        xargs -0 -n 1 -P "$jobs" clang-tidy -p "build/$preset" --quiet "$@" 2>&1 |
        sed '/^[0-9]* warnings* generated\.$/d')
}

# Build what translates, without the tests.
build_program() {
    build_preset release --target orvexpp orvex
}

example_names() {
    local input
    for input in "$root"/examples/*/run.ctl; do
        [ -e "$input" ] || { echo "no examples in $root/examples" >&2; return 1; }
        basename "$(dirname "$input")"
    done
}

# run_example NAME FOLDER: translate a copy of the example in FOLDER, which must be empty, and
# remove the copied inputs again, so that what is left is what the program wrote.
run_example() {
    local name=$1 folder=$2 status=0 input
    for input in "$root/examples/$name"/run.ctl "$root/examples/$name"/*.zlm; do
        cp "$input" "$folder/"
    done
    (cd "$folder" && "$program" run.ctl) || status=$?
    for input in "$root/examples/$name"/run.ctl "$root/examples/$name"/*.zlm; do
        rm "$folder/$(basename "$input")"
    done
    return $status
}

# Emacs has eglot from version 29 on; Debian has it as a package for older ones.
emacs_has_eglot() {
    emacs -q --batch --eval "(progn (require 'package) (package-initialize) (require 'eglot))" \
        >/dev/null 2>&1
}
