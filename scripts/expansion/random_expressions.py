"""Random expressions of the host language, for values and conditions of a random model.

A writer gives each expression the parentheses that its place needs, and sometimes more; it knows the sets
that are looped over at that place.
"""
LEVELS = {"OR": 1, "XOR": 1, "AND": 2, "NOT": 3, "EQ": 4, "NE": 4, "LT": 4, "LE": 4, "GT": 4, "GE": 4,
          "+": 5, "-": 5, "*": 6, "/": 6, "**": 7, "$": 8}
SIGNS = {"EQ": "=", "NE": "<>", "LT": "<", "LE": "<=", "GT": ">", "GE": ">="}
ATOM = 9


class Writer:
    """Writes expressions over the names of a world; keeps which names were used in world.used."""

    def __init__(self, rng, world):
        self.rng, self.world = rng, world

    def value(self, active, depth=2):
        return self.at_level(5, active, depth)

    def condition(self, active, depth=2):
        return self.at_level(1, active, depth)

    def at_level(self, level, active, depth):
        """An expression that may stand where an operand of this level is wanted."""
        text, own = self.any(active, depth)
        if own < level or self.rng.random() < 0.1:
            return f"({text})"
        return text

    def any(self, active, depth):
        """An expression and the level of its sign."""
        if depth <= 0 or self.rng.random() < 0.2:
            return self.atom(active), ATOM
        sign = self.rng.choice([*LEVELS, "+", "-", "*", "*", "NEGATE", "FUNCTION", "FUNCTION", "SUM"])
        if sign == "FUNCTION":
            return self.function(active, depth - 1), ATOM
        if sign == "SUM":
            return self.sum(active, depth - 1), ATOM
        if sign == "NEGATE":
            return "-" + self.at_level(6, active, depth - 1), 5
        if sign == "NOT":
            return "NOT " + self.at_level(3, active, depth - 1), 3
        return self.binary(sign, active, depth - 1), LEVELS[sign]

    def binary(self, sign, active, depth):
        level = LEVELS[sign]
        left = self.at_level(2 if sign == "OR" else level, active, depth)
        right = self.at_level(level + 1, active, depth)
        if sign == "/" and self.rng.random() < 0.9:
            right = f"(1+ABS({right}))"
        if sign == "**":
            left, right = f"(0.5+ABS({left}))", str(self.rng.randint(0, 3))
            if self.rng.random() < 0.2:
                right += "**2"
        written = SIGNS[sign] if sign in SIGNS and self.rng.random() < 0.4 else sign
        space = " " if written.isalpha() or self.rng.random() < 0.3 else ""
        return f"{left}{space}{written}{space}{right}"

    def function(self, active, depth):
        def part():
            return self.value(active, depth)
        name = self.rng.choice(["ABS", "MIN", "MAX", "SQRT", "EXP", "LOG", "POWER"])
        if name in ("MIN", "MAX"):
            return f"{name}({','.join(part() for _ in range(self.rng.randint(2, 3)))})"
        if name == "POWER":
            return f"POWER({part()}, {self.rng.randint(0, 4)})"
        if name == "ABS":
            return f"ABS({part()})"
        if name == "EXP":
            return f"EXP(-ABS({part()}))"
        return f"{name}({part()})" if self.rng.random() < 0.1 else f"{name}(1+ABS({part()}))"

    def sum(self, active, depth):
        free = [name for name in self.world.loops if name not in active]
        if not free:
            return f"CARD({self.world.use(self.rng.choice(self.world.loops))})"
        sets = self.rng.sample(free, min(len(free), self.rng.choice([1, 1, 2])))
        for name in sets:
            self.world.use(name)
        inner = [*active, *sets]
        domain = sets[0] if len(sets) == 1 and self.rng.random() < 0.7 else f"({','.join(sets)})"
        if self.rng.random() < 0.4:
            domain += "$" + self.at_level(ATOM, inner, depth)
        return f"SUM({domain}, {self.value(inner, depth)})"

    def atom(self, active):
        kind = self.rng.random()
        if kind < 0.001:
            return self.fault(active)
        if kind < 0.25:
            return self.number()
        if kind < 0.35 and active:
            return f"ORD({self.rng.choice(active)})"
        if kind < 0.42:
            return f"CARD({self.world.use(self.rng.choice(self.world.loops))})"
        if kind < 0.55 and self.world.members:
            return self.reference(self.rng.choice(list(self.world.members)), active, self.world.members)
        name = self.rng.choice(list(self.world.parameters))
        return self.reference(name, active, self.world.parameters)

    def fault(self, active):
        """An operand that is an error: not supported, or with a set that is not looped over."""
        free = [name for name in self.world.loops if name not in active]
        if free and self.rng.random() < 0.5:
            return f"ORD({self.world.use(self.rng.choice(free))})"
        return self.rng.choice(["X0.L", "TAN(1)", "MOD(7,2)", "UNIFORM(0,1)", "'A'"])

    def number(self):
        return self.rng.choice(["0", "1", "2", "0.5", ".25", "3.", "1E2", "1.E-9", "100000", "12.5", "0.1", "7"])

    def reference(self, name, active, domains):
        self.world.use(name)
        if not domains[name]:
            return name
        return f"{name}({','.join(self.place(base, active) for base in domains[name])})"

    def place(self, base, active):
        """An index over the set: one that is looped over, sometimes shifted, or an element."""
        fitting = [name for name in active if self.world.base(name) == base]
        if not fitting or self.rng.random() < 0.15:
            quote = self.rng.choice("\"'")
            return quote + self.rng.choice(self.world.sets[base]) + quote
        name = self.rng.choice(fitting)
        if self.rng.random() < 0.15:
            return name + self.rng.choice(["+1", "-1", "++1", "--1", "+2", "++3", "--2"])
        return name

    def plain(self, active):
        """A parameter with sets that are looped over, as it may stand without parentheses."""
        names = [name for name, bases in self.world.parameters.items()
                 if all(any(self.world.base(one) == base for one in active) for base in bases)]
        name = self.rng.choice(names)
        self.world.use(name)
        places = [self.rng.choice([one for one in active if self.world.base(one) == base])
                  for base in self.world.parameters[name]]
        return f"{name}({','.join(places)})" if places else name
