"""Kinds of single faults. Each is a generator of all faults of its kind that a good model has room for.

A fault is (edits, lines): the edits give for a line of the good model the lines that replace it; the lines
are those of the good model at which a finding is right. Lines that are inserted in the place of an
expected line are expected, too.
"""
import re

from model import NAME, root, words_outside_parentheses

KINDS = {}  # name: generator

VALUES = ("Q", "P", "T")
NUMBER = re.compile(r"[+-]?\d*\.?\d+")
OPERATORS = ("LT", "GT", "EQ", "NE", "LE", "GE", "OR", "AND", "NOT", "XOR")


def kind(generator):
    KINDS[generator.__name__.replace("_", "-")] = generator
    return generator


def splice(row, start, end, text):
    return {row.line: [row.raw[:start] + text + row.raw[end:]]}


def put(row, field, value):
    return splice(row, field.at, field.end, value)


def without(row, field):
    """The row without one field; the blanks before it go, too."""
    return {row.line: [(row.raw[:field.start].rstrip() + " " + row.raw[field.end:].lstrip()).rstrip()]}


def add(row, text):
    """The row with a text after its last field."""
    return splice(row, len(row.code), len(row.code), text)


def fields(m, *kinds, first=None, labels=None):
    for row in m.of(*kinds):
        for index, field in enumerate(row.fields):
            if (first is None or first == (index == 0)) and (labels is None or field.label in labels):
                yield row, field


def values(m, labels=VALUES):
    yield from (pair for pair in fields(m, "entry", "more", labels=labels) if pair[0].head and pair[1].value)


def numbers(m):
    yield from ((row, f) for row, f in values(m) if re.fullmatch(r"\d+(\.\d+)?", f.value))


def expressions(m):
    yield from ((row, f) for row, f in values(m) if re.fullmatch(r"\(.*\)", f.value) and "%" not in f.value)


def entries(m, *labels):
    yield from ((row, row.fields[0]) for row in m.of("entry") if row.fields and
                (not labels or row.fields[0].label in labels))


def alike(m, row):
    """The entries of the block that begin with the same label."""
    return [each for each in m.block(m.at_line[row.head])
            if each.kind == "entry" and each.fields[0].label == row.fields[0].label]


def opening_fields(m):
    yield from fields(m, "open", first=False)


def is_nest(label):
    return not re.fullmatch(r"[A-Z]|PROD|DEMAND", label.split("(")[0])


def nests(m):
    """(row, field) of entries that are in a nest, with the field that says so."""
    for row, field in fields(m, "entry", "more", first=False):
        if row.head and not field.value:
            yield row, field


def misspelt(m, name, rng):
    known = m.words()
    ways = [name[:i] + name[i + 1] + name[i] + name[i + 2:] for i in range(len(name) - 1)]
    ways += [name[:i] + name[i] + name[i:] for i in range(1, len(name))]
    ways += [name[:i] + name[i + 1:] for i in range(1, len(name))] if len(name) > 3 else []
    ways += [name[:-1] + letter for letter in "XNMS"] if len(name) > 1 else [name + name, name + "X"]
    ways = [way for way in ways if way.upper() not in known and way.upper() not in OPERATORS]
    return rng.choice(ways)


def blocks(m, what=None):
    yield from (row for row in m.of("open") if row.fields and what in (None, row.what))


def active(m, row):
    """Sets that are active after the first field of an entry."""
    text = m.at_line[row.head].fields[0].value.split("$")[0]
    text += m.at_line[m.entry(row)[0]].fields[0].value.split("$")[0]
    return {word.upper() for group in re.findall(r"\(([^()]*)\)", text)
            for word in re.findall(r"[A-Za-z]\w*", group)}


def constraints(m):
    """(keyword row, body rows, body text without comments)."""
    for head in m.of("constraint"):
        body = [row for row in m.block(head) if row.kind == "body"]
        yield head, body, "\n".join(row.code for row in body)


def block_lines(head, body):
    return [head.line] + [row.line for row in body]


def relations(m):
    for head, body, _ in constraints(m):
        for row in body:
            for match in re.finditer(r"=[EGL]=", row.code, re.I):
                yield head, body, row, match


# Values

@kind
def value_two_points(m, rng):
    for row, f in numbers(m):
        number = f.value if "." in f.value else f.value + ".0"
        yield put(row, f, number + rng.choice([".3", ".0", ".5"])), [row.line]


@kind
def value_letter_o(m, rng):
    for row, f in numbers(m):
        if re.search(r"[1-9]\.?0", f.value):
            last = f.value.rindex("0")
            yield put(row, f, f.value[:last] + "O" + f.value[last + 1:]), [row.line]


@kind
def value_open_exponent(m, rng):
    for row, f in numbers(m):
        yield put(row, f, f.value + rng.choice(["E", "E+", "e-"])), [row.line]


@kind
def value_sign_after(m, rng):
    for row, f in values(m):
        if re.fullmatch(r"[\w.]+(\([\w,]+\))?", f.value):
            yield put(row, f, f.value + rng.choice("+-*")), [row.line]


@kind
def value_percent(m, rng):
    for row, f in numbers(m):
        yield put(row, f, "25%"), [row.line]


@kind
def value_quoted(m, rng):
    for row, f in numbers(m):
        yield put(row, f, f'"{f.value}"'), [row.line]


@kind
def value_product(m, rng):
    for row, f in values(m):
        if re.fullmatch(r"[\w.]+(\([\w,]+\))?", f.value):
            yield put(row, f, rng.choice([f"{f.value}*2", f"2*{f.value}", f"{f.value}/10"])), [row.line]


@kind
def value_parentheses_forgotten(m, rng):
    for row, f in expressions(m):
        if re.fullmatch(r"\([\w.]+(\([\w,\"]+\))?[-+*/].*\)", f.value):
            yield put(row, f, f.value[1:-1]), [row.line]


@kind
def value_other_minus(m, rng):
    for row, f in values(m):
        if "-" in f.value and "E-" not in f.value.upper():
            yield put(row, f, f.value.replace("-", rng.choice("\u2013\u2212"), 1)), [row.line]


@kind
def value_other_blank(m, rng):
    for row, f in fields(m, "entry", "more", first=False):
        if row.head and row.raw[f.start - 1] == " ":
            yield splice(row, f.start - 1, f.start, "\u00a0"), [row.line]


@kind
def value_decimal_comma(m, rng):
    for row, f in numbers(m):
        yield put(row, f, f.value.replace(".", ",") if "." in f.value else f.value + ",5"), [row.line]


@kind
def value_missing(m, rng):
    for row, f in values(m):
        yield put(row, f, ""), [row.line]


@kind
def elasticity_missing_in_entry(m, rng):
    for row, f in entries(m, "O", "I", "D"):
        if m.entry(row)[-1] == row.line:
            yield add(row, rng.choice(["  S:", "  T:"])), [row.line]


@kind
def elasticity_missing_in_opening(m, rng):
    for row, f in opening_fields(m):
        if f.value and "." not in f.label:
            yield put(row, f, ""), [row.line]


@kind
def value_semicolon(m, rng):
    for row, f in entries(m):
        yield add(row, ";"), [row.line]


@kind
def value_twice(m, rng):
    for row, f in values(m):
        yield splice(row, f.end, f.end, f"  {f.label}:{rng.choice(['1', '10', '0.5'])}"), [row.line]


# Conditions

def conditions(m):
    """(row, start, end) of conditions in parentheses."""
    for row in m.of("names", "open", "entry", "more", "constraint", "reported"):
        for match in re.finditer(r"\$(\((?:[^()]|\([^()]*\))*\))", row.code):
            yield row, match.start(1), match.end(1)


@kind
def condition_operator_missing(m, rng):
    for row, start, end in conditions(m):
        text = row.code[start:end]
        for match in re.finditer(r" (GT|LT|EQ|NE|AND|OR|LE|GE) ", text, re.I):
            yield splice(row, start + match.start(), start + match.end(), " "), [row.line]


@kind
def condition_parenthesis_missing(m, rng):
    for row, start, end in conditions(m):
        yield splice(row, end - 1, end, ""), [row.line]


@kind
def condition_dollar_missing(m, rng):
    for row, start, end in conditions(m):
        if row.kind != "constraint":
            yield splice(row, start - 1, start, rng.choice(["", " "])), [row.line]


@kind
def condition_blank_in_declaration(m, rng):
    for row in m.of("names"):
        for match in re.finditer(r"\$", row.code):
            yield splice(row, match.start(), match.start(), " "), [row.line]


@kind
def name_is_operator(m, rng):
    """A name that the host reads as an operator, wherever it is."""
    for name in m.names:
        edits, found = rename(m, name, rng.choice(OPERATORS[:6]))
        yield edits, found


def rename(m, name, new):
    """Edits that give a declared name another spelling in the whole file; and its lines in the models."""
    word = re.compile(rf"(?<![\w$\"]){name.name}(?!\w)(?!:)", re.I)
    edits = {}
    for row in m.rows:
        if row.kind in ("comment", "model", "blank") or not word.search(row.raw):
            continue
        code = word.sub(new, row.code)
        edits[row.line] = [code + row.raw[len(row.code):]]
    return edits, [line for line in edits if m.at_line[line].kind != "host"]


# Constraints

@kind
def constraint_equals_sign(m, rng):
    for head, body, row, match in relations(m):
        yield splice(row, match.start(), match.end(), "="), block_lines(head, body)


@kind
def constraint_relation_misspelt(m, rng):
    for head, body, row, match in relations(m):
        wrong = rng.choice(["=GE=", "==", ">=", "=G", "E="])
        yield splice(row, match.start(), match.end(), wrong), block_lines(head, body)


@kind
def constraint_relation_missing(m, rng):
    for head, body, row, match in relations(m):
        yield splice(row, match.start(), match.end(), rng.choice(["", "-"])), block_lines(head, body)


@kind
def constraint_two_relations(m, rng):
    for head, body, row, match in relations(m):
        last = body[-1]
        at = last.code.rindex(";")
        yield splice(last, at, at, " =G= 0"), block_lines(head, body)


@kind
def constraint_parenthesis(m, rng):
    for head, body, text in constraints(m):
        for row in body:
            for match in re.finditer(r"[()]", row.code):
                wrong = rng.choice(["", match[0] * 2])
                yield splice(row, match.start(), match.end(), wrong), block_lines(head, body)


@kind
def constraint_empty(m, rng):
    for head, body, _ in constraints(m):
        edits = {row.line: [] for row in body[:-1]}
        edits[body[-1].line] = ["  ;"]
        yield edits, block_lines(head, body)


@kind
def constraint_colon_for_semicolon(m, rng):
    for head, body, _ in constraints(m):
        at = body[-1].code.rindex(";")
        yield splice(body[-1], at, at + 1, ":"), block_lines(head, body)


@kind
def constraint_semicolon_missing(m, rng):
    for head, body, _ in constraints(m):
        at = body[-1].code.rindex(";")
        yield splice(body[-1], at, at + 1, ""), block_lines(head, body) + [body[-1].line + 1]


@kind
def constraint_text_after(m, rng):
    for head, body, _ in constraints(m):
        last = body[-1]
        at = last.code.rindex(";") + 1
        yield splice(last, at, len(last.raw), rng.choice(["  real wages", " 1;", "  (equal yield)"])), [last.line]


@kind
def constraint_name_misspelt(m, rng):
    for _, body, _ in constraints(m):
        for row in body:
            for match in re.finditer(r"(?<![=\w])[A-Za-z]\w{1,}(?!=)", row.code):
                if m.declared(match[0], row.model):
                    yield splice(row, match.start(), match.end(), misspelt(m, match[0], rng)), [row.line]


@kind
def constraint_number_of_sets(m, rng):
    for _, body, _ in constraints(m):
        for row in body:
            for match in re.finditer(r"(?<![=\w])([A-Za-z]\w*)(\([\w,\"]+\))?(?![=\w(.])", row.code):
                if m.declared(match[1], row.model):
                    if match[2]:
                        yield splice(row, match.start(2), match.end(2), ""), [row.line]
                    else:
                        yield splice(row, match.end(), match.end(), '(G)'), [row.line]


@kind
def constraint_own_sets(m, rng):
    for head, _, _ in constraints(m):
        f = head.fields[0]
        match = NAME.match(f.value)
        if match[2]:
            yield splice(head, f.at + match.start(2), f.at + match.end(2), ""), [head.line]
        else:
            yield splice(head, f.at + match.end(1), f.at + match.end(1), "(G)"), [head.line]


@kind
def constraint_of_another(m, rng):
    for head, _, _ in constraints(m):
        f = head.fields[0]
        name = root(f.value)
        yield splice(head, f.at, f.at + len(name), misspelt(m, name, rng)), [head.line]


@kind
def constraint_forgotten(m, rng):
    for head, body, _ in constraints(m):
        name = m.declared(root(head.fields[0].value), head.model)
        yield {line: [] for line in block_lines(head, body)}, [name.line]


# Blocks

@kind
def block_twice(m, rng):
    for head in blocks(m):
        same = [row for row in blocks(m) if root(row.fields[0].value) == root(head.fields[0].value)
                and row.model == head.model]
        if "$" not in head.fields[0].value and len(same) == 1:
            rows = m.block(head)
            copy = [row.raw for row in rows]
            yield {rows[-1].line: [rows[-1].raw, *copy]}, [head.line, rows[-1].line]


@kind
def entry_twice(m, rng):
    for row, _ in entries(m):
        lines = m.entry(row)
        if len(lines) == 1:
            yield {row.line: [row.raw, row.raw]}, [row.line]


@kind
def opening_line_forgotten(m, rng):
    for head in blocks(m):
        name = m.declared(root(head.fields[0].value), head.model)
        rows = [row for row in m.block(head)[1:]]
        if len(m.entry(head)) == 1:
            yield {head.line: []}, [name.line] + [row.line for row in rows]


@kind
def first_keyword_forgotten(m, rng):
    for model in m.of("model"):
        heads = [row for row in m.of("declares") if row.model == model.model]
        rows = m.block(heads[0])[1:]
        yield {heads[0].line: []}, [row.line for row in rows]


@kind
def keyword_of_names_forgotten(m, rng):
    """Their names then are declared by the block above, as another kind of thing."""
    for head in m.of("declares"):
        above = [row for row in m.rows[:head.line - 1] if row.model == head.model and row.kind == "names"]
        if above and above[-1].what != head.what:
            names = [name for name in m.names if name.line in [row.line for row in m.block(head)]]
            lines = [line for name in names for line in m.lines_with(name.name, head.model)]
            yield {head.line: []}, lines


@kind
def offtext_too_early(m, rng):
    for head in m.of("open"):
        later = [row.line for row in m.rows[head.line - 1:] if row.model == head.model and row.kind == "open"]
        yield {head.line: ["$OFFTEXT", head.raw]}, [head.line] + later[:2]


@kind
def ontext_missing(m, rng):
    for model in m.of("model"):
        above = m.rows[:model.line - 1]
        marks = [row for row in above if row.raw.upper().startswith("$ONTEXT")]
        ends = [row.line for row in above if row.raw.upper().startswith("$OFFTEXT")]
        last = ends[-1] if ends else 0
        host = [row.line for row in above[last:] if row.raw.strip() and not row.raw.startswith(("*", "$ONTEXT"))]
        if marks and marks[-1].line > last and host:
            yield {marks[-1].line: []}, [model.line, host[0], host[-1]]


@kind
def option_without_value(m, rng):
    for row in m.of("option"):
        yield splice(row, row.code.index(":") + 1, len(row.code), ""), [row.line]


@kind
def option_inside_block(m, rng):
    for row, _ in entries(m):
        above = [each for each in m.block(m.at_line[row.head]) if each.line < row.line and each.kind == "entry"]
        if above:
            rest = [each.line for each in m.block(m.at_line[row.head]) if each.line >= row.line]
            yield {row.line: [rng.choice(["$PEPS:1.E-7", "$EULCHK:TRUE"]), row.raw]}, rest


@kind
def model_name_too_long(m, rng):
    for row in m.of("model"):
        yield {row.line: ["$MODEL:TRADE_AND_ENVIRONMENT_IN_THE_LONG_RUN_V2"]}, [row.line]


@kind
def model_name_of_digits(m, rng):
    for row in m.of("model"):
        yield {row.line: ["$MODEL:" + rng.choice(["2REGION", "3", "1995"])]}, [row.line]


@kind
def model_name_with_comment(m, rng):
    for row in m.of("model"):
        yield {row.line: [row.raw + rng.choice([" ! first version", " (old)", " version 2"])]}, [row.line]


@kind
def offtext_missing(m, rng):
    for row in m.of("end"):
        model = [each.line for each in m.of("model") if each.model == row.model][0]
        below = [each.line for each in m.rows[row.line:] if each.raw.strip()][:1]
        keywords = [each.line for each in m.rows[row.line:] if each.raw.startswith("$")][:1]
        yield {row.line: []}, [model, *below, *keywords]


@kind
def demand_or_production_forgotten(m, rng):
    for head in blocks(m):
        name = m.declared(root(head.fields[0].value), head.model)
        same = [row for row in blocks(m) if root(row.fields[0].value) == name.name]
        if len(same) == 1:
            yield {row.line: [] for row in m.block(head)}, [name.line]


# Keywords and lines

@kind
def keyword_misspelt(m, rng):
    for row in m.of("declares", "open", "constraint", "report"):
        word = row.code[1:].split(":")[0]
        at = rng.randrange(1, min(len(word), 5)) if len(word) > 1 else 0
        new = word[:at] + word[at + 1:]
        yield splice(row, 1, 1 + len(word), new), [row.line]


@kind
def keyword_of_the_other_block(m, rng):
    for row in blocks(m):
        other = "PROD" if row.what == "DEMAND" else "DEMAND"
        yield splice(row, 1, row.code.index(":"), other), [row.line]


@kind
def keyword_colon_missing(m, rng):
    for row in m.of("declares", "open", "constraint"):
        at = row.code.index(":")
        yield splice(row, at, at + 1, rng.choice(["", " "])), [row.line]


@kind
def keyword_blank(m, rng):
    for row in m.of("declares", "open", "constraint", "report"):
        yield splice(row, 1, 1, " "), [row.line]


@kind
def keyword_with_names(m, rng):
    for row in m.of("declares"):
        rows = m.block(row)
        if len(rows) > 1 and rows[1].line == row.line + 1:
            text = row.code + " " + rows[1].raw.strip()
            yield {row.line: [text], rows[1].line: []}, [row.line]


@kind
def keyword_indented(m, rng):
    for row in m.of("declares", "open", "constraint"):
        yield {row.line: [" " + row.raw]}, [row.line]


@kind
def keyword_of_auxiliaries(m, rng):
    for row in m.of("declares"):
        if row.what == "auxiliary":
            yield {row.line: ["$AUXILIARIES:"]}, [row.line]


@kind
def plus_missing(m, rng):
    for row in m.of("more"):
        yield {row.line: [" " + row.raw[1:]]}, [row.line]


@kind
def plus_without_blank(m, rng):
    for row in m.of("more"):
        yield {row.line: ["+" + row.raw[1:].lstrip()]}, [row.line]


@kind
def plus_indented(m, rng):
    for row in m.of("more"):
        yield {row.line: ["  " + row.raw]}, [row.line]


@kind
def entries_joined(m, rng):
    for row, _ in entries(m):
        below = m.rows[row.line] if row.line < len(m.rows) else None
        if below and below.kind == "entry" and len(m.entry(row)) == 1 and "!" not in row.raw:
            yield {row.line: [row.raw + "  " + below.raw.strip()], below.line: []}, [row.line]


@kind
def comment_without_mark(m, rng):
    for row, f in entries(m):
        comment = rng.choice(["  labour and capital", "  see the table above", "// imports"])
        yield {row.line: [row.raw, comment]}, [row.line]


@kind
def comment_star_indented(m, rng):
    for row, f in entries(m):
        yield {row.line: [row.raw, "  * what follows is new"]}, [row.line]


@kind
def comment_line_with_mark(m, rng):
    for row, f in entries(m):
        yield {row.line: [row.raw, "  ! what follows is new"]}, [row.line]


@kind
def description_without_mark(m, rng):
    for row in m.of("names"):
        if "!" in row.raw:
            yield {row.line: [row.raw.replace("!", " ", 1)]}, [row.line]


# Nests

@kind
def nest_never_used(m, rng):
    for row in blocks(m, "PROD"):
        yield add(row, rng.choice(["  KLE:0.5", "  VAE:1", "  MAT:0"])), [row.line]


@kind
def nest_parent_unknown(m, rng):
    for row, f in opening_fields(m):
        name = f.label.split("(")[0]
        if "." not in name and name not in ("S", "T"):
            parent = rng.choice(["TOP", "SS", "KLEM"])
            yield splice(row, f.start, f.at, f"{name}({parent}):"), [row.line]


@kind
def nest_of_elements_not_opened(m, rng):
    for row, f in opening_fields(m):
        if f.label.endswith(".TL"):
            users = [each.line for each in m.block(row) if each.kind in ("entry", "more") and
                     any(g.label == f.label for g in each.fields)]
            yield without(row, f), [row.line] + users


@kind
def elasticity_label_typo(m, rng):
    for row, f in opening_fields(m):
        if f.label == "S" and row.what == "PROD":
            yield splice(row, f.start, f.start + 1, rng.choice("DXWC")), [row.line]


@kind
def nest_misspelt(m, rng):
    for row, f in nests(m):
        if is_nest(f.label) and "." not in f.label:
            yield splice(row, f.start, f.start + len(f.label), misspelt(m, f.label, rng)), [row.line, row.head]


@kind
def nest_not_opened(m, rng):
    for row, f in opening_fields(m):
        if is_nest(f.label) and "." not in f.label and f"({f.label}" not in row.code:
            name = f.label.split("(")[0]
            users = [each.line for each in m.block(row) if any(g.label == name for g in each.fields)]
            yield without(row, f), users + [row.line]


@kind
def nest_colon_missing(m, rng):
    for row, f in nests(m):
        yield splice(row, f.start + len(f.label), f.start + len(f.label) + 1, ""), [row.line]


# Arguments and names

def arguments(m, *kinds):
    """(row, start, end) of the lists in parentheses after names, outside of conditions and expressions."""
    for row in m.of(*kinds):
        for f in row.fields:
            match = NAME.match(f.value)
            if match and match[2] and not f.value.startswith("("):
                yield row, f.at + match.start(2), f.at + match.end(2)


def declared_arguments(m):
    """Those of the name in an opening line or in the first field of an entry."""
    for row, start, end in arguments(m, "entry", "open"):
        name = root(row.fields[0].value)
        if start == row.fields[0].at + len(name) and m.declared(name, row.model):
            yield row, start, end


@kind
def argument_blank(m, rng):
    for row, start, end in arguments(m, "entry", "more", "open"):
        text = row.code[start:end]
        if "," in text:
            yield splice(row, start, end, re.sub(r"[^(,)]+(?=\))", "", text)), [row.line]
        else:
            yield splice(row, end - 1, end, ",)"), [row.line]


@kind
def argument_double_parenthesis(m, rng):
    for row, start, end in arguments(m, "entry", "more"):
        yield splice(row, start, start, "("), [row.line]


@kind
def argument_brackets(m, rng):
    for row, start, end in arguments(m, "entry", "more", "open"):
        yield splice(row, start, end, f"[{row.code[start + 1:end - 1]}]"), [row.line]


@kind
def argument_without_quotes(m, rng):
    for row, start, end in arguments(m, "entry", "more"):
        text = row.code[start:end]
        if re.search(r'"[A-Za-z]', text):
            yield splice(row, start, end, text.replace('"', "")), [row.line]


@kind
def argument_single_quotes(m, rng):
    for row, start, end in arguments(m, "entry", "more"):
        text = row.code[start:end]
        if '"' in text:
            yield splice(row, start, end, text.replace('"', "'")), [row.line]


@kind
def argument_too_many(m, rng):
    for row, start, end in declared_arguments(m):
        yield splice(row, end - 1, end, "," + rng.choice(["T", "R", "H"]) + ")"), [row.line]


@kind
def argument_missing(m, rng):
    for row, start, end in declared_arguments(m):
        text = row.code[start:end]
        yield splice(row, start, end, text[:text.rindex(",")] + ")" if "," in text else ""), [row.line]


@kind
def argument_not_active(m, rng):
    sets = set()
    for name in m.names:
        word = NAME.match(m.at_line[name.line].code[name.start:name.end].upper())
        sets |= set(re.findall(r"\w+", word[2] or ""))
    for row, f in values(m):
        match = re.fullmatch(r"([A-Za-z]\w*)\((\w+)\)", f.value)
        if match:
            for other in sorted(sets - active(m, row)):
                yield put(row, f, f"{match[1]}({other})"), [row.line]


@kind
def argument_parenthesis_missing(m, rng):
    for row, start, end in arguments(m, "entry", "more", "open"):
        yield splice(row, end - 1, end, ""), [row.line]


@kind
def lead_in_later_field(m, rng):
    for row, f in values(m):
        match = re.fullmatch(r"([A-Za-z]\w*)\((\w+)\)", f.value)
        if match:
            yield put(row, f, f"{match[1]}({match[2]}{rng.choice(['+1', '-1'])})"), [row.line]


@kind
def hash_in_later_field(m, rng):
    for row, f in values(m):
        match = re.fullmatch(r"[A-Za-z]\w*\((\w+)(,\w+)*\)", f.value)
        if match:
            yield put(row, f, f"{f.value}#({match[1]})"), [row.line]


@kind
def hash_without_parentheses(m, rng):
    for row, f in entries(m):
        match = re.search(r"#\((\w+)\)", f.value)
        if match:
            yield splice(row, f.at + match.start(), f.at + match.end(), "#" + match[1]), [row.line]


@kind
def name_not_of_letters(m, rng):
    """A strange name, spelt alike everywhere."""
    for name in m.names:
        new = rng.choice([name.name + "-1", "2" + name.name, name.name + "%", name.name + "{1}", name.name + "[1]"])
        yield rename(m, name, new)


@kind
def name_comma(m, rng):
    for row in m.of("names"):
        words = words_outside_parentheses(row.code)
        for start, end in words[:-1]:
            yield splice(row, end, end, ","), [row.line]


@kind
def name_misspelt_in_entry(m, rng):
    for row, f in entries(m):
        name = root(f.value)
        if m.declared(name, row.model):
            yield splice(row, f.at, f.at + len(name), misspelt(m, name, rng)), [row.line]


@kind
def name_misspelt_in_opening(m, rng):
    for row in blocks(m):
        f = row.fields[0]
        name = root(f.value)
        yield splice(row, f.at, f.at + len(name), misspelt(m, name, rng)), [row.line]


@kind
def name_misspelt_in_field(m, rng):
    for row, f in fields(m, "entry", "more", first=False, labels=("A", "N", "R")):
        if row.head:
            name = root(f.value)
            yield splice(row, f.at, f.at + len(name), misspelt(m, name, rng)), [row.line]


@kind
def name_misspelt_in_report(m, rng):
    for row, f in fields(m, "reported", first=False):
        name = root(f.value)
        yield splice(row, f.at, f.at + len(name), misspelt(m, name, rng)), [row.line]


@kind
def name_misspelt_in_declaration(m, rng):
    for name in m.names:
        row = m.at_line[name.line]
        yield (splice(row, name.start, name.start + len(name.name), misspelt(m, name.name, rng)),
               m.lines_with(name.name, name.model))


@kind
def name_of_another_kind(m, rng):
    wrong = {"O": "sector", "I": "consumer", "D": "sector", "E": "consumer"}
    for row, f in entries(m, *wrong):
        others = [name for name in m.names if name.model == row.model and name.kind == wrong[f.label]]
        for other in others:
            end = f.at + NAME.match(f.value).end()
            word = m.at_line[other.line].code[other.start:other.end].split("$")[0]
            yield splice(row, f.at, end, word), [row.line]


@kind
def name_never_declared(m, rng):
    for name in m.names:
        row = m.at_line[name.line]
        rest = (row.raw[:name.start] + row.raw[name.end:].lstrip()).rstrip()
        alone = len([each for each in m.names if each.line == name.line]) == 1
        lines = m.lines_with(name.name, name.model)
        yield {row.line: [] if alone else [rest]}, [n for n in lines if n != row.line or not alone]


@kind
def name_declared_twice(m, rng):
    for name in m.names:
        row = m.at_line[name.line]
        word = row.code[name.start:name.end]
        yield splice(row, name.end, name.end, "  " + word), [row.line]


@kind
def name_never_used(m, rng):
    for name in m.names:
        row = m.at_line[name.line]
        if name.kind in ("sector", "commodity", "consumer") and "!" not in row.raw:
            yield add(row, "  " + rng.choice(["REST", "PZZ", "GAP"])), [row.line]


@kind
def parameter_misspelt(m, rng):
    """In a file with all data of the model in its own host text."""
    if not m.is_closed():
        return
    for row, f in values(m):
        if re.fullmatch(r"[A-Za-z]\w+(\([\w,]+\))?", f.value):
            name = root(f.value)
            if not m.declared(name, row.model):
                yield splice(row, f.at, f.at + len(name), misspelt(m, name, rng)), [row.line]


@kind
def set_misspelt(m, rng):
    if not m.is_closed():
        return
    for row, start, end in arguments(m, "entry"):
        match = re.fullmatch(r"\(([A-Za-z]\w*)\)", row.code[start:end])
        f = row.fields[0]
        if match and start < f.end and match[1].upper() not in active_in_block(m, row):
            new = misspelt(m, match[1], rng)
            edits = {row.line: [re.sub(rf"(?<=[(,]){match[1]}(?=[,)])", new, row.code)]}
            yield edits, [row.line]


def active_in_block(m, row):
    text = m.at_line[row.head].fields[0].value.split("$")[0].upper()
    return set(re.findall(r"\w+", text.partition("(")[2]))


# Labels and taxes

@kind
def label_typo(m, rng):
    near = {"Q": ["QU", "W", "QQ"], "I": ["L", "IN"], "O": ["OUT", "0"], "D": ["DE"], "E": ["R", "EN"],
            "A": ["AA"], "P": ["PR"], "T": ["TX"]}
    for row, f in fields(m, "entry", "more"):
        if row.head and f.label in near and f.value:
            yield splice(row, f.start, f.start + 1, rng.choice(near[f.label])), [row.line]


@kind
def label_colon_missing(m, rng):
    for row, f in fields(m, "entry", "more"):
        if row.head and f.value:
            gap = rng.choice([" ", ""]) if f is row.fields[0] else " "
            yield splice(row, f.start + len(f.label), f.at, gap), [row.line]


@kind
def label_of_output_and_input_swapped(m, rng):
    for row, f in entries(m, "O", "I"):
        if len(alike(m, row)) == 1:
            name = m.declared(root(f.value), row.model)
            yield splice(row, f.start, f.start + 1, "I" if f.label == "O" else "O"), [row.line, row.head, name.line]


@kind
def label_of_demand_and_endowment_swapped(m, rng):
    for row, f in entries(m, "D", "E"):
        if len(alike(m, row)) == 1:
            name = m.declared(root(f.value), row.model)
            yield splice(row, f.start, f.start + 1, "E" if f.label == "D" else "D"), [row.line, row.head, name.line]


@kind
def label_of_another_block(m, rng):
    other = {"O": "E", "I": "D", "D": "I", "E": "O"}
    for row, f in entries(m, *other):
        yield splice(row, f.start, f.start + 1, other[f.label]), [row.line]


@kind
def tax_one_rate_of_several(m, rng):
    for row, f in entries(m):
        taxes = m.entry_fields(row)
        if sum(field.label == "A" for _, field in taxes) > 1:
            for line, field in taxes:
                if field.label in ("T", "N") and len(line.fields) > 1:
                    yield without(line, field), m.entry(row)


@kind
def tax_without_rate(m, rng):
    for row, f in entries(m):
        taxes = m.entry_fields(row)
        if sum(field.label == "A" for _, field in taxes) == 1:
            for line, field in taxes:
                if field.label in ("T", "N") and len(line.fields) > 1:
                    yield without(line, field), m.entry(row)


@kind
def tax_without_receiver(m, rng):
    for row, f in entries(m):
        taxes = m.entry_fields(row)
        if sum(field.label == "A" for _, field in taxes) == 1:
            for line, field in taxes:
                if field.label == "A" and len(line.fields) > 1 and m.receives_once_more(field.value, row.model):
                    yield without(line, field), m.entry(row)


@kind
def tax_in_demand(m, rng):
    for row, f in entries(m, "D"):
        receivers = [name for name in m.names if name.model == row.model and name.kind == "consumer" and not name.sets]
        if len(m.entry(row)) == 1:
            for name in receivers:
                yield add(row, f"  A:{name.name}  T:0.1"), [row.line]


@kind
def tax_label_of_rate(m, rng):
    for row, f in fields(m, "entry", "more", first=False, labels=("N",)):
        yield splice(row, f.start, f.start + 1, "T"), [row.line]


@kind
def statement_cut(m, rng):
    """A rate so long that its statement fits into 255 characters, but not with its indent."""
    for row, f in values(m, ("T",)):
        name = root(f.value)
        if name:
            terms = "+".join([f.value.split("$")[0]] + ["0.0001"] * 20)[:107]
            yield put(row, f, "(" + re.sub(r"[+.]+$", lambda rest: "1" * len(rest[0]), terms) + ")"), [row.line]


# Suspicious

@kind
def quantity_missing(m, rng):
    for row, f in entries(m, "I", "O"):
        for field in row.fields[1:]:
            if field.label == "Q" and len(alike(m, row)) > 1:
                yield without(row, field), [row.line]


@kind
def quantity_missing_in_endowment(m, rng):
    for row, f in entries(m, "E"):
        for field in row.fields[1:]:
            if field.label == "Q":
                yield without(row, field), [row.line]


@kind
def quantity_zero(m, rng):
    for row, f in entries(m, "I", "O"):
        for field in row.fields[1:]:
            if field.label == "Q":
                yield put(row, field, rng.choice(["0", "0.0"])), [row.line]


@kind
def quantity_negative(m, rng):
    for row, f in entries(m, "I"):
        for field in row.fields[1:]:
            if field.label == "Q" and field.value[0] not in "+-(":
                yield put(row, field, "-" + field.value), [row.line]


@kind
def endowment_only_negative(m, rng):
    for row, f in entries(m, "E"):
        name = m.declared(root(f.value), row.model)
        supply = [each for each, g in entries(m, "E", "O") if each.model == row.model and root(g.value) == name.name]
        for field in row.fields[1:]:
            if len(supply) == 1 and field.label == "Q" and re.fullmatch(r"[\d.]+", field.value):
                yield put(row, field, "-" + field.value), [row.line, name.line]


# Reports

@kind
def report_label(m, rng):
    for row in m.of("reported"):
        f = row.fields[rng.randrange(len(row.fields))]
        new = {"V": "R", "O": "A", "I": "X", "D": "E", "W": "C"}.get(f.label, "SECTOR")
        yield splice(row, f.start, f.start + len(f.label), new), [row.line]


@kind
def report_continued(m, rng):
    for row in m.of("reported"):
        f = row.fields[-1]
        if len(row.fields) > 2:
            yield {row.line: [row.raw[:f.start].rstrip(), "+ " + row.raw[f.start:]]}, [row.line]


@kind
def report_set_missing(m, rng):
    for row, start, end in arguments(m, "reported"):
        if start < row.fields[0].end:
            yield splice(row, start, end, ""), [row.line]
