"""Kinds of mutants. Each is a generator of the places of its kind in a source.

A place is (first, last, others): the tokens from the first to the last are replaced by one of the others.
"""
import re

KINDS = {}  # name: generator

RELATIONS = {"<": "<=", "<=": "<", ">": ">=", ">=": ">", "==": "!=", "!=": "=="}
LOGIC = {"&&": "||", "||": "&&"}
SUMS = {"+": "-", "-": "+", "+=": "-=", "-=": "+=", "++": "--", "--": "++"}
INTEGER = re.compile(r"(0[xX][0-9a-fA-F]+|\d[\d']*)([uUlL]*)")
NOT_STATEMENTS = set("""return if else for while switch case default break continue goto throw using const
    constexpr static auto struct class enum union typedef do try catch delete public private protected
    template static_assert static_cast namespace friend extern""".split())
ASSIGNMENTS = ("=", "+=", "-=", "*=", "/=", "|=", "&=", "^=", "<<=", ">>=", "++", "--")
NUMBERS = re.compile(r"\b(int|Index|size_t|ssize_t|std::u?int\d+_t|unsigned|double|long)\b")


def kind(generator):
    KINDS[generator.__name__.replace("_", " ")] = generator
    return generator


def indices(source, *kinds):
    """The tokens of some kinds that are code of the program and not template arguments or checks."""
    for index, token in enumerate(source.tokens):
        around = token.inside
        if token.kind in kinds and not (around is not None and (
                source.word(around) == "<" or source.word(around - 1) == "static_assert")):
            yield index


def operators(source, table):
    for index in indices(source, "sign"):
        if source.word(index) in table and source.is_binary(index):
            yield index


@kind
def relation(source):
    for index in operators(source, RELATIONS):
        yield index, index, [RELATIONS[source.word(index)]]


@kind
def logic(source):
    for index in operators(source, LOGIC):
        yield index, index, [LOGIC[source.word(index)]]


@kind
def sum_or_step(source):
    """Not the sums of texts, as far as they can be seen."""
    for index in indices(source, "sign"):
        sign = source.word(index)
        near = source.tokens[index - 1:index + 2]
        texts = any(token.kind == "text" for token in near)
        if sign in SUMS and not texts and (sign in ("++", "--") or source.is_binary(index)):
            yield index, index, [SUMS[sign]]


def is_size(source, index):
    """The number of elements in the declaration of an array."""
    around = source.tokens[index].inside
    return around is not None and source.word(around) == "[" and (
        source.tokens[around - 1].kind == "word" and source.tokens[around - 2].kind == "word")


@kind
def constant(source):
    for index in indices(source, "number", "word"):
        word = source.word(index)
        number = INTEGER.fullmatch(word)
        if word in ("true", "false"):
            yield index, index, ["false" if word == "true" else "true"]
        elif number and not is_size(source, index):
            value = int(number[1].replace("'", ""), 16 if number[1][:2] in ("0x", "0X") else 10)
            others = [value + 1, 0] if value == 1 else [value + 1]
            yield index, index, [f"{other}{number[2]}" for other in others]


@kind
def condition(source):
    for index in indices(source, "word"):
        opening = source.tokens[index + 1] if index + 1 < len(source.tokens) else None
        if source.word(index) not in ("if", "while") or opening is None or opening.text != "(":
            continue
        first, last = index + 2, opening.other - 1
        words = [source.word(at) for at in source.top_level(first, last + 1)]
        if not {";", "=", "const", "auto"} & set(words):
            inner = source.between(first, last)
            yield first, last, [f"!({inner})", "true", "false"] if source.word(index) == "if" else [f"!({inner})"]


@kind
def choice(source):
    """The condition before a "?"."""
    for index in indices(source, "sign"):
        if source.word(index) == "?":
            first = source.start_of(index, (";", "{", "}", ",", "=", "+=", "return", "?", ":", "<<"))
            if first < index:
                yield first, index - 1, [f"!({source.between(first, index - 1)})"]


def is_declaration(source, start, end):
    """A type is first, and a name follows it: "Type name", "Type<T>& name"."""
    index = start
    while source.tokens[index].kind == "word" and source.word(index + 1) == "::":
        index += 2
    if source.tokens[index].kind != "word":
        return False
    index += 1
    if source.word(index) == "<" and source.tokens[index].other is not None:
        index = source.skip(index, 1)
    while source.word(index) in ("&", "*", "&&", "const"):
        index += 1
    return index < end and source.tokens[index].kind == "word"


@kind
def statement_deleted(source):
    for start in source.statement_starts():
        end = source.end_of(start)
        if end is None or source.word(start) in NOT_STATEMENTS or is_declaration(source, start, end):
            continue
        if source.tokens[start].kind != "word" and source.word(start) not in ("++", "--", "*"):
            continue
        words = [source.word(at) for at in source.top_level(start, end)]
        if "(" in words or any(sign in words for sign in ASSIGNMENTS):
            yield start, end, [";"]


def arguments(source, opening):
    """(first, last) of each argument in a pair of parentheses."""
    parts, first, closing = [], opening + 1, source.tokens[opening].other
    for index in source.top_level(opening + 1, closing):
        if source.word(index) == ",":
            parts.append((first, index - 1))
            first = index + 1
    return parts + [(first, closing - 1)] if first <= closing - 1 else []


@kind
def arguments_swapped(source):
    """Neither a routine with another argument, nor the two ends of a row, which nobody confuses."""
    for index in indices(source, "word"):
        opening = source.tokens[index + 1] if index + 1 < len(source.tokens) else None
        if opening is None or opening.text != "(" or opening.spaced or not in_routine(source, index):
            continue
        parts = arguments(source, index + 1)
        for (first, end), (start, last) in zip(parts, parts[1:]):
            left, right = source.between(first, end), source.between(start, last)
            ends = all(re.search(r"\b(c?r?begin|c?r?end)\b", part) for part in (left, right))
            if left != right and not ends and "[" not in (left[0], right[0]):
                middle = source.text[source.tokens[end].end:source.tokens[start].start]
                yield first, last, [right + middle + left]


def in_routine(source, index):
    around = source.tokens[index].inside
    while around is not None and not source.tokens[around].block:
        around = source.tokens[around].inside
    return around is not None


@kind
def returned_value(source):
    for index in indices(source, "word"):
        if source.word(index) != "return" or source.word(index + 1) in (";", "true", "false"):
            continue
        end = source.end_of(index)
        value = source.between(index + 1, end - 1)
        words = {source.word(at) for at in source.top_level(index + 1, end)}
        result = source.result_of(index)
        if re.search(r"\bbool\b", result) or (not result and "?" not in words and (
                words & (set(RELATIONS) | set(LOGIC) | {"!"}))):
            yield index + 1, end - 1, [f"!({value})"]
        elif NUMBERS.search(result) and "<" not in result:
            yield index + 1, end - 1, [f"({value}) + 1"]
        elif value != "{}" and "&" not in result:
            yield index + 1, end - 1, ["{}"]


def places(source):
    """(kind, first, last, others) of all places in a source."""
    return [(name, *place) for name, generator in KINDS.items() for place in generator(source)]
