"""Reads the pages of the guide: their blocks, and the examples that the blocks form.

An example is what a reader sees, nothing is hidden: one or more paragraphs that begin with **Before**, each with the
text in a fence below; tables, whose bold first cell names an operation or another action and whose rows are the fields
of its panel; and what comes of it, in paragraphs that begin with **After**, **Log**, **Message** (each with a fence),
**Status line** or **Selection** (with a value).
"""
import dataclasses
import re

STEPS = ("Before", "Then")
RESULTS = ("After", "Log", "Message")
RESULT_VALUES = ("Status line", "Selection")
LABELLED = re.compile(r"^\*\*(%s)\*\*(.*)$" % "|".join(STEPS + RESULTS + RESULT_VALUES), re.S)


class GuideError(Exception):
    """What is wrong with a page, and where."""


@dataclasses.dataclass
class Block:
    kind: str  # heading, paragraph, fence, table
    line: int  # from 1
    text: str = ""
    level: int = 0  # of a heading
    info: str = ""  # of a fence
    rows: list = dataclasses.field(default_factory=list)  # of a table: lists of cells


@dataclasses.dataclass
class Step:
    kind: str  # Before, Then, or action
    line: int
    where: str = ""  # what the paragraph says behind its label
    text: str = ""  # of the fence
    action: str = ""
    fields: list = dataclasses.field(default_factory=list)  # pairs of label and value


@dataclasses.dataclass
class Example:
    page: str
    line: int
    headings: tuple  # from the page's title down to the nearest
    steps: list
    results: list  # of Step, kind one of RESULTS or RESULT_VALUES

    def place(self):
        return "%s, line %d" % (self.page, self.line)


def cells_of_row(line):
    """The cells of a table's row; a bar inside a cell is written with a backslash before it."""
    inner = line.strip()
    inner = inner[1:] if inner.startswith("|") else inner
    cells = re.split(r"(?<!\\)\|", inner)
    return [cell.strip().replace("\\|", "|") for cell in cells[:-1]]


def blocks_of(text):
    lines = text.split("\n")
    blocks = []
    at = 0
    while at < len(lines):
        line = lines[at]
        start = at
        if line.startswith("```"):
            at += 1
            while at < len(lines) and not lines[at].startswith("```"):
                at += 1
            if at == len(lines):
                raise GuideError("line %d: the fence is never closed" % (start + 1))
            blocks.append(Block("fence", start + 1, "\n".join(lines[start + 1:at]), info=line[3:].strip()))
            at += 1
        elif heading := re.match(r"(#+) (.*)", line):
            blocks.append(Block("heading", start + 1, heading[2].strip(), level=len(heading[1])))
            at += 1
        elif line.startswith("|"):
            while at < len(lines) and lines[at].startswith("|"):
                at += 1
            rows = [cells_of_row(row) for row in lines[start:at]]
            if len(rows) < 2 or any(not re.fullmatch(r":?-+:?", cell) for cell in rows[1]):
                raise GuideError("line %d: a table needs a second line of hyphens" % (start + 1))
            if any(len(row) != len(rows[0]) for row in rows):
                raise GuideError("line %d: the rows of the table have different numbers of cells" % (start + 1))
            blocks.append(Block("table", start + 1, rows=[rows[0]] + rows[2:]))
        elif line.strip():
            while at < len(lines) and lines[at].strip() and not re.match(r"```|#|\|", lines[at]):
                at += 1
            blocks.append(Block("paragraph", start + 1, " ".join(lines[start:at]).strip()))
        else:
            at += 1
    return blocks


def action_of(block):
    """The bold name in a table's first cell; None for a table that is no action."""
    bold = re.fullmatch(r"\*\*(.+)\*\*", block.rows[0][0]) if block.kind == "table" else None
    return bold[1] if bold and len(block.rows[0]) == 2 and not block.rows[0][1] else None


def label_of(block):
    """The label and the rest of a paragraph of an example; (None, "") for another block."""
    found = LABELLED.match(block.text) if block.kind == "paragraph" else None
    return (found[1], found[2].strip()) if found else (None, "")


def fence_behind(blocks, at):
    if at + 1 >= len(blocks) or blocks[at + 1].kind != "fence" or blocks[at + 1].info != "text":
        raise GuideError("line %d: there is no text fence behind this" % blocks[at].line)
    return blocks[at + 1].text


def read_example(page, blocks, at, headings):
    """The example that begins at a block; also the index of the block behind it."""
    example = Example(page, blocks[at].line, headings, [], [])
    while at < len(blocks):
        label, rest = label_of(blocks[at])
        action = action_of(blocks[at])
        if label in STEPS and not example.results and (label == "Then" or not example.steps or
                                                       example.steps[-1].kind == "Before"):
            example.steps.append(Step(label, blocks[at].line, rest, fence_behind(blocks, at)))
            at += 2
        elif action and not example.results:
            example.steps.append(Step("action", blocks[at].line, action=action,
                                      fields=[tuple(row) for row in blocks[at].rows[1:]]))
            at += 1
        elif label in RESULTS:
            example.results.append(Step(label, blocks[at].line, rest, fence_behind(blocks, at)))
            at += 2
        elif label in RESULT_VALUES:
            example.results.append(Step(label, blocks[at].line, rest))
            at += 1
        else:
            break
    if not example.results:
        raise GuideError("line %d: the example does not say what comes of it" % example.line)
    return example, at


def examples_of(page, text):
    """All examples of a page. Raises GuideError for what looks like a part of an example and is in none."""
    blocks = blocks_of(text)
    examples = []
    headings = []
    at = 0
    while at < len(blocks):
        block = blocks[at]
        if block.kind == "heading":
            headings = [heading for heading in headings if heading[0] < block.level] + [(block.level, block.text)]
        label, _ = label_of(block)
        if label == "Before":
            example, at = read_example(page, blocks, at, tuple(text for _, text in headings))
            examples.append(example)
            continue
        if label or action_of(block) or (block.kind == "fence" and block.info == "text"):
            raise GuideError("line %d: this looks like a part of an example and belongs to none" % block.line)
        at += 1
    return examples


def slug(heading):
    """The name that Markdown viewers give to a heading."""
    plain = re.sub(r"[`*_]|\[([^]]*)\]\([^)]*\)", r"\1", heading).lower()
    return re.sub(r"[^\w\- ]", "", plain).replace(" ", "-")


def links_of(text):
    """The link targets and the picture targets of a page."""
    text = re.sub(r"```.*?^```", "", text, flags=re.S | re.M)
    text = re.sub(r"`[^`\n]*`", "", text)
    pictures = re.findall(r"!\[([^]]*)\]\(([^)\s]+)\)", text)
    links = re.findall(r"(?<!!)\[(?:[^][]|!\[[^]]*\]\([^)]*\))*\]\(([^)\s]+)\)", text)
    return links, pictures
