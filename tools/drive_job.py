"""Whole jobs through quillet-drive: writes the script of commands and reads the results."""
import json
import os
import pathlib
import subprocess

# The locale in which the sample's and the benchmark's dates are written.
JOB_ENVIRONMENT = {"LC_ALL": "en_US.UTF-8", "TZ": "UTC"}


class JobFailed(Exception):
    """quillet-drive has refused a command, or the run has left no output file."""


class DriveJob:
    """One run over one input file. `home` stands for the user's home; it and the output folder are made here."""

    def __init__(self, drive, home, output_folder):
        self.drive = str(pathlib.Path(drive).resolve())
        self.home = pathlib.Path(home).resolve()
        self.output_folder = pathlib.Path(output_folder).resolve()
        self.home.mkdir(parents=True, exist_ok=True)
        self.output_folder.mkdir(parents=True, exist_ok=True)
        self.script_path = self.home / "script.jsonl"
        self.results_path = self.home / "results.jsonl"

    def command(self):
        return [self.drive, str(self.home)]

    @staticmethod
    def environment():
        return {**os.environ, **JOB_ENVIRONMENT}

    def write_script(self, input_path, operations, decode_replacement="?"):
        """Adds the file as a user does, gives it the operations, and runs."""
        defaults = {"OutputFolderBookmark": self.output_folder.as_uri() + "/",
                    "DecodeErrorReplacement": decode_replacement, "DontOpenOutputFolderAfterComplete": True}
        commands = [
            {"do": "setDefaults", "values": defaults},
            {"do": "launch"},
            {"do": "addInputFiles", "paths": [str(pathlib.Path(input_path).resolve())], "row": 0, "selectFiles": True,
             "restoreOperations": False},
            {"do": "setOperations", "index": 0, "operations": operations},
            {"do": "runButtonPressed"},
        ]
        # A home that was used before must not bring files or settings along.
        (self.home / "defaults.json").unlink(missing_ok=True)
        self.script_path.write_text("".join(json.dumps(command) + "\n" for command in commands))

    def run(self):
        """Runs the script that was written; gives the result of the run."""
        with open(self.script_path) as script, open(self.results_path, "w") as results:
            status = subprocess.run(self.command(), stdin=script, stdout=results, env=self.environment()).returncode
        return self.result(status)

    def result(self, status=0):
        """The result of runButtonPressed: its `log` and its `outputFiles`. Raises JobFailed where there is none."""
        results = [json.loads(line) for line in self.results_path.read_text().splitlines()]
        refused = [result.get("error") for result in results if not result.get("ok")]
        if status != 0 or refused or not results:
            raise JobFailed("quillet-drive ended with status %d: %s" % (status, refused))
        if not results[-1].get("outputFiles"):
            raise JobFailed("the run has left no output file: %s" % json.dumps(results[-1]))
        return results[-1]
