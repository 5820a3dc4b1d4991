"""Shows that include_layers.py tells a bad tree from a good one."""

import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

CHECKER = Path(__file__).with_name("include_layers.py")

# The file, its content, and the sentence about it; "" where it is as it should be.
CASES = [
    ("text/line_reader.h", '#include "operations/record.h"',
     "text/line_reader.h includes operations/record.h: text may use platform only"),
    ("text/line_reader.h", '#include "text/a.h"\n#include "platform/b.h"\n#include <string>', ""),
    ("platform/a.cpp", '#include "text/b.h"',
     "platform/a.cpp includes text/b.h: platform may use no other folder"),
    ("platform/a.cpp", '  #  include <text/b.h>',
     "platform/a.cpp includes text/b.h: platform may use no other folder"),
    ("platform/a.cpp", "#include <unicode/uchar.h>\n#include <nlohmann/json.hpp>", ""),
    ("operations/a.h", '#include "text/b.h"\n#include "platform/c.h"', ""),
    ("operations/a.h", '#include "engine/b.h"',
     "operations/a.h includes engine/b.h: operations may use text, platform only"),
    ("engine/a.h", '#include "operations/b.h"\n#include "text/b.h"\n#include "platform/b.h"', ""),
    ("engine/a.h", '#include "storage/b.h"',
     "engine/a.h includes storage/b.h: engine may use operations, text, platform only"),
    ("engine/inner/a.h", '#include "clipboard/b.h"',
     "engine/inner/a.h includes clipboard/b.h: engine may use operations, text, platform only"),
    ("clipboard/a.h", '#include "engine/b.h"',
     "clipboard/a.h includes engine/b.h: clipboard may use operations, text, platform only"),
    ("clipboard/a.h", '#include "operations/b.h"', ""),
    ("storage/a.h", '#include "clipboard/b.h"',
     "storage/a.h includes clipboard/b.h: storage may use operations, text, platform only"),
    ("shell/a.h", '#include "engine/b.h"\n#include "clipboard/b.h"\n#include "storage/b.h"', ""),
    ("shell/a.h", '#include "ui/b.h"',
     "shell/a.h includes ui/b.h: shell may use engine, clipboard, storage, operations, text, platform only"),
    ("ui/a.cpp", '#include <QString>\n#include <QtWidgets/QLabel>\n#include "shell/b.h"', ""),
    ("ui/a.cpp", '#include "ui_window.h"\n#include "a.moc"', ""),
    ("shell/a.cpp", "#include <QString>", "shell/a.cpp includes <QString>: only ui may use Qt"),
    ("platform/a.cpp", "#include <QtCore/qglobal.h>",
     "platform/a.cpp includes <QtCore/qglobal.h>: only ui may use Qt"),
    ("engine/a.cpp", '#include "QFile"', "engine/a.cpp includes <QFile>: only ui may use Qt"),
    ("main.cpp", '#include "ui/a.h"\n#include "platform/b.h"', ""),
    ("main.cpp", "#include <QApplication>", "main.cpp includes <QApplication>: only ui may use Qt"),
    ("text/a.cpp", '#include "a.h"', 'text/a.cpp includes "a.h": name it from src, with its folder'),
    ("text/a.cpp", '#include "../operations/b.h"',
     'text/a.cpp includes "../operations/b.h": name it from src, with its folder'),
    ("text/a.cpp", '// #include "engine/b.h"\n/*\n#include "engine/b.h"\n*/', ""),
    ("other/a.h", "", "other/a.h: other is none of the folders that have a place in the order"),
]


def check(tree):
    """Runs the checker over the files of a tree, a dictionary from name to content."""
    with tempfile.TemporaryDirectory() as src:
        for name, content in tree.items():
            file = Path(src, name)
            file.parent.mkdir(parents=True, exist_ok=True)
            file.write_text(content + "\n", encoding="utf-8")
        return subprocess.run([sys.executable, CHECKER, src], capture_output=True, text=True, check=False)


class IncludeLayersTest(unittest.TestCase):
    def test_each_include_is_judged(self):
        for name, content, sentence in CASES:
            with self.subTest(name=name, content=content):
                result = check({name: content})
                self.assertEqual(result.stdout, sentence + "\n" if sentence else "")
                self.assertEqual(result.returncode, 1 if sentence else 0)

    def test_all_problems_of_a_tree_are_told(self):
        result = check({
            "text/b.h": '#include "engine/a.h"\n#include "shell/a.h"',
            "text/a.h": '#include "ui/a.h"',
        })
        self.assertEqual(result.stdout.splitlines(), [
            "text/a.h includes ui/a.h: text may use platform only",
            "text/b.h includes engine/a.h: text may use platform only",
            "text/b.h includes shell/a.h: text may use platform only",
        ])

    def test_a_tree_without_sources_is_no_success(self):
        self.assertEqual(check({"README": ""}).returncode, 1)


if __name__ == "__main__":
    unittest.main()
