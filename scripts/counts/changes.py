"""Coverage of the lines that a change adds.

changes.py COUNTS FLOOR < DIFF: COUNTS is gcovr's JSON, DIFF is that of git without context. Prints the lines
that no test reaches, and the share of the others; status 1 if that is below the floor, in percent.
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


def main():
    with open(sys.argv[1], encoding="utf-8") as file:
        lines = list(counted(json.load(file), added_lines(sys.stdin)))
    for name, line in lines:
        if line["count"] == 0:
            print(f"{name}:{line['line_number']}: not reached")
    reached = sum(line["count"] > 0 for _, line in lines)
    share = 100 * reached / len(lines) if lines else 100
    floor = float(sys.argv[2])
    print(f"new and changed lines: {reached} of {len(lines)} reached, {share:.1f} %, at least {floor:g} % wanted")
    return 0 if share >= floor else 1


sys.exit(main())
