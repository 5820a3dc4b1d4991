"""How the pages of the guide write texts, cells, files and formats."""
import re

ENCODINGS = {"UTF-8": "utf-8", "Windows CP1252": "cp1252", "Mac Roman": "mac_roman", "ASCII": "ascii"}
LINE_ENDS = {"Windows": "\r\n", "old Mac": "\r"}
# How a page writes what nobody could see: a blank at an end, a tab, control characters, any code point, a byte.
SHOWN_CHARACTERS = {"␣": " ", "⇥": "\t", "␡": "\x7f", **{chr(0x2400 + code): chr(code) for code in range(0x20)}}
DATE_FORMS = {"short": r"\d{1,2}/\d{1,2}/\d{2}", "medium": r"[A-Z][a-z]{2} \d{1,2}, \d{4}",
              "long": r"[A-Z][a-z]+ \d{1,2}, \d{4}", "numbers": r"\d{4}-\d\d-\d\d",
              "numbers with a zone": r"\d{4}-\d\d-\d\d [+-]\d{4}"}


class ExampleFailed(Exception):
    """What an example says is not what the program does."""


def spelt(text):
    """A text of the page as the program gets it."""
    text = "".join(SHOWN_CHARACTERS.get(character, character) for character in text)
    text = re.sub(r"\{U\+([0-9A-F]{4,6})\}", lambda found: chr(int(found[1], 16)), text)
    # Decoded as Python keeps bytes that are no text.
    return re.sub(r"\{byte ([89A-F][0-9A-F])\}", lambda found: chr(0xDC00 + int(found[1], 16)), text)


def typed(value):
    """The text in a field: in backquotes, or (empty)."""
    if value == "(empty)":
        return ""
    code = re.fullmatch(r"(`+)(.+)\1", value)
    if not code:
        raise ExampleFailed("%s should stand in backquotes, as it is typed" % value)
    return spelt(code[2])


def numbers(value):
    """The indexes from 0 of a list such as "1, 3"."""
    if value == "(none)":
        return []
    return [int(number) - 1 for number in value.split(",")]


def cells(value):
    """The cells of a list such as "(1, 2), (2, 2)", from 0."""
    found = re.findall(r"\((\d+), (\d+)\)", value)
    if ", ".join("(%s, %s)" % cell for cell in found) != value:
        raise ExampleFailed("%s is no list of cells" % value)
    return [(int(row) - 1, int(column) - 1) for row, column in found]


def grid_rows(text):
    """The cells of a grid: each between bars, blanks at its ends left out; a line may be shorter than others."""
    rows = []
    for line in text.split("\n"):
        if not re.fullmatch(r"\|.*\|", line.rstrip()):
            raise ExampleFailed("a line of a grid stands between bars: %s" % line)
        inner = line.rstrip()[1:-1]
        rows.append([spelt(cell.strip(" ")) for cell in inner.split("|")] if inner else [])
    return rows


def form_of(title, taken=()):
    """Which form a format's sample has. The panel's samples show today, those of the guide always the same day. In May
    the long form looks like the medium one, so the forms of the items before it are taken."""
    return next((name for name, pattern in DATE_FORMS.items() if name not in taken and re.fullmatch(pattern, title)),
                title)


def option(where, pattern):
    """The word of one clause of what a paragraph says; None without it."""
    found = re.search(pattern, where)
    return found[1] if found else None


def check_clauses(where):
    rest = re.sub(r"`[^`]+`| in the output folder| written as (UTF-8|Windows CP1252|Mac Roman|ASCII)"
                  r"| with (Windows|old Mac) line ends| in the time zone [\w/]+| in the language \w+", "", where)
    if rest.strip(", :"):
        raise ExampleFailed("it is not known what this means: %s" % rest.strip(", :"))


def bytes_of(where, text, ends_in_separator):
    line_end = LINE_ENDS.get(option(where, r"with (Windows|old Mac) line ends"), "\n")
    lines = text.split("\n") if text else []
    whole = line_end.join(spelt(line) for line in lines) + (line_end if ends_in_separator and lines else "")
    encoding = ENCODINGS[option(where, r"written as ([^,:]+)") or "UTF-8"]
    return whole.encode(encoding, "surrogateescape")
