"""Performs an example of the guide through quillet-drive: fills the panels as the page shows them and compares."""
import json
import os
import pathlib
import re
import subprocess
import tempfile

from guide_notation import (ExampleFailed, bytes_of, cells, check_clauses, form_of, grid_rows, numbers, option, spelt,
                            typed)

# A check box that stands before a text: the text is its row's value, or "off".
TEXT_OF_CHECK_BOX = {
    "initialOperationsWindowSplitContentsIntoLinesCheckbox": "initialOperationsWindowLineSeparatorComboBox",
    "initialOperationsWindowSplitLinesIntoColumnsCheckbox": "initialOperationsWindowColumnSeparatorComboBox",
    "clipboardDataSplitWindowSplitClipboardIntoLinesCheckbox": "clipboardDataSplitWindowLineSeparatorComboBox",
    "clipboardDataSplitWindowSplitLinesIntoColumnsCheckbox": "clipboardDataSplitWindowColumnSeparatorComboBox",
    "reformatColumnOperationWindowUseInvalidStringButton": "reformatColumnOperationWindowInvalidString",
}
# The format's pop-up, or its two, by what the column is reformatted as.
FORMATS = {"Date": ("Date",), "Time": ("Time",), "Date Time": ("FormatDateTimeDate", "FormatDateTimeTime")}
FILE_PANELS = {
    101: "initialOperationsWindow", 150: "replaceCharacterOperationWindow", 201: "skipLineOperationWindow",
    202: "trimLineOperationWindow", 203: "replaceLineOperationWindow", 251: "joinLinesOperationWindow",
    301: "trimColumnOperationWindow", 302: "replaceColumnOperationWindow", 303: "reformatColumnOperationWindow",
    351: "setNumberOfColumnsOperationWindow", 352: "rearrangeColumnsOperationWindow",
    353: "joinColumnsOperationWindow", 361: "setNumberOfColumnsOperationWindow", 901: "finalOperationsWindow"}
GRID_SHEETS = {"Split": "clipboardDataSplitWindow", "Join": "clipboardDataJoinWindow",
               "Trim": "clipboardDataTrimWindow", "Replace": "clipboardDataReplaceWindow",
               "Fill": "clipboardDataFillWindow", "Edit Cell": "cellDetailsWindow"}
# Asked in a small window of their own.
PROMPTS = ("Enter any text to insert between columns", "Enter any text to insert between lines",
           "Number of consecutive lines to join", "Number of consecutive columns to join")
KEYS = ("Up", "Down", "Left", "Right", "Tab", "Return", "Delete")


class Session:
    """One application with a home of its own, for one example."""

    def __init__(self, drive, panels, environment):
        self.panels = panels
        self.folder = tempfile.TemporaryDirectory(prefix="quillet-guide-")
        self.home = pathlib.Path(self.folder.name)
        for name in ("input", "output"):
            (self.home / name).mkdir()
        settings = {"LC_ALL": "en_US.UTF-8", "TZ": "UTC", **environment}
        self.process = subprocess.Popen([drive, str(self.home)], stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                        encoding="utf-8", env={**os.environ, **settings})
        self.alerts = []
        self.performed = set()  # codes
        self.paths = []
        self.added = 0
        self.titles = {}  # of the pop-ups' items, by control
        self.do("setDefaults", values={"OutputFolderBookmark": (self.home / "output").as_uri() + "/",
                                       "DontOpenOutputFolderAfterComplete": True})
        self.do("launch")
        self.names = {}  # of the operations; those of files come first where both sides have one
        for code in panels.codes:
            title = self.do("call", name="descriptionForOperation", operation={"Code": code})["description"][0]
            self.names.setdefault(title, []).append(code)

    def close(self):
        self.process.stdin.close()
        status = self.process.wait()
        self.process.stdout.close()
        self.folder.cleanup()
        return status

    def do(self, command, /, **arguments):
        self.process.stdin.write(json.dumps({"do": command, **arguments}) + "\n")
        self.process.stdin.flush()
        line = self.process.stdout.readline()
        if not line:
            raise ExampleFailed("the program has ended at %s" % command)
        result = json.loads(line)
        if not result.get("ok"):
            raise ExampleFailed("%s: %s" % (command, result.get("error")))
        self.alerts += [alert["title"] + ("\n" + alert["message"] if alert["message"] else "")
                        for alert in result.get("alerts", [])]
        return result

    # The panels.

    def values(self, window, fields):
        """The controls' values of a panel's rows."""
        values = {}
        for label, value in fields:
            if label == "With format" and window == "reformatColumnOperationWindow":
                values.update(self.formats(dict(fields)["Reformat as"], value))
                continue
            if label not in self.panels.labels[window]:
                raise ExampleFailed("%s has no field %s" % (window, label))
            kind, control = self.panels.labels[window][label]
            values.update(self.value(kind, control, value))
        return values

    def value(self, kind, control, value):
        if kind == "table":
            return {control: numbers(value)}
        if kind == "pop-up":
            return {control: self.tag(control, value)}
        if kind == "text":
            return {control: typed(value)}
        if value in ("on", "off"):
            return {control: value == "on"}
        if control not in TEXT_OF_CHECK_BOX:
            raise ExampleFailed("%s is neither on nor off" % value)
        return {control: True, TEXT_OF_CHECK_BOX[control]: typed(value)}

    def formats(self, reformat_as, value):
        controls = ["reformatColumnOperationWindow%sPopUpButton" % name for name in FORMATS.get(reformat_as, ())]
        parts = value.split(" and ")
        if len(parts) != len(controls):
            raise ExampleFailed("%s is no format of %s" % (value, reformat_as))
        return {control: self.tag(control, part) for control, part in zip(controls, parts)}

    def tag(self, control, title):
        if control not in self.titles:
            window = re.match(r"[a-zA-Z]+?Window", control)[0]
            for name, shown in self.do("controls", window=window)["controls"].items():
                items = self.titles.setdefault(name, {})
                for item in shown["titles"] or []:
                    if len(item) == 2 and isinstance(item[0], int):
                        items[form_of(item[1], items)] = item[0]
        if form_of(title) not in self.titles[control]:
            raise ExampleFailed("%s has no item %s, but %s" % (control, title, sorted(self.titles[control])))
        return self.titles[control][form_of(title)]

    # The file side.

    def add_file(self, where, text):
        check_clauses(where)
        name = option(where, r"`([^`]+)`")
        if not name:
            raise ExampleFailed("a file needs its name: %s" % where)
        if "in the output folder" in where:
            (self.home / "output" / name).write_bytes(bytes_of(where, text, False))
            return
        path = self.home / "input" / name
        path.write_bytes(bytes_of(where, text, True))
        self.paths.append(str(path))

    def bring_files(self):
        """Adds the files that are not listed yet, as late as possible: preferences come first."""
        if self.added < len(self.paths):
            self.do("addInputFiles", paths=self.paths[self.added:], row=self.added, selectFiles=True)
            self.added = len(self.paths)
            self.do("selectFiles", rows=list(range(self.added)))

    def file_operation(self, code, fields):
        self.bring_files()
        window = FILE_PANELS[code]
        if code in (101, 901):
            self.edit_end(code, fields)
        elif code == 352:
            self.rearrange(numbers(dict(fields).get("Columns", "")))
        elif code == 353:
            self.join_columns(fields)
        elif not self.do("addOperation", code=code, values=self.values(window, fields)).get("opened"):
            raise ExampleFailed("the panel of %d does not open" % code)
        self.performed.add(code)

    def edit_end(self, code, fields):
        rows = self.do("mainWindow")["operationRows"]
        self.do("selectOperations", rows=[0 if code == 101 else len(rows) - 1])
        if not self.do("editOperation", values=self.values(FILE_PANELS[code], fields)).get("opened"):
            raise ExampleFailed("the panel of %d does not open" % code)

    def rearrange(self, order):
        table = "rearrangeColumnsOperationWindowColumnsTableView"
        self.do("menu", action="addOperationRearrangeColumnsMenuItemClicked")
        shown = self.do("controls", window="rearrangeColumnsOperationWindow")["controls"][table]["titles"]
        places = list(range(len(shown)))
        if sorted(order) != places:
            raise ExampleFailed("the panel lists %d columns, not %s" % (len(places), order))
        for row, column in enumerate(order):
            if places[row] != column:
                self.do("dropRearrangeColumns", rows=[places.index(column)], row=row)
                places.remove(column)
                places.insert(row, column)
        self.do("press", name="done")

    def join_columns(self, fields):
        window = FILE_PANELS[353]
        self.do("menu", action="addOperationJoinColumnsMenuItemClicked")
        for label, value in fields:
            if label == "Join":
                self.do("setControl", name=window + "ColumnsTableView", value=self.shown_rows(window, value))
                self.do("press", name=window + "JoinButton")
            else:
                for control, content in self.values(window, [(label, value)]).items():
                    self.do("setControl", name=control, value=content)
        self.do("press", name="done")

    def shown_rows(self, window, value):
        """The rows of a panel that show the columns of these numbers."""
        shown = self.do("controls", window=window)["controls"][window + "ColumnsTableView"]["titles"]
        first = [int(row[0].split(".")[0]) - 1 for row in shown]
        return [first.index(column) for column in numbers(value)]

    def preferences(self, fields):
        self.do("menu", action="preferencesMenuItemClicked")
        shown = self.do("controls", window="preferencesWindow")["controls"]
        for control, value in self.values("preferencesWindow", fields).items():
            if shown[control]["value"] != value:
                self.do("setControl", name=control, value=value)
        self.do("closeWindow", window="preferencesWindow")

    # The clipboard side.

    def set_clipboard(self, text):
        self.do("setPasteboard", text=text)
        if not self.grid_is_open():
            self.do("menu", action="clipboardDataWindowMenuItemClicked")
        self.do("menu", action="clipboardDataWindowRefreshNowButtonPressed")

    def grid_is_open(self):
        return self.do("controls", window="clipboardDataWindow")["open"]

    def set_grid(self, text):
        rows = grid_rows(text)
        self.set_clipboard("\n".join("\t".join(row) for row in rows))
        self.grid_action("Split", [("Split into lines by", "`\\n`"), ("Split lines into columns by", "`\\t`")])

    def grid_action(self, name, fields):
        handler = self.panels.menu[name][0]
        arguments = {}
        if name == "Edit Cell":
            fields = dict(fields)
            if "Cell" in fields:
                row, column = cells(fields["Cell"])[0]
                self.do("click", row=row, column=column + 1)
            arguments["values"] = {"cellDetailsWindowTextField": typed(fields["Text"])}
        elif name in GRID_SHEETS:
            arguments["values"] = self.values(GRID_SHEETS[name], fields)
        elif fields:
            (label, value), = fields
            if label not in PROMPTS or '"%s:"' % label not in self.panels.prompt_sources:
                raise ExampleFailed("nothing asks for %s" % label)
            arguments["prompt"] = typed(value)
        before = len(self.do("clipboardDataWindow")["operations"])
        if not self.do("menu", action=handler, **arguments)["performed"]:
            raise ExampleFailed("%s is off" % name)
        self.performed.update(operation["Code"]
                              for operation in self.do("clipboardDataWindow")["operations"][before:])

    def select(self, fields):
        (kind, value), = fields
        for number, place in enumerate(cells(value) if kind == "Cells" else numbers(value)):
            self.click({"Cells": "Cell", "Lines": "Line number", "Columns": "Column header"}[kind], place,
                       {"command": True} if number else {})

    def click(self, kind, place, modifiers):
        if kind == "Column header":
            self.do("headerClick", column=place + 1, **modifiers)
        elif kind == "Line number":
            self.do("click", row=place, column=0, **modifiers)
        else:
            self.do("click", row=place[0], column=place[1] + 1, **modifiers)

    def clicks(self, fields):
        for label, value in fields:
            *held, kind = label.split("+")
            if kind not in ("Cell", "Line number", "Column header") or set(held) - {"Ctrl", "Shift"}:
                raise ExampleFailed("nobody can click on %s" % label)
            place = cells(value)[0] if kind == "Cell" else numbers(value)[0]
            self.click(kind, place, {{"Ctrl": "command", "Shift": "shift"}[key]: True for key in held})

    def press_keys(self, fields):
        for _, value in fields:
            for stroke in value.split(", "):
                *held, key = stroke.split("+")
                if key not in KEYS or set(held) - {"Alt", "Shift"}:
                    raise ExampleFailed("there is no key %s" % stroke)
                self.do("key", key=key.lower(), alternate="Alt" in held, shift="Shift" in held)

    # Saved jobs.

    def save_job(self, fields):
        self.bring_files()
        window = "clipboardDataWindow" if self.grid_is_open() else "window"
        if not self.do("saveJob", name=typed(dict(fields)["Job name"]), window=window)["saved"]:
            raise ExampleFailed("the job is not saved")

    def restore(self, title, fields):
        self.bring_files()
        fields = dict(fields)
        self.do("menu", action="previousJobsWindowMenuItemActionClicked")
        jobs = [row[1] for row in self.do("previousJobsWindow")["jobs"]]
        self.do("selectJobs", rows=[jobs.index(typed(fields["Job"]))])
        if "Files" in fields:
            names = self.do("previousJobsWindow")["files"]
            self.do("selectJobFiles", rows=[names.index(typed(fields["Files"]))])
        shown = self.do("previousJobsWindow")
        if shown["restoreTitle"] != title or not shown["restoreEnabled"]:
            raise ExampleFailed("the button says %s" % shown["restoreTitle"])
        self.do("restoreOperations")

    # An example.

    def perform(self, step):
        name = step.action
        others = {"Preferences": self.preferences, "Select": self.select, "Click": self.clicks,
                  "Press": self.press_keys, "Save Job": self.save_job}
        if step.kind != "action":
            self.begin(step.where, step.text)
        elif name in others:
            others[name](step.fields)
        elif name in ("Restore Operations", "Perform Operations"):
            self.restore(name, step.fields)
        elif name == "Select Files":
            self.bring_files()
            self.do("selectFiles", rows=numbers(dict(step.fields)["Input Files"]))
        elif name in ("Undo", "Redo"):
            if not self.do(name.lower())["done"]:
                raise ExampleFailed("there is nothing for %s" % name)
        elif self.grid_is_open() and name in self.panels.menu:
            self.grid_action(name, step.fields)
        elif self.paths and name in self.names and self.names[name][0] in FILE_PANELS:
            self.file_operation(self.names[name][0], step.fields)
        else:
            raise ExampleFailed("there is no operation %s" % name)

    def begin(self, where, text):
        if where == ", on the clipboard:":
            self.set_clipboard(spelt(text))
        elif where == ", in the grid:":
            self.set_grid(text)
        else:
            self.add_file(where, text)

    def compare(self, what, expected, found):
        if expected != found:
            raise ExampleFailed("%s\n  the page says:    %r\n  the program says: %r" % (what, expected, found))

    def check(self, results):
        messages = [step.text for step in results if step.kind == "Message"]
        run = None
        if self.paths:
            self.bring_files()
            run = self.do("runButtonPressed")
        self.compare("messages", messages, self.alerts)
        if run:
            self.check_run(run, results)
        else:
            self.check_grid(results)

    def check_run(self, run, results):
        expected = {}
        afters = [step for step in results if step.kind == "After"]
        for step in afters:
            check_clauses(step.where)
            name = option(step.where, r"`([^`]+)`")
            if not name and (len(afters) > 1 or len(run["outputFiles"]) != 1):
                raise ExampleFailed("the output needs its name")
            expected[name or pathlib.Path(run["outputFiles"][0]).name] = bytes_of(step.where, step.text, False)
        written = {pathlib.Path(path).name: pathlib.Path(path).read_bytes() for path in run["outputFiles"]}
        self.compare("output", expected, written)
        for step in results:
            if step.kind == "Log":
                # Folders and numbers of the system are of this run only.
                said = [re.sub(r'"/[^"]*/', '"', re.sub(r" \[errno \d+\]", "", line))
                        for line in run["log"].split("\n")]
                missing = [line for line in step.text.split("\n") if line not in said]
                self.compare("lines that the log lacks", [], missing)
            elif step.kind == "Status line":
                self.compare("status", typed(step.where.lstrip(": ")), self.do("mainWindow")["status"]["text"])
            elif step.kind == "Selection":
                raise ExampleFailed("files have no selection of cells")

    def check_grid(self, results):
        shown = self.do("clipboardDataWindow")
        for step in results:
            if step.kind == "After" and step.where == ", in the grid:":
                self.compare("grid", grid_rows(step.text) if step.text else [], shown["grid"])
            elif step.kind == "After" and step.where == ", on the clipboard:":
                self.compare("clipboard", spelt(step.text), self.do("pasteboard")["text"])
            elif step.kind == "Status line":
                self.compare("status", typed(step.where.lstrip(": ")), shown["status"]["text"])
            elif step.kind == "Selection":
                self.compare("selection", typed(step.where.lstrip(": ")), shown["selection"])
            elif step.kind != "Message":
                raise ExampleFailed("line %d: this cannot be compared" % step.line)


def environment_of(example):
    where = " ".join(step.where for step in example.steps)
    zone = option(where, r"in the time zone ([\w/]+)")
    language = option(where, r"in the language (\w+)")
    return {**({"TZ": zone} if zone else {}), **({"LC_ALL": language + ".UTF-8"} if language else {})}


def perform_example(drive, panels, example):
    """The codes that the example has performed. Raises ExampleFailed."""
    session = Session(drive, panels, environment_of(example))
    try:
        for step in example.steps:
            try:
                session.perform(step)
            except ExampleFailed as failure:
                raise ExampleFailed("line %d: %s" % (step.line, failure)) from failure
        session.check(example.results)
    finally:
        status = session.close()
    if status != 0:
        raise ExampleFailed("the program has ended with status %d" % status)
    return session.performed
