#!/usr/bin/env python3
"""Makes pages for a browser of the guide.

    guide_pages.py DOCS FOLDER

writes a page for each Markdown file of DOCS to FOLDER, with its pictures. Needs Debian's python3-markdown.
"""

import re
import shutil
import sys
from html import escape
from pathlib import Path

import markdown

STYLE = """
:root { color-scheme: light dark; }
body { font: 16px/1.5 "DejaVu Sans", "Noto Sans", sans-serif; max-width: 46em; margin: 2em auto; padding: 0 1em; }
table { border-collapse: collapse; margin: 1em 0; }
th, td { border: 1px solid #808080; padding: .2em .6em; text-align: left; vertical-align: top; }
code, pre { font: 14px/1.4 "DejaVu Sans Mono", "Noto Sans Mono", monospace; }
pre { border: 1px solid #808080; padding: .6em; overflow-x: auto; }
img { max-width: 100%; }
"""
PAGE = """<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width">
<title>{title}</title>
<style>{style}</style>
</head>
<body>
{navigation}{body}
</body>
</html>
"""
HOME = '<p><a href="index.html">Guide to Quillet</a></p>\n'
EXTENSIONS = ["tables", "fenced_code", "toc", "sane_lists"]


def page(source, name):
    """The page of one Markdown text; links between the texts become links between the pages."""
    source = re.sub(r"\]\(([\w-]+)\.md(#[\w-]+)?\)", r"](\1.html\2)", source)
    title = re.search(r"^# (.+)$", source, re.MULTILINE).group(1)
    body = markdown.markdown(source, extensions=EXTENSIONS, output_format="html")
    return PAGE.format(title=escape(title), style=STYLE, navigation="" if name == "index" else HOME, body=body)


def make_pages(docs, folder):
    if folder.exists():
        shutil.rmtree(folder)
    folder.mkdir(parents=True)
    for file in sorted(docs.glob("*.md")):
        text = page(file.read_text(encoding="utf-8"), file.stem)
        (folder / f"{file.stem}.html").write_text(text, encoding="utf-8")
    shutil.copytree(docs / "pictures", folder / "pictures")


if __name__ == "__main__":
    make_pages(Path(sys.argv[1]), Path(sys.argv[2]))
