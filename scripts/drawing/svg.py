"""Reads a screen with the colours of a terminal (`tmux capture-pane -e`), writes it as SVG."""

import re
import sys
from html import escape

WIDTH, HEIGHT = 8.4, 18  # of a character
BASIC = ["#000000", "#c00000", "#007800", "#806000", "#0000c0", "#a000a0", "#007c7c", "#c8c8c8",
         "#707070", "#e03030", "#00a000", "#a08000", "#4040ff", "#d040d0", "#00a0a0", "#ffffff"]


def colour_of(number):
    """Of the 256 colours of a terminal."""
    if number < 16:
        return BASIC[number]
    if number >= 232:
        return "#" + f"{8 + 10 * (number - 232):02x}" * 3
    steps = [0, 95, 135, 175, 215, 255]
    number -= 16
    return "#" + "".join(f"{steps[number // part % 6]:02x}" for part in (36, 6, 1))


def change(style, codes):
    """The style after a sequence of codes for colours, boldness, and so on."""
    style = dict(style)
    codes = [int(code) for code in re.split("[;:]", codes) if code] or [0]
    while codes:
        code = codes.pop(0)
        side = "fill" if 30 <= code < 40 or 90 <= code < 98 else "ground"
        if code == 0:
            style = {}
        elif code in (1, 3, 4, 7):
            style[{1: "bold", 3: "italic", 4: "line", 7: "turned"}[code]] = True
        elif code in (38, 48, 58):
            kind = codes.pop(0)
            count = 3 if kind == 2 else 1
            taken, codes = codes[:count], codes[count:]
            if code != 58:
                parts = "".join(f"{part:02x}" for part in taken)
                style[side] = colour_of(*taken) if kind == 5 else "#" + parts
        elif code in (39, 49):
            style.pop(side, None)
        elif 30 <= code < 50 or 90 <= code < 108:
            style[side] = BASIC[code % 10 + (8 if code >= 90 else 0)]
    return style


def parts_of(lines):
    """The parts of the lines that have one style: line, column, text, style."""
    style = {}
    for number, line in enumerate(lines):
        column = 0
        for codes, text in re.findall(r"\x1b\[([\d;:]*)m|([^\x1b]+)", line):
            if text:
                yield number, column, text, style
                column += len(text)
            else:
                style = change(style, codes)


def drawn(number, column, text, style):
    """The elements of a part."""
    fill, ground = style.get("fill", "#202020"), style.get("ground")
    if style.get("turned"):
        fill, ground = ground or "#ffffff", fill
    x, y = f"{10 + column * WIDTH:.1f}", 10 + number * HEIGHT
    width = f"{len(text) * WIDTH:.1f}"
    if ground:
        yield f'<rect x="{x}" y="{y}" width="{width}" height="{HEIGHT}" fill="{ground}"/>'
    if text.strip():
        weight = ' font-weight="bold"' if style.get("bold") else ""
        slant = ' font-style="italic"' if style.get("italic") else ""
        line = ' text-decoration="underline"' if style.get("line") else ""
        yield (f'<text x="{x}" y="{y + 14}" textLength="{width}" fill="{fill}"{weight}{slant}{line}>'
               f"{escape(text)}</text>")


def main():
    lines = sys.stdin.read().rstrip("\n").split("\n")
    columns = max(len(re.sub(r"\x1b\[[\d;:]*m", "", line)) for line in lines)
    width, height = round(20 + columns * WIDTH), 20 + len(lines) * HEIGHT
    print(f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {width} {height}" '
          f'width="{width}" height="{height}" font-family="monospace" font-size="14" '
          'xml:space="preserve">')
    print(f'<rect width="{width}" height="{height}" rx="6" fill="#ffffff" stroke="#b0b0b0"/>')
    for part in parts_of(lines):
        print(*drawn(*part), sep="\n")
    print("</svg>")


main()
