#!/usr/bin/env python3
"""Measures how the application's lists grow: each action at a size and at ten times that size, through quillet-drive.

    growth.py [--drive PATH] [--small] [--only WORD]

Prints, for each action, the seconds at both sizes and their ratio: about 10 is linear in what the action handles, about
1 does not depend on it. Actions that are done once a thing are told per thing, so that 1 means no growth. --small
divides all sizes by ten.
"""
import argparse
import json
import os
import pathlib
import subprocess
import sys
import tempfile
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
ENVIRONMENT = {**os.environ, "LC_ALL": "en_US.UTF-8", "TZ": "UTC"}
MIDDLE = {"Code": 203, "IntArg1": 0, "IntArg2": 0, "Arg1": "a", "Arg2": "b"}
ROUNDS = 20  # of an action that is quick


class Drive:
    """quillet-drive in an empty home, launched."""

    def __init__(self, program, home):
        self.home = pathlib.Path(home)
        self.process = subprocess.Popen([program, str(self.home)], stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                        env=ENVIRONMENT, text=True)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.process.stdin.close()
        self.process.wait()

    def do(self, what, **arguments):
        self.process.stdin.write(json.dumps({"do": what, **arguments}) + "\n")
        self.process.stdin.flush()
        result = json.loads(self.process.stdout.readline())
        if not result["ok"]:
            sys.exit("%s: %s" % (what, result["error"]))
        return result

    def timed(self, what, **arguments):
        before = time.monotonic()
        self.do(what, **arguments)
        return time.monotonic() - before

    def timed_each(self, actions):
        """Seconds an action, of several."""
        before = time.monotonic()
        count = 0
        for what, arguments in actions:
            self.do(what, **arguments)
            count += 1
        return (time.monotonic() - before) / count


def write_files(home, count):
    folder = pathlib.Path(home) / "files"
    folder.mkdir()
    paths = ["files/%06d.csv" % number for number in range(count)]
    for path in paths:
        (pathlib.Path(home) / path).write_text("a,b,c\n1,2,3\n")
    return paths


def measure_files(program, count, report):
    with tempfile.TemporaryDirectory() as home, Drive(program, home) as drive:
        paths = write_files(home, count)
        drive.do("launch")
        report("add all files in one go", drive.timed("addInputFiles", paths=paths, row=0, selectFiles=True))
        report("select all of them", drive.timed("selectFiles", rows=list(range(count))))
        report("select one, with its preview", drive.timed_each(
            [("selectFiles", {"rows": [row % count]}) for row in range(ROUNDS)]))
        report("move every second to the end", drive.timed("dropFiles", rows=list(range(0, count, 2)), row=count))
        drive.do("selectFiles", rows=list(range(count)))
        report("add an operation to all", drive.timed("menu", action="addLineOperationReplaceMenuItemClicked",
                                                       values={"replaceLineOperationWindowWhatTextField": "a"}))
        report("terminate", drive.timed("terminate"))
        report("launch with the list", drive.timed("launch"))
        drive.do("selectFiles", rows=list(range(0, count, 2)))
        report("remove every second", drive.timed("removeSelectedInputFiles"))
    with tempfile.TemporaryDirectory() as home, Drive(program, home) as drive:
        paths = write_files(home, count)
        drive.do("launch")
        report("add a file, one by one (each)", drive.timed_each(
            [("addInputFiles", {"paths": [path], "row": row}) for row, path in enumerate(paths)]))


def measure_operations(program, count, report):
    with tempfile.TemporaryDirectory() as home, Drive(program, home) as drive:
        paths = write_files(home, 1)
        drive.do("launch")
        drive.do("addInputFiles", paths=paths, row=0, selectFiles=True)
        ends = drive.do("inputFiles")["inputFilesArray"][0]["Operations"]
        drive.do("setOperations", index=0, operations=[ends[0]] + [MIDDLE] * count + [ends[1]])
        report("preview", drive.timed_each([("preview", {})] * ROUNDS))
        report("add an operation (each)", drive.timed_each(
            [("addOperation", {"code": 203, "values": {}})] * ROUNDS))
        drive.do("selectOperations", rows=[count // 2])
        report("edit an operation (each)", drive.timed_each([("editOperation", {"values": {}})] * ROUNDS))
        report("move half of them", drive.timed("dropOperations", rows=list(range(1, count, 2)), row=count))
        report("show all rows", drive.timed("mainWindow"))


FILL_JOBS = """begin transaction;
insert into jobs (name, date_last_saved, flags, reserved)
with recursive n(i) as (select 1 union all select i + 1 from n where i < %d)
select 'job number ' || i, '2026-01-01 ' || i, 8192, '0' from n;
commit transaction;"""


def measure_database(program, count, report):
    with tempfile.TemporaryDirectory() as home, Drive(program, home) as drive:
        paths = write_files(home, 1)
        drive.do("launch")
        drive.do("addInputFiles", paths=paths, row=0, selectFiles=True)
        drive.do("execCommand", script=FILL_JOBS % count)
        drive.do("terminate")
        report("launch", drive.timed("launch"))
        report("list the latest", drive.timed_each([("searchJobs", {"searchType": 1, "searchString": ""})] * ROUNDS))
        report("search a name", drive.timed_each(
            [("searchJobs", {"searchType": 1, "searchString": "number 77"})] * ROUNDS))
        report("search a date", drive.timed_each(
            [("searchJobs", {"searchType": 2, "searchString": "2026-01-01 5"})] * ROUNDS))
        report("save a job (each)", drive.timed_each([("saveJob", {"name": "mine"})] * ROUNDS))
        drive.do("searchJobs", searchType=1, searchString="")
        report("select a job (each)", drive.timed_each([("selectJobs", {"rows": [0]})] * ROUNDS))


def measure_job_of_files(program, count, report):
    with tempfile.TemporaryDirectory() as home, Drive(program, home) as drive:
        paths = write_files(home, count)
        drive.do("launch")
        drive.do("addInputFiles", paths=paths, row=0, selectFiles=True)
        report("save it", drive.timed("saveJob", name="large"))
        report("save it again", drive.timed("saveJob", name="large"))
        report("select it", drive.timed("selectJobs", rows=[0]))
        report("select a file of it (each)", drive.timed_each(
            [("selectJobFiles", {"rows": [row % count]}) for row in range(ROUNDS)]))
        report("restore onto all files", drive.timed("restoreOperations"))
        drive.do("selectJobs", rows=[0])
        report("delete it", drive.timed("deleteJobs", answer="Delete"))


SUBJECTS = [
    ("a list of %d files", measure_files, 1_000),
    ("a list of %d operations on a file", measure_operations, 100),
    ("a database of %d jobs", measure_database, 10_000),
    ("a job of %d files", measure_job_of_files, 500),
]


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--drive", default=str(ROOT / "build" / "release" / "quillet-drive"))
    parser.add_argument("--small", action="store_true")
    parser.add_argument("--only", help="subjects whose title has this word")
    options = parser.parse_args()
    for title, measure, size in SUBJECTS:
        if options.only and options.only not in title:
            continue
        size = max(size // 10, 10) if options.small else size
        times = {}
        for count in (size, size * 10):
            measure(options.drive, count, lambda action, seconds: times.setdefault(action, []).append(seconds))
        print("%-36s %10s %10s %7s" % (title % (size * 10), size, size * 10, "ratio"))
        for action, (few, many) in times.items():
            print("  %-34s %8.4f s %8.4f s %7.1f" % (action, few, many, many / few))


if __name__ == "__main__":
    main()
