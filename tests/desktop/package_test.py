"""The Debian package: what is in it, who owns it, and what it asks of a system.

    package_test.py CMAKE CPACK BUILD_FOLDER VERSION

Makes the package of what is built. Ends with status 77 where Debian's tools are missing.
"""
import os
import shutil
import subprocess
import sys
import tarfile
import tempfile
import unittest
from pathlib import Path

MISSING = 77


def run(*command):
    done = subprocess.run(command, capture_output=True, timeout=300)
    assert done.returncode == 0, f"{command}: {done.stdout}{done.stderr}"
    return done.stdout


class Package(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = Path(tempfile.mkdtemp(prefix="quillet-package-"))
        cls.addClassCleanup(shutil.rmtree, cls.folder)
        # Whatever the umask of the one who builds.
        before = os.umask(0o077)
        cls.addClassCleanup(os.umask, before)
        run(CPACK, "--config", f"{BUILD}/CPackConfig.cmake", "-G", "DEB", "-B", str(cls.folder))
        cls.packages = list(cls.folder.glob("*.deb"))
        cls.contents = run("dpkg-deb", "--fsys-tarfile", str(cls.packages[0]))
        tar = cls.folder / "contents.tar"
        tar.write_bytes(cls.contents)
        with tarfile.open(tar) as opened:
            cls.members = opened.getmembers()

    def field(self, name):
        return run("dpkg-deb", "--field", str(self.packages[0]), name).decode().strip()

    def test_there_is_one_with_the_name_that_debian_gives_it(self):
        architecture = run("dpkg", "--print-architecture").decode().strip()
        self.assertEqual([path.name for path in self.packages], [f"quillet_{VERSION}-1_{architecture}.deb"])

    def test_holds_what_an_install_makes(self):
        prefix = self.folder / "installed"
        run(CMAKE, "--install", BUILD, "--prefix", str(prefix))
        installed = {str(path.relative_to(prefix)) for path in prefix.rglob("*") if path.is_file()}
        packaged = {member.name.removeprefix("./usr/") for member in self.members if not member.isdir()}
        self.assertIn("bin/quillet", packaged)
        self.assertEqual(packaged, installed)

    def test_belongs_to_root_and_is_read_by_all(self):
        for member in self.members:
            is_program = member.name == "./usr/bin/quillet"
            self.assertEqual((member.name, member.uid, member.gid, oct(member.mode & 0o7777)),
                             (member.name, 0, 0, oct(0o755 if member.isdir() or is_program else 0o644)))

    def test_asks_for_its_libraries_and_the_folders_of_its_icons(self):
        wanted = {part.split()[0] for part in self.field("Depends").split(",")}
        for package in ("hicolor-icon-theme", "libc6", "libicu72", "libqt6dbus6", "libqt6network6", "libqt6svg6",
                        "libqt6widgets6", "libsqlite3-0", "libstdc++6"):
            self.assertIn(package, wanted)

    def test_nothing_of_it_runs_or_stays_when_it_is_removed(self):
        control = self.folder / "control"
        run("dpkg-deb", "--control", str(self.packages[0]), str(control))
        self.assertEqual({path.name for path in control.iterdir()}, {"control", "md5sums"})

    def test_lintian_finds_no_error_and_nothing_to_warn_of(self):
        if not shutil.which("lintian"):
            self.skipTest("lintian is not installed")
        allow_root = ["--allow-root"] if os.geteuid() == 0 else []
        # It is no upload to Debian, where the first one answers a wish in the bug tracker.
        done = subprocess.run(["lintian", "--fail-on", "error,warning", *allow_root,
                               "--suppress-tags", "initial-upload-closes-no-bugs", str(self.packages[0])],
                              capture_output=True, text=True, timeout=300)
        self.assertEqual(done.returncode, 0, done.stdout + done.stderr)


if __name__ == "__main__":
    CMAKE, CPACK, BUILD, VERSION = sys.argv[1:5]
    if not all(map(shutil.which, ("dpkg-deb", "dpkg-shlibdeps", "file"))):
        print("dpkg-deb, dpkg-shlibdeps or file is missing")
        sys.exit(MISSING)
    unittest.main(argv=sys.argv[:1])
