"""Reads constants and tables that the skin shares with the editor from the editor's sources."""
import pathlib
import re

EDITOR = pathlib.Path(__file__).resolve().parents[2] / "ui"


def constants(source):
    """The constants of a source file by name: numbers and tuples of numbers."""
    values = {}

    def value(text):
        if text.startswith("{"):
            return tuple(value(part.strip()) for part in text[1:-1].split(","))
        return values[text] if text in values else float(text[:-1]) if text.endswith("f") and "." in text else int(text, 0)

    words = re.sub(r"//.*", "", (EDITOR / source).read_text())
    for declaration in re.findall(r"constexpr [^;(]*;", words):
        for name, text in re.findall(r"\b(k\w+)(?:\[[\w:]+\])?(?: = )?(\{[^}]*\}|(?<== )[-\w.]+)(?=[,;])", declaration):
            values[name] = value(text)
    return values


def text_rows():
    """The rows of the editor's text table: x, y, width, height, alignment, text."""
    table = (EDITOR / "editor/TextTable.cpp").read_text()
    labels = re.findall(r'\{(\d+), (\d+), (\d+), (\d+), \d+, \d+, TextRow::(\w+), "([^"]*)"\}', table)
    tips = re.findall(r'tip\(\d+, "([^"]*)"\)', table)
    return [(*map(int, row[:4]), *row[4:]) for row in labels] + [(0, 0, 0, 0, "asPlaced", words) for words in tips]


def glyphs():
    """The glyphs of a strip, and their widths in columns, including the gap to the next glyph."""
    rows = re.findall(r"\{'(.)', \d+, (\d+)\}", (EDITOR / "draw/GlyphStrip.cpp").read_text())
    return "".join(glyph for glyph, _ in rows), tuple(int(width) for _, width in rows)
