# shellcheck shell=bash
# Shared by the scripts that compare what several builds write: the inputs, and a run over all of them.
# The caller has sourced common.sh and set place, a folder of its own.

: "${root:?}" "${place:?}"
inputs="$place/inputs" results="$place/results"

deep=a/a/a/a/a/a/a/a/a/a/a/a # no name of a model leads out of here

# input NAME SETTINGS: an input of the model on standard input.
input() {
    mkdir -p "$inputs/$1/$deep/generated"
    printf '%s\nINP m.zlm\nHDR m.hdr\nSCD generated/\n' "$2" >"$inputs/$1/$deep/run.ctl"
    cat >"$inputs/$1/$deep/m.zlm"
}

# The first part of a seed of the fuzzer, up to a NUL byte, or the second; before it are two bytes that
# say what is compared.
part_of_seed() {
    python3 -c 'import sys
sys.stdout.buffer.write(open(sys.argv[1], "rb").read()[2:].partition(b"\0")[int(sys.argv[2])])' "$@"
}

# collect_inputs [FOLDER]: copies the examples, the models of docs/messages.md, and the seeds in the folder.
collect_inputs() {
    local name block seed
    rm -rf "$inputs" "$place/blocks"
    mkdir -p "$inputs" "$place/blocks"
    for name in $(example_names); do
        mkdir -p "$inputs/$name/$deep"
        cp "$root/examples/$name/"{run.ctl,*.zlm} "$inputs/$name/$deep"
    done
    (cd "$place/blocks" && awk '
        /^```(wrong|corrected|model)$/ { file = "line-" NR; next } /^```$/ { file = ""; next }
        file { print > file }' "$root/docs/messages.md")
    for block in "$place/blocks"/*; do
        input "${block##*/}" "ERR m.err" <"$block"
    done
    for seed in ${1:+"$1"/*}; do
        part_of_seed "$seed" 2 | input "seed-${seed##*/}" "$(part_of_seed "$seed" 0)"
    done
}

# run_inputs BUILD COMMAND...: runs the translator, as this command, on all inputs in a copy of theirs.
run_inputs() {
    local build=$1 name
    shift
    cp -R "$inputs" "$results/$build"
    for name in "$results/$build"/*; do
        (cd "$name/$deep" && status=0 &&
            { timeout 60 "$@" run.ctl >out 2>err || status=$?; } && echo "$status" >status)
    done
}
