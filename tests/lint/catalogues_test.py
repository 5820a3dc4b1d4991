"""Shows that catalogues.py tells a bad translation from a good one."""

import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

CHECKER = Path(__file__).with_name("catalogues.py")

# A key, its translation, and what is said of it; "" where it is as it should be.
TEXTS = [
    ("Trim", "Trimmen", ""),
    ("Trim", "", "has no translation"),
    ("%@ on line %ld", "%@ in Zeile %ld", ""),
    ("%@ on line %ld", "Zeile %ld: %@", "has other placeholders, or in another order"),
    ("%@ on line %ld", "%@ in Zeile", "has other placeholders, or in another order"),
    ("Lines read: %d", "Zeilen: %ld", "has other placeholders, or in another order"),
    ("Lines ", "Zeilen ", ""),
    ("Lines ", "Zeilen", "has other white space around it, or another number of lines"),
    ("One\\nTwo\\n", "Eins\\nZwei\\n", ""),
    ("One\\nTwo\\n", "Eins Zwei\\n", "has other white space around it, or another number of lines"),
    ("&Save", "&Sichern", ""),
    ("&Save", "保存(&S)", ""),
    ("&Save", "Sichern", "has a mnemonic on one side only, or more than one"),
    ("Save", "&Sichern", "has a mnemonic on one side only, or more than one"),
    ("&Save", "&Si&chern", "has a mnemonic on one side only, or more than one"),
]


def check(template, catalogue, source="", no_texts=""):
    """The sentences about catalogues of pairs of a key and a text."""
    def written(pairs):
        return 'msgid ""\nmsgstr ""\n' + "".join(f'\nmsgid "{key}"\nmsgstr "{text}"\n' for key, text in pairs)
    with tempfile.TemporaryDirectory() as folder:
        root = Path(folder)
        (root / "po").mkdir()
        (root / "src").mkdir()
        (root / "po/quillet.pot").write_text(written((key, "") for key in template), encoding="utf-8")
        (root / "po/xx.po").write_text(written(catalogue), encoding="utf-8")
        (root / "po/no_texts").write_text(no_texts, encoding="utf-8")
        (root / "src/a.cpp").write_text(source, encoding="utf-8")
        result = subprocess.run([sys.executable, CHECKER, root], capture_output=True, text=True, check=False)
        assert result.returncode == (1 if result.stdout else 0), result.stderr
        return result.stdout


class Catalogues(unittest.TestCase):
    def test_judges_a_translation(self):
        for key, text, fault in TEXTS:
            with self.subTest(key=key, text=text):
                said = check([key], [(key, text)])
                self.assertEqual(bool(said), bool(fault))
                self.assertIn(fault, said)

    def test_wants_every_key_and_no_other(self):
        self.assertIn("'Trim' has no translation", check(["Trim"], []))
        self.assertIn("'Gone' is no text of the sources", check(["Trim"], [("Trim", "a"), ("Gone", "b")]))

    def test_wants_one_text_with_and_without_a_mnemonic(self):
        keys = ["&Save", "Save"]
        self.assertEqual(check(keys, [("&Save", "Si&chern"), ("Save", "Sichern")]), "")
        self.assertEqual(check(keys, [("&Save", "保存(&S)"), ("Save", "保存")]), "")
        self.assertIn("two different texts", check(keys, [("&Save", "Si&chern"), ("Save", "Speichern")]))

    def test_refuses_the_words_of_stored_names(self):
        for word in ["Lines: ", "Columns: ", "Cells: "]:
            said = check([word], [(word, "x: ")])
            self.assertIn(f"quillet.pot: {word!r} is read in English", said)
            self.assertIn(f"xx.po: {word!r} is read in English", said)

    def test_wants_every_literal_to_be_a_key_or_named(self):
        source = 'auto a = localized(u"Trim "\n    u"Line");\n// u"Comment"\n'
        self.assertIn("'Trim Line' is neither a key", check([], [], source))
        self.assertEqual(check(["Trim Line"], [("Trim Line", "a")], source), "")
        self.assertEqual(check([], [], source, '"Trim Line"\n'), "")
        self.assertIn("'Gone' is in no source", check([], [], source, '"Trim Line"\n"Gone"\n'))


if __name__ == "__main__":
    unittest.main()
