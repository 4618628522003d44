"""The statements of a generator file as a tree.

Each line of the file is one statement, or opens or closes one; a statement that ends before its last
character was cut by the translator, and nothing else can be read from it. Expressions, from the
tightest binding to the loosest:

    $    **    * /    + - (also before a term)    comparisons    NOT    AND    OR XOR

All of them go from left to right.
"""
import dataclasses
import re

TOKEN = re.compile(r"""\s*(?:(?P<number>(?:\d+\.?\d*|\.\d+)(?:E[+-]?\d+)?)|(?P<name>[A-Z_][A-Z0-9_]*)
                       |(?P<string>'[^']*'|"[^"]*")|(?P<sign>\*\*|<=|>=|<>|[-+*/$(),;=<>.]))""", re.X | re.I)
PREFIX = re.compile(r"\{([ \d*]{5})\}  ")
OPTION = re.compile(r"PUT /,'(\$.*)'")
HEAD = re.compile(r"PUT +ORV\S*,(?='\$MODEL:)")
SHORTEST_CUT = 254  # columns; the translator cuts at 255, and writes no blanks at the end
COUNTER = re.compile(r".*\.INTEGER1 = .*\.INTEGER1 \+ 1;")
COMPARISONS = {"EQ": "EQ", "NE": "NE", "LT": "LT", "LE": "LE", "GT": "GT", "GE": "GE",
               "=": "EQ", "<>": "NE", "<": "LT", "<=": "LE", ">": "GT", ">=": "GE"}
WORDS = {*COMPARISONS, "NOT", "AND", "OR", "XOR"}
FUNCTIONS = {"ABS": (1, 1), "MIN": (1, None), "MAX": (1, None), "SQRT": (1, 1), "EXP": (1, 1),
             "LOG": (1, 1), "POWER": (2, 2)}
CAPITALS = str.maketrans("abcdefghijklmnopqrstuvwxyz", "ABCDEFGHIJKLMNOPQRSTUVWXYZ")


def capitals(text):
    return text.strip().translate(CAPITALS)


class Fault(Exception):
    """An error of one model, with the line of the statement where it is known."""

    def __init__(self, text, line=None):
        super().__init__(text)
        self.line = line


@dataclasses.dataclass
class Number:
    value: float


@dataclasses.dataclass
class Reference:
    name: str
    places: list


@dataclasses.dataclass
class Place:
    """An index: an element, or a set with a shift that is "", "+", "-", "++" or "--"."""
    element: str | None
    name: str = ""
    shift: str = ""
    steps: object = None


@dataclasses.dataclass
class Operation:
    sign: str
    parts: list


@dataclasses.dataclass
class Call:
    name: str
    parts: list


@dataclasses.dataclass
class Extent:
    """ORD or CARD of a set."""
    name: str
    set: str


@dataclasses.dataclass
class Domain:
    sets: list
    condition: object


@dataclasses.dataclass
class Sum:
    domain: Domain
    body: object


@dataclasses.dataclass
class Text:
    text: str


@dataclasses.dataclass
class NewLine:
    pass


@dataclasses.dataclass
class Label:
    """The element of a set, S.TL or S.TE(S+1)."""
    place: Place


@dataclasses.dataclass
class Put:
    line: int
    items: list


@dataclasses.dataclass
class If:
    line: int
    condition: object
    body: list = dataclasses.field(default_factory=list)


@dataclasses.dataclass
class Loop:
    line: int
    domain: Domain
    body: list = dataclasses.field(default_factory=list)


class Tokens:
    """The tokens of one line, with a look at the next."""

    def __init__(self, text):
        self.list, at = [], 0
        text = text.rstrip()
        while at < len(text):
            match = TOKEN.match(text, at)
            if not match:
                raise Fault(f"cannot read {text[at:].strip()[:20]!r}")
            word = match[match.lastgroup]
            self.list.append((match.lastgroup, word if match.lastgroup == "string" else word.upper(), match.end()))
            at = match.end()
        self.at = 0

    def peek(self, ahead=0):
        return self.list[self.at + ahead][1] if self.at + ahead < len(self.list) else None

    def kind(self, ahead=0):
        return self.list[self.at + ahead][0] if self.at + ahead < len(self.list) else None

    def take(self):
        if self.at == len(self.list):
            raise Fault("the statement is cut")
        self.at += 1
        return self.list[self.at - 1][1]

    def expect(self, word):
        found = self.peek()
        if found != word:
            raise Fault(f"{found!r} instead of {word!r}" if found else "the statement is cut")
        return self.take()

    def accept(self, *words):
        return self.take() if self.kind() in ("name", "sign") and self.peek() in words else None

    def name(self):
        if self.kind() != "name" or self.peek() in WORDS:
            raise Fault(f"{self.peek()!r} instead of a name" if self.peek() else "the statement is cut")
        return self.take()

    def touches(self):
        """Whether the next token begins where the last one ends."""
        return self.list[self.at][2] - len(self.peek()) == self.list[self.at - 1][2]


def from_left(tokens, part, signs):
    found = part(tokens)
    while sign := tokens.accept(*signs):
        found = Operation(signs[sign], [found, part(tokens)])
    return found


def expression(tokens):
    return from_left(tokens, conjunction, {"OR": "OR", "XOR": "XOR"})


def conjunction(tokens):
    return from_left(tokens, negation, {"AND": "AND"})


def negation(tokens):
    if tokens.accept("NOT"):
        return Operation("NOT", [negation(tokens)])
    return comparison(tokens)


def comparison(tokens):
    return from_left(tokens, total, COMPARISONS)


def total(tokens):
    sign = tokens.accept("+", "-")
    found = signed(sign, term(tokens)) if sign else term(tokens)
    while sign := tokens.accept("+", "-"):
        found = Operation(sign, [found, term(tokens)])
    return found


def signed(sign, part):
    return Operation("NEGATE", [part]) if sign == "-" else part


def term(tokens):
    return from_left(tokens, power, {"*": "*", "/": "/"})


def power(tokens):
    return from_left(tokens, conditional, {"**": "**"})


def conditional(tokens):
    return from_left(tokens, primary, {"$": "$"})


def primary(tokens):
    if tokens.kind() == "number":
        return Number(float(tokens.take()))
    if tokens.accept("("):
        found = expression(tokens)
        tokens.expect(")")
        return found
    name = tokens.name()
    if tokens.peek() == ".":
        raise Fault(f"{name}. is not supported in an expression")
    if tokens.peek() != "(":
        return Reference(name, [])
    tokens.take()
    found = with_arguments(tokens, name)
    tokens.expect(")")
    return found


def with_arguments(tokens, name):
    if name == "SUM":
        found = domain(tokens)
        tokens.expect(",")
        return Sum(found, expression(tokens))
    if name in ("ORD", "CARD"):
        return Extent(name, tokens.name())
    if name in FUNCTIONS:
        return call(name, listed(tokens, expression))
    return Reference(name, listed(tokens, place))


def call(name, parts):
    least, most = FUNCTIONS[name]
    if len(parts) < least or most and len(parts) > most:
        raise Fault(f"{name} has {len(parts)} arguments")
    return Call(name, parts)


def listed(tokens, part):
    found = [part(tokens)]
    while tokens.accept(","):
        found.append(part(tokens))
    return found


def place(tokens):
    if tokens.kind() == "string":
        return Place(capitals(tokens.take()[1:-1]))
    name = tokens.name()
    sign = tokens.accept("+", "-")
    if not sign:
        return Place(None, name)
    if tokens.peek() == sign and tokens.touches():
        sign += tokens.take()
    return Place(None, name, sign, primary(tokens))


def domain(tokens):
    if tokens.accept("("):
        sets = listed(tokens, Tokens.name)
        tokens.expect(")")
    else:
        sets = [tokens.name()]
    return Domain(sets, expression(tokens) if tokens.accept("$") else None)


def items(tokens):
    """The items of PUT up to its end; a "/" outside of parentheses is a new line."""
    found = []
    while tokens.peek() not in (";", ")", None):
        if tokens.accept("/"):
            found.append(NewLine())
        elif not tokens.accept(","):
            found.append(item(tokens))
    return found


def item(tokens):
    if tokens.kind() == "string":
        return Text(tokens.take()[1:-1])
    if tokens.kind() == "name" and tokens.peek(1) == ".":
        return label(tokens)
    return put_value(tokens)


def put_value(tokens):
    sign = tokens.accept("+", "-")
    found = signed(sign, power(tokens)) if sign else power(tokens)
    if tokens.kind() in ("sign", "name") and tokens.peek() not in ("/", ",", ";", ")"):
        raise Fault("an expression in PUT needs parentheses")
    return found


def label(tokens):
    name = tokens.name()
    tokens.expect(".")
    attribute = tokens.name()
    if attribute == "TL":
        return Label(Place(None, name))
    if attribute != "TE":
        raise Fault(f"{name}.{attribute} is not supported")
    tokens.expect("(")
    found = Label(place(tokens))
    tokens.expect(")")
    return found


def statement(line, tokens):
    """A PUT, or an IF or LOOP that is still open."""
    word = tokens.name()
    if word == "PUT":
        found = Put(line, items(tokens))
        tokens.expect(";")
        return found, False
    if word not in ("IF", "LOOP"):
        raise Fault(f"unknown statement {word}")
    tokens.expect("(")
    found = Loop(line, domain(tokens)) if word == "LOOP" else If(line, expression(tokens))
    tokens.expect(",")
    if tokens.peek() is None:
        return found, True
    tokens.expect("PUT")
    found.body.append(Put(line, items(tokens)))
    tokens.accept(";")
    tokens.expect(")")
    tokens.expect(";")
    return found, False


def parsed(line, text):
    """The statement of a line and whether it is open; None for a line that closes one."""
    text = text.strip()
    if option := OPTION.fullmatch(text):
        return Put(line, [NewLine(), Text(option[1])]), False
    if text == ");":
        return None
    tokens = Tokens(HEAD.sub("PUT ", text))
    found = statement(line, tokens)
    if tokens.peek() is not None:
        raise Fault(f"{tokens.peek()!r} after the end of the statement")
    return found


def source_lines(text):
    """The number of the line in the model (0 without one) and the text, for the lines with a statement."""
    for line in text.split("\n"):
        if match := PREFIX.match(line):
            yield int(match[1]) if match[1].strip().isdigit() else 0, line[match.end():]
        elif line.startswith("PUT") and not line.startswith("PUTCLOSE") and not COUNTER.fullmatch(line):
            yield 0, line


def parse_generator(text):
    """The statements of a generator file."""
    body = []
    open_bodies = [body]
    for line, source in source_lines(text):
        try:
            found = parsed(line, source)
        except Fault as fault:
            cut = f"cut by the translator: {fault}" if len(source) >= SHORTEST_CUT else str(fault)
            raise Fault(cut, line) from None
        if found:
            open_bodies[-1].append(found[0])
            if found[1]:
                open_bodies.append(found[0].body)
        elif len(open_bodies) > 1:
            open_bodies.pop()
        else:
            raise Fault("closes more than was opened", line)
    if len(open_bodies) > 1:
        raise Fault("a statement is not closed")
    return body
