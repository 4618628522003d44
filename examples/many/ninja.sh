#!/bin/sh
# Writes build.ninja for model files: sh ninja.sh ../*/*.zlm && ninja
#
# Run it by hand for the first time and when there are other files. Ninja runs it when the depfile of
# a file changes, that is, when a file is translated for the first time or the models in it have other
# names. The names of model files have to differ, and have no blanks.
set -eu
orvex=${ORVEX:-orvex} out=${OUT:-out}
depfiles=
{
    cat <<RULES
rule translate
  command = $orvex translate --quiet --out $out --depfile \$list \$in
  restat = 1
rule generate
  command = ORVEX='$orvex' OUT='$out' sh ninja.sh $*
  generator = 1
RULES
    for model; do
        list=$out/$(basename "$model" .zlm).d
        outputs=
        # A depfile says "OUTPUTS: INPUT", over one or more lines.
        [ ! -e "$list" ] || outputs=$(tr -d '\\\n' <"$list" | sed 's/:.*//')
        echo "build $list $outputs: translate $model"
        echo "  list = $list"
        depfiles="$depfiles $list"
    done
    echo "build build.ninja: generate | ninja.sh$depfiles"
} >build.ninja.new
mv build.ninja.new build.ninja
