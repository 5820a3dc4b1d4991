#!/usr/bin/env python3
"""Shows that guide_test.py tells a wrong page from a right one.

    guide_self_test.py DRIVE SOURCE
"""
import pathlib
import sys
import tempfile
import unittest

import guide_test
import guide_text

DRIVE, SOURCE = (str(pathlib.Path(sys.argv[1]).resolve()), pathlib.Path(sys.argv[2]).resolve())

EXAMPLE = """
**Before**, `a.txt`:

```text
 a|b
```

| **Trim Line** | |
|---|---|
| Trim | Whitespace |
| From | From Start |

**After**:

```text
a|b
```
"""
GRID = """
**Before**, in the grid:

```text
| a | b |
```

| **Select** | |
|---|---|
| Columns | 1 |

| **Fill** | |
|---|---|
| Fill with | String |
| Text | `x` |

**After**, in the grid:

```text
| x | b |
```
"""
NO_RUN = "| **Set Initial Number of Columns** | |\n|---|---|\n| Number of columns | `2` |\n\n"

# The page, and a part of what is said about it; nothing may be said about it where that is None.
PAGES = {
    "a right example": (EXAMPLE, None),
    "a right example of the grid": (GRID, None),
    "another output": (EXAMPLE.replace("\na|b\n", "\na|c\n"), "output"),
    "a blank too many": (EXAMPLE.replace("\na|b\n", "\na|b \n"), "output"),
    "another grid": (GRID.replace("| x | b |", "| x | c |"), "grid"),
    "a cell too many": (GRID.replace("| x | b |", "| x | b |  |"), "grid"),
    "a line of a grid without bars": (GRID.replace("| x | b |", "x b"), "between bars"),
    "another operation": (EXAMPLE.replace("Trim Line", "Trim Everything"), "there is no operation Trim Everything"),
    "another field": (EXAMPLE.replace("| From |", "| Of |"), "has no field Of"),
    "another item": (EXAMPLE.replace("From Start", "From Top"), "has no item From Top"),
    "a text without backquotes": (GRID.replace("`x`", "x"), "should stand in backquotes"),
    "an operation that is off": (GRID.replace("| **Select** | |\n|---|---|\n| Columns | 1 |\n", ""), "Fill is off"),
    "an operation of the other side": (GRID.replace("**Fill**", "**Trim Line**"), "no operation Trim Line"),
    "a message that is not told": (EXAMPLE.replace("**After**", NO_RUN * 2 + "**After**"), "messages"),
    "a message that does not come": (EXAMPLE + "\n**Message**:\n\n```text\nNo\n```\n", "messages"),
    "a line that the log lacks": (EXAMPLE + "\n**Log**:\n\n```text\nLines written: 2\n```\n", "the log lacks"),
    "a line of the log": (EXAMPLE + "\n**Log**:\n\n```text\nLines written: 1\n```\n", None),
    "another status": (EXAMPLE + "\n**Status line**: `Done.`\n", "status"),
    "the status": (EXAMPLE + "\n**Status line**: `Job completed.`\n", None),
    "another selection": (GRID + "\n**Selection**: `Columns: 2`\n", "selection"),
    "an unknown clause": (EXAMPLE.replace("`a.txt`:", "`a.txt`, in haste:"), "in haste"),
    "no outcome": (EXAMPLE.split("**After**")[0], "does not say what comes of it"),
    "an outcome of nothing": ("**After**:\n\n```text\na\n```\n", "belongs to none"),
    "an operation of no example": ("| **Trim Line** | |\n|---|---|\n", "belongs to none"),
    "a text of no example": ("```text\na\n```\n", "belongs to none"),
    "a fence that stays open": ("```text\na\n", "never closed"),
    "a link that leads nowhere": ("[a](nowhere.md)", "nowhere.md leads nowhere"),
    "a link to a heading that is missing": ("[a](index.md#missing)", "has no heading missing"),
    "a link to a heading": ("## The `first` one\n\n[a](#the-first-one) [b](index.md#start)", None),
    "a picture that is missing": ("![a](pictures/missing.png)", "no picture pictures/missing.png"),
    "a picture that is none": ("![a](index.md)", "is no PNG"),
}
INDEX = "# Start\n\n[page](page.md) [reference](reference.md) [keys](keyboard.md)\n"


class GuideTest(unittest.TestCase):
    def problems(self, pages, readme="docs/index.md", pictures=()):
        with tempfile.TemporaryDirectory() as folder:
            source = pathlib.Path(folder)
            (source / "src").symlink_to(SOURCE / "src")
            (source / "README.md").write_text(readme)
            (source / "docs" / "pictures").mkdir(parents=True)
            empty = {name: "" for name in ("page.md", "reference.md", "keyboard.md")}
            for name, text in {"index.md": INDEX, **empty, **pages}.items():
                (source / "docs" / name).write_text(text, encoding="utf-8")
            for name in pictures:
                (source / "docs" / "pictures" / name).write_bytes(guide_test.PNG)
            return guide_test.check(DRIVE, source)[0]

    def of_page(self, problems):
        return [problem for problem in problems if not problem.startswith(("reference.md", "keyboard.md"))]

    def test_pages(self):
        for name, (page, expected) in PAGES.items():
            with self.subTest(name):
                found = self.of_page(self.problems({"page.md": page}))
                self.assertEqual(len(found), 1 if expected else 0, found)
                self.assertIn(expected or "", "".join(found))

    def test_the_reference_needs_an_example_for_each_operation(self):
        found = self.problems({"reference.md": "### Trim Line\n" + EXAMPLE + "\n### Skip Line\n"})
        self.assertIn("reference.md: Skip Line has no example", found)
        self.assertIn("reference.md: no example performs the operation 201", found)
        self.assertNotIn("reference.md: no example performs the operation 202", found)
        self.assertNotIn("reference.md: Trim Line has no example", found)

    def test_the_keyboard_page_needs_each_shortcut(self):
        found = self.problems({"keyboard.md": "| Keys | |\n|---|---|\n| `Ctrl+R` | Run Job |\n| `F6` | Split |\n"})
        self.assertNotIn("keyboard.md: Run Job (Ctrl+R) is missing", found)
        self.assertIn("keyboard.md: Split (Ctrl+K) is missing", found)

    def test_everything_is_reached(self):
        self.assertIn("README.md does not lead to docs/index.md", self.problems({}, readme=""))
        self.assertIn("no page leads to lost.md", self.problems({"lost.md": ""}))
        self.assertIn("docs/pictures/lost.png is shown by no page", self.problems({}, pictures=["lost.png"]))
        self.assertIn("page.md: the picture pictures/a.png has no text for those who cannot see it",
                      self.problems({"page.md": "![](pictures/a.png)"}, pictures=["a.png"]))

    def test_headings_are_named_as_viewers_name_them(self):
        names = {"The `first` one": "the-first-one", "Output, log": "output-log", "[a](b) c": "a-c"}
        for heading, name in names.items():
            self.assertEqual(guide_text.slug(heading), name)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
