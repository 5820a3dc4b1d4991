"""Quillet as a process in a home and a runtime folder of its own, for tests."""
import json
import os
import shutil
import subprocess
import tempfile
import time
import unittest
from pathlib import Path

PATIENCE = 60  # seconds


class QuilletProcess(unittest.TestCase):
    quillet = ""  # the program, to be set

    def setUp(self):
        self.home = Path(tempfile.mkdtemp(prefix="quillet-processes-"))
        self.addCleanup(shutil.rmtree, self.home, ignore_errors=True)
        self.runtime = self.home / "runtime"
        self.runtime.mkdir(mode=0o700)
        self.started = []
        self.environment = {name: value for name, value in os.environ.items()
                            if not name.startswith(("XDG_", "DISPLAY", "WAYLAND", "DBUS_", "SESSION_", "QT_"))}
        self.environment.update(HOME=str(self.home), XDG_RUNTIME_DIR=str(self.runtime),
                                QT_QPA_PLATFORM="offscreen")

    def tearDown(self):
        for process in self.started:
            if process.poll() is None:
                process.kill()
            process.communicate()

    def start(self, *arguments):
        process = subprocess.Popen([self.quillet, *arguments], env=self.environment, cwd=self.home, text=True,
                                   stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        self.started.append(process)
        return process

    def wait_until(self, holds, process):
        end = time.monotonic() + PATIENCE
        while not holds():
            self.assertIsNone(process.poll(), "the process has ended")
            self.assertLess(time.monotonic(), end, "in vain")
            time.sleep(0.05)

    def write(self, name):
        path = self.home / name
        path.write_text("a,b\n")
        return str(path)

    def listed(self):
        """The file names that the stored session tells, in their order."""
        defaults = json.loads((self.home / ".config/quillet/defaults.json").read_text())
        found = []

        def look(value):
            if isinstance(value, dict):
                for part in value.values():
                    look(part)
            elif isinstance(value, list):
                for part in value:
                    look(part)
            elif isinstance(value, str) and value.startswith("file://"):
                found.append(value.rsplit("/", 1)[1])
        look(defaults)
        return found
