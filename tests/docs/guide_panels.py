"""What the windows say, read from the sources: the panels' fields, the menus' items and shortcuts."""
import re
import xml.etree.ElementTree


class Panels:
    """What the windows say: the labels of the forms, and the items of the menus."""

    def __init__(self, source):
        self.labels = {}  # window: {label: (kind, control)}
        for form in sorted((source / "src" / "ui" / "forms").glob("*.ui")):
            self.read_form(xml.etree.ElementTree.parse(form).getroot())
        menus = "".join((source / "src" / "ui" / name).read_text(encoding="utf-8")
                        for name in ("menu_tables.h", "menus.cpp"))
        item = r'(?:QT_TRANSLATE_NOOP\(\s*"\w+",\s*)?"([^"]+)"\)?,\s*(?:nullptr|"([^"]*)"),\s*"(\w+)"'
        self.menu = {title.rstrip("…").replace("&", ""): (handler, shortcut)
                     for title, shortcut, handler in re.findall(item, menus)}
        added = re.findall(r'(?:translated|withKey)\("([^"]+)"\),\s*"([^"]+)"', menus)
        self.shortcuts = {**{title: shortcut for title, (_, shortcut) in self.menu.items() if shortcut},
                          **{title.rstrip("…").replace("&", ""): shortcut for title, shortcut in added}}
        codes = (source / "src" / "operations" / "operation_codes.h").read_text(encoding="utf-8")
        self.codes = [int(code) for code in re.findall(r"^  Op\w+ = (\d+),", codes, re.M)]
        self.prompt_sources = "".join(file.read_text(encoding="utf-8")
                                      for file in sorted((source / "src" / "shell").rglob("*.cpp")))

    def read_form(self, root):
        labels = self.labels.setdefault(root.find("widget").get("name"), {})
        widgets = {widget.get("name"): widget for widget in root.iter("widget")}
        for name, widget in widgets.items():
            text = widget.findtext("property[@name='text']/string") or ""
            label = text.replace("&", "").rstrip(":")
            buddy = widget.findtext("property[@name='buddy']/cstring")
            if widget.get("class") == "QLabel" and buddy in widgets:
                labels[label] = (self.kind(widgets[buddy]), buddy)
            elif widget.get("class") == "QCheckBox":
                labels[label] = ("check box", name)

    @staticmethod
    def kind(widget):
        if widget.get("class") == "QComboBox" and widget.find("property[@name='editable']") is None:
            return "pop-up"
        return "table" if widget.get("class").endswith("TableView") else "text"
