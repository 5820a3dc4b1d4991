#!/usr/bin/env python3
"""Performs every example of the guide, and checks its links, pictures, reference and shortcuts.

    guide_test.py DRIVE SOURCE

DRIVE is quillet-drive, SOURCE the folder of the sources, whose docs/ is the guide. Prints what is wrong, a paragraph
for each; status 1 if there is anything.
"""
import pathlib
import re
import sys

import guide_notation
import guide_panels
import guide_session
import guide_text

REFERENCE = "reference.md"
KEYBOARD = "keyboard.md"
UNDO = 999  # is never performed as an operation; the guide tells it under a heading of its own
PNG = b"\x89PNG\r\n\x1a\n"


def pages_of(docs):
    return {page.name: page.read_text(encoding="utf-8") for page in sorted(docs.glob("*.md"))}


def heading_slugs(text):
    return {guide_text.slug(block.text) for block in guide_text.blocks_of(text) if block.kind == "heading"}


def check_link(docs, page, target):
    """What is wrong with a link of a page; None for a good one. Addresses of the web are not followed."""
    if re.match(r"https?://|mailto:", target):
        return None
    path, _, anchor = target.partition("#")
    file = (docs / path).resolve() if path else docs / page
    if not file.exists():
        return "%s: the link to %s leads nowhere" % (page, target)
    if anchor and anchor not in heading_slugs(file.read_text(encoding="utf-8")):
        return "%s: %s has no heading %s" % (page, path or page, anchor)
    return None


def check_picture(docs, page, text, target):
    file = docs / target
    if not file.is_file():
        return "%s: there is no picture %s" % (page, target)
    if file.read_bytes()[:len(PNG)] != PNG:
        return "%s: %s is no PNG picture" % (page, target)
    return None if text.strip() else "%s: the picture %s has no text for those who cannot see it" % (page, target)


def check_links_and_pictures(docs, pages):
    problems = []
    shown, linked = set(), {"index.md"}
    for page, text in pages.items():
        links, pictures = guide_text.links_of(text)
        problems += [check_link(docs, page, target) for target in links]
        problems += [check_picture(docs, page, alternative, target) for alternative, target in pictures]
        shown |= {target for _, target in pictures}
        linked |= {target.partition("#")[0] for target in links}
    problems += ["docs/%s is shown by no page" % file.relative_to(docs).as_posix()
                 for file in sorted((docs / "pictures").glob("*"))
                 if file.relative_to(docs).as_posix() not in shown]
    problems += ["no page leads to %s" % page for page in pages if page not in linked]
    return [problem for problem in problems if problem]


def examples_of_pages(pages):
    """All examples, and what is wrong with their form."""
    examples, problems = [], []
    for page, text in pages.items():
        try:
            examples += guide_text.examples_of(page, text)
        except guide_text.GuideError as error:
            problems.append("%s, %s" % (page, error))
    return examples, problems


def perform_examples(drive, panels, examples):
    """What fails, and for each example the codes that it has performed."""
    problems, performed = [], []
    for example in examples:
        try:
            performed.append(guide_session.perform_example(drive, panels, example))
        except guide_notation.ExampleFailed as failure:
            problems.append("%s: %s" % (example.place(), failure))
            performed.append(set())
    return problems, performed


def check_reference(text, panels, examples, performed):
    """Every heading of the third level has an example, and every operation is performed by one."""
    headings = [block.text for block in guide_text.blocks_of(text) if block.kind == "heading" and block.level == 3]
    shown, codes = set(), {UNDO}
    for example, done in zip(examples, performed):
        if example.page == REFERENCE:
            shown.add(example.headings[-1])
            codes |= done
    problems = ["%s: %s has no example" % (REFERENCE, heading) for heading in headings if heading not in shown]
    return problems + ["%s: no example performs the operation %d" % (REFERENCE, code)
                       for code in panels.codes if code not in codes]


def check_shortcuts(text, panels):
    """Every shortcut of the menus stands in a row of the page with the item's name."""
    rows = {(row[0].strip("`"), row[1].partition(", ")[0]) for block in guide_text.blocks_of(text)
            if block.kind == "table" for row in block.rows}
    return ["%s: %s (%s) is missing" % (KEYBOARD, title, shortcut)
            for title, shortcut in sorted(panels.shortcuts.items()) if (shortcut, title) not in rows]


def check(drive, source):
    docs = source / "docs"
    pages = pages_of(docs)
    panels = guide_panels.Panels(source)
    problems = check_links_and_pictures(docs, pages)
    examples, malformed = examples_of_pages(pages)
    failures, performed = perform_examples(drive, panels, examples)
    problems += malformed + failures
    problems += check_reference(pages.get(REFERENCE, ""), panels, examples, performed)
    problems += check_shortcuts(pages.get(KEYBOARD, ""), panels)
    if "docs/index.md" not in (source / "README.md").read_text(encoding="utf-8"):
        problems.append("README.md does not lead to docs/index.md")
    return problems, len(examples)


def main():
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    problems, count = check(str(pathlib.Path(sys.argv[1]).resolve()), pathlib.Path(sys.argv[2]).resolve())
    for problem in problems:
        print(problem + "\n")
    print("%d examples, %d problems" % (count, len(problems)))
    return 1 if problems or not count else 0


if __name__ == "__main__":
    sys.exit(main())
