"""The data of a model: sets, aliases, parameters and levels from JSON and CSV files.

What a row of a CSV file is depends on how the model uses its name, so that rows are kept as they are
until a model asks. Names and elements are in capitals; elements keep the order of the data.
"""
import csv
import dataclasses
import io
import json
import math
import re

from grammar import Fault, capitals

NUMBER = re.compile(r"[+-]?(\d+\.?\d*|\.\d+)([eE][+-]?\d+)?")
SECTIONS = ("sets", "aliases", "parameters", "levels")


class Raw(str):
    """A number of a JSON file as it is written: it may be a value or an element."""


@dataclasses.dataclass
class Data:
    """What the files hold. Sets have their tuples as keys, in order; parameters map tuples to numbers."""
    sets: dict = dataclasses.field(default_factory=dict)
    aliases: dict = dataclasses.field(default_factory=dict)
    parameters: dict = dataclasses.field(default_factory=dict)
    rows: dict = dataclasses.field(default_factory=dict)

    def target(self, name):
        seen = set()
        while name in self.aliases and name not in seen:
            seen.add(name)
            name = self.aliases[name]
        return name


def number(text, name):
    if not isinstance(text, str) or not NUMBER.fullmatch(text.strip()):
        raise Fault(f"{name}: {text!r} is not a number")
    value = float(text)
    if not math.isfinite(value):
        raise Fault(f"{name}: {text} is too large")
    return value


def element(entry, name):
    if not isinstance(entry, str):
        raise Fault(f"{name}: {entry!r} is not an element")
    return capitals(entry)


def read_json(text, data):
    found = json.loads(text, parse_int=Raw, parse_float=Raw, parse_constant=Raw)
    if not isinstance(found, dict) or any(not isinstance(part, dict) for part in found.values()):
        raise Fault("not an object of objects")
    if unknown := set(found) - set(SECTIONS):
        raise Fault(f"unknown section {min(unknown)!r}")
    for name, elements in found.get("sets", {}).items():
        read_set(capitals(name), elements, data.sets)
    for name, target in found.get("aliases", {}).items():
        data.aliases[capitals(name)] = element(target, name)
    for name, values in found.get("parameters", {}).items():
        read_values(capitals(name), values, (), data.parameters.setdefault(capitals(name), {}))


def read_set(name, elements, sets):
    if not isinstance(elements, list):
        raise Fault(f"{name}: not a list of elements")
    known = sets.setdefault(name, {})
    for entry in elements:
        parts = entry if isinstance(entry, list) else [entry]
        known[tuple(element(part, name) for part in parts)] = True


def read_values(name, values, key, found):
    if not isinstance(values, dict):
        if isinstance(values, str) and not isinstance(values, Raw):
            raise Fault(f"{name}: {values!r} is not a number")
        found[key] = number(values, name)
        return
    for part, inner in values.items():
        read_values(name, inner, (*key, capitals(part)), found)


def read_csv(text, data):
    rows = list(csv.reader(io.StringIO(text, newline=""), strict=True))
    if rows and rows[0] and capitals(rows[0][0]) == "NAME":
        rows = rows[1:]
    for row in rows:
        if any(row):
            data.rows.setdefault(capitals(row[0]), []).append(row[1:])


def read_data(paths):
    data = Data()
    for path in paths:
        with open(path, encoding="utf-8-sig", newline="") as file:
            text = file.read()
        try:
            (read_csv if path.lower().endswith(".csv") else read_json)(text, data)
        except (Fault, ValueError, csv.Error) as fault:
            raise Fault(f"{path}: {fault}") from None
    return data


@dataclasses.dataclass
class Values:
    """The data as one model takes them."""
    sets: dict
    parameters: dict


def values_for(data, uses, declared):
    """Gives each row of a CSV file its kind by the use that the model makes of the name."""
    values = Values({name: dict(keys) for name, keys in data.sets.items()},
                    {name: dict(found) for name, found in data.parameters.items()})
    for name, rows in data.rows.items():
        if name not in declared and name in uses:
            place_rows(name, rows, uses[name], values)
    for name, value in (("ORVEPS", 1e-8), ("ORVREPORT", 1.0)):
        values.parameters.setdefault(name, {(): value})
    for alias in data.aliases:
        if data.target(alias) in values.sets:
            values.sets[alias] = values.sets[data.target(alias)]
    return values


def place_rows(name, rows, use, values):
    widths = {len(row) for row in rows}
    if len(widths) > 1:
        raise Fault(f"{name}: rows of different length", use.line)
    width = widths.pop()
    if use.looped or use.counted or use.arguments and width == use.arguments:
        keys = values.sets.setdefault(name, {})
        for row in rows:
            keys[tuple(capitals(part) for part in row)] = True
    elif width == use.arguments + 1:
        found = values.parameters.setdefault(name, {})
        for *key, value in rows:
            found[tuple(capitals(part) for part in key)] = number(value, name)
    else:
        raise Fault(f"{name}: rows of {width + 1} columns, but the model uses it with {use.arguments}"
                    " arguments", use.line)
