#include "text/fields_and_lines_parser.h"

#include <cerrno>
#include <gtest/gtest.h>
#include <optional>
#include <vector>

#include "platform/code_pages.h"
#include "platform/text_search.h"
#include "platform/unicode_text.h"
#include "support/random_source.h"
#include "support/temporary_file.h"

namespace quillet {
namespace {

using testing::RandomSource;
using testing::TemporaryFile;

// One call of the reader, as seen from outside.
struct Call {
  int result = 0;
  std::string line;
  std::string errors;
  ReadLineStats stats;
  bool operator==(const Call&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Call& call) {
  return out << "{" << call.result << ", " << ::testing::PrintToString(call.line.substr(0, 60)) << " of "
             << call.line.size() << " bytes, \"" << call.errors.substr(0, 60) << "\", "
             << call.stats.bytesRead << " " << call.stats.charactersDecoded << " " << call.stats.linesRead
             << " " << call.stats.maximumLengthLinesRead << "}";
}

// What a reading is given.
struct Job {
  std::string bytes;
  std::int64_t encoding = 4;
  std::u16string quote = {};
  std::u16string separator = u"\n";
  std::u16string columnSeparator = {};
  std::vector<ReplacementTable::Pair> pairs = {};
  std::u16string replacement = u"?";

  ReplacementTable table() const { return {pairs, quote, separator, columnSeparator}; }
};

std::vector<Call> readAll(const Job& job, std::size_t readSize = FieldsAndLinesParser::kReadSize) {
  const TemporaryFile file(job.bytes);
  FieldsAndLinesParser parser(readSize);
  const LineRules rules(job.encoding, job.quote, job.separator, job.table(), job.replacement);
  std::vector<Call> calls;
  for (;;) {
    Call call;
    TextBuffer line(16);
    std::u16string errors;
    call.result = static_cast<int>(parser.readLineFrom(file.descriptor(), rules, line, call.stats, &errors));
    call.line = toUtf8(line.view());
    call.errors = toUtf8(errors);
    calls.push_back(call);
    if (call.result != 0) return calls;
  }
}

// The rule, one byte at a time.
class SteppingReader {
 public:
  explicit SteppingReader(const Job& job) : job_(job), table_(job.table()) {}

  std::vector<Call> readAll() {
    std::vector<Call> calls;
    do calls.push_back(readLine());
    while (calls.back().result == 0);
    return calls;
  }

 private:
  enum class Decoded { Character, Replaced, Invalid, End };

  Call readLine() {
    Call call;
    std::u16string into, buffer;
    bool inQuotes = false;
    const auto finish = [&](int result) {
      call.result = result;
      call.line = toUtf8(into);
      return call;
    };
    for (;;) {
      std::u16string text;
      int count = 0;
      const Decoded decoded = job_.encoding == 4 ? decodeUtf8(call, text, count) : decodeByte(call, text);
      if (decoded == Decoded::End) {
        if (!buffer.empty()) {
          into += buffer;
          ++call.stats.linesRead;
        }
        return finish(2);
      }
      if (decoded == Decoded::Invalid) {
        for (int i = 0; i < count; ++i) buffer += job_.replacement;
        if (buffer.size() >= 16384) {
          into += buffer;
          ++call.stats.maximumLengthLinesRead;
          buffer.clear();
        }
        continue;
      }
      if (decoded == Decoded::Character) text = std::u16string(table_.replaced(text));
      bool limitHit = false;
      if (!text.empty()) {
        buffer += text;
        if (buffer.size() >= 16384) {
          into += buffer;
          ++call.stats.maximumLengthLinesRead;
          buffer.clear();
          limitHit = true;
        }
      }
      if (!job_.quote.empty() && text == job_.quote) inQuotes = !inQuotes;
      if (limitHit) return finish(0);
      if (inQuotes || job_.separator.empty()) continue;
      if (const auto found = rangeOfString(buffer, job_.separator, BackwardsSearch | AnchoredSearch)) {
        into.append(buffer, 0, found->location);
        ++call.stats.linesRead;
        return finish(0);
      }
    }
  }

  bool takeByte(Call& call, unsigned char& byte) {
    if (at_ == job_.bytes.size()) return false;
    byte = static_cast<unsigned char>(job_.bytes[at_++]);
    ++call.stats.bytesRead;
    return true;
  }

  Decoded decodeByte(Call& call, std::u16string& text) {
    unsigned char byte;
    if (!takeByte(call, byte)) return Decoded::End;
    if (job_.encoding == 1 && byte >= 0x80) {
      text = job_.replacement;
      return Decoded::Replaced;
    }
    const char16_t unit = singleByteTable(static_cast<Encoding>(job_.encoding))[byte];
    if (unit == kUndefinedByte) {
      call.errors +=
          "Could not init single-byte character [" + std::to_string(static_cast<signed char>(byte)) + "].";
      text = job_.replacement;
      return Decoded::Replaced;
    }
    ++call.stats.charactersDecoded;
    text = unit;
    return Decoded::Character;
  }

  Decoded decodeUtf8(Call& call, std::u16string& text, int& count) {
    unsigned char b[4];
    int expected = 4;
    for (count = 0; count < expected;) {
      if (!takeByte(call, b[count])) return Decoded::End;
      if (count++ == 0) expected = b[0] <= 0xBF ? 1 : b[0] <= 0xDF ? 2 : b[0] <= 0xEF ? 3 : 4;
      if (isComplete(b, count)) {
        ++call.stats.charactersDecoded;
        text = toUtf16(std::string_view(reinterpret_cast<char*>(b), static_cast<std::size_t>(count)));
        return Decoded::Character;
      }
    }
    call.errors += "Invalid " + std::to_string(count) + "-byte UTF-8 character.";
    return Decoded::Invalid;
  }

  static bool isIn(unsigned char byte, int low, int high) { return byte >= low && byte <= high; }
  static bool isComplete(const unsigned char* b, int count) {
    if (count == 1) return b[0] < 0x80;
    for (int i = 2; i < count; ++i)
      if (!isIn(b[i], 0x80, 0xBF)) return false;
    if (count == 2) return isIn(b[0], 0xC2, 0xDF) && isIn(b[1], 0x80, 0xBF);
    if (count == 3) {
      return (b[0] == 0xE0 && isIn(b[1], 0xA0, 0xBF)) || (isIn(b[0], 0xE1, 0xEC) && isIn(b[1], 0x80, 0xBF)) ||
             (b[0] == 0xED && isIn(b[1], 0x80, 0x9F)) || (isIn(b[0], 0xEE, 0xEF) && isIn(b[1], 0x80, 0xBF));
    }
    return (b[0] == 0xF0 && isIn(b[1], 0x90, 0xBF)) || (isIn(b[0], 0xF1, 0xF3) && isIn(b[1], 0x80, 0xBF)) ||
           (b[0] == 0xF4 && isIn(b[1], 0x80, 0x8F));
  }

  const Job& job_;
  ReplacementTable table_;
  std::size_t at_ = 0;
};

std::vector<std::string> linesOf(const std::vector<Call>& calls) {
  std::vector<std::string> lines;
  for (const auto& call : calls) lines.push_back(std::to_string(call.result) + ":" + call.line);
  return lines;
}

using Lines = std::vector<std::string>;

TEST(FieldsAndLinesParser, GivesTheLinesOfAFile) {
  struct Case {
    const char* what;
    Job job;
    Lines lines;  // "result:line"
  };
  const Case kCases[] = {
      {"an empty file", {""}, {"2:"}},
      {"one line without a separator", {"abc"}, {"2:abc"}},
      {"lines that end in the separator", {"a\nb\n"}, {"0:a", "0:b", "2:"}},
      {"an empty line", {"a\n\nb"}, {"0:a", "0:", "2:b"}},
      {"CR LF leaves a lone LF in the line", {.bytes = "a\nb\r\nc", .separator = u"\r\n"}, {"0:a\nb", "2:c"}},
      {"LF leaves the CR at the line's end", {"a\r\nb\r\n"}, {"0:a\r", "0:b\r", "2:"}},
      {"a separator of three characters", {.bytes = "a-=b=--=c", .separator = u"--="}, {"0:a-=b=", "2:c"}},
      {"no separator", {.bytes = "a\nb", .separator = u""}, {"2:a\nb"}},
      {"quotes hide separators and stay",
       {.bytes = "a,\"b\nc\",d\ne", .quote = u"\""},
       {"0:a,\"b\nc\",d", "2:e"}},
      {"a doubled quote changes nothing",
       {.bytes = "\"a\"\"\nb\"\nc", .quote = u"\""},
       {"0:\"a\"\"\nb\"", "2:c"}},
      {"a stray quote hides all behind it", {.bytes = "a\"\nb\nc", .quote = u"\""}, {"2:a\"\nb\nc"}},
      {"a quote in the middle counts", {.bytes = "a\"b\nc\"\nd", .quote = u"\""}, {"0:a\"b\nc\"", "2:d"}},
      {"without a quote string quotes are text", {"\"a\nb\""}, {"0:\"a", "2:b\""}},
      {"two quote characters never match", {.bytes = "\"\"a\nb", .quote = u"\"\""}, {"0:\"\"a", "2:b"}},
      {"a quote that is not ASCII", {.bytes = "«a\nb«\nc", .quote = u"«"}, {"0:«a\nb«", "2:c"}},
      {"a separator that is not ASCII",
       {.bytes = "a\u2028b\u2028", .separator = u"\u2028"},
       {"0:a", "0:b", "2:"}},
      {"the separator's canonical equal", {.bytes = "a\u037Eb;c", .separator = u";"}, {"0:a", "0:b", "2:c"}},
      {"a composed separator", {.bytes = "ae\u0301bé", .separator = u"é"}, {"0:a", "0:b", "2:"}},
      {"a replacement that makes the separator",
       {.bytes = "a|b\nc", .pairs = {{u"|", u"\n"}}},
       {"0:a", "0:b", "2:c"}},
      {"a replacement that makes the quote",
       {.bytes = "a'b\nc'\nd", .quote = u"\"", .pairs = {{u"'", u"\""}}},
       {"0:a\"b\nc\"", "2:d"}},
      {"a replacement that makes a long quote",
       {.bytes = "a'b\nc'\nd", .quote = u"<>", .pairs = {{u"'", u"<>"}}},
       {"0:a<>b\nc<>", "2:d"}},
      {"a removed character", {.bytes = "a*b\n*", .pairs = {{u"*", u""}}}, {"0:ab", "2:"}},
  };
  for (const auto& [what, job, lines] : kCases) EXPECT_EQ(linesOf(readAll(job)), lines) << what;
}

TEST(FieldsAndLinesParser, CountsBytesCharactersLinesAndPieces) {
  const auto calls = readAll({"aé\nb"});
  ASSERT_EQ(calls.size(), 2u);
  EXPECT_EQ(calls[0].stats, (ReadLineStats{4, 3, 1, 0}));
  EXPECT_EQ(calls[1].stats, (ReadLineStats{1, 1, 1, 0}));
  EXPECT_EQ(readAll({""})[0].stats, ReadLineStats{});
}

TEST(FieldsAndLinesParser, GivesALongLineInPieces) {
  const auto calls = readAll({std::string(40'000, 'x') + "\n"});
  ASSERT_EQ(calls.size(), 4u);
  EXPECT_EQ(calls[0].line.size(), 16'384u);
  EXPECT_EQ(calls[0].stats, (ReadLineStats{16'384, 16'384, 0, 1}));
  EXPECT_EQ(calls[1].line.size(), 16'384u);
  EXPECT_EQ(calls[2].line.size(), 7'232u);
  EXPECT_EQ(calls[2].stats, (ReadLineStats{7'233, 7'233, 1, 0}));
  EXPECT_EQ(calls[3].result, 2);
}

TEST(FieldsAndLinesParser, LeavesASeparatorThatTheLimitCompletesInThePiece) {
  const auto calls = readAll({std::string(16'383, 'x') + "\ny\n"});
  EXPECT_EQ(calls[0].line, std::string(16'383, 'x') + "\n");
  EXPECT_EQ(calls[0].stats, (ReadLineStats{16'384, 16'384, 0, 1}));
  EXPECT_EQ(calls[1].line, "y");
}

TEST(FieldsAndLinesParser, ForgetsAnOpenQuoteAtTheLimit) {
  const auto calls = readAll({.bytes = "\"" + std::string(16'383, 'x') + "y\nz", .quote = u"\""});
  EXPECT_EQ(linesOf({calls[1], calls[2]}), (Lines{"0:y", "2:z"}));
}

TEST(FieldsAndLinesParser, GivesAPairAtTheLimitWhole) {
  const auto calls = readAll({std::string(16'383, 'x') + "\U0001F600y"});
  EXPECT_EQ(calls[0].line, std::string(16'383, 'x') + "\U0001F600");
  EXPECT_EQ(calls[1].line, "y");
}

TEST(FieldsAndLinesParser, ReplacesInvalidUtf8ByTheByte) {
  struct Case {
    std::string bytes;
    std::string line;
    std::string errors;
  };
  const Case kCases[] = {
      {"\xE2"
       "AB",
       "???", "Invalid 3-byte UTF-8 character."},
      {"\x80"
       "a",
       "?a", "Invalid 1-byte UTF-8 character."},
      {"\xBF", "?", "Invalid 1-byte UTF-8 character."},
      {"\xC0\x80", "??", "Invalid 2-byte UTF-8 character."},
      {"\xC1\xBF", "??", "Invalid 2-byte UTF-8 character."},
      {"\xC2\n", "??", "Invalid 2-byte UTF-8 character."},
      {"\xDF\xC0", "??", "Invalid 2-byte UTF-8 character."},
      {"\xE0\x9F\xBF", "???", "Invalid 3-byte UTF-8 character."},
      {"\xED\xA0\x80", "???", "Invalid 3-byte UTF-8 character."},
      {"\xEF\xBF\xC0", "???", "Invalid 3-byte UTF-8 character."},
      {"\xF0\x8F\xBF\xBF", "????", "Invalid 4-byte UTF-8 character."},
      {"\xF4\x90\x80\x80", "????", "Invalid 4-byte UTF-8 character."},
      {"\xF5\x80\x80\x80", "????", "Invalid 4-byte UTF-8 character."},
      {"\xFF"
       "abc",
       "????", "Invalid 4-byte UTF-8 character."},
      {"\xC2\x80", "\xC2\x80", ""},
      {"\xDF\xBF", "\xDF\xBF", ""},
      {"\xE0\xA0\x80", "\xE0\xA0\x80", ""},
      {"\xED\x9F\xBF", "\xED\x9F\xBF", ""},
      {"\xEE\x80\x80", "\xEE\x80\x80", ""},
      {"\xEF\xBF\xBF", "\xEF\xBF\xBF", ""},
      {"\xF0\x90\x80\x80", "\xF0\x90\x80\x80", ""},
      {"\xF4\x8F\xBF\xBF", "\xF4\x8F\xBF\xBF", ""},
      {"\xEF\xBB\xBFx", "\xEF\xBB\xBFx", ""},  // a mark is a character like another
      {"a\xE2", "a", ""},                      // unfinished at the end: dropped in silence
      {"a\xF0\x9F\x98", "a", ""},
  };
  for (const auto& [bytes, line, errors] : kCases) {
    const auto calls = readAll({bytes});
    EXPECT_EQ(calls[0].line, line) << ::testing::PrintToString(bytes);
    EXPECT_EQ(calls[0].errors, errors) << ::testing::PrintToString(bytes);
    EXPECT_EQ(calls[0].stats.bytesRead, static_cast<std::int64_t>(bytes.size()));
  }
}

TEST(FieldsAndLinesParser, NeitherQuotesNorSeparatorsAreSeenInTheReplacementOfInvalidUtf8) {
  EXPECT_EQ(linesOf(readAll({.bytes = "a\x80z\nb", .quote = u"\"", .replacement = u"\""})),
            (Lines{"0:a\"z", "2:b"}));
  EXPECT_EQ(linesOf(readAll({.bytes = "a\x80z\nb", .replacement = u"\n"})), (Lines{"0:a\nz", "2:b"}));
}

TEST(FieldsAndLinesParser, QuotesAndSeparatorsAreSeenInTheReplacementOfASingleByte) {
  EXPECT_EQ(linesOf(readAll({.bytes = "a\x81z\nb", .encoding = 12, .replacement = u"\n"})),
            (Lines{"0:a", "0:z", "2:b"}));
  EXPECT_EQ(linesOf(readAll({.bytes = "a\xFFz\nb", .encoding = 1, .quote = u"\"", .replacement = u"\""})),
            (Lines{"2:a\"z\nb"}));
}

TEST(FieldsAndLinesParser, TellsUndefinedSingleBytesButNotThoseOfAscii) {
  const auto cp1252 = readAll({.bytes = "\x81\x9D\x80", .encoding = 12});
  EXPECT_EQ(cp1252[0].line, "??€");
  EXPECT_EQ(cp1252[0].errors,
            "Could not init single-byte character [-127].Could not init single-byte character [-99].");
  EXPECT_EQ(cp1252[0].stats, (ReadLineStats{3, 1, 1, 0}));
  const auto ascii = readAll({.bytes = "a\x81", .encoding = 1, .pairs = {{u"?", u"!"}}});
  EXPECT_EQ(ascii[0].line, "a?");  // the table does not see the replacement
  EXPECT_EQ(ascii[0].errors, "");
  EXPECT_EQ(ascii[0].stats, (ReadLineStats{2, 1, 1, 0}));
}

TEST(FieldsAndLinesParser, GoesOnInTheSameLineAfterErrorsBeyondTheLimit) {
  const auto calls = readAll({std::string(20'000, '\x80') + "a\nb"});
  EXPECT_EQ(calls[0].line, std::string(20'000, '?') + "a");
  EXPECT_EQ(calls[0].stats, (ReadLineStats{20'002, 2, 1, 1}));
  EXPECT_EQ(calls[1].line, "b");
}

TEST(FieldsAndLinesParser, FailsOnADirectoryAndKeepsWhatIntoHeld) {
  const int descriptor = open("/", O_RDONLY);
  FieldsAndLinesParser parser;
  TextBuffer into;
  into.append(u"kept");
  ReadLineStats stats;
  std::u16string errors;
  const LineRules rules(4, {}, u"\n", {}, u"?");
  EXPECT_EQ(parser.readLineFrom(descriptor, rules, into, stats, &errors), ReadResult::Failure);
  EXPECT_EQ(errno, EISDIR);
  EXPECT_EQ(into.view(), u"kept");
  EXPECT_EQ(toUtf8(errors), "Error reading file: " + std::to_string(EISDIR));
  close(descriptor);
}

TEST(FieldsAndLinesParser, AppendsBehindWhatIntoHolds) {
  const TemporaryFile file("b\n");
  FieldsAndLinesParser parser;
  TextBuffer into;
  into.append(u"a");
  ReadLineStats stats{1, 1, 1, 1};
  parser.readLineFrom(file.descriptor(), LineRules(4, {}, u"\n", {}, u"?"), into, stats, nullptr);
  EXPECT_EQ(into.view(), u"ab");
  EXPECT_EQ(stats, (ReadLineStats{3, 3, 2, 1}));  // only added to
}

TEST(FieldsAndLinesParser, ReadsCharByChar) {
  const TemporaryFile file("ab");
  FieldsAndLinesParser parser;
  unsigned char byte = 0;
  EXPECT_EQ(parser.readCharFrom(file.descriptor(), byte), 1);
  EXPECT_EQ(byte, 'a');
  EXPECT_EQ(parser.readCharFrom(file.descriptor(), byte), 1);
  EXPECT_EQ(parser.readCharFrom(file.descriptor(), byte), 0);
  EXPECT_EQ(parser.readCharFrom(-1, byte), -1);
  EXPECT_EQ(errno, EBADF);
}

TEST(FieldsAndLinesParser, TakesANulForTheQuoteOrTheSeparatorWhereItIsOne) {
  const std::string bytes("a\0b\nc\0d\n\xC3\xA9\0e", 12);
  const std::u16string nul(1, u'\0');
  for (const std::size_t readSize : {std::size_t{1}, FieldsAndLinesParser::kReadSize}) {
    const auto quoted = readAll({.bytes = bytes, .quote = nul}, readSize);
    EXPECT_EQ(quoted.size(), 2u) << readSize;
    EXPECT_EQ(quoted[0].line, std::string("a\0b\nc\0d", 7)) << readSize;
    const auto separated = readAll({.bytes = bytes, .separator = nul}, readSize);
    EXPECT_EQ(separated.size(), 4u) << readSize;
    EXPECT_EQ(separated[2].line, "d\n\xC3\xA9") << readSize;
  }
}

// Every text up to five characters of a small alphabet, for a few jobs each.
TEST(FieldsAndLinesParser, AgreesWithTheRuleOnAllSmallTexts) {
  const std::string kAlphabet[] = {"a", "\"", "\n", "\r", "\xE2", "é"};
  const Job kJobs[] = {
      {.bytes = "", .quote = u"\""},
      {.bytes = "", .quote = u"\"", .separator = u"\r\n"},
      {.bytes = "", .separator = u"\"\n"},
      {.bytes = "", .quote = u"\"", .separator = u"\""},
      {.bytes = "", .separator = u"", .pairs = {{u"a", u"\""}, {u"é", u""}}},
      {.bytes = "", .encoding = 12, .quote = u"\"", .pairs = {{std::int64_t{1}, u"a"}}},
  };
  for (std::size_t length = 0; length <= 5; ++length) {
    std::size_t texts = 1;
    for (std::size_t i = 0; i < length; ++i) texts *= std::size(kAlphabet);
    for (std::size_t number = 0; number < texts; ++number) {
      std::string bytes;
      for (std::size_t i = 0, rest = number; i < length; ++i, rest /= std::size(kAlphabet))
        bytes += kAlphabet[rest % std::size(kAlphabet)];
      Job job = kJobs[number % std::size(kJobs)];
      job.bytes = bytes;
      ASSERT_EQ(readAll(job), SteppingReader(job).readAll()) << ::testing::PrintToString(bytes);
    }
  }
}

TEST(FieldsAndLinesParser, AgreesWithTheRuleOnRandomBytes) {
  RandomSource random;
  const std::string kParts[] = {"a",
                                "b",
                                "\"",
                                "\"\"",
                                "\n",
                                "\r\n",
                                ",",
                                "\t",
                                "é",
                                "e\u0301",
                                "日本",
                                "😀",
                                "\x80",
                                "\xE2",
                                "\xF0",
                                "\xC3",
                                "\xFF",
                                "\x81",
                                "\x9D",
                                std::string(1, '\0'),
                                "plain ascii of some length, ",
                                ";",
                                "\u037E",
                                "K",
                                "\u212A",
                                "\x85",
                                "\u0085",
                                std::string(70, 'x'),
                                std::string(16'300, 'y'),
                                "\u2028"};
  const std::u16string kNul(1, u'\0');
  const std::u16string kSeparators[] = {u"\n", u"\n",     u"\n", u"\r\n", u"",  u";",    u"K",
                                        u"é",  u"\u2028", u"\"", u"ab",   u"😀", u"\n\n", kNul};
  const std::u16string kQuotes[] = {u"", u"\"", u"\"", u"a", u"é", u"\"\"", u"😀", kNul};
  const std::u16string kReplacements[] = {u"?", u"?", u"", u"\n", u"\"", u"<bad>", u"\r"};
  const ReplacementTable::Key kKeys[] = {u"a", u"\"",           u"é",  u"😀", std::int64_t{1}, std::int64_t{2},
                                         u"?", std::int64_t{3}, u"\n", u"日"};
  const std::u16string kWith[] = {u"", u"b", u"\n", u"\"", u"é", u"xyz", std::u16string(200, u'z')};
  const std::int64_t kEncodings[] = {4, 4, 4, 12, 30, 1, 7};
  for (std::uint64_t round = testing::rounds(3'000); round > 0; --round) {
    Job job;
    const std::size_t parts = random.oneIn(20) ? 60 : 12;
    for (std::size_t i = random.below(parts); i > 0; --i)
      job.bytes += random.oneIn(12) ? random.pick(kParts) : kParts[random.below(21)];
    job.encoding = random.pick(kEncodings);
    job.quote = random.pick(kQuotes);
    job.separator = random.pick(kSeparators);
    job.columnSeparator = random.oneIn(2) ? u"," : u"";
    job.replacement = random.pick(kReplacements);
    if (random.oneIn(3))
      for (std::size_t i = 1 + random.below(3); i > 0; --i)
        job.pairs.emplace_back(random.pick(kKeys), random.pick(kWith));
    const auto expected = SteppingReader(job).readAll();
    const std::size_t kSizes[] = {1, 7, 64, FieldsAndLinesParser::kReadSize,
                                  FieldsAndLinesParser::kLargeReadSize};
    ASSERT_EQ(readAll(job, random.pick(kSizes)), expected)
        << ::testing::PrintToString(job.bytes) << " encoding " << job.encoding << " quote "
        << toUtf8(job.quote) << " separator " << toUtf8(job.separator) << " pairs " << job.pairs.size()
        << " replacement " << toUtf8(job.replacement);
  }
}

}  // namespace
}  // namespace quillet
