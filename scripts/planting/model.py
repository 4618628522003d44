"""A good model as faults are planted into it: what each line is, its fields, and the declared names."""
import dataclasses
import re

DECLARES = {"SECTOR": "sector", "ACTIVI": "sector", "COMMOD": "commodity", "MARKET": "commodity",
            "PRICES": "commodity", "CONSUM": "consumer", "INCOME": "consumer", "AUXILI": "auxiliary"}
LABEL = re.compile(r"(?:^|(?<=\s))(\$?[A-Za-z][\w.]*(?:\(\w+\))?):")
NAME = re.compile(r"([A-Za-z]\w*)(\([^()]*\))?")
DATA = re.compile(r"\s*(?:SETS?|PARAMETERS?|SCALARS?|TABLE|VARIABLES)\b", re.I)


@dataclasses.dataclass
class Field:
    label: str   # in capitals, without its colon
    value: str
    start: int   # of the label in its line
    at: int      # of the value
    end: int     # after the value


@dataclasses.dataclass
class Row:
    line: int    # from 1
    raw: str
    code: str    # without the comment after "!"
    kind: str    # host, comment, blank, model, declares, open, constraint, report, option, end;
                 # names, entry, more, body, reported: the lines below such a keyword
    model: int   # number of the model, or -1
    head: int = 0        # line of the keyword
    what: str = ""       # kind of the declared names; PROD or DEMAND
    fields: list = dataclasses.field(default_factory=list)


@dataclasses.dataclass
class Name:
    name: str
    sets: int
    kind: str
    line: int
    start: int
    end: int     # after its sets and its condition
    model: int
    condition: str


def split_fields(code):
    labels = list(LABEL.finditer(code))
    ends = [label.start() for label in labels[1:]] + [len(code)]
    fields = []
    for label, end in zip(labels, ends):
        value = code[label.end():end]
        text = value.strip()
        at = label.end() + len(value) - len(value.lstrip()) if text else label.end()
        fields.append(Field(label[1].upper(), text, label.start(), at, at + len(text)))
    return fields


def words_outside_parentheses(code):
    depth, start, words = 0, None, []
    for at, char in enumerate(code + " "):
        depth += (char == "(") - (char == ")")
        if char.isspace() and depth == 0:
            if start is not None:
                words.append((start, at))
            start = None
        elif start is None:
            start = at
    return words


def keyword_row(row, code):
    word = code[1:].split(":")[0].strip().upper()
    if word.startswith("OFFTEXT"):
        row.kind = "end"
    elif word in ("PROD", "DEMAND"):
        row.kind, row.what, row.fields = "open", word, split_fields(code)
    elif word in ("CONSTRAINT", "REPORT"):
        row.kind, row.fields = word.lower(), split_fields(code)
    elif word[:6] in DECLARES:
        row.kind, row.what = "declares", DECLARES[word[:6]]
    else:
        row.kind = "option"


BELOW = {"declares": "names", "open": "entry", "constraint": "body", "report": "reported"}


class Model:
    """The rows of a file, which may hold several models."""

    def __init__(self, name, text):
        self.name = name
        self.lines = text.rstrip("\n").split("\n")
        self.rows, self.names = [], []
        model, head = -1, None
        inside = False
        for line, raw in enumerate(self.lines, 1):
            row = Row(line, raw, raw, "host", model if inside else -1)
            if not inside and raw.upper().startswith("$MODEL:"):
                model, inside, head = model + 1, True, None
                row.kind, row.model = "model", model
            elif inside:
                head = self._read(row, head)
                inside = row.kind != "end"
            self.rows.append(row)
        self.at_line = {row.line: row for row in self.rows}

    def _read(self, row, head):
        row.code = row.raw.split("!")[0].rstrip()
        if row.raw.startswith("*"):
            row.kind = "comment"
        elif not row.code.strip():
            row.kind = "blank"
        elif row.raw.startswith("$"):
            keyword_row(row, row.code)
            head = row
            row.head = row.line
        elif head is not None and head.kind in BELOW:
            row.kind, row.head, row.what = BELOW[head.kind], head.line, head.what
            if row.kind == "names":
                self._declare(row)
            elif row.kind != "body":
                row.fields = split_fields(row.code)
                if row.raw.startswith("+"):
                    row.kind = "more"
        return head

    def _declare(self, row):
        for start, end in words_outside_parentheses(row.code):
            word = row.code[start:end]
            match = NAME.match(word)
            sets = match[2].count(",") + 1 if match[2] else 0
            self.names.append(Name(match[1].upper(), sets, row.what, row.line, start, end, row.model,
                                   word[match.end():]))

    def of(self, *kinds):
        return [row for row in self.rows if row.kind in kinds]

    def block(self, head):
        """All rows of a block but its comments, the keyword included."""
        return [row for row in self.rows if row.head == head.line and row.kind not in ("comment", "blank")]

    def entry(self, row):
        """The lines of an entry or an opening line, with those that continue it."""
        lines = [row.line]
        for below in self.rows[row.line:]:
            if below.kind == "more" and below.head == row.head:
                lines.append(below.line)
            elif below.kind not in ("comment", "blank"):
                break
        return lines

    def entry_fields(self, row):
        """(row, field) for all fields of an entry."""
        return [(self.at_line[line], field) for line in self.entry(row) for field in self.at_line[line].fields]

    def declared(self, name, model):
        for known in self.names:
            if known.model == model and known.name == name.upper():
                return known
        return None

    def lines_with(self, name, model):
        """Lines of a model in which the name is, comments left out."""
        word = re.compile(rf"(?<![\w$]){re.escape(name)}(?!\w)", re.I)
        return [row.line for row in self.rows
                if row.model == model and row.kind not in ("comment", "model") and word.search(row.code)]

    def words(self):
        return {word.upper() for word in re.findall(r"\w+", "\n".join(self.lines))}

    def receives_once_more(self, value, model):
        """Does the consumer also receive another tax, or own something?"""
        same = [field for row in self.rows if row.model == model for field in row.fields
                if field.label == "A" and root(field.value) == root(value)]
        blocks = [row for row in self.of("open") if row.model == model and row.what == "DEMAND"
                  and root(row.fields[0].value) == root(value)]
        owns = any(row.fields and row.fields[0].label == "E" for head in blocks for row in self.block(head))
        return owns or len(same) > 1

    def is_closed(self):
        """Does the file have the host's data, and take in nothing but the models' own outputs?"""
        own = {row.raw.split(":")[1].strip().upper() for row in self.of("model")}
        host = [row.raw for row in self.of("host")]
        taken = [line.split()[1].upper() for line in host if line.upper().startswith("$INCLUDE")]
        known = {f"{name}.{ending}" for name in own for ending in ("HDR", "GEN")}
        return set(taken) <= known and any(DATA.match(line) for line in host)


def root(value):
    match = NAME.match(value)
    return match[1].upper() if match else ""
