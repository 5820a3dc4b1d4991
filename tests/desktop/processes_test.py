"""Quillet as a process: its options, a second start, and its end by a signal.

    processes_test.py QUILLET VERSION

On a screen that nobody sees, in a home and a runtime folder of its own.
"""
import json
import shutil
import signal
import socket
import subprocess
import sys
import time
import unittest

from quillet_process import PATIENCE, QuilletProcess


class Processes(QuilletProcess):
    def end_of(self, *arguments):
        """The status, the output and the errors of a start that ends by itself."""
        process = self.start(*arguments)
        output, errors = process.communicate(timeout=PATIENCE)
        return process.returncode, output, errors

    def start_first(self, *arguments):
        """A start that is ready: a message without files has its answer."""
        process = self.start(*arguments)
        self.wait_until(lambda: self.answers({"files": [], "token": ""}), process)
        return process

    def answers(self, message):
        with socket.socket(socket.AF_UNIX) as connection:
            connection.settimeout(PATIENCE)
            try:
                connection.connect(str(self.runtime / "org.quillet.Quillet.socket"))
            except OSError:  # not there yet, or left by one that was killed
                return False
            connection.sendall(json.dumps(message).encode())
            return connection.recv(1000) != b""

    def terminate(self, process, number=signal.SIGTERM):
        process.send_signal(number)
        process.communicate(timeout=PATIENCE)
        return process.returncode

    def test_version_and_help_are_printed_without_a_display(self):
        self.environment["QT_QPA_PLATFORM"] = "xcb"
        self.assertEqual(self.end_of("--version"), (0, f"quillet {VERSION}\n", ""))
        status, output, errors = self.end_of("--help")
        self.assertEqual((status, errors), (0, ""))
        self.assertIn("usage: quillet [PATH...]", output)
        self.assertEqual(list(self.runtime.iterdir()), [])

    def test_a_signal_stores_the_session(self):
        for number in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP):
            with self.subTest(number.name):
                shutil.rmtree(self.home / ".config", ignore_errors=True)
                process = self.start_first(self.write("a.csv"))
                self.assertEqual(self.terminate(process, number), 0)
                self.assertEqual(self.listed(), ["a.csv"])
                self.assertTrue((self.home / ".config/quillet/windows.ini").exists())

    def test_a_signal_right_after_the_start_ends_it_too(self):
        process = self.start(self.write("a.csv"))
        self.wait_until(lambda: (self.runtime / "org.quillet.Quillet.socket").exists(), process)
        self.assertEqual(self.terminate(process), 0)

    def test_a_second_start_hands_its_files_over_and_ends(self):
        process = self.start_first(self.write("a.csv"))
        self.assertEqual(self.end_of(self.write("b.csv"), self.write("c.csv")), (0, "", ""))
        self.terminate(process)
        self.assertEqual(self.listed(), ["a.csv", "b.csv", "c.csv"])

    def test_relative_paths_are_those_of_the_second_start(self):
        process = self.start_first()
        folder = self.home / "folder"
        folder.mkdir()
        (folder / "a.csv").write_text("1\n")
        second = subprocess.run([self.quillet, "./a.csv"], env=self.environment, cwd=folder, timeout=PATIENCE)
        self.assertEqual(second.returncode, 0)
        self.terminate(process)
        self.assertEqual(self.listed(), ["a.csv"])

    def test_arguments_are_paths_even_with_a_dash(self):
        for name in ("--version", "-style"):
            self.write(name)
        process = self.start_first("--version", "-style")
        self.terminate(process)
        self.assertEqual(self.listed(), ["--version", "-style"])

    def test_a_second_start_needs_no_display(self):
        process = self.start_first()
        self.environment["QT_QPA_PLATFORM"] = "xcb"
        self.assertEqual(self.end_of(self.write("a.csv")), (0, "", ""))
        self.terminate(process)
        self.assertEqual(self.listed(), ["a.csv"])

    def test_a_second_start_gives_up_when_the_first_does_not_answer(self):
        process = self.start_first()
        process.send_signal(signal.SIGSTOP)
        began = time.monotonic()
        status, output, errors = self.end_of(self.write("a.csv"))
        waited = time.monotonic() - began
        process.send_signal(signal.SIGCONT)
        self.assertEqual((status, output), (1, ""))
        self.assertIn("does not answer", errors)
        self.assertGreater(waited, 1.9)
        self.assertEqual(self.terminate(process), 0)

    def test_a_killed_one_does_not_hold_up_the_next(self):
        process = self.start_first()
        process.kill()
        process.communicate()
        self.assertTrue((self.runtime / "org.quillet.Quillet.socket").exists())
        process = self.start_first(self.write("a.csv"))
        self.assertEqual(self.terminate(process), 0)
        self.assertEqual(self.listed(), ["a.csv"])

    def test_of_several_starts_at_once_one_goes_on(self):
        processes = [self.start(self.write(f"{i}.csv")) for i in range(5)]
        self.wait_until(lambda: sum(process.poll() is None for process in processes) == 1, self.start_of_nothing())
        last = next(process for process in processes if process.poll() is None)
        self.assertEqual(self.terminate(last), 0)
        self.assertIn(last.args[1].rsplit("/", 1)[1], self.listed())

    def start_of_nothing(self):
        """A process that goes on, for a wait that is not about one."""
        process = subprocess.Popen(["sleep", "600"], stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        self.started.append(process)
        return process

    def test_without_a_runtime_folder_it_finds_another(self):
        del self.environment["XDG_RUNTIME_DIR"]
        self.environment["TMPDIR"] = str(self.home)
        process = self.start(self.write("a.csv"))
        self.wait_until(lambda: any(self.home.glob("runtime-*/org.quillet.Quillet.socket")), process)
        self.wait_until(lambda: self.end_of(self.write("b.csv"))[0] == 0, process)
        self.assertEqual(self.terminate(process), 0)
        self.assertEqual(self.listed()[:2], ["a.csv", "b.csv"])


if __name__ == "__main__":
    QuilletProcess.quillet, VERSION = sys.argv[1:]
    unittest.main(argv=sys.argv[:1])
