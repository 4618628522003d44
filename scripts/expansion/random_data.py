"""Random data for the names that a random model uses, as JSON, as CSV, or as files of both."""
import csv
import io
import itertools
import json

VALUES = [0, 1, 2, 0.5, 10, 100, 100000, 1234567, 1e22, 1e-9, 1e-5, 0.1, 1 / 3, -1, -2.5, 12.345, 5e-324, -0.0,
          123456789012345680000.0, 1e-8, 3e5, 99999]

FILES = [["data.json"], ["data.csv"], ["data.csv", "data.json"], ["data.a.csv", "data.b.csv", "data.json"],
         ["data.a.json", "data.b.json"]]


def write_data(rng, world, models, folder):
    """The used names and some others, without one of them in a few cases, spread over the files.

    A set of pairs is written as CSV alone: without such a file it is missing.
    """
    names = [name for name in [*world.sets, *world.aliases, *world.members, *world.parameters]
             if name in world.used or name in targets(world) or rng.random() < 0.5]
    if rng.random() < 0.1:
        names.remove(rng.choice(names))
    parts = {name: [] for name in rng.choice(FILES)}
    host = host_scalars(rng)
    for name in names:
        fitting = [part for part in parts if part.endswith("csv") or len(world.members.get(name, [name])) == 1]
        if fitting:
            parts[rng.choice(fitting)].append(name)
    for part, held in parts.items():
        text = (csv_text if part.endswith("csv") else json_text)(rng, world, models, held, host)
        (folder / part).write_text(text, encoding="utf-8", newline="")


def targets(world):
    return {world.base(alias) for alias in world.aliases if alias in world.used}


def set_elements(rng, world, name):
    """The tuples of a set, in the order of its base; a subset has some of them in any order."""
    if name not in world.members:
        return [(one,) for one in world.sets[world.base(name)]]
    tuples = list(itertools.product(*(world.sets[base] for base in world.members[name])))
    return rng.sample(tuples, rng.randint(1, len(tuples)))


def recased(rng, text):
    """The text, or its letters in another case; letters beyond ASCII have only one."""
    if not text.isascii():
        return text
    return rng.choice([text, text.upper(), text.lower()])


def values_of(rng, world, name):
    """Pairs of elements and a value; some are missing. Rarely an element is unknown, or there is one too many."""
    domains = [world.sets[base] for base in world.parameters[name]]
    found = [(key, rng.choice(VALUES) if rng.random() < 0.6 else round(rng.uniform(0, 200), rng.randint(0, 6)))
             for key in itertools.product(*domains) if not domains or rng.random() < 0.85]
    if domains and rng.random() < 0.05 or not found:
        found.append((tuple("Nowhere, \"alas\"" for _ in domains), 5))
    if rng.random() < 0.005:
        return [((*key, "surplus"), value) for key, value in found]
    return found


def host_scalars(rng):
    """Values for the scalars of the host that the data may set, rarely; the same in all files."""
    found = {}
    if rng.random() < 0.1:
        found["ORVREPORT"] = rng.choice([0, 1])
    if rng.random() < 0.1:
        found["orveps"] = rng.choice([0.5, 1e-3, 0])
    return found


def json_text(rng, world, models, names, host):
    sets = {name: [int(one) if one.isdigit() and rng.random() < 0.5 else recased(rng, one)
                   for one, in set_elements(rng, world, name)] for name in names if name not in world.parameters
            and name not in world.aliases}
    found = {"sets": sets, "aliases": {name: recased(rng, world.aliases[name]) for name in names
                                       if name in world.aliases}, "parameters": dict(host)}
    for name in names:
        if name in world.parameters:
            found["parameters"][recased(rng, name)] = nested(rng, values_of(rng, world, name))
    if rng.random() < 0.1:
        found["parameters"]["STRAY"] = {"A": 1}
    if rng.random() < 0.3:
        found["levels"] = {name: 1.5 for name, sets in models[0].names["auxiliary"].items() if not sets}
    return json.dumps(found, indent=rng.choice([None, 1]))


def nested(rng, values):
    if values[0][0] == ():
        return values[0][1]
    found = {}
    for key, value in values:
        inner = found
        for part in key[:-1]:
            inner = inner.setdefault(part, {})
        inner[key[-1]] = value
    return found


def csv_rows(rng, world, models, names, host):
    for name in names:
        if name in world.parameters:
            for key, value in values_of(rng, world, name):
                yield [recased(rng, name), *(recased(rng, part) for part in key), written(rng, value)]
        else:
            for one in set_elements(rng, world, name):
                yield [name, *(recased(rng, part) for part in one)]
    for name, value in host.items():
        yield [name, value]
    if rng.random() < 0.1:
        yield ["STRAY", "A", "B", 7]
    if rng.random() < 0.3:
        for name, sets in models[0].names["auxiliary"].items():
            if not sets:
                yield [name, 1.5]


def written(rng, value):
    return rng.choice([repr(value), f"{value:E}"]) if value == float(f"{value:E}") else repr(value)


def csv_text(rng, world, models, names, host):
    text = io.StringIO(newline="")
    writer = csv.writer(text, lineterminator=rng.choice(["\n", "\r\n"]),
                        quoting=rng.choice([csv.QUOTE_MINIMAL, csv.QUOTE_ALL]))
    if rng.random() < 0.5:
        writer.writerow(["name", "a", "b", "value"])
    rows = list(csv_rows(rng, world, models, names, host))
    if rng.random() < 0.3:
        rows.sort(key=lambda row: row[0].upper())
    writer.writerows(rows)
    return text.getvalue()
