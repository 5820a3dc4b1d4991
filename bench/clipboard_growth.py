#!/usr/bin/env python3
"""Measures the clipboard workbench on texts of 10, 100 and 1,000 thousand lines of 10 columns, through quillet-drive.

    clipboard_growth.py [--drive PATH] [--small] [--only WORD]

Prints a table in Markdown: for each action the seconds at the three sizes, the growth from one to the next (10 is linear
in the text, 1 does not depend on it), the seconds of its undo at the largest, and the memory of the process after it,
with the text, the grid and what undo keeps. Each operation begins with the grid as Split makes it. What the tool does to
take the text from its script is not measured, and the peak of the memory is that of the actions. --small divides the
sizes by ten; --only measures the actions whose name has this word, and what they need.

The seconds are those that the processor worked on it, in the one thread that the workbench has, so that other work on
the machine counts less; a user who has the machine alone waits as long.
"""
import argparse
import pathlib
import random
import sys
import tempfile

from growth import ROOT, Drive

SIZES = [10_000, 100_000, 1_000_000]
COLUMNS = 10
TARGETS = {"Split": 1.5, "Join": 1.0, "few": 0.05, "all": 2.0}  # seconds at the largest size
MOST_MEMORY = 1536  # MiB


def make_text(line_count):
    """About 80 characters a line."""
    source = random.Random(1)
    words = ["alpha", " beta", "gamma", "delta ", "Epsilon", "zeta-99", "eta", "theta 7"]
    cells = [source.choice(words) + "%d" % source.randrange(100) for _ in range(10_000)]
    lines = []
    for number in range(line_count):
        first = source.randrange(len(cells) - COLUMNS)
        lines.append("%d,%s" % (number, ",".join(cells[first:first + COLUMNS - 1])))
    return "\n".join(lines)


def operations(count):
    """Name, kind, record; count is that of the lines."""
    middle = count // 2
    lines = "%d, %d - %d" % (middle, middle + 2, middle + 4)
    every = "Columns: 1 - %d" % COLUMNS
    one = "Lines: %d" % middle
    return [
        ("Delete First Column", "all", {"Code": 402}),
        ("Delete Last Column", "all", {"Code": 403}),
        ("Delete First Line", "few", {"Code": 404}),
        ("Delete Last Line", "few", {"Code": 405}),
        ("Delete Selected Lines (4)", "few", {"Code": 406, "Arg1": lines}),
        ("Delete Selected Columns (2)", "all", {"Code": 407, "Arg1": "3, 7"}),
        ("Add Column to the Left", "all", {"Code": 408}),
        ("Add Column to the Right", "all", {"Code": 409}),
        ("Add Line at the Top", "few", {"Code": 410}),
        ("Add Line at the Bottom", "few", {"Code": 411}),
        ("Move Columns Left (2)", "all", {"Code": 412, "Arg1": "3, 7"}),
        ("Move Columns Right (2)", "all", {"Code": 413, "Arg1": "3, 7"}),
        ("Move Lines Up (4)", "few", {"Code": 414, "Arg1": lines}),
        ("Move Lines Down (4)", "few", {"Code": 415, "Arg1": lines}),
        ("Flip Horizontal", "all", {"Code": 416}),
        ("Flip Vertical", "all", {"Code": 417}),
        ("Flip Diagonal", "all", {"Code": 418}),
        ("Merge Columns Left (2)", "all", {"Code": 419, "Arg1": "-", "Arg2": "3, 7"}),
        ("Merge Columns Right (2)", "all", {"Code": 420, "Arg1": "-", "Arg2": "3, 7"}),
        ("Merge Lines Up (4)", "few", {"Code": 421, "Arg1": "-", "Arg2": lines}),
        ("Merge Lines Down (4)", "few", {"Code": 422, "Arg1": "-", "Arg2": lines}),
        ("Join Lines by 2", "all", {"Code": 423, "Arg1": "2"}),
        ("Join Columns by 2", "all", {"Code": 424, "Arg1": "2"}),
        ("Trim white space", "all", {"Code": 311, "IntArg2": 2, "Arg1": every}),
        ("Trim white space (1 line)", "few", {"Code": 311, "IntArg2": 2, "Arg1": one}),
        ("Replace a string", "all", {"Code": 312, "Arg1": every, "Arg2": "a", "Arg3": "xy"}),
        ("Replace an expression", "all", {"Code": 312, "IntArg2": 1, "Arg1": every, "Arg2": "([a-z])(\\d)",
                                          "Arg3": "$2$1"}),
        ("Fill with a string", "all", {"Code": 314, "Arg1": "filled", "Arg2": every}),
        ("Fill with a sequence", "all", {"Code": 314, "IntArg1": 1, "Arg1": "10,5", "Arg2": every}),
        ("Fill a column", "all", {"Code": 314, "IntArg1": 1, "Arg1": "1", "Arg2": "Columns: 4"}),
        ("Fill (1 line)", "few", {"Code": 314, "Arg1": "filled", "Arg2": one}),
        ("Edit Cell", "few", {"Code": 401, "IntArg1": middle, "IntArg2": 4, "Arg1": "edited"}),
    ]


class BusyDrive(Drive):
    """Measures the time on the processor."""

    def busy(self):
        return int(pathlib.Path("/proc/%d/schedstat" % self.process.pid).read_text().split()[0]) / 1e9

    def timed(self, what, **arguments):
        before = self.busy()
        self.do(what, **arguments)
        return self.busy() - before


class Measurement:
    """What one action took at each size, in seconds, and at the largest its undo and the MiB behind it."""

    def __init__(self, kind):
        self.kind = kind
        self.seconds = []
        self.undo = None
        self.memory = 0


def memory_of(drive, field):
    """In MiB."""
    for line in pathlib.Path("/proc/%d/status" % drive.process.pid).read_text().splitlines():
        if line.startswith(field + ":"):
            return int(line.split()[1]) // 1024
    return sys.exit("no %s" % field)


def measure(program, count, wanted, results):
    """Adds to results, by name; returns the memory at its peak."""
    with tempfile.TemporaryDirectory() as home, BusyDrive(program, home) as drive:
        def note(name, kind, seconds, undo=None):
            result = results.setdefault(name, Measurement(kind))
            result.seconds.append(seconds)
            result.undo = undo
            result.memory = memory_of(drive, "VmRSS")

        def perform(record):
            return drive.timed("performClipboardDataOperation", operation=record)

        drive.do("launch")
        drive.do("setPasteboard", text=make_text(count))
        pathlib.Path("/proc/%d/clear_refs" % drive.process.pid).write_text("5")  # forgets the peak
        note("(the tool with the text)", "", 0)
        note("Refresh", "", drive.timed("refreshDataFromClipboard"))
        note("Split", "Split", perform({"Code": 102, "Arg1": "\n", "Arg2": ","}))
        for name, kind, record in operations(count):
            if wanted and wanted not in name:
                continue
            seconds = perform(record)
            note(name, kind, seconds)
            results[name].undo = drive.timed("undo")
        if not wanted:
            perform({"Code": 416})
            note("Undo of all cells", "all", drive.timed("undo"))
            note("Redo of all cells", "all", drive.timed("redo"))
        note("Join", "Join", perform({"Code": 902, "Arg1": "\n", "Arg2": ","}))
        results["Join"].undo = drive.timed("undo")
        note("Join with quotes", "all", perform({"Code": 902, "IntArg1": 1, "Arg1": "\n", "Arg2": ","}))
        return memory_of(drive, "VmHWM")


def verdict(result):
    """What is missed of the targets."""
    target = TARGETS.get(result.kind)
    times = result.seconds[-1:] + ([result.undo] if result.undo is not None else [])
    return "" if target is None or max(times) < target else "over %g s" % target


def report(sizes, results, peak):
    print("| action | " + " | ".join("%d lines" % size for size in sizes) + " | growth | undo | memory | |")
    print("|---|" + "---:|" * (len(sizes) + 3) + "---|")
    for name, result in results.items():
        times = " | ".join("%.4f s" % seconds for seconds in result.seconds)
        growth = ", ".join("%.1f" % (more / less) for less, more in zip(result.seconds, result.seconds[1:]) if less)
        undo = "" if result.undo is None else "%.4f s" % result.undo
        print("| %s | %s | %s | %s | %d MiB | %s |" % (name, times, growth, undo, result.memory, verdict(result)))
    print("\nPeak of the memory: %d MiB%s" % (peak, "" if peak < MOST_MEMORY else ", over %d MiB" % MOST_MEMORY))


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--drive", default=str(ROOT / "build" / "release" / "quillet-drive"))
    parser.add_argument("--small", action="store_true")
    parser.add_argument("--only", help="actions whose name has this word")
    options = parser.parse_args()
    sizes = [size // 10 for size in SIZES] if options.small else SIZES
    results = {}
    for count in sizes:
        peak = measure(options.drive, count, options.only, results)
    report(sizes, results, peak)


if __name__ == "__main__":
    main()
