#!/usr/bin/env python3
"""Cleans samples/customers.csv with the operations of samples/clean-customers.json, through the real engine.

    sample_job.py [--check] DRIVE FOLDER

DRIVE is quillet-drive. FOLDER is emptied of an earlier run and then holds output/ and home/, which stands for the
user's home and holds the log. Prints the heads of input and output, the log, and where they lie. With --check it prints
little, and compares the output with what the sample was made from; status 1 and the first difference if they differ.
"""
import argparse
import itertools
import json
import pathlib
import shutil
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
sys.path.append(str(ROOT / "samples"))
import drive_job
import make_customers

INPUT = ROOT / "samples" / "customers.csv"
OPERATIONS = ROOT / "samples" / "clean-customers.json"
# Bytes that are no UTF-8 become U+FFFD, so that the operations can find them.
DECODE_REPLACEMENT = "\ufffd"
HEAD_LINES = 12
# Control characters must not reach the terminal as they are.
SHOWN = {code: "\\x%02x" % code for code in itertools.chain(range(0x20), range(0x7F, 0xA0))}


def run_sample(drive, folder):
    """Gives the output file's path and the text of the log."""
    folder = pathlib.Path(folder)
    for part in ("home", "output"):
        shutil.rmtree(folder / part, ignore_errors=True)
    job = drive_job.DriveJob(drive, folder / "home", folder / "output")
    job.write_script(INPUT, json.loads(OPERATIONS.read_text()), DECODE_REPLACEMENT)
    result = job.run()
    return pathlib.Path(result["outputFiles"][0]), result["log"]


def print_head(title, path):
    print("\n%s\n%s" % (title, "-" * len(title)))
    with open(path, "rb") as file:
        for line in itertools.islice(file, HEAD_LINES):
            print("  " + line.rstrip(b"\n").decode(errors="backslashreplace").translate(SHOWN))
    print("  ...")


def print_log(text):
    print("\nThe log\n-------")
    for line in text.splitlines():
        print("  " + line.translate(SHOWN))


def show(output, log, folder):
    print_head("The input (wrong bytes and control characters shown as \\x..)", INPUT)
    print_head("The output", output)
    print_log(log)
    places = [("Input", INPUT), ("Operations", OPERATIONS), ("Output", output),
              ("Log", pathlib.Path(folder).resolve() / "home" / "Documents" / "Log" / "LastLog.txt")]
    print("\nWhere they lie\n--------------")
    for name, path in places:
        print("  %-11s %s" % (name, path))


def check(output):
    """0 when the sample file is what its script makes, and the output is what the sample was made from."""
    clean, dirty = make_customers.make(make_customers.ROWS)
    if INPUT.read_bytes() != dirty:
        print("samples/customers.csv is not what samples/make_customers.py makes.")
        return 1
    made = output.read_bytes()
    if made == clean:
        print("The output is what the sample was made from: %d bytes." % len(clean))
        return 0
    pairs = itertools.zip_longest(clean.split(b"\n"), made.split(b"\n"))
    number, (expected, found) = next((i, pair) for i, pair in enumerate(pairs, 1) if pair[0] != pair[1])
    print("Line %d of the output differs.\n  expected: %s\n  found:    %s" % (number, expected, found))
    return 1


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("--check", action="store_true", help="compare with what the sample was made from")
    parser.add_argument("drive")
    parser.add_argument("folder")
    arguments = parser.parse_args()
    sys.stdout.reconfigure(encoding="utf-8", errors="replace")
    try:
        output, log = run_sample(arguments.drive, arguments.folder)
    except drive_job.JobFailed as failure:
        sys.exit("The sample job failed: %s" % failure)
    if arguments.check:
        return check(output)
    show(output, log, arguments.folder)
    return 0


if __name__ == "__main__":
    sys.exit(main())
