"""What a job does to a file, written in the plainest way: no speed, no blocks, whole files in memory.

An implementation of its own, to judge the real engine from outside. It knows the file operations but Join Lines and the
times, UTF-8 and Windows CP1252, and of the dates only the forms that the sample and the benchmark data use, as they are
read in en_US. Searches are literal. Its regular expressions are Python's, so a list may only use patterns that mean the
same there. A list that needs more raises NotKnown.
"""
import datetime
import re
import struct
import unicodedata

LINE_LIMIT = 16384  # UTF-16 units
MONTHS = "jan feb mar apr may jun jul aug sep oct nov dec".split()
WHITESPACE = "\t \u00a0\u1680" + "".join(map(chr, range(0x2000, 0x200C))) + "\u202f\u205f\u3000"
CP1252_UNDEFINED = b"\x81\x8d\x8f\x90\x9d"


class NotKnown(Exception):
    """The list uses what this reference does not do."""


def run_job(records, data, decode_replacement="?", encode_replacement="?"):
    """The bytes of the output file for the bytes of an input file."""
    return Job(records, decode_replacement, encode_replacement).run(data)


class Job:
    def __init__(self, records, decode_replacement, encode_replacement):
        self.first, self.middle, self.last = records[0], records[1:-1], records[-1]
        for record in self.middle:
            if record["Code"] not in (150, 201, 202, 203, 301, 302, 303, 351, 352, 353, 361):
                raise NotKnown("code %d" % record["Code"])
        flags = number(self.first, "IntArg1")
        if flags & 17 != 17:
            raise NotKnown("a file that is not split")
        if number(self.last, "IntArg1") & 2:
            raise NotKnown("a leading separator")
        self.quote = '"' if flags & 32 else ""
        self.line_separator, self.column_separator = self.first["Arg1"], self.first["Arg2"]
        self.decode_replacement, self.encode_replacement = decode_replacement, encode_replacement
        self.replacements = self.replacement_pairs()

    def run(self, data):
        lines = []
        for index, line in enumerate(self.lines(data)):
            line = self.line_operations(line, index + 1)
            if line is None:
                continue
            text = self.last["Arg2"].join(self.cells(line))
            if text == "":
                break  # an empty text ends the pass
            lines.append(text)
        return self.encoded(self.last["Arg1"].join(lines))

    # Reading

    def decoded(self, data):
        """(text, plain): plain tells that the replacement table, quotes and separators look at the text."""
        if number(self.first, "IntArg2", 4) == 12:
            for byte in data:
                code = bytes([byte])
                yield (self.decode_replacement if code in CP1252_UNDEFINED else code.decode("cp1252")), True
            return
        position = 0
        while position < len(data):
            lead = data[position]
            length = 1 if lead < 0xC0 else 2 if lead < 0xE0 else 3 if lead < 0xF0 else 4
            sequence = data[position:position + length]
            position += length
            try:
                yield sequence.decode(), True
            except UnicodeDecodeError:
                if len(sequence) == length:  # the end of the file drops an unfinished one
                    yield self.decode_replacement * length, False

    def lines(self, data):
        line, units, in_quotes, started = [], 0, False, ""
        for character, plain in self.decoded(data):
            text = self.replaced(character) if plain and self.replacements else character
            if text:
                line.append(text)
                units += len(text) + sum(letter > "\uffff" for letter in text)
            if not plain:
                if units >= LINE_LIMIT:
                    started, line, units = started + "".join(line), [], 0
                continue
            if text and units >= LINE_LIMIT:
                yield started + "".join(line)
                line, units, in_quotes, started = [], 0, False, ""
                continue
            if self.quote and text == self.quote:
                in_quotes = not in_quotes
            if not in_quotes and text == self.line_separator:
                yield started + "".join(line[:-1])
                line, units, started = [], 0, ""
        if line or started:
            yield started + "".join(line)

    def replacement_pairs(self):
        pairs = []
        for record in self.middle:
            if record["Code"] != 150:
                continue
            kind, text = number(record, "IntArg2"), record.get("Arg2", "")
            if kind:
                pairs.append((kind, text))
                continue
            characters = re.sub(r"\\(.)", lambda match: {"t": "\t", "n": "\n", "r": "\r", "v": "\v", "f": "\f",
                                                         "a": "\a", "b": "\b"}[match[1]], record["Arg1"])
            pairs += [(character, text) for character in characters if not self.protects(character)]
        return pairs

    def protects(self, text):
        return text != "" and any(text in part for part in (self.quote, self.line_separator, self.column_separator))

    def replaced(self, character):
        text = character
        for key, replacement in self.replacements:
            of_class = (key == 1 and unicodedata.category(character) == "Cc") or (key == 2 and character > "\uffff")
            if text == key or (of_class and not self.protects(text)):
                text = replacement
        return text

    # The line

    def line_operations(self, line, line_number):
        for record in self.middle:
            if record["Code"] == 201 and skips(record, line, line_number):
                return None
            if record["Code"] == 202:
                line = trimmed(record, line, record.get("Arg1", ""))
            if record["Code"] == 203:
                line = replaced(record, line, record.get("Arg1", ""), record.get("Arg2", ""))
        return line

    def cells(self, line):
        cells = self.split(line)
        for record in self.middle:
            code = record["Code"]
            if code == 351:
                cells = resized(cells, record)
            if code not in (301, 302, 303):
                continue
            for index in (i for i in range(len(cells)) if i + 1 in listed(record["Arg1"])):
                if code == 301:
                    cells[index] = trimmed(record, cells[index], record.get("Arg2", ""))
                elif code == 302:
                    cells[index] = replaced(record, cells[index], record.get("Arg2", ""), record.get("Arg3", ""))
                else:
                    cells[index] = reformatted(record, cells[index])
        cells = self.arranged(cells)
        if number(self.last, "IntArg1") & 1:
            cells = ['"%s"' % cell.replace('"', '""') for cell in cells]
        for record in self.middle:
            if record["Code"] == 361:
                cells = resized(cells, record)
        return cells

    def split(self, line):
        cells, cell, in_quotes, position = [], [], False, 0
        while position < len(line):
            character = line[position]
            if self.quote and character == self.quote:
                if in_quotes and line[position + 1:position + 2] == self.quote:
                    cell.append(character)
                    position += 1
                else:
                    in_quotes = not in_quotes
            elif character == self.column_separator and not in_quotes:
                cells.append("".join(cell))
                cell = []
            else:
                cell.append(character)
            position += 1
        return cells + ["".join(cell)]

    def arranged(self, cells):
        for record in self.middle:
            if record["Code"] == 353:
                groups = [[int(part) - 1 for part in token.split("+")] for token in record["Arg1"].split(",")]
                return [record["Arg2"].join(cells[i] for i in group if 0 <= i < len(cells)) for group in groups]
        for record in self.middle:
            if record["Code"] == 352:
                order, result = [int(token) - 1 for token in record["Arg1"].split(",")], list(cells)
                if len(order) > len(cells) or max(order) >= len(cells):
                    raise NotKnown("an order beyond the line")
                for place, index in enumerate(order):
                    result[place] = cells[index]
                return result
        return cells

    # Writing

    def encoded(self, text):
        encoding = {4: "utf-8", 12: "cp1252"}[number(self.last, "IntArg2", 4)]
        if encoding == "utf-8":
            return text.encode()
        result = []
        for sequence in sequences(text):
            try:
                # A letter with its marks is written where the two compose to one character of the encoding.
                composed = unicodedata.normalize("NFC", sequence)
                result.append((composed if len(composed) == 1 else sequence).encode(encoding))
            except UnicodeEncodeError:
                result.append(self.encode_replacement.encode(encoding))
        return b"".join(result)


def sequences(text):
    """Characters with what belongs to them, as far as the benchmark data has such: marks, flags, joined emoji."""
    sequence, flags = "", 0
    for character in text:
        is_flag = "\U0001F1E6" <= character <= "\U0001F1FF"
        extends = (unicodedata.combining(character) or character in "\u200d\ufe0f"
                   or "\U0001F3FB" <= character <= "\U0001F3FF")
        if sequence and (extends or (sequence[-1] == "\u200d" and character > "\u00ff") or (is_flag and flags == 1)):
            sequence += character
            flags = 2 if is_flag else 0
            continue
        if sequence:
            yield sequence
        sequence, flags = character, 1 if is_flag else 0
    if sequence:
        yield sequence


def number(record, key, otherwise=0):
    return int(record.get(key, otherwise))


def listed(text):
    numbers = set()
    for token in filter(None, text.split(",")):
        first, _, end = token.partition("-")
        numbers.update(range(int(first), int(end or first) + 1))
    return numbers


def resized(cells, record):
    count = number(record, "IntArg1")
    return cells[:count] + [record.get("Arg1", "")] * (count - len(cells))


def regular_expression(record, pattern):
    return re.compile(pattern, 0 if number(record, "IntArg1") & 1 else re.IGNORECASE)


def skips(record, line, line_number):
    kind, text = number(record, "IntArg2"), record.get("Arg1", "")
    if kind == 0:
        return line == ""
    if kind == 2:
        return line_number in listed(text)
    if text == "":
        return False
    if kind == 5:
        return regular_expression(record, text).search(line) is not None
    escaped = re.escape(text)
    pattern = {1: escaped, 3: r"\A" + escaped, 4: escaped + r"\Z"}[kind]
    return regular_expression(record, pattern).search(line) is not None


def trimmed(record, text, what):
    kind, where = number(record, "IntArg2"), number(record, "IntArg3")
    if kind == 2:
        pattern = "[%s]*" % WHITESPACE
    elif kind == 0 and what:
        pattern = "(?:%s)?" % re.escape(what)
    else:
        raise NotKnown("trim type %d" % kind)
    expression = lambda edge: regular_expression(record, edge)
    if where in (0, 1):
        text = expression(r"\A" + pattern).sub("", text, count=1)
    if where in (0, 2):
        # Python's search from the left would give a run of blanks twice: the run, then the empty rest.
        text = expression(pattern + r"\Z").sub("", text, count=1)
    return text


def replaced(record, text, what, replacement):
    if what == "":
        return text
    if number(record, "IntArg2") == 0:
        return regular_expression(record, re.escape(what)).sub(lambda match: replacement, text)
    template = re.sub(r"\$([0-9])", r"\\g<\1>", replacement.replace("\\", r"\\"))
    return regular_expression(record, what).sub(template, text)


def reformatted(record, cell):
    kind = number(record, "IntArg2", 1)
    if kind == 4:
        match = re.match(r"\s*([+-]?[0-9]+)", cell)
        return str(int(match[1])) if match else "0"
    if kind == 5:
        match = re.match(r"\s*[+-]?([0-9]+\.?[0-9]*|\.[0-9]+)(e[+-]?[0-9]+)?", cell, re.IGNORECASE)
        value = struct.unpack("f", struct.pack("f", float(match[0] if match else 0)))[0]
        return "%.*f" % (number(record, "Arg5"), value)
    if kind != 1 or number(record, "IntArg3") != 4:
        raise NotKnown("reformat as %d" % kind)
    text = cell.strip(WHITESPACE + "\n\v\f\r\u0085\u2028\u2029")
    if text == "":
        return cell
    date = parsed_date(text)
    if date is None:
        return record.get("Arg2", "") if number(record, "IntArg1") & 1 else cell
    return "%04d-%02d-%02d" % (date.year, date.month, date.day)


def parsed_date(text):
    match = re.fullmatch(r"([A-Z][a-z]+) ([0-9]{1,2}), ([0-9]{4})", text)
    if match:
        return date_of(match[3], match[1], match[2])
    match = re.fullmatch(r"([0-9]{1,2})/([0-9]{1,2})/([0-9]{2}|[0-9]{4})", text)
    if match:
        year = int(match[3])
        return date_of(year if year > 99 else year + (2000 if year < 50 else 1900), match[1], match[2])
    match = re.fullmatch(r"([0-9]{4})-([0-9]{1,2})-([0-9]{1,2})", text)
    if match:
        return date_of(*match.groups())
    match = re.fullmatch(r"([0-9]{1,2})-([A-Z][a-z]{2})-([0-9]{4})", text)
    if match:
        return date_of(match[3], match[2], match[1])
    return None


def date_of(year, month, day):
    if not str(month).isdigit():
        month = MONTHS.index(month[:3].lower()) + 1 if month[:3].lower() in MONTHS else 0
    try:
        return datetime.date(int(year), int(month), int(day))
    except ValueError:
        return None
