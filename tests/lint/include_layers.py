"""The folders under src/ are layers: a folder includes only from folders below it, and only ui includes Qt.

    include_layers.py SRC

prints a sentence for every include that breaks the rule, and ends with status 1 if there is one.
"""

import re
import sys
from pathlib import Path

# From each folder to those that it may use beside itself, nearest first.
_MAY_USE = {
    "platform": [],
    "text": ["platform"],
    "operations": ["text", "platform"],
    "engine": ["operations", "text", "platform"],
    "clipboard": ["operations", "text", "platform"],
    "storage": ["operations", "text", "platform"],
    "shell": ["engine", "clipboard", "storage", "operations", "text", "platform"],
    "ui": ["shell", "engine", "clipboard", "storage", "operations", "text", "platform"],
}
_SUFFIXES = {".h", ".hpp", ".inc", ".cpp"}
_INCLUDE = re.compile(r'^[ \t]*#[ \t]*include[ \t]*(?:"([^"]*)"|<([^>]*)>)', re.MULTILINE)
_COMMENT = re.compile(r'/\*.*?\*/|//[^\n]*', re.DOTALL)


def includes(text):
    """Pairs of an included name and whether it stands in angle brackets, comments left out."""
    # A name such as "a//b.h" would be cut by this; no header is named so.
    for quoted, angled in _INCLUDE.findall(_COMMENT.sub(" ", text)):
        yield (angled, True) if angled else (quoted, False)


def is_qt(name):
    return re.match(r"Q[A-Za-z]", name.split("/")[-1]) is not None or name.startswith("Qt")


def problem_of_include(file, name, angled):
    """The sentence about one include of a file, which is named from SRC, or None."""
    folder = file.parts[0] if len(file.parts) > 1 else None
    if is_qt(name):
        return None if folder == "ui" else f"{file} includes <{name}>: only ui may use Qt"
    target = name.split("/")[0]
    if target not in _MAY_USE:
        if angled or (folder in (None, "ui") and "/" not in name):  # ui includes what Qt's tools generate
            return None
        return f'{file} includes "{name}": name it from src, with its folder'
    if folder is None or target == folder or target in _MAY_USE[folder]:
        return None
    allowed = ", ".join(_MAY_USE[folder])
    return f"{file} includes {name}: {folder} may use {allowed + ' only' if allowed else 'no other folder'}"


def problems(src):
    """All sentences about the files under src, in the order of their names."""
    result = []
    files = sorted(path.relative_to(src) for path in src.rglob("*") if path.suffix in _SUFFIXES)
    if not files:
        result.append(f"{src} holds no sources")
    for file in files:
        if len(file.parts) > 1 and file.parts[0] not in _MAY_USE:
            result.append(f"{file}: {file.parts[0]} is none of the folders that have a place in the order")
            continue
        text = (src / file).read_text(encoding="utf-8", errors="replace")
        found = (problem_of_include(file, name, angled) for name, angled in includes(text))
        result.extend(sentence for sentence in found if sentence)
    return result


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    found = problems(Path(sys.argv[1]))
    print("\n".join(found), end="\n" if found else "")
    sys.exit(1 if found else 0)


if __name__ == "__main__":
    main()
