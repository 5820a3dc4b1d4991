"""The catalogues of po/ say every text of the sources, and nothing that would break one.

    catalogues.py ROOT

prints a sentence for every fault, and ends with status 1 if there is one. That the template is what the sources say is
for tools/update_po --check; here also every literal of text in the sources has to be a key of the template, or one of
the lines of po/no_texts.
"""

import ast
import re
import sys
from pathlib import Path

# Words of the stored names of cells: printed through the catalogue, and read in English only.
SECTION_WORDS = ["Lines: ", "Columns: ", "Cells: "]

_PLACEHOLDER = re.compile(r"%@|%ld|%d|%%")
_LITERALS = re.compile(r'(?<![\w"])u"(?:[^"\\]|\\.)*"(?:\s*u"(?:[^"\\]|\\.)*")*')
_LITERAL = re.compile(r'"(?:[^"\\]|\\.)*"')
_COMMENT_LINE = re.compile(r"^\s*//.*$", re.MULTILINE)
_WORD = re.compile(r"[A-Za-z]{2}")


def messages(file):
    """The translations of a .po or .pot file by their keys; the header has the key ""."""
    result = {}
    key = None
    for line in file.read_text(encoding="utf-8").splitlines():
        if line.startswith("#, ") and "fuzzy" in line and result:
            raise ValueError(f"{file.name} has a fuzzy text after {key!r}")
        if line.startswith("msgid "):
            key, kind = ast.literal_eval(line[6:]), "id"
        elif line.startswith("msgstr "):
            kind = "text"
            result[key] = ast.literal_eval(line[7:])
        elif line.startswith('"') and kind == "id":
            key += ast.literal_eval(line)
        elif line.startswith('"'):
            result[key] += ast.literal_eval(line)
    return result


def without_mnemonic(text):
    return re.sub(r"\(&.\)", "", text).replace("&", "", 1)


def edges(text):
    """The white space around a text, and how many lines it has."""
    return (text[:len(text) - len(text.lstrip())], text[len(text.rstrip()):], text.count("\n"))


def faults_of_text(key, text):
    """What is wrong with the translation of one key."""
    if not text:
        return ["has no translation"]
    faults = []
    if _PLACEHOLDER.findall(key) != _PLACEHOLDER.findall(text):
        faults.append("has other placeholders, or in another order")
    if edges(key) != edges(text):
        faults.append("has other white space around it, or another number of lines")
    if ("&" in key) != ("&" in text) or text.count("&") > 1:
        faults.append("has a mnemonic on one side only, or more than one")
    return faults


def faults_of_catalogue(name, texts, keys):
    for key in SECTION_WORDS:
        if key in texts:
            yield f"{name}: {key!r} is read in English and may not be translated"
    for key in texts.keys() - keys:
        yield f"{name}: {key!r} is no text of the sources"
    for key in sorted(keys):
        for fault in faults_of_text(key, texts.get(key, "")):
            yield f"{name}: {key!r} {fault}"
        # The form has the text with its mnemonic, the application the one without.
        plain = without_mnemonic(key)
        if plain != key and plain in keys and without_mnemonic(texts.get(key, "")) != texts.get(plain, ""):
            yield f"{name}: {key!r} and {plain!r} are two different texts"


def literals_of_sources(root):
    """Pairs of a file and a UTF-16 literal with a word in it, its pieces joined."""
    for file in sorted(root.glob("src/**/*")):
        if file.suffix not in {".cpp", ".h"}:
            continue
        for match in _LITERALS.findall(_COMMENT_LINE.sub("", file.read_text(encoding="utf-8"))):
            text = "".join(ast.literal_eval(piece) for piece in _LITERAL.findall(match))
            if _WORD.search(text):
                yield file.relative_to(root), text


def faults(root):
    po = root / "po"
    keys = messages(po / "quillet.pot").keys() - {""}
    for word in SECTION_WORDS:
        if word in keys:
            yield f"quillet.pot: {word!r} is read in English and may not be translated"
    for catalogue in sorted(po.glob("*.po")):
        texts = messages(catalogue)
        texts.pop("", None)
        yield from faults_of_catalogue(catalogue.name, texts, keys)
    no_texts = {ast.literal_eval(line) for line in (po / "no_texts").read_text(encoding="utf-8").splitlines()
                if line.startswith('"')}
    found = set()
    for file, text in literals_of_sources(root):
        found.add(text)
        if text not in keys and text not in no_texts:
            yield f"{file}: {text!r} is neither a key that tools/update_po finds nor a line of po/no_texts"
    for text in sorted(no_texts - found):
        yield f"no_texts: {text!r} is in no source"


def main():
    sentences = list(faults(Path(sys.argv[1])))
    for sentence in sentences:
        print(sentence)
    return 1 if sentences else 0


if __name__ == "__main__":
    sys.exit(main())
