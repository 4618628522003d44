#!/bin/sh
# One task of a job array: translates the file in line INDEX of models.txt.
#
#     ls ../*/*.zlm >models.txt
#     sbatch --array=1-$(wc -l <models.txt) array.sh                  (Slurm)
#     qsub -J 1-$(wc -l <models.txt) -V array.sh                      (PBS)
#     sh array.sh 3                                                   (by hand)
#
# With PER=100 a task takes a hundred lines: task 1 has lines 1 to 100, and so on.
#SBATCH --job-name=orvex
#SBATCH --output=array-%a.log
#SBATCH --time=10
set -euf
[ -z "${PBS_O_WORKDIR:-}" ] || cd "$PBS_O_WORKDIR"
index=${1:-${SLURM_ARRAY_TASK_ID:-${PBS_ARRAY_INDEX:-}}}
last=$((${index:?no index is given} * ${PER:-1}))
first=$((last - ${PER:-1} + 1))
# A name on each line, which may hold blanks.
IFS='
'
# shellcheck disable=SC2046  # to be split
set -- $(sed -n "$first,${last}p" "${LIST:-models.txt}")
[ $# -gt 0 ] || { echo "no line $first in ${LIST:-models.txt}" >&2; exit 2; }
exec "${ORVEX:-orvex}" translate --quiet --out "${OUT:-out}" --jobs "${SLURM_CPUS_PER_TASK:-1}" -- "$@"
