"""Writes the inputs of the benchmarks. The same kind and size always give the same bytes.

generate.py mix MODELS LINES [NAMES]
                               models of a typical mix, of LINES lines each, with as many names as
                               models of NAMES lines have
generate.py comments LINES     one model of nothing but comment lines
generate.py full MODELS        models that fill the symbol table: 1,000 symbols, 10,000 references
generate.py reports RECORDS    one model with that many report records
generate.py wide SECTORS       one model of that many sectors without sets, each of which uses the
                               goods of all
generate.py good               the model of examples/closed, in which there is nothing to find
"""

import functools
import pathlib
import random
import sys

STEMS = "AGR FOO TEX WOO PAP CHE PLA MET MAC ELE VEH CON TRD TRN COM FIN SER GOV EDU HEA".split()
WORDS = """output demand price quantity of the in by region sector period base year data share
labour capital tax rate benchmark account trade margin household government see note check
""".split()


class Source:
    """Random choices that are the same on every version of Python."""

    def __init__(self, seed):
        self.random = random.Random(seed).random

    def below(self, count):
        return int(self.random() * count)

    def pick(self, items):
        return items[self.below(len(items))]

    def chance(self, part):
        return self.random() < part

    def words(self, least, most):
        return " ".join(self.pick(WORDS) for _ in range(least + self.below(most - least + 1)))


class Names:
    """The names of a model, as many as fit its length. A name keeps its argument list."""

    def __init__(self, source, lines):
        def family(prefix, count, arguments):
            return [
                f"{prefix}{STEMS[i % len(STEMS)]}{i // len(STEMS) or ''}{source.pick(arguments)}"
                for i in range(count)
            ]

        some = ["", "(R)", "(R)", "(R,T)"]
        self.sectors = family("Y", 3 + lines // 25, some)
        self.goods = family("P", 4 + lines // 20, some)
        self.factors = family("W", 2 + lines // 200, ["", "(R)"])
        self.consumers = family("H", 1 + lines // 250, ["", "(R)"])
        self.rates = family("TAX", 1 + lines // 250, [""])
        self.quantities = {
            sets: family("Q" + "".join(filter(str.isalpha, sets)), 2 + lines // 60, [sets])
            for sets in ("", "(R)", "(R,T)", "(S,R)")
        }


def sets_of(name):
    return name[name.index("(") :] if "(" in name else ""


class Model:
    """The records of one model of the typical mix, line by line."""

    def __init__(self, source, lines, names):
        self.source = source
        self.lines = lines
        self.names = names

    def quantity(self, sets):
        """A value that may stand where these sets are looped over."""
        source = self.source
        usable = ["", sets] if sets in self.names.quantities else [""]
        name = source.pick(self.names.quantities[source.pick(usable)])
        kind = source.random()
        if kind < 0.2:
            return str(1 + source.below(900) / 10)
        return f"({name}*{1 + source.below(40) / 10})" if kind < 0.3 else name

    def filler(self):
        """Now and then a line that is no record."""
        if self.source.chance(0.1):
            yield "* " + self.source.words(3, 9)
        if self.source.chance(0.04):
            yield ""

    def declarations(self):
        source, names = self.source, self.names
        for keyword, declared in (
            ("$SECTORS:", names.sectors),
            ("$COMMODITIES:", names.goods + names.factors),
            ("$CONSUMERS:", names.consumers),
            ("$AUXILIARY:", names.rates),
        ):
            yield keyword
            rest = list(declared)
            while rest:
                count = 1 + source.below(3)
                row, rest = rest[:count], rest[count:]
                if len(row) == 1 and "(R)" in row[0] and source.chance(0.3):
                    row[0] += f"$({source.pick(names.quantities['(R)'])} GT 0)"
                comment = f"  ! {source.words(2, 5)}" if source.chance(0.6) else ""
                yield "    " + "  ".join(row) + comment
                yield from self.filler()

    def entry(self, label, name, block_sets):
        """A row of a block, with what continues it. Its own sets are looped over as well."""
        source, names = self.source, self.names
        sets = max(sets_of(name), block_sets, key=len)
        shown = name
        if "(R,T)" in (sets_of(name), block_sets) and sets_of(name) == block_sets:
            if source.chance(0.1):
                shown = name.replace("T)", "T+1)")
        elif sets_of(name) == "(R)" and source.chance(0.15):
            shown = name + f"$({source.pick(names.quantities['(R)'])} GT 0)"
        quantity = self.quantity(sets)
        if not sets_of(name) and source.chance(0.1):
            shown, quantity = name + "#(S,R)", source.pick(names.quantities["(S,R)"])
        row = f"    {label}:{shown:<14}  Q:{quantity:<10}"
        if source.chance(0.3):
            row += f"  P:{self.quantity(sets)}"
        payer = next((c for c in names.consumers if sets_of(c) in ("", sets)), None)
        if payer and label == "I" and source.chance(0.35):
            tax = f"A:{payer}  "
            if source.chance(0.2):
                tax += f"N:{source.pick(names.rates)}"
            else:
                tax += f"T:{source.pick(names.quantities[''])}"
            if source.chance(0.5):
                yield row.rstrip()
                yield "+   " + tax
                return
            row += "  " + tax
        yield row.rstrip()

    def production(self, sector):
        source, names = self.source, self.names
        sets = sets_of(sector)
        nests = source.pick(["", "  S:0.5", "  S:1", f"  S:{source.pick(names.quantities[''])}"])
        yield f"$PROD:{sector}{nests}"
        yield from self.entry("O", source.pick(names.goods), sets)
        for _ in range(2 + source.below(6)):
            yield from self.filler()
            group = names.goods if source.chance(0.7) else names.factors
            yield from self.entry("I", source.pick(group), sets)
        yield from self.filler()

    def demand(self, consumer):
        source, names = self.source, self.names
        sets = sets_of(consumer)
        yield f"$DEMAND:{consumer}  S:1"
        for _ in range(1 + source.below(5)):
            yield from self.entry("D", source.pick(names.goods), sets)
            yield from self.filler()
        for factor in names.factors[:3]:
            yield from self.entry("E", factor, sets)

    def ending(self):
        source, names = self.source, self.names
        yield f"$CONSTRAINT:{names.rates[0]}"
        yield f"    {source.pick(names.quantities[''])} =G= {source.pick(names.quantities[''])};"
        yield "$REPORT:"
        for number in range(1 + len(names.sectors) // 20):
            sector = source.pick(names.sectors)
            good = source.pick([g for g in names.goods if sets_of(g) in ("", sets_of(sector))])
            yield f"    V:V{number}{sets_of(sector)}  O:{good}  PROD:{sector}"
        yield "$OFFTEXT"

    def text(self):
        """Exactly the wanted number of lines; the last block is cut to make it so."""
        rows = list(self.declarations())
        tail = list(self.ending())
        body = self.lines - len(tail)
        if len(rows) > body:
            raise ValueError(f"a model of {self.lines} lines is too short for its declarations")
        while len(rows) < body:
            if self.source.chance(0.85):
                rows += self.production(self.source.pick(self.names.sectors))
            else:
                rows += self.demand(self.source.pick(self.names.consumers))
        return "\n".join(rows[:body] + tail) + "\n"


@functools.lru_cache(maxsize=None)
def typical_text(seed, lines, names):
    source = Source(f"mix {seed}")
    return Model(source, lines, Names(source, names)).text()


def mix(out, models, lines, names=None):
    """Every model has a name of its own; after 1,000 models their texts come again."""
    for number in range(models):
        out.write(f"$ONTEXT\n$MODEL:M{number + 1}\n")
        out.write(typical_text(number % 1000, lines - 2, names or lines))


def comments(out, lines):
    source = Source("comments")
    rows = ["* " + source.words(3, 12) for _ in range(1000)]
    out.write("$MODEL:NOTES\n")
    for number in range(lines):
        out.write(rows[number % 1000] + "\n")
    out.write("$OFFTEXT\n")


def full(out, models):
    """Each mention of a name is one reference: 1,000 names are mentioned 10,000 times."""
    for number in range(1, models + 1):
        source = Source(f"full {number}")

        def family(words, count):
            return [f"{words}_NUMBER_{i:04}" for i in range(count)]

        sectors = family("GROSS_OUTPUT_OF_THE_INDUSTRY_IN_THE_YEAR", 300)
        goods = family("GROSS_OUTPUT_PRICE_OF_THE_COMMODITY_IN_THE_YEAR", 300)
        amounts = family("GROSS_OUTPUT_QUANTITY_IN_THE_YEAR", 399)
        consumers = ["GROSS_OUTPUT_OWNER"]
        out.write(f"$MODEL:F{number}\n")
        mentions = 0
        for keyword, declared in (
            ("$SECTORS:", sectors),
            ("$COMMODITIES:", goods),
            ("$CONSUMERS:", consumers),
        ):
            out.write(keyword + "\n")
            for name in declared:
                out.write(f"    {name}\n")
            mentions += len(declared)
        unused = list(reversed(amounts))
        while mentions < 10000:
            out.write(f"$PROD:{source.pick(sectors)}\n")
            mentions += 1
            for label in "OIIIII":
                if mentions > 10000 - 2:
                    break
                amount = unused.pop() if unused else source.pick(amounts)
                out.write(f"    {label}:{source.pick(goods)}  Q:{amount}\n")
                mentions += 2
        out.write("$OFFTEXT\n")


def good(out):
    examples = pathlib.Path(__file__).resolve().parent.parent / "examples"
    text = (examples / "closed" / "closed.zlm").read_text()
    out.write(text[text.index("$MODEL:") : text.index("$OFFTEXT")] + "$OFFTEXT\n")


def wide(out, count):
    numbers = [f"{number:02}" for number in range(1, count + 1)]
    out.write("$MODEL:WIDE\n$SECTORS:\n")
    out.write("".join(f"  Y{number}  ! Output of industry {number}\n" for number in numbers))
    out.write("$COMMODITIES:\n")
    out.write("".join(f"  P{number}  ! Price of good {number}\n" for number in numbers))
    out.write("  PL  ! Wage\n  PK  ! Rent\n$CONSUMERS:\n  RA  ! Income of the household\n")
    for sector in numbers:
        out.write(f"$PROD:Y{sector}  S:0 VA:1\n  O:P{sector}  Q:{count + 9}\n")
        out.write("".join(f"  I:P{number}  Q:1\n" for number in numbers))
        out.write("  I:PL  Q:6 VA:\n  I:PK  Q:3 VA:\n")
    out.write("$DEMAND:RA  S:1\n" + "".join(f"  D:P{number}  Q:9\n" for number in numbers))
    out.write(f"  E:PL  Q:{6 * count}\n  E:PK  Q:{3 * count}\n$OFFTEXT\n")


def reports(out, count):
    """A small model with that many report records, each of which needs a declared name."""
    out.write("$MODEL:REPORTS\n$SECTORS:\n  Y\n$COMMODITIES:\n")
    out.write("".join(f"  P{number}\n" for number in range(count)))
    out.write("$CONSUMERS:\n  RA\n$PROD:Y\n  O:P0  Q:1\n  I:P1  Q:1\n$DEMAND:RA\n  D:P0\n")
    out.write("  E:P1  Q:1\n$REPORT:\n")
    out.write("".join(f"  V:V{number}  O:P{number}  PROD:Y\n" for number in range(count)))
    out.write("$OFFTEXT\n")


def pairs(out):
    """A model with an entry for each pair of elements."""
    out.write("$MODEL:PAIRS\n$SECTORS:\n  Y(R)\n$COMMODITIES:\n  PY(R)\n$CONSUMERS:\n  RA\n"
              "$PROD:Y(R)\n  O:PY(R)   Q:N\n  I:PY(RR)  Q:N\n"
              "$DEMAND:RA\n  D:PY(R)\n  E:PY(R)   Q:N\n$OFFTEXT\n")


def pairs_data(out, count):
    for number in range(count):
        out.write(f"R,R{number}\nRR,R{number}\n")
    out.write("N,2.5\n")


KINDS = {
    "mix": mix,
    "comments": comments,
    "full": full,
    "good": good,
    "reports": reports,
    "wide": wide,
}

if __name__ == "__main__":
    if len(sys.argv) < 2 or sys.argv[1] not in KINDS:
        sys.exit(__doc__)
    KINDS[sys.argv[1]](sys.stdout, *map(int, sys.argv[2:]))
