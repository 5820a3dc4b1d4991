"""Quillet's windows on a real X screen, driven from outside as by a hand.

    screen_test.py QUILLET SAMPLE

Starts a screen of its own by xvfb-run. Ends with status 77 where xvfb-run or xdotool is missing.
"""
import os
import shutil
import subprocess
import sys
import unittest
from pathlib import Path

from quillet_process import PATIENCE, QuilletProcess

MISSING = 77
SCREEN = "-screen 0 1600x1200x24"


def xdotool(*arguments):
    """Its output, "" when it fails."""
    done = subprocess.run(["xdotool", *arguments], capture_output=True, text=True, timeout=PATIENCE)
    return done.stdout.strip() if done.returncode == 0 else ""


class Screen(QuilletProcess):
    def setUp(self):
        super().setUp()
        self.environment.update(QT_QPA_PLATFORM="xcb", DISPLAY=os.environ["DISPLAY"],
                                XAUTHORITY=os.environ.get("XAUTHORITY", ""))

    def window(self, title):
        """The number of the visible window with this title, "" for none."""
        return xdotool("search", "--onlyvisible", "--name", title).split("\n")[0]

    def wait_for(self, title):
        self.wait_until(lambda: self.window(title), self.process)
        return self.window(title)

    def has_keys(self, window):
        return xdotool("getwindowfocus") == window

    def press(self, window, key):
        """Without a window manager, who presses keys says where they go."""
        xdotool("windowfocus", window)
        self.wait_until(lambda: self.has_keys(window), self.process)
        xdotool("key", "--clearmodifiers", key)

    def press_until(self, window, key, holds):
        """Again when the window was not ready for keys yet."""
        def pressed():
            if holds():
                return True
            self.press(window, key)
            return holds()
        self.wait_until(pressed, self.process)

    def geometry(self, window):
        lines = xdotool("getwindowgeometry", "--shell", window).split("\n")
        return {name: int(value) for name, value in (line.split("=") for line in lines)}

    def test_a_window_opens_answers_keys_and_quits(self):
        self.process = self.start(str(SAMPLE))
        main = self.wait_for("^Quillet$")
        self.assertEqual(xdotool("getwindowname", main), "Quillet")
        geometry = self.geometry(main)
        self.assertEqual((geometry["WIDTH"], geometry["HEIGHT"]), (1280, 800))

        self.press_until(main, "ctrl+3", lambda: self.window("^Previous Jobs"))
        jobs = self.window("^Previous Jobs")
        self.assertGreaterEqual(self.geometry(jobs)["WIDTH"], 720)
        self.press_until(jobs, "ctrl+w", lambda: not self.window("^Previous Jobs"))

        # A sheet takes the keys of its window, and gives them back.
        self.press_until(main, "ctrl+s", lambda: self.window("^Save Job"))
        sheet = self.window("^Save Job")
        self.press_until(sheet, "Escape", lambda: not self.window("^Save Job"))

        self.press(main, "ctrl+q")
        _, errors = self.process.communicate(timeout=PATIENCE)
        self.assertEqual(self.process.returncode, 0, errors)
        self.assertEqual(self.listed(), [SAMPLE.name])
        self.assertTrue((self.home / ".config/quillet/windows.ini").exists())


    def test_rows_are_dragged_with_the_mouse(self):
        self.process = self.start(self.write("a.csv"), self.write("b.csv"))
        main = self.wait_for("^Quillet$")
        # In the list at the left: the second row, and the upper half of the first one.
        second, gap = ("60", "92"), ("60", "56")
        self.press_until(main, "ctrl+1", lambda: self.has_keys(main))
        xdotool("mousemove", "--window", main, *second, "click", "1")
        # Slowly, as a hand: the toolkit takes moves that come at once for one.
        steps = ["mousemove_relative", "--", "0", "-2", "sleep", "0.1"] * 8
        xdotool("mousemove", "--window", main, *second, "mousedown", "1", *steps,
                "mousemove", "--window", main, *gap, "sleep", "0.5", "mouseup", "1")
        self.press(main, "ctrl+q")
        _, errors = self.process.communicate(timeout=PATIENCE)
        self.assertEqual(self.process.returncode, 0, errors)
        self.assertEqual(self.listed(), ["b.csv", "a.csv"])


def needs_screen():
    for program in ("xvfb-run", "xdotool"):
        if not shutil.which(program):
            print(f"{program} is missing, so no window is tested on a screen; Debian has it in "
                  f"{'xvfb' if program == 'xvfb-run' else program}.")
            sys.exit(MISSING)
    here = [sys.executable, *sys.argv]
    os.execvp("xvfb-run", ["xvfb-run", "--auto-servernum", f"--server-args={SCREEN}", *here, "--on-screen"])


if __name__ == "__main__":
    if sys.argv[-1] != "--on-screen":
        needs_screen()
    QuilletProcess.quillet = sys.argv[1]
    SAMPLE = Path(sys.argv[2]).resolve()
    unittest.main(argv=sys.argv[:1])
