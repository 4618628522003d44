#!/usr/bin/env python3
"""Prints what a host prints when it runs generator files, from the data that it would have then.

scripts/expansion/interpret.py GENERATOR... --data DATA...

A second reading of the same rules as "orvex expand", to be compared with it (scripts/expand_compare). DATA are
JSON files or CSV files (*.csv). The models are printed one after another; one with an error is not printed
at all. The status is then 1, and a line on standard error names the cause.
"""
import argparse
import itertools
import math
import sys

sys.dont_write_bytecode = True
from data import read_data, values_for  # noqa: E402
from grammar import (Call, Extent, Fault, If, Label, NewLine, Number, Operation, Put, Reference, Sum,  # noqa: E402
                     Text, parse_generator)
from shortest import shortest  # noqa: E402
from uses import Survey, declared_names  # noqa: E402

OPERATIONS = {
    "NEGATE": lambda a: -a, "NOT": lambda a: a == 0,
    "**": math.pow, "*": lambda a, b: a * b, "/": lambda a, b: a / b,
    "+": lambda a, b: a + b, "-": lambda a, b: a - b,
    "EQ": lambda a, b: a == b, "NE": lambda a, b: a != b, "LT": lambda a, b: a < b,
    "LE": lambda a, b: a <= b, "GT": lambda a, b: a > b, "GE": lambda a, b: a >= b,
    "AND": lambda a, b: a != 0 and b != 0, "OR": lambda a, b: a != 0 or b != 0,
    "XOR": lambda a, b: (a != 0) != (b != 0),
}
FUNCTIONS = {"ABS": abs, "MIN": lambda *parts: min(parts), "MAX": lambda *parts: max(parts),
             "SQRT": math.sqrt, "EXP": math.exp, "LOG": math.log, "POWER": math.pow}


def finite(compute, parts, name):
    try:
        value = float(compute(*parts))
    except (ValueError, OverflowError, ZeroDivisionError):
        value = math.nan
    if not math.isfinite(value):
        raise Fault(f"{name} gives a value that is not finite")
    return value


class Host:
    """One run of a model: the values, the places of the sets that are looped over, the printed text."""

    def __init__(self, values):
        self.parameters, self.printed, self.at = values.parameters, [], {}
        self.members = values.sets
        self.sets = {name: list(keys) for name, keys in values.sets.items()}

    def run(self, statements):
        for statement in statements:
            try:
                self.step(statement)
            except Fault as fault:
                raise Fault(str(fault), fault.line or statement.line) from None

    def step(self, statement):
        if isinstance(statement, Put):
            self.printed.extend(map(self.text, statement.items))
        elif isinstance(statement, If):
            if self.value(statement.condition):
                self.run(statement.body)
        else:
            for _ in self.passes(statement.domain):
                self.run(statement.body)

    def text(self, item):
        if isinstance(item, NewLine):
            return "\n"
        if isinstance(item, Text):
            return item.text
        if isinstance(item, Label):
            return self.element(item.place) or ""
        return shortest(self.value(item))

    def passes(self, domain):
        """Stops at each combination of elements for which the condition is true; the last set goes fastest."""
        ranges = [range(len(self.sets[name])) for name in domain.sets]
        for places in itertools.product(*ranges):
            self.at.update(zip(domain.sets, places))
            if domain.condition is None or self.value(domain.condition):
                yield
        for name in domain.sets:
            self.at.pop(name, None)

    def element(self, place):
        """The element, or None beyond the ends of the set."""
        if place.element is not None:
            return place.element
        elements, at = self.sets[place.name], self.at[place.name]
        if place.shift:
            steps = self.value(place.steps)
            if steps != int(steps):
                raise Fault(f"{place.name} is shifted by a number that is not whole")
            at += int(steps) if place.shift[0] == "+" else -int(steps)
            if len(place.shift) == 2:
                at %= len(elements)
        return elements[at][0] if 0 <= at < len(elements) else None

    def value(self, node):
        if isinstance(node, Number):
            return finite(float, [node.value], "the number")
        if isinstance(node, Reference):
            return self.reference(node)
        if isinstance(node, Extent):
            return float(self.at[node.set] + 1 if node.name == "ORD" else len(self.sets[node.set]))
        if isinstance(node, Sum):
            return self.sum(node)
        if isinstance(node, Operation) and node.sign == "$":
            return self.value(node.parts[0]) if self.value(node.parts[1]) else 0.0
        parts = [self.value(part) for part in node.parts]
        if isinstance(node, Call):
            return finite(FUNCTIONS[node.name], parts, node.name)
        return finite(OPERATIONS[node.sign], parts, node.sign)

    def reference(self, node):
        key = tuple(map(self.element, node.places))
        if node.name in self.parameters:
            return self.parameters[node.name].get(key, 0.0)
        return float(key in self.members[node.name])

    def sum(self, node):
        total = 0.0
        for _ in self.passes(node.domain):
            total += self.value(node.body)
        return finite(float, [total], "SUM")


def check_data(uses, values):
    """Every used name must have data of its kind and with its number of elements."""
    for name, use in uses.items():
        is_set = use.looped or use.counted
        kinds = [values.sets] if is_set else [values.parameters, values.sets] if use.arguments else [values.parameters]
        found = next((kind[name] for kind in kinds if name in kind), None)
        if found is None:
            raise Fault(f"{name} has no data", use.line)
        if use.arguments == 0 and (is_set or not found):
            raise Fault(f"{name} has no value", use.line)
        for width in {1} if use.looped else set(), {use.arguments} - {None}:
            check_width(name, found, width, use)


def check_width(name, keys, widths, use):
    if widths and any(len(key) not in widths for key in keys):
        raise Fault(f"the data of {name} do not have {min(widths)} elements each", use.line)


def all_uses(data, statements):
    """The uses of the model's names; an alias uses its set."""
    uses = Survey(statements).uses
    for name in list(uses):
        target = data.target(name)
        if target not in uses:
            uses[target] = uses[name]
    return uses


def expand(path, data):
    """The printed text of the model."""
    with open(path, encoding="utf-8", errors="surrogateescape", newline="\n") as file:
        statements = parse_generator(file.read())
    uses = all_uses(data, statements)
    values = values_for(data, uses, declared_names(statements))
    check_data(uses, values)
    host = Host(values)
    host.run(statements)
    return "".join(host.printed)


def main():
    parser = argparse.ArgumentParser(description="Prints what a host prints when it runs generator files.")
    parser.add_argument("generators", nargs="+", metavar="GENERATOR")
    parser.add_argument("--data", nargs="+", default=[], metavar="DATA")
    arguments = parser.parse_args()
    status = 0
    try:
        data = read_data(arguments.data)
    except (Fault, OSError) as fault:
        sys.exit(f"interpret: {fault}")
    for path in arguments.generators:
        try:
            sys.stdout.buffer.write(expand(path, data).encode(errors="surrogateescape"))
        except (Fault, OSError) as fault:
            line = getattr(fault, "line", None)
            print(f"interpret: {path}:{f'{line}:' if line else ''} {fault}", file=sys.stderr)
            status = 1
    return status


if __name__ == "__main__":
    sys.exit(main())
