"""Line and branch coverage of the lines that a change adds.

changes.py COUNTS LINES BRANCHES < DIFF: COUNTS is gcovr's JSON, DIFF is that of git without context. Prints
both figures and the lines that no test reaches; status 1 where one is below its floor, in percent.
"""

import json
import re
import sys


def added_lines(diff):
    """The numbers of the added lines, by file."""
    added, name = {}, None
    for line in diff:
        if line.startswith("+++ "):
            name = line[len("+++ b/"):].rstrip("\n")
        hunk = re.match(r"@@ -\S+ \+(\d+)(?:,(\d+))? @@", line)
        if hunk:
            first, number = int(hunk[1]), int(hunk[2] or 1)
            added.setdefault(name, set()).update(range(first, first + number))
    return added


def counted(counts, added):
    """The lines of the change that have code."""
    for file in counts["files"]:
        chosen = added.get(file["file"], set())
        for line in file["lines"]:
            if line["line_number"] in chosen and not line["gcovr/noncode"]:
                yield file["file"], line


def reaches(name, runs, floor):
    """Whether enough of these counts are above zero."""
    reached = sum(run > 0 for run in runs)
    figure = 100 * reached / len(runs) if runs else 100
    print(f"change: {name} {figure:.1f} % ({reached} of {len(runs)}), at least {floor} % wanted")
    return figure >= floor


def main():
    with open(sys.argv[1], encoding="utf-8") as file:
        lines = list(counted(json.load(file), added_lines(sys.stdin)))
    for name, line in lines:
        if line["count"] == 0:
            print(f"{name}:{line['line_number']}: not reached")
    enough = [reaches("lines", [line["count"] for _, line in lines], float(sys.argv[2])),
              reaches("branches", [branch["count"] for _, line in lines for branch in line["branches"]],
                      float(sys.argv[3]))]
    return 0 if all(enough) else 1


sys.exit(main())
