#!/usr/bin/env python3
"""Makes the sample data: a customer export as it comes out of an old program, and what it should be after cleaning.

    make_customers.py [--rows N] DIRTY.csv [CLEAN.csv]

The customers are made up clean first. CLEAN.csv has them as the operations of clean-customers.json should leave them;
DIRTY.csv has them the way people, spreadsheets and conversions do it to a file: blanks and tabs around cells, dates
in six forms, phones and amounts as typed, names the other way round, bytes of another encoding, control characters,
cells over several lines, blank lines, lines of commas, page headers, missing cells and cells too many, and line ends
of two systems. The same rows give the same bytes everywhere: only random() of a seeded generator is used.
"""
import argparse
import random

FIRST_NAMES = """Ada Bruno Carla Dmitri Elena Farid Grace Hanna Igor Judith Kofi Leila Marek
Nadia Oscar Paula Quentin Rosa Stefan Tamara Ulrich Vera Wanda Xenia Yusuf Zoë Anaïs Håkon Jiří
Małgorzata""".split()
LAST_NAMES = """Abbott Barnes Castillo Donovan Eriksen Fischer Greene Haddad Ivanova Jensen
Kowalski Lindqvist Moreau Novak Olsen Petrov Quinn Rossi Sørensen Tanaka Urban Vasquez Weber
Xiong Yilmaz Zimmermann""".split()
# The apostrophe of these comes as the byte 0x92 of a Windows code page in some rows.
APOSTROPHE_NAMES = ["O'Brien", "D'Angelo", "O'Connor", "L'Hospital"]
# As Latin-1 the accented letter takes the two letters behind it along, as a three-byte start would.
LATIN_1_NAMES = [("Pérez", "P\ufffd\ufffd\ufffdz"), ("Bélanger", "B\ufffd\ufffd\ufffdnger"),
                 ("Kéramis", "K\ufffd\ufffd\ufffdmis")]
STREETS = "Birch Canal Dock Eagle Fountain Garden Harbour Iron Juniper King Lantern Mercer Orchard Quarry".split()
STREET_KINDS = ["Street", "Road", "Lane", "Avenue"]
CITIES = ["Ashford", "Brookfield", "Cedar Falls", "Drayton", "Elmhurst", "Fort Ridge", "Glen Cove", "Harlow"]
MONTHS = "January February March April May June July August September October November December".split()
NOTES = ["pays on time", "prefers e-mail", "moved last spring", "asks for printed invoices", "do not call on Fridays",
         "newsletter: yes", "two accounts, see 1204", "wholesale, 5% off", "VIP"]
HEADER = ["Customer", "Name", "E-mail", "Phone", "Street", "ZIP", "City", "Born", "Customer since", "Balance",
          "Remarks"]
ROWS_A_PAGE = 250
ROWS = 3000  # of the sample in the repository


class Source:
    def __init__(self, seed):
        self._random = random.Random(seed).random

    def below(self, limit):
        return int(self._random() * limit)

    def one_in(self, n):
        return self.below(n) == 0

    def pick(self, choices):
        return choices[self.below(len(choices))]


def quoted(text):
    return '"' + text.replace('"', '""') + '"'


def messy_blanks(source, text):
    """The text with what collects around and between words: it all goes when the cell is trimmed."""
    kind = source.below(12)
    if kind == 0:
        return "  " + text
    if kind == 1:
        return text + " \t"
    if kind == 2:
        return "\u00a0" + text + "\u00a0"
    if kind == 3:
        return text.replace(" ", "   ", 1)
    if kind == 4:
        return text.replace(" ", "\t ", 1)
    if kind == 5:
        return text[:1] + source.pick("\x00\x07\x0b\x1a\x7f") + text[1:]
    return text


def name(source):
    """The clean name, and the dirty one."""
    first, last = source.pick(FIRST_NAMES), source.pick(LAST_NAMES)
    clean_last, dirty_last = last, last
    if source.one_in(25):
        clean_last = source.pick(APOSTROPHE_NAMES)
        dirty_last = clean_last.replace("'", "\udc92") if source.below(2) else clean_last
    elif source.one_in(40):
        latin_1, clean_last = source.pick(LATIN_1_NAMES)
        dirty_last = latin_1.replace("é", "\udce9")
    dirty = dirty_last + ", " + first if source.one_in(5) else first + " " + dirty_last
    return first + " " + clean_last, messy_blanks(source, dirty)


def email(source, clean_name):
    if source.one_in(12):
        return "", source.pick(["", " ", "\t"])
    user = "".join(letter for letter in clean_name.lower() if "a" <= letter <= "z")
    clean = "%s%d@example.%s" % (user, source.below(100), source.pick(["com", "org", "net"]))
    return clean, messy_blanks(source, source.pick(["", "", "", "", "mailto:", "Mailto:"]) + clean)


def phone(source):
    if source.one_in(50):
        return "ask at the desk", "ask at the desk "
    parts = (200 + source.below(800), 200 + source.below(800), source.below(10000))
    form = source.pick(["(%d) %d-%04d", "%d.%d.%04d", "%d-%d-%04d", "+1 %d %d %04d", "1-%d-%d-%04d", "%d%d%04d",
                        " %d %d %04d "])
    return "+1-%d-%d-%04d" % parts, form % parts


def street(source):
    clean = "%d %s %s" % (1 + source.below(400), source.pick(STREETS), source.pick(STREET_KINDS))
    if source.one_in(8):
        clean += ', Unit "%s"' % source.pick("ABCD")
    return clean, messy_blanks(source, clean)


def date(source, first_year, years):
    if source.one_in(20):
        return "", source.pick(["", "n/a", "N/A", "unknown", "-", "??", "none"])
    if source.one_in(400):
        return "invalid", source.pick(["spring %d", "%d, I think", "before %d"]) % (first_year + source.below(years))
    year, month, day = first_year + source.below(years), 1 + source.below(12), 1 + source.below(28)
    month_name = MONTHS[month - 1]
    form = source.below(6)
    if form == 0:
        dirty = "%04d-%02d-%02d" % (year, month, day)
    elif form == 1:
        dirty = "%d/%d/%d" % (month, day, year)
    elif form == 2:
        dirty = "%d-%s-%d" % (day, month_name[:3], year)
    elif form == 3:
        dirty = "%s %d, %d" % (month_name[:3], day, year)
    elif form == 4:
        dirty = "%s %d, %d" % (month_name, day, year)
    else:
        dirty = "%d/%d/%02d" % (month, day, year % 100)
    return "%04d-%02d-%02d" % (year, month, day), messy_blanks_around(source, dirty)


def messy_blanks_around(source, text):
    kind = source.below(8)
    return " " + text if kind == 0 else text + "  " if kind == 1 else text


def balance(source):
    if source.one_in(10):
        return "0.00", source.pick(["", "0", "$0.00", " "])
    whole, cents = source.below(10 ** (1 + source.below(5))), source.below(100)
    amount = "%d.%02d" % (whole, cents)
    with_commas = "{:,}.{:02d}".format(whole, cents)
    if source.one_in(6) and amount != "0.00":
        forms = ["-" + amount, "(" + amount + ")", "($" + with_commas + ")", "-$" + with_commas]
        return "-" + amount, source.pick(forms)
    return amount, source.pick([amount, "$" + with_commas, with_commas + " USD", " " + amount])


def note(source):
    if source.below(2):
        return "", ""
    text = source.pick(NOTES)
    kind = source.below(12)
    if kind == 0:
        return text + ' / "' + text + '"', text + '\n"' + text + '"'
    if kind == 1:
        return text + " / called back", text + " \r\n called back"
    if kind == 2:
        return text + " 'as ever'", text + " \udc91as ever\udc92"
    if kind == 3:
        return text + " - see file", text + " \udc96 see file"
    if kind == 4:
        return text, text + " \U0001F600"
    return text, text


def dirty_cell(source, text):
    """Quoted where it must be, and here and there where it need not be."""
    must = any(letter in text for letter in ',"\n')
    if not must and not source.one_in(6):
        return text
    return (" " if source.one_in(10) else "") + quoted(text)


def customer(source, number):
    clean_name, dirty_name = name(source)
    zip_code, city = "%05d" % source.below(100000), source.pick(CITIES)
    pairs = [(str(number), str(number)), (clean_name, dirty_name), email(source, clean_name), phone(source),
             street(source), (zip_code, messy_blanks_around(source, zip_code)), (city, messy_blanks(source, city)),
             date(source, 1950, 55), date(source, 2006, 18), balance(source), note(source)]
    clean = [pair[0] for pair in pairs]
    dirty = [pair[1] for pair in pairs]
    cells = [dirty_cell(source, text) for text in dirty]
    if source.one_in(30):
        missing = 1 + source.below(3)  # the last cells never came
        cells = cells[:-missing]
        clean[-missing:] = ["", "0.00", ""][-missing:]
    elif source.one_in(30):
        cells += [""] * (1 + source.below(4)) + (["x"] if source.below(2) else [])
    clean[5:7] = [clean[5] + " " + clean[6]]
    return ",".join(map(quoted, clean)), ",".join(cells)


def make(rows):
    """The clean file and the dirty one, as bytes."""
    source = Source(20240229)
    clean, dirty = [], ["\ufeffCustomer export (all branches), printed 2024-02-29\n", ",".join(HEADER) + "\n"]
    for index in range(rows):
        clean_line, dirty_line = customer(source, 10001 + index)
        clean.append(clean_line)
        line_end = "\r\n" if source.one_in(7) else "\n"
        dirty.append((" " if source.one_in(20) else "") + dirty_line + ("\t" if source.one_in(20) else "") + line_end)
        if source.one_in(40):
            dirty.append(source.pick(["\n", "\r\n", "   \n", "\t\n", "\u00a0\n", "," * 10 + "\n", " , , ,\n"]))
        if (index + 1) % ROWS_A_PAGE == 0:
            dirty.append("--- page %d ---\n" % ((index + 1) // ROWS_A_PAGE + 1))
    dirty.append("\nTotal: %d customers\n\n" % rows)
    # A lone surrogate U+DCxx in the text above stands for the single byte xx.
    return "\n".join(clean).encode(), "".join(dirty).encode("utf-8", "surrogateescape")


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("--rows", type=int, default=ROWS)
    parser.add_argument("dirty")
    parser.add_argument("clean", nargs="?")
    arguments = parser.parse_args()
    clean, dirty = make(arguments.rows)
    with open(arguments.dirty, "wb") as file:
        file.write(dirty)
    if arguments.clean:
        with open(arguments.clean, "wb") as file:
            file.write(clean)


if __name__ == "__main__":
    main()
