#!/usr/bin/env python3
"""Makes the data that bench/compare.py measures with: five kinds of delimited text, of any size, in constant memory.

    make_data.py [--seed N] KIND MEGABYTES FILE     a megabyte is 1,000,000 bytes; FILE "-" is standard output

  people    CSV in UTF-8, 5 of 12 cells quoted, with commas, doubled quotes and here and there a line end in them, some
            accents
  plain     the same columns between tabs, ASCII, without any quote
  unicode   CSV, most of its bytes not ASCII: accents (composed and combining), Greek, Cyrillic, Han, Kana, Hangul,
            emoji
  cp1252    between bars, in Windows CP1252, about one byte in sixteen above 0x7F
  long      between tabs, lines of 17,000 to 70,000 characters, which the reader gives out in pieces

The columns are id, first, last, email, phone, company, street, city, born, balance, amount, note. All kinds but long
have them as a first line. No line is empty, every file ends with a line feed, and the file ends with the first whole
line at or beyond the size. The same arguments make the same bytes everywhere.
"""
import argparse
import random
import sys

COLUMNS = "id first last email phone company street city born balance amount note".split()
CELLS_A_POOL = 20000
LINES_A_BLOCK = 8192

FIRST = """Alma Boris Cecil Doris Edgar Fiona Gustav Helga Ivan Joan Karl Lydia Moses Nora Otto
Petra Ralf Selma Tobias Ursula Viktor Wilma Xaver Yvonne Zacharias Abigail Bernard Clara Desmond
Eleanor Felix Greta""".split()
FIRST_ACCENTED = "Renée Jörg Inés Chloë Ândré Søren Zsófia Łucja Bjørn Noémi".split()
LAST = """Archer Baxter Coleman Dawson Ellis Foster Gibson Harper Ingram Jarvis Keller Lambert
Marsh Norris Osborne Porter Quigley Reeves Saunders Thornton Underhill Vaughan Whitaker Yates
Zeller Ashworth Blackwood Crane Drummond""".split() + [
    "de la Cruz", "O'Hara", "Lloyd-Price", "van Dyck"]
LAST_ACCENTED = "Müller Gärtner Peña Lefèvre Strauß Nováková Øster Gonçalo Žižek Bélisle".split()
CITIES = ["Ashbourne", "Beverley", "Springfield", "Calder", "Denholm", "Eastwick", "Farnham", "Granton", "Hexley",
          "Irvine", "Port Jervis", "Kings Langley", "Springfield Gardens", "Leeward", "Marlow", "Newbridge", "Oakham",
          "St. Agnes"]
CITIES_ACCENTED = ["Zürich", "Orléans", "Tromsø", "Málaga", "Gdańsk", "São Luís"]
FIRMS = "Alder Bolt Cascade Delta Ember Falcon Gannet Helios Indigo Juno Krypton Lyra Magnet Nimbus Onyx".split()
BRANCHES = "Brewing Castings Dairies Engines Fabrics Gears Hardware Insurance Joinery Lenses Mills Optics".split()
FORMS = ["Ltd", "Ltd", "Inc.", "plc", "AG", "& Co", "Corp."]
ROADS = "Abbey Bridge Castle Dean Elm Ferry Grange Hawthorn Inkerman Jubilee Kiln Lime Manor Nelson Park".split()
ROAD_KINDS = "Road Street Lane Close Drive Way".split()
WORDS = """a about after again all and any asked at back be before both box by called came can
card cash change client copy days did done due early every file first for form from full given
goes had has here if in invoice is it kept last later left letter made may month more new next no
not now number of office old on once only open or order our out over paid parts plan post price
read sent should signed some stock such than that the their then there they this two until up
very was week well were when with without year yes you""".split()
MONTHS = "January February March April May June July August September October November December".split()

LATIN = "abcdefghijklmnopqrstuvwxyzáàâäãåæçéèêëíìîïñóòôöõøßúùûüýžščřďťňłśźęąőű"
COMBINING = ["e\u0301", "o\u0308", "n\u0303", "a\u030a", "u\u0302", "i\u0304\u0301", "s\u0323\u0307"]
GREEK = "αβγδεζηθικλμνξοπρσςτυφχψωάέήίόύώ"
CYRILLIC = "абвгдежзийклмнопрстуфхцчшщъыьэюяАБВГДЕЖЗИКЛМНОПРСТ"
HAN_AND_KANA = "山川田中村本林森石井上下東西南北京都市区町会社名前住所電話番号年月日時分売上合計商品価格あいうえおかきくけこサシスセソタチツテト"
HANGUL = "가나다라마바사아자차카타파하강남북서울부산대구인천광주수원한국회사이름주소전화번호"
EMOJI = ["\U0001F600", "\U0001F680", "\U0001F4E6", "\u2764\ufe0f", "\U0001F44B\U0001F3FE", "\U0001F1EB\U0001F1F7",
         "\U0001F469\u200d\U0001F680", "\U0001F468\u200d\U0001F469\u200d\U0001F466"]
CP1252_LETTERS = "áàâäãåæçéèêëíìîïñóòôöõøßúùûüýÿŠšŽžŒœÄÖÜÉÈ€£©®°½–—‘’“”•…™"


class Source:
    """Chooses by random() alone, which gives the same numbers for a seed in every version of Python."""

    def __init__(self, seed):
        self.random = random.Random(seed).random

    def below(self, limit):
        return int(self.random() * limit)

    def between(self, low, high):
        return low + self.below(high - low + 1)

    def one_in(self, n):
        return self.below(n) == 0

    def pick(self, choices):
        return choices[int(self.random() * len(choices))]


class Person:
    """Makes the cells of the columns; `fancy` allows accents, quotes, commas and line ends in them."""

    def __init__(self, source, fancy):
        self.source, self.fancy = source, fancy

    def choose(self, plain, accented):
        return self.source.pick(accented if self.fancy and self.source.one_in(16) else plain)

    def stray_blanks(self, text):
        return self.source.pick([text] * 12 + [" " + text, text + " ", "  " + text + " ", text + "   "])

    def first(self):
        return self.stray_blanks(self.choose(FIRST, FIRST_ACCENTED))

    def last(self):
        return self.stray_blanks(self.choose(LAST, LAST_ACCENTED))

    def email(self):
        name = "%s.%s" % (self.source.pick(FIRST), self.source.pick(FIRMS))
        return "%s%d@example.%s" % (name.lower(), self.source.below(1000), self.source.pick(["com", "net", "org"]))

    def phone(self):
        numbers = (self.source.between(201, 989), self.source.between(200, 999), self.source.below(10000))
        return self.source.pick(["(%d) %d-%04d", "(%d) %d-%04d", "+1 %d.%d.%04d"]) % numbers

    def company(self):
        firm = "%s %s" % (self.source.pick(FIRMS), self.source.pick(BRANCHES))
        if self.fancy and self.source.one_in(16):
            firm = '"%s" %s' % (self.source.pick(FIRMS), firm)
        return firm + self.source.pick([" ", ", "]) + self.source.pick(FORMS)

    def street(self):
        text = "%d %s %s" % (self.source.between(1, 2000), self.source.pick(ROADS), self.source.pick(ROAD_KINDS))
        return text + (", Flat %d" % self.source.between(1, 60) if self.source.one_in(3) else "")

    def city(self):
        return self.stray_blanks(self.choose(CITIES, CITIES_ACCENTED))

    def born(self):
        year, month, day = self.source.between(1950, 2019), self.source.below(12), self.source.between(1, 28)
        kind = self.source.below(20)
        if kind == 0:
            return "not given" if self.source.one_in(500) else ""
        if kind < 8:
            return "%d-%02d-%02d" % (year, month + 1, day)
        if kind < 12:
            return "%d/%d/%d" % (month + 1, day, year)
        if kind < 14:
            return "%d/%d/%02d" % (month + 1, day, year % 100)
        if kind < 17:
            return "%d-%s-%d" % (day, MONTHS[month][:3], year)
        return "%s %d, %d" % (MONTHS[month][:3] if kind < 19 else MONTHS[month], day, year)

    def balance(self):
        if self.source.one_in(9):
            return ""
        amount = "{:,}.{:02d}".format(self.source.below(10 ** self.source.between(1, 7)), self.source.below(100))
        return self.source.pick(["$"] * 11 + ["-$"]) + amount

    def amount(self):
        kind = self.source.below(10)
        if kind == 0:
            return ""
        whole = str(self.source.below(10 ** self.source.between(1, 6)))
        if kind < 3:
            return whole
        digits = self.source.between(1, 5)
        return "%s%s.%0*d" % ("-" if kind == 3 else "", whole, digits, self.source.below(10 ** digits))

    def words(self, low, high):
        return " ".join(self.source.pick(WORDS) for _ in range(self.source.between(low, high)))

    def note(self):
        if self.source.one_in(2):
            return ""
        if self.fancy and self.source.one_in(30):
            return '%s "%s", %s' % (self.words(1, 3), self.words(1, 2), self.words(1, 4))
        if self.fancy and self.source.one_in(125):
            return self.words(2, 5) + "\n" + self.words(2, 5)
        return self.words(2, 13)

    def makers(self):
        """A maker for every column behind the id."""
        return [getattr(self, column) for column in COLUMNS[1:]]


def quoted(text):
    return '"' + text.replace('"', '""') + '"'


def quoted_where_needed(text):
    return quoted(text) if any(letter in text for letter in ',"\n') else text


def pool(make):
    return [make() for _ in range(CELLS_A_POOL)]


def people_pools(source):
    always_quoted = ("company", "street", "city", "note")
    pools = []
    for column, make in zip(COLUMNS[1:], Person(source, fancy=True).makers()):
        quote = quoted if column in always_quoted else quoted_where_needed
        pools.append([quote(text) for text in pool(make)])
    return pools


def plain_pools(source):
    return [pool(make) for make in Person(source, fancy=False).makers()]


def unicode_pools(source):
    alphabets = [LATIN, list(LATIN) + COMBINING * 3, GREEK, CYRILLIC, CYRILLIC, HAN_AND_KANA, HAN_AND_KANA, HANGUL]

    def text(low, high):
        alphabet = source.pick(alphabets)
        letters = [source.pick(alphabet) for _ in range(source.between(low, high))]
        return "".join(letter + (" " if source.one_in(11) else "") for letter in letters[:-1]) + letters[-1]

    def note():
        return text(14, 48) + (" " + source.pick(EMOJI) if source.below(5) < 2 else "")

    person = Person(source, fancy=False)
    makers = {
        "first": lambda: person.stray_blanks(text(3, 9)), "last": lambda: person.stray_blanks(text(4, 12)),
        "company": lambda: quoted(text(4, 12) + source.pick([", ", ', "']) + text(4, 12)),
        "street": lambda: quoted(text(8, 22)), "city": lambda: text(3, 11), "note": lambda: quoted(note()),
    }
    return [pool(makers.get(column) or (lambda make=getattr(person, column): quoted_where_needed(make())))
            for column in COLUMNS[1:]]


def cp1252_pools(source):
    def spiced(text):
        return "".join(source.pick(CP1252_LETTERS) if letter.isalpha() and source.one_in(6) else letter
                       for letter in text)

    texts = ("first", "last", "company", "street", "city", "note")
    return [[spiced(cell) for cell in cells] if column in texts else cells
            for column, cells in zip(COLUMNS[1:], plain_pools(source))]


def long_pools(source):
    person = Person(source, fancy=False)
    pools = plain_pools(source)
    passages = [person.words(50, 80) + (" déjà vu" if source.one_in(4) else "") for _ in range(2000)]

    def long_note():
        wanted, parts = source.between(17000, 69000), []
        while wanted > 0:
            parts.append(source.pick(passages))
            wanted -= len(parts[-1]) + 1
        return " ".join(parts)

    pools[-1] = [long_note() for _ in range(300)]
    return pools


# kind: (pools, separator, encoding, has a header line, lines made at a time)
KINDS = {
    "people": (people_pools, ",", "utf-8", True, LINES_A_BLOCK),
    "plain": (plain_pools, "\t", "utf-8", True, LINES_A_BLOCK),
    "unicode": (unicode_pools, ",", "utf-8", True, LINES_A_BLOCK),
    "cp1252": (cp1252_pools, "|", "cp1252", True, LINES_A_BLOCK),
    "long": (long_pools, "\t", "utf-8", False, 64),
}


def blocks(kind, seed):
    """Endless blocks of lines, each line as bytes with its line feed."""
    make_pools, separator, encoding, has_header, lines_a_block = KINDS[kind]
    source = Source(seed)
    pools = make_pools(source)
    if has_header:
        yield [(separator.join(COLUMNS) + "\n").encode(encoding)]
    draw, number = source.random, 100000
    while True:
        columns = [[cells[int(draw() * len(cells))] for _ in range(lines_a_block)] for cells in pools]
        ids = map(str, range(number, number + lines_a_block))
        number += lines_a_block
        yield [(separator.join(cells) + "\n").encode(encoding) for cells in zip(ids, *columns)]


def write_data(kind, size, seed, file):
    written = 0
    for lines in blocks(kind, seed):
        if written + sum(map(len, lines)) >= size:
            break
        written += file.write(b"".join(lines))
    for line in lines:  # the last block, up to the first line at or beyond the size
        if written >= size:
            break
        written += file.write(line)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("kind", choices=sorted(KINDS))
    parser.add_argument("megabytes", type=float)
    parser.add_argument("file")
    arguments = parser.parse_args()
    size = int(arguments.megabytes * 1000000)
    if arguments.file == "-":
        write_data(arguments.kind, size, arguments.seed, sys.stdout.buffer)
        return
    with open(arguments.file, "wb", buffering=1 << 20) as file:
        write_data(arguments.kind, size, arguments.seed, file)


if __name__ == "__main__":
    main()
