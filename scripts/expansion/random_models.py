#!/usr/bin/env python3
"""Writes random valid models, each with random data.

scripts/expansion/random_models.py --seed S --count N --out FOLDER

FOLDER/NNNN gets m.zlm, run.ctl and the data in one to three files data.*. Some data lack a name that the
model needs, have a name that it does not use, or lead to a value that is not finite; some expressions are
not supported, some statements too long for the translator. One seed always gives the same files.
"""
import argparse
import pathlib
import random
import sys

sys.dont_write_bytecode = True
from random_data import write_data  # noqa: E402
from random_expressions import Writer  # noqa: E402

ELEMENTS = {"R": ["NORTH", "South", "EAST", "West"], "G": ["agr", "MAN", "blé", "srv"],
            "T": ["2020", "2021", "2022", "2030"], "F": ["L", "K", "New York", "a-b"]}
SUBSETS = {"CLUB": "R", "TRADED": "G", "FIRST": "T"}
MAP = "MAPPED"  # a set of pairs
KEYWORDS = {"sector": ["SECTORS", "ACTIVITIES"], "commodity": ["COMMODITIES", "MARKETS", "PRICES"],
            "consumer": ["CONSUMERS", "INCOME"], "auxiliary": ["AUXILIARY"]}
OPTIONS = ["PEPS:1.E-8", "EULCHK:TRUE", "WALCHK:FALSE", "DATECH:FALSE", "FUNLOG:TRUE", "ECHOP:TRUE"]
WIDTH = 150     # of a line with several fields
LONGEST = 100   # value or condition
CUT = 238       # fits into its line, but its guard does not fit into a statement


class World:
    """The names that the models of one file share, and which of them are used."""

    def __init__(self, rng):
        self.rng, self.used = rng, set()
        self.sets = {name: rng.sample(ELEMENTS[name], rng.randint(1, len(ELEMENTS[name])))
                     for name in rng.sample(sorted(ELEMENTS), rng.randint(1, 4))}
        self.aliases = {name * 2: name for name in self.sets if rng.random() < 0.6}
        self.members = {name: [base] for name, base in SUBSETS.items() if base in self.sets and rng.random() < 0.6}
        self.loops = [*self.sets, *self.aliases, *self.members]
        if len(self.sets) > 1 and rng.random() < 0.4:
            self.members[MAP] = rng.sample(sorted(self.sets), 2)
        self.parameters = {}
        for number in range(rng.randint(5, 10)):
            self.parameters[f"Q{number}"] = [self.base(name) for name in self.some_sets(3)]
        self.parameters["LEND"] = []

    def base(self, name):
        return self.aliases.get(name) or (self.members[name][0] if name in self.members else name)

    def some_sets(self, most):
        return self.rng.sample(self.loops, min(len(self.loops), self.rng.choice(range(most + 1))))

    def use(self, name):
        self.used.add(name)
        return name


class Model:
    """The lines of one model, written from its first to its last."""

    def __init__(self, rng, world, name):
        self.rng, self.world, self.writer = rng, world, Writer(rng, world)
        self.lines = [f"$MODEL:{name}"]
        self.names = {}
        self.declare()
        blocks = ["PROD"] * rng.randint(1, 3) + ["DEMAND"] * rng.randint(1, 2)
        rng.shuffle(blocks)
        for kind in blocks:
            self.block(kind)
            self.between()
        for _ in range(rng.choice([0, 0, 1, 1, 2])):
            self.report()
            self.option()
        self.lines.append("$OFFTEXT")

    def chance(self, part):
        return self.rng.random() < part

    def declare(self):
        for kind, prefix in (("sector", "X"), ("commodity", "P"), ("consumer", "H"), ("auxiliary", "A")):
            self.names[kind] = {f"{prefix}{number}": self.world.some_sets(2)
                                for number in range(self.rng.randint(1, 4))}
            self.lines.append(f"${self.rng.choice(KEYWORDS[kind])}:")
            for name, sets in self.names[kind].items():
                self.lines.append(f"  {self.named(name, sets)}{self.declared_condition(sets)}"
                                  + self.rng.choice(["", "   ! A name; described"]))

    def declared_condition(self, sets):
        if not self.chance(0.25):
            return ""
        return f"$({self.writer.condition(self.controlled(sets))})"

    def named(self, name, places):
        for place in places:
            if place in self.world.loops:
                self.world.use(place)
        return f"{name}({','.join(places)})" if places else name

    def controlled(self, sets):
        """The sets that the places loop over."""
        return [one for one in sets if one in self.world.loops]

    def condition(self, active):
        """A condition of a field, or nothing."""
        if not self.chance(0.25):
            return ""
        kind = self.rng.random()
        if kind < 0.3:
            return "$" + self.writer.plain(active)
        if kind < 0.5:
            return f"$({self.writer.condition(active, 1)}) AND ({self.writer.condition(active, 1)})"
        text = f"$({self.writer.condition(active)})"
        return text if len(text) <= LONGEST else "$" + self.writer.plain(active)

    def value(self, active):
        kind = self.rng.random()
        if kind < 0.3:
            return self.writer.number()
        if kind < 0.35:
            return self.rng.choice(["-5", "+600", "-0", "-.5", "-1E-9"])
        if kind < 0.65:
            return self.writer.plain(active)
        if kind < 0.7:
            return "-" + self.writer.plain(active)
        text = f"({self.writer.value(active, self.rng.choice([1, 2, 3]))})"
        return text if len(text) <= LONGEST else self.writer.plain(active)

    def long_sum(self, active):
        """A value that fits into its line but not into the statement that it becomes."""
        text = self.writer.number()
        while len(longer := text + "+" + self.writer.plain(active)) <= CUT:
            text = longer
        return f"({text}{'+1' * ((CUT - len(text)) // 2)})"

    def places(self, sets, active):
        """Places for a name in the first field of an entry: shifts only of sets that are active."""
        found = []
        for one in sets:
            base = self.world.base(one)
            kin = [name for name in self.world.loops if self.world.base(name) == base]
            kind = self.rng.random()
            if kind < 0.15:
                found.append(f'"{self.rng.choice(self.world.sets[base])}"')
            elif kind < 0.35 and any(name in active for name in kin):
                name = self.rng.choice([name for name in kin if name in active])
                found.append(name + self.rng.choice(["+1", "-1", "+2", "++1", "--1", "--2"]))
            else:
                found.append(self.rng.choice([one, self.rng.choice(kin)]))
        return found

    def block(self, kind):
        pool = self.names["sector" if kind == "PROD" else "consumer"]
        name = self.rng.choice(list(pool))
        active = list(pool[name])
        head = [f"${kind}:{self.named(name, active)}{self.condition(active)}"]
        nests = self.nest_fields(active)
        self.fields("", head + nests)
        labels = [field.split(":")[0] for field in nests if "." not in field and field[:2] not in ("S:", "T:")]
        for _ in range(self.rng.randint(1, 5)):
            self.entry(kind, active, labels)

    def nest_fields(self, active):
        fields = []
        if self.chance(0.7):
            fields.append(f"S:{self.value(active)}{self.condition(active)}")
        if self.chance(0.2):
            fields.append(f"T:{self.value(active)}")
        if self.chance(0.4):
            fields.append(f"VA:{self.value(active)}")
            if self.chance(0.4):
                fields.append(f"KE(VA):{self.value(active)}")
        free = [name for name in self.world.loops if name not in active]
        if free and self.chance(0.3):
            fields.append(self.element_nest(self.world.use(self.rng.choice(free)), active))
        return fields

    def element_nest(self, name, active):
        """A nest for each element, as the last field: the loop of a value with sets stays open."""
        inner = [*active, name]
        fitting = [one for one, bases in self.world.parameters.items() if bases == [self.world.base(name)]]
        if fitting and self.chance(0.7):
            return f"{name}.TL:{self.world.use(self.rng.choice(fitting))}({name})"
        return f"{name}.TL:({self.writer.value(inner, 1)})" if self.chance(0.5) else f"{name}.TL:{self.writer.number()}"

    def entry(self, kind, active, labels):
        label = self.rng.choice("OI" if kind == "PROD" else "DE")
        pool = self.names["commodity"]
        name = self.rng.choice(list(pool))
        places = self.places(pool[name], active)
        inner = [*active, *(one for one in self.controlled(places) if one not in active)]
        free = [one for one in self.world.loops if one not in inner]
        extra = self.rng.sample(free, min(len(free), self.rng.choice([0, 0, 0, 1, 2])))
        inner += extra
        first = f"{label}:{self.named(name, places)}{self.named('#', extra).rstrip('#')}{self.condition(inner)}"
        self.fields("  ", [first, *self.entry_fields(kind, inner, active, labels)])
        if kind == "PROD" and self.chance(0.1):
            self.lines.append(f"  K:{self.writer.plain(active)}")

    def entry_fields(self, kind, inner, active, labels):
        fields = []
        if self.chance(0.003):
            fields.append(f"Q:{self.long_sum(inner)}")
        elif self.chance(0.85):
            fields.append(f"Q:{self.value(inner)}{self.condition(inner)}")
        if self.chance(0.4):
            fields.append(f"P:{self.value(inner)}{self.condition(inner)}")
        if kind == "PROD":
            for _ in range(self.rng.choice([0, 0, 1, 2])):
                fields += self.tax(inner)
            if labels and self.chance(0.5):
                fields.append(f"{self.rng.choice(labels).split('(')[0]}:")
            elif set(inner) - set(active) and self.chance(0.4):
                fields.append(f"{self.rng.choice(sorted(set(inner) - set(active)))}.TL:")
        elif self.chance(0.3):
            fields += self.variable("R", "auxiliary", inner)
        return fields

    def tax(self, inner):
        rate = self.variable("N", "auxiliary", inner)
        if not rate or self.chance(0.7):
            rate = [f"T:{self.value(inner)}{self.condition(inner)}"]
        return [*self.variable("A", "consumer", inner), *rate]

    def variable(self, label, kind, inner):
        """A field with a name whose sets are all looped over, if there is one."""
        names = [name for name, sets in self.names[kind].items() if set(sets) <= set(inner)]
        if not names:
            return []
        name = self.rng.choice(names)
        return [f"{label}:{self.named(name, self.names[kind][name])}{self.condition(inner)}"]

    def fields(self, indent, fields):
        """Writes the fields over as many lines as they need, or more."""
        line = indent
        for number, field in enumerate(fields):
            if number and (len(line) + len(field) > WIDTH or self.chance(0.2)):
                self.lines.append(line.rstrip())
                line = "+ "
            line += field + " " * self.rng.randint(1, 4)
        self.lines.append(line.rstrip())

    def between(self):
        if self.chance(0.2):
            self.option()
        if self.chance(0.2):
            name = self.rng.choice(list(self.names["auxiliary"]))
            self.lines += [f"$CONSTRAINT:{self.named(name, self.names['auxiliary'][name])}", "   X0 =E= 1;"]
        if self.chance(0.1):
            self.lines += ["* A remark", ""]

    def option(self):
        if self.chance(0.4):
            self.lines.append("$" + self.rng.choice(OPTIONS))

    def report(self):
        self.lines.append("$REPORT:")
        for number in range(self.rng.randint(0, 3)):
            label, kind = self.rng.choice([("I", "commodity"), ("O", "commodity"), ("D", "commodity"),
                                           ("W", "consumer")])
            what = self.rng.choice(list(self.names[kind].items()))
            where = self.rng.choice([("PROD", "sector"), ("DEMAND", "consumer"), None])
            named = where and self.rng.choice(list(self.names[where[1]].items()))
            sets = list(dict.fromkeys([*what[1], *(named[1] if named else [])]))
            line = f" V:{self.named(f'V{len(self.lines)}X{number}', sets)}{self.condition(sets)}"
            line += f"  {label}:{self.named(*what)}"
            self.lines.append(line + (f"  {where[0]}:{self.named(*named)}" if named else ""))


def write_model(seed, folder):
    rng = random.Random(seed)
    world = World(rng)
    models = [Model(rng, world, name) for name in ["ONE", "TWO"][:rng.choice([1, 1, 2])]]
    lines = [line.lower() if rng.random() < 0.2 else line for model in models for line in model.lines]
    folder.mkdir(parents=True, exist_ok=True)
    (folder / "m.zlm").write_text("\n".join(lines) + "\n", encoding="utf-8")
    (folder / "run.ctl").write_text("INP m.zlm\nSCR m.scr\nERR m.err\n")
    write_data(rng, world, models, folder)


def main():
    parser = argparse.ArgumentParser(description="Writes random models with random data.")
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--count", type=int, default=100)
    parser.add_argument("--out", type=pathlib.Path, required=True)
    arguments = parser.parse_args()
    for number in range(arguments.count):
        write_model(f"{arguments.seed}/{number}", arguments.out / f"{number:04}")


if __name__ == "__main__":
    main()
