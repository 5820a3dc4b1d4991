#!/usr/bin/env python3
"""Measures whole jobs through quillet-drive, in turn with the floor and with other programs on the same data.

    compare.py            the workloads of workloads.json: medians of the processor time, and ratios to the floor
    compare.py --memory   the peak of resident memory with 2 GB of input; status 1 above 64 MB
    compare.py --check    small data: every workload's output beside a plain reference; status 1 if they differ

The measure is user plus system time of the whole process. The floor is two plain copies of the input, which is what a
temporary file and its copy cost at least. Other programs (Miller, mawk, GNU sed, iconv, the Rust csv crate) take part
where they are installed; they do as near the same work as they can, and write one file only.
"""
import argparse
import json
import os
import pathlib
import shutil
import statistics
import subprocess
import sys

BENCH = pathlib.Path(__file__).resolve().parent
ROOT = BENCH.parent
sys.path.append(str(ROOT / "tools"))
import drive_job
import reference_job

MEMORY_LIMIT_MB = 64
MEMORY_WORKLOADS = ["W2", "W9", "W10", "W11"]
SLOW_SECONDS = 10  # another program that takes longer runs once only
DEBIAN_CRATES = "/usr/share/cargo/registry"


class Usage:
    """What one process has taken: processor time in seconds, peak of resident memory in MB (of 2**20 bytes)."""

    def __init__(self, resources):
        self.seconds = resources.ru_utime + resources.ru_stime
        # The kernel counts from before the program was loaded into the process, so this can only be too high:
        # it is never below what Python itself holds (some 15 MB).
        self.peak_mb = resources.ru_maxrss / 1024


def measure(command, stdin=None, stdout=None, environment=None):
    """The usage of a command that must end well. The files are paths."""
    with open(stdin or os.devnull, "rb") as source, open(stdout or os.devnull, "wb") as sink:
        process = subprocess.Popen(command, stdin=source, stdout=sink, env=environment)
        _, status, resources = os.wait4(process.pid, 0)
    process.returncode = os.waitstatus_to_exitcode(status)
    if process.returncode != 0:
        raise drive_job.JobFailed("%s ended with status %d" % (command[0], process.returncode))
    return Usage(resources)


class Workload:
    def __init__(self, description, inputs):
        self.name, self.title = description["name"], description["title"]
        self.target, self.others = description.get("target"), description.get("others", {})
        source = inputs[description["input"]]
        self.kind, self.file_name = description["input"], source["file"]
        final = {**source["final"], **description.get("final", {})}
        self.records = [source["initial"], *description["middle"], final]


def workloads(names):
    description = json.loads((BENCH / "workloads.json").read_text())
    known = [Workload(one, description["inputs"]) for one in description["workloads"]]
    unknown = set(names) - {workload.name for workload in known}
    if unknown:
        sys.exit("No such workload: %s. There are: %s" % (", ".join(unknown), ", ".join(one.name for one in known)))
    return [workload for workload in known if not names or workload.name in names]


class Workplace:
    """The folder with the data, the homes and the outputs: all on one file system, as in a user's job."""

    def __init__(self, folder, drive, megabytes):
        self.folder, self.drive, self.megabytes = folder, drive, megabytes
        self.programs = folder / "programs"
        self.programs.mkdir(parents=True, exist_ok=True)
        self.reasons = {}  # of programs that do not take part

    def input_path(self, workload):
        folder = self.folder / ("%gMB" % self.megabytes)
        path = folder / workload.file_name
        if not path.exists():
            print("Making %s" % path, flush=True)
            folder.mkdir(parents=True, exist_ok=True)
            unfinished = path.with_suffix(".unfinished")
            maker = [sys.executable, BENCH / "make_data.py", workload.kind, "%g" % self.megabytes, unfinished]
            subprocess.run(maker, check=True)
            unfinished.rename(path)
        return path

    def job(self, workload):
        """A job that is ready to be run."""
        shutil.rmtree(self.folder / "home", ignore_errors=True)
        job = drive_job.DriveJob(self.drive, self.folder / "home", self.folder / "output")
        job.write_script(self.input_path(workload), workload.records)
        return job

    def measure_quillet(self, workload):
        job = self.job(workload)
        self.remove_outputs()
        usage = measure(job.command(), job.script_path, job.results_path, job.environment())
        job.result()
        return usage

    def measure_floor(self, workload):
        self.remove_outputs()
        between, output = self.folder / "between", self.folder / "output" / "floor"
        return measure([self.floor(), self.input_path(workload), between, output])

    def measure_other(self, workload, name):
        """None where the program is not there, or fails."""
        command = self.other_command(workload, name)
        if command is None:
            return None
        self.remove_outputs()
        environment = {**os.environ, "LC_ALL": "C.UTF-8"}
        try:
            return measure(command, stdout=self.folder / "output" / "other", environment=environment)
        except drive_job.JobFailed as failure:
            self.reasons[name + " in " + workload.name] = str(failure)
            return None

    def other_command(self, workload, name):
        values = {"{input}": str(self.input_path(workload)), "{bench}": str(BENCH)}
        command = workload.others[name]
        if command[0] == "{rust_csv}":
            program = self.rust_csv()
        else:
            program = shutil.which(command[0])
        if not program:
            self.reasons.setdefault(name, "%s is not installed" % command[0])
            return None
        arguments = []
        for argument in command[1:]:
            for key, value in values.items():
                argument = argument.replace(key, value)
            arguments.append(argument)
        return [program, *arguments]

    def remove_outputs(self):
        """So that no run pays for the removal of another's file; and lets the disk come to rest."""
        shutil.rmtree(self.folder / "output", ignore_errors=True)
        (self.folder / "output").mkdir()
        os.sync()

    def floor(self):
        program, source = self.programs / "copy_floor", BENCH / "copy_floor.cpp"
        if not program.exists() or program.stat().st_mtime < source.stat().st_mtime:
            subprocess.run(["g++", "-O2", "-std=c++20", "-o", program, source], check=True)
        return program

    def rust_csv(self):
        """The program's path, built without any network from the crates that Debian packs; None where it cannot be."""
        program = self.programs / "rust_csv" / "target" / "release" / "rust_csv"
        if program.exists() or "Rust csv" in self.reasons:
            return program if program.exists() else None
        if not shutil.which("cargo") or not list(pathlib.Path(DEBIAN_CRATES).glob("csv-1.*")):
            self.reasons["Rust csv"] = "it needs cargo and Debian's librust-csv-dev"
            return None
        shutil.copytree(BENCH / "rust_csv", self.programs / "rust_csv", dirs_exist_ok=True)
        built = subprocess.run(["cargo", "build", "--release", "--offline", "--quiet",
                                "--config", 'source.crates-io.replace-with="debian"',
                                "--config", 'source.debian.directory="%s"' % DEBIAN_CRATES],
                               cwd=self.programs / "rust_csv", env={**os.environ, "CARGO_TARGET_DIR": "target"})
        if built.returncode != 0:
            self.reasons["Rust csv"] = "cargo could not build it"
            return None
        return program


def median_seconds(usages):
    return statistics.median(usage.seconds for usage in usages)


def measure_in_turn(place, workload, rounds):
    """name -> usages, for the floor, quillet and the other programs; one after the other in each round."""
    usages = {"floor": [], "quillet": [], **{name: [] for name in workload.others}}
    place.measure_floor(workload)  # not counted: brings the input into the cache
    for _ in range(rounds):
        usages["floor"].append(place.measure_floor(workload))
        usages["quillet"].append(place.measure_quillet(workload))
        for name in workload.others:
            if usages[name] and usages[name][0].seconds > SLOW_SECONDS:
                continue
            usage = place.measure_other(workload, name)
            if usage:
                usages[name].append(usage)
    return {name: measured for name, measured in usages.items() if measured}


def compare(place, chosen, rounds):
    print("%-12s %8s %9s %8s %7s %8s   %s" % (
        "workload", "floor s", "quillet s", "x floor", "target", "peak MB", "others, x floor"))
    for workload in chosen:
        usages = measure_in_turn(place, workload, rounds)
        floor, quillet = median_seconds(usages["floor"]), median_seconds(usages["quillet"])
        ratio = quillet / floor
        others = ["%s %.1f" % (name, median_seconds(measured) / floor) for name, measured in usages.items()
                  if name in workload.others]
        target = "" if workload.target is None else "%.1f%s" % (workload.target, "!" if ratio > workload.target else "")
        peak = max(usage.peak_mb for usage in usages["quillet"])
        print("%-12s %8.3f %9.3f %8.2f %7s %8.1f   %s" % (
            workload.name, floor, quillet, ratio, target, peak, ", ".join(others)), flush=True)
    print("\nMedians of %d rounds over %g MB; ! marks a target that is missed." % (rounds, place.megabytes))
    for workload in chosen:
        print("  %-12s %s (%s)" % (workload.name, workload.title, workload.file_name))
    for name, reason in place.reasons.items():
        print("%s took no part: %s." % (name, reason))
    return 0


def memory(place, chosen):
    worst = 0
    for workload in chosen:
        usage = place.measure_quillet(workload)
        worst = max(worst, usage.peak_mb)
        print("%-12s %g MB of input, %.1f s, peak of resident memory %.1f MB" % (
            workload.name, place.megabytes, usage.seconds, usage.peak_mb), flush=True)
    place.remove_outputs()
    print("The highest peak is %.1f MB; the limit is %d MB." % (worst, MEMORY_LIMIT_MB))
    return 1 if worst > MEMORY_LIMIT_MB else 0


def first_difference(expected, found):
    offset = next((i for i, (a, b) in enumerate(zip(expected, found)) if a != b), min(len(expected), len(found)))
    window = slice(max(0, offset - 40), offset + 40)
    return "at byte %d of %d (found %d)\n    expected %r\n    found    %r" % (offset, len(expected), len(found),
                                                                           expected[window], found[window])


def check(place, chosen):
    differing = 0
    for workload in chosen:
        try:
            expected = reference_job.run_job(workload.records, place.input_path(workload).read_bytes())
        except reference_job.NotKnown as reason:
            print("%-12s not checked: the reference does not know %s" % (workload.name, reason))
            continue
        found = pathlib.Path(place.job(workload).run()["outputFiles"][0]).read_bytes()
        same = found == expected
        differing += not same
        verdict = "same" if same else "DIFFERS " + first_difference(expected, found)
        print("%-12s %s" % (workload.name, verdict), flush=True)
    return 1 if differing else 0


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--size", type=float, metavar="MB", help="of the input (256; --memory 2000; --check 1)")
    parser.add_argument("--rounds", type=int, default=5)
    parser.add_argument("--only", default="", metavar="W1,W3", help="these workloads alone")
    parser.add_argument("--data", type=pathlib.Path, default=ROOT / "build" / "bench-data",
                        help="folder for data and outputs, needs four times the size for a workload")
    parser.add_argument("--drive", type=pathlib.Path, default=ROOT / "build" / "release" / "quillet-drive")
    mode = parser.add_mutually_exclusive_group()
    mode.add_argument("--memory", action="store_true")
    mode.add_argument("--check", action="store_true")
    arguments = parser.parse_args()
    if not arguments.drive.exists():
        sys.exit("There is no %s: cmake --preset release && cmake --build --preset release" % arguments.drive)
    names = [name for name in arguments.only.split(",") if name]
    if arguments.memory and not names:
        names = MEMORY_WORKLOADS
    megabytes = arguments.size or (2000 if arguments.memory else 1 if arguments.check else 256)
    place, chosen = Workplace(arguments.data.resolve(), arguments.drive, megabytes), workloads(names)
    try:
        if arguments.memory:
            return memory(place, chosen)
        return check(place, chosen) if arguments.check else compare(place, chosen, arguments.rounds)
    except drive_job.JobFailed as failure:
        sys.exit("The job failed: %s" % failure)


if __name__ == "__main__":
    sys.exit(main())
