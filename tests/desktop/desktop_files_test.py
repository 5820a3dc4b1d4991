"""What an install puts into a system, and what the desktop reads of it.

    desktop_files_test.py CMAKE BUILD_FOLDER SOURCE_FOLDER VERSION

Installs the build into a folder of its own.
"""
import configparser
import gzip
import re
import shutil
import struct
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree
from pathlib import Path

ICON_SIZES = (16, 22, 24, 32, 48, 64, 128, 256, 512)
ICONS = {f"share/icons/hicolor/{size}x{size}/apps/org.quillet.Quillet.png" for size in ICON_SIZES}
FILES = ICONS | {
    "bin/quillet",
    "share/applications/org.quillet.Quillet.desktop",
    "share/metainfo/org.quillet.Quillet.metainfo.xml",
    "share/icons/hicolor/scalable/apps/org.quillet.Quillet.svg",
    "share/icons/hicolor/symbolic/apps/org.quillet.Quillet-symbolic.svg",
    "share/doc/quillet/README.md",
    "share/doc/quillet/LICENSE",
    "share/doc/quillet/copyright",
    "share/doc/quillet/changelog.Debian.gz",
    "share/man/man1/quillet.1.gz",
}
DOCUMENTS = "share/doc/quillet/docs/"
GUIDE = "share/doc/quillet/guide/"
TRANSLATIONS = "share/locale/"
MEDIA_TYPES = ["text/csv", "text/tab-separated-values", "text/plain"]


def run(*command):
    return subprocess.run(command, capture_output=True, text=True, timeout=120)


class Installed(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.prefix = Path(tempfile.mkdtemp(prefix="quillet-install-"))
        cls.addClassCleanup(shutil.rmtree, cls.prefix)
        done = run(CMAKE, "--install", BUILD, "--prefix", str(cls.prefix))
        assert done.returncode == 0, done.stderr
        cls.files = {str(path.relative_to(cls.prefix)) for path in cls.prefix.rglob("*") if path.is_file()}

    def path(self, suffix):
        found = [name for name in self.files if name.endswith(suffix)]
        self.assertEqual(len(found), 1, f"{suffix}: {found}")
        return self.prefix / found[0]

    def tool(self, name, *arguments):
        if not shutil.which(name):
            self.skipTest(f"{name} is not installed")
        done = run(name, *arguments)
        self.assertEqual(done.returncode, 0, done.stdout + done.stderr)
        return done.stdout + done.stderr

    def test_installs_these_files_and_no_others(self):
        others = {name for name in self.files if name.startswith((DOCUMENTS, GUIDE, TRANSLATIONS))}
        self.assertEqual(self.files - others, FILES)

    def test_installs_all_documents(self):
        documents = {str(path.relative_to(SOURCE / "docs"))
                     for path in (SOURCE / "docs").rglob("*") if path.is_file()}
        self.assertIn("pictures/main-window.png", documents)
        self.assertEqual({name.removeprefix(DOCUMENTS) for name in self.files if name.startswith(DOCUMENTS)},
                         documents)

    def test_installs_a_page_for_each_text_of_the_guide_with_links_that_lead_somewhere(self):
        pages = {name.removeprefix(GUIDE) for name in self.files if name.startswith(GUIDE)}
        if not pages:
            self.skipTest("python3-markdown was not there when the build was configured")
        self.assertEqual({name for name in pages if name.endswith(".html")},
                         {f"{path.stem}.html" for path in (SOURCE / "docs").glob("*.md")})
        for name in pages:
            if not name.endswith(".html"):
                continue
            text = (self.prefix / GUIDE / name).read_text(encoding="utf-8")
            for link in re.findall(r'(?:href|src)="(?!https?:)([^"]+)"', text):
                file, _, anchor = link.partition("#")
                self.assertIn(file or name, pages, f"{name}: {link}")
                if anchor:
                    target = (self.prefix / GUIDE / (file or name)).read_text(encoding="utf-8")
                    self.assertIn(f'id="{anchor}"', target, f"{name}: {link}")

    def test_the_installed_program_starts(self):
        done = run(str(self.prefix / "bin" / "quillet"), "--version")
        self.assertEqual((done.returncode, done.stdout), (0, f"quillet {VERSION}\n"))

    def test_the_manual_page_is_of_this_version_and_tells_each_option(self):
        page = gzip.decompress(self.path("quillet.1.gz").read_bytes()).decode()
        self.assertIn(f'"Quillet {VERSION}"', page.split("\n")[0])
        help_text = run(str(self.prefix / "bin" / "quillet"), "--help").stdout
        options = re.findall(r"^  (--\w+)", help_text, re.MULTILINE)
        self.assertEqual(options, ["--help", "--version"])
        for option in options:
            self.assertIn("\n.B " + option.replace("-", r"\-") + "\n", page)

    def test_the_manual_page_is_set_without_a_complaint(self):
        page = str(self.path("quillet.1.gz"))
        self.assertNotIn("warning", self.tool("man", "--warnings", "-E", "UTF-8", "-l", "-Tutf8", "-Z", page))

    def test_the_changelog_begins_with_this_version(self):
        changelog = gzip.decompress(self.path("changelog.Debian.gz").read_bytes()).decode()
        self.assertTrue(changelog.startswith(f"quillet ({VERSION}-1) "), changelog)

    def test_icons_have_the_size_of_their_folder(self):
        for size in ICON_SIZES:
            data = self.path(f"/{size}x{size}/apps/org.quillet.Quillet.png").read_bytes()
            self.assertEqual(data[:8], b"\x89PNG\r\n\x1a\n")
            self.assertEqual(struct.unpack(">II", data[16:24]), (size, size))
            self.assertGreater(len(data), 100)

    def test_drawings_are_svg(self):
        for name in ("org.quillet.Quillet.svg", "org.quillet.Quillet-symbolic.svg"):
            root = xml.etree.ElementTree.parse(self.path(name)).getroot()
            self.assertEqual(root.tag, "{http://www.w3.org/2000/svg}svg")

    def test_desktop_entry_is_valid(self):
        told = self.tool("desktop-file-validate", "--no-hints", str(self.path(".desktop")))
        self.assertEqual(told, "")

    def test_desktop_entry_says_how_to_open_files(self):
        entry = configparser.ConfigParser(interpolation=None)
        entry.optionxform = str
        entry.read(self.path(".desktop"))
        values = entry["Desktop Entry"]
        self.assertEqual(values["Exec"], "quillet %F")
        self.assertEqual(values["Icon"], "org.quillet.Quillet")
        self.assertEqual(values["Categories"], "Office;Utility;")
        self.assertEqual(values["MimeType"], "".join(kind + ";" for kind in MEDIA_TYPES))
        self.assertEqual(values["StartupNotify"], "true")

    def test_metainfo_is_valid(self):
        self.tool("appstreamcli", "validate", "--no-net", str(self.path(".metainfo.xml")))

    def test_metainfo_agrees_with_the_rest(self):
        root = xml.etree.ElementTree.parse(self.path(".metainfo.xml")).getroot()
        self.assertEqual(root.findtext("id"), "org.quillet.Quillet")
        self.assertEqual(root.findtext("launchable"), self.path(".desktop").name)
        self.assertEqual([kind.text for kind in root.findall("provides/mediatype")], MEDIA_TYPES)
        self.assertEqual(root.find("releases/release").get("version"), VERSION)
        self.assertIsNotNone(root.find("content_rating"))
        self.assertGreater(len(root.findall("screenshots/screenshot")), 1)


if __name__ == "__main__":
    CMAKE, BUILD, SOURCE, VERSION = sys.argv[1], sys.argv[2], Path(sys.argv[3]), sys.argv[4]
    unittest.main(argv=sys.argv[:1])
