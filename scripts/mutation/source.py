"""C++ sources as tokens with their brackets and statements, as far as the kinds of mutants need them.

The sources are formatted by clang-format, so a "<" without a blank before it opens template arguments.
"""
import re

TOKEN = re.compile(r"""
    (?P<skipped> //[^\n]* | /\*.*?\*/ | ^[ \t]*\#(?:\\\n|[^\n])* | \s+ )
  | (?P<text>    R"\(.*?\)" | "(?:\\.|[^"\\\n])*" | '(?:\\.|[^'\\\n])*' )
  | (?P<number>  \d[\w.']* )
  | (?P<word>    [A-Za-z_]\w* )
  | (?P<sign>    <=> | <<= | >>= | \.\.\. | \+\+ | -- | && | \|\| | -> | << | :: | [<>=!+\-*/%&|^]= | . )
    """, re.M | re.S | re.X)
CLOSING = {")": "(", "]": "[", "}": "{", ">": "<"}
CONTROL = ("if", "for", "while", "switch", "catch")
LABELS = ("case", "default", "public", "private", "protected")


class Token:
    def __init__(self, kind, text, start, spaced):
        self.kind, self.text, self.start, self.end = kind, text, start, start + len(text)
        self.spaced = spaced     # a blank or the start of a line is before it
        self.other = None        # of a bracket: the index of the one that matches
        self.inside = None       # the index of the innermost bracket around it
        self.block = False       # of a brace: statements are in it


class Source:
    """The tokens of a file, without comments and directives."""

    def __init__(self, text):
        self.text = text
        self.tokens = []
        end = 0
        for match in TOKEN.finditer(text):
            if match.lastgroup != "skipped":
                spaced = match.start() != end or not self.tokens
                self.tokens.append(Token(match.lastgroup, match.group(), match.start(), spaced))
                end = match.end()
        self._match_brackets()

    def word(self, index):
        """The text of a token, or nothing beyond the ends."""
        return self.tokens[index].text if 0 <= index < len(self.tokens) else ""

    def between(self, first, last):
        """The text from one token to another, both included."""
        return self.text[self.tokens[first].start:self.tokens[last].end]

    def is_binary(self, index):
        """An operator with blanks on both sides that is not a bracket."""
        token = self.tokens[index]
        following = self.tokens[index + 1] if index + 1 < len(self.tokens) else token
        return token.spaced and following.spaced and token.other is None and self.word(index - 1) != "operator"

    def skip(self, index, step):
        """The token next to one, or to the bracket that matches it."""
        other = self.tokens[index].other
        return (index if other is None or (other - index) * step < 0 else other) + step

    def top_level(self, first, end):
        """The indices from one token to before another, without what is in brackets."""
        while first < end:
            yield first
            first = self.skip(first, 1)

    def start_of(self, index, stops=(";", "{", "}")):
        """Where the tokens before one begin that belong to it: after a stop or an open bracket."""
        while index > 0:
            token = self.tokens[index - 1]
            if token.text in stops or token.text in "([{<" and token.other is not None:
                break
            index = self.skip(index - 1, -1) + 1
        return index

    def is_label(self, colon):
        return self.word(self.start_of(colon, (";", "{", "}", ":"))) in LABELS

    def statement_starts(self):
        """Where statements begin in the blocks."""
        for index in range(1, len(self.tokens)):
            around = self.tokens[index].inside
            if around is None or not self.tokens[around].block:
                continue
            before = self.tokens[index - 1]
            if before.text in (";", "else", "do") or (before.text == ":" and self.is_label(index - 1)) or (
                    before.text in "{}" and (before.block or index - 1 == around)) or (
                    before.text == ")" and before.other and self.word(before.other - 1) in CONTROL):
                yield index

    def end_of(self, start):
        """The semicolon of the statement that begins there, or nothing."""
        for index in self.top_level(start, len(self.tokens)):
            if self.tokens[index].text in ";}":
                return index if self.tokens[index].text == ";" else None
        return None

    def result_of(self, index):
        """The declared result of the innermost routine around a token; empty if it is not known."""
        around = self.tokens[index].inside
        while around is not None:
            if self.tokens[around].block:
                header = self.between(self.start_of(around), around)
                if re.search(r"\)[^()]*->", header):
                    return header.rpartition("->")[2].strip(" {")
                if "](" in header or "[" in header and "=" in header:
                    return ""
                if not re.match(r"(\}? *else|if|for|while|switch|do|try|case|default)\b|\{", header):
                    return header.partition("(")[0]
            around = self.tokens[around].inside
        return ""

    def _match_brackets(self):
        stack = []
        for index, token in enumerate(self.tokens):
            token.inside = stack[-1] if stack else None
            if token.kind != "sign":
                continue
            before = self.word(index - 1)
            if token.text in "([{" or token.text == "<" and before != "operator" and (
                    not token.spaced or before == "template"):
                stack.append(index)
                token.block = token.text == "{" and self._opens_block(index)
            elif token.text in CLOSING and stack and self.word(stack[-1]) == CLOSING[token.text] and not (
                    token.text == ">" and token.spaced):
                token.other = stack.pop()
                opening = self.tokens[token.other]
                opening.other, token.inside, token.block = index, opening.inside, opening.block

    def _opens_block(self, index):
        before = self.word(index - 1)
        header = self._header_words(index)
        around = self.tokens[index].inside
        in_block = around is not None and self.tokens[around].block
        if before in (")", "else", "do", "try", "const", "noexcept", "override", "mutable", "]"):
            return True
        if "->" in header and ")" in header:
            return header.index("->") > header.index(")") and "=" not in header[header.index("->"):]
        if before in (";", "{", "}", ":"):
            return in_block or (before == "}" and ")" in header)
        return False

    def _header_words(self, index):
        words, index = [], index - 1
        while index >= 0 and self.word(index) not in (";", "{"):
            token = self.tokens[index]
            if token.text == "}" and token.block or token.text in "([" and token.other is None:
                break
            words.insert(0, token.text)
            index = self.skip(index, -1) if token.other is not None else index - 1
            if token.text == ")":
                words.insert(0, "(")
        return words
