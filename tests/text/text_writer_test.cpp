#include "text/text_writer.h"

#include <csignal>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>

#include "platform/text_search.h"
#include "platform/unicode_text.h"
#include "support/log_catcher.h"
#include "support/random_source.h"
#include "support/temporary_file.h"

namespace quillet {
namespace {

using testing::LogCatcher;
using testing::RandomSource;
using testing::TemporaryFile;

constexpr std::int64_t kAscii = 1, kUtf8 = 4, kCp1252 = 12, kMacRoman = 30, kUnknown = 7;

struct Written {
  std::string bytes;
  std::int64_t characters = 0;
  bool operator==(const Written&) const = default;
};
std::ostream& operator<<(std::ostream& out, const Written& written) {
  return out << ::testing::PrintToString(written.bytes) << ", " << written.characters << " characters";
}

Written written(std::u16string_view text, std::int64_t encoding, std::u16string_view replacement = u"?") {
  const TemporaryFile file("");
  TextWriter writer(file.descriptor(), encoding, replacement);
  EXPECT_EQ(writer.write(text), !text.empty());
  writer.flush();
  const Written result{file.content(), writer.charactersEncoded()};
  EXPECT_EQ(writer.bytesWritten(), static_cast<std::int64_t>(result.bytes.size()));
  return result;
}

// The rule: sequence by sequence.
Written writtenByRule(std::u16string_view text, std::int64_t encodingCode, std::u16string_view replacement) {
  const auto encoding = static_cast<Encoding>(encodingCode);
  Written result;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = composedSequenceEnd(text, at);
    const auto sequence = text.substr(at, end - at);
    std::string bytes;
    if (canBeConverted(sequence, encoding)) {
      appendEncoded(sequence, encoding, bytes);
    } else if (const auto converted = encodedText(replacement, encoding)) {
      bytes = *converted;
    } else {
      at = end;
      continue;
    }
    result.bytes += bytes.substr(0, bytes.find('\0'));
    ++result.characters;
    at = end;
  }
  return result;
}

struct Case {
  const char* what;
  std::u16string text;
  std::int64_t encoding;
  Written result;
  std::u16string replacement = u"?";
};

const std::u16string kNul(1, u'\0');

TEST(TextWriter, WritesSequenceBySequence) {
  const Case kCases[] = {
      {"ASCII in each", u"Az 09~", kAscii, {"Az 09~", 6}},
      {"", u"Az 09~", kUtf8, {"Az 09~", 6}},
      {"", u"Az 09~", kCp1252, {"Az 09~", 6}},
      {"", u"Az 09~", kMacRoman, {"Az 09~", 6}},
      {"two bytes", u"é", kUtf8, {"\xC3\xA9", 1}},
      {"three", u"€", kUtf8, {"\xE2\x82\xAC", 1}},
      {"four", u"\U0001F600", kUtf8, {"\xF0\x9F\x98\x80", 1}},
      {"a code page's own byte", u"é€", kCp1252, {"\xE9\x80", 2}},
      {"the same in the other", u"é€", kMacRoman, {"\x8E\xDB", 2}},
      {"not in ASCII", u"aéb", kAscii, {"a?b", 3}},
      {"an emoji is one character of two units", u"a\U0001F600b", kAscii, {"a?b", 3}},
      {"joined emoji are one", u"\U0001F468\u200D\U0001F469", kAscii, {"?", 1}},
      {"a mark falls with its base", u"e\u0301", kAscii, {"?", 1}},
      {"and composes in a code page", u"e\u0301", kCp1252, {"\xE9", 1}},
      {"if it can", u"q\u0301x", kCp1252, {"?x", 2}},
      {"and stands in UTF-8", u"e\u0301", kUtf8, {"e\xCC\x81", 1}},
      {"CR LF is two", u"\r\n", kUtf8, {"\r\n", 2}},
      {"NUL counts and writes nothing", u"a" + kNul + u"b", kUtf8, {"ab", 3}},
      {"in a code page too", u"a" + kNul + u"b", kCp1252, {"ab", 3}},
      {"in ASCII too", kNul, kAscii, {"", 1}},
      {"NUL with a mark", kNul + u"\u0301", kUtf8, {"", 1}},
      {"undefined bytes are no characters", u"\u0081\u008D", kCp1252, {"??", 2}},
      {"a euro sign for the old currency sign", u"\u00A4", kMacRoman, {"?", 1}},
      {"a long replacement", u"é", kAscii, {"[unknown character]", 1}, u"[unknown character]"},
      {"an empty replacement", u"aéb", kAscii, {"ab", 3}, u""},
      {"a replacement in the encoding", u"\U0001F600", kCp1252, {"\xE9\x80", 1}, u"é€"},
      {"a replacement that ends at its NUL", u"é", kAscii, {"x", 1}, u"x" + kNul + u"y"},
      {"a mark at the start stands alone",
       u"\u0301a",
       kUtf8,
       {"\xCC\x81"
        "a",
        2}},
      {"half a pair", u"a\xD83D", kUtf8, {"a?", 2}},
      {"an unknown encoding has nothing", u"ab", kUnknown, {"", 0}},
  };
  const LogCatcher log;
  for (const auto& [what, text, encoding, result, replacement] : kCases)
    EXPECT_EQ(written(text, encoding, replacement), result)
        << what << " " << toUtf8(text) << " in " << encoding;
}

TEST(TextWriter, DropsWhatEvenTheReplacementCannotStandFor) {
  const LogCatcher log;
  EXPECT_EQ(written(u"aéb\U0001F600c", kAscii, u"é"), (Written{"abc", 3}));
  EXPECT_EQ(log.lines, (std::vector<std::u16string>{u"Could not encode replacement string [é]",
                                                    u"Could not encode replacement string [é]"}));
}

TEST(TextWriter, TakesAnEmptyTextForAFailure) {
  const TemporaryFile file("");
  TextWriter writer(file.descriptor(), kUtf8, u"?");
  EXPECT_FALSE(writer.write(u""));
  EXPECT_FALSE(writer.writeJoined({}, u",", 0));
  const std::u16string_view nothing[] = {u"", u""};
  EXPECT_FALSE(writer.writeJoined(nothing, u"", 0));
  EXPECT_FALSE(writer.writeJoined({nothing, 1}, u",", 0));
  EXPECT_TRUE(writer.writeJoined(nothing, u",", 0));
  EXPECT_TRUE(writer.writeJoined({nothing, 1}, u"", 1));
  writer.flush();
  EXPECT_EQ(file.content(), ",\"\"");
  EXPECT_EQ(writer.charactersEncoded(), 3);
}

TEST(TextWriter, EncodesEachTextByItself) {
  const TemporaryFile file("");
  TextWriter writer(file.descriptor(), kCp1252, u"?");
  writer.write(u"e");
  writer.write(u"\u0301");  // joins nothing that was written before
  writer.flush();
  EXPECT_EQ(file.content(), "e?");
  EXPECT_EQ(writer.charactersEncoded(), 2);
}

TEST(TextWriter, JoinsCellsWithQuotes) {
  struct JoinCase {
    const char* what;
    std::vector<std::u16string_view> cells;
    std::u16string_view separator;
    std::size_t quotedCount;
    std::string bytes;
    std::int64_t characters;
  };
  const JoinCase kCases[] = {
      {"plain", {u"a", u"b", u""}, u",", 0, "a,b,", 4},
      {"quoted", {u"a", u""}, u";", 2, "\"a\";\"\"", 6},
      {"a quote is doubled", {u"a\"b"}, u",", 1, "\"a\"\"b\"", 6},
      {"the last cells are not", {u"a", u"x\"", u"x"}, u",", 1, "\"a\",x\",x", 8},
      {"not ASCII", {u"é\"", u"b"}, u"–", 2, "\"\xC3\xA9\"\"\"\xE2\x80\x93\"b\"", 9},
      {"a mark joins the separator",
       {u"a", u"\u0301b"},
       u",",
       0,
       "a,\xCC\x81"
       "b",
       3},
      {"a mark joins the closing quote's neighbour", {u"\u0301"}, u",", 1, "\"\xCC\x81\"", 2},
      {"a quote under a mark is another character", {u"a\"\u0301"}, u",", 1, "\"a\"\xCC\x81\"", 4},
      {"the separator between empty cells", {u"", u"", u""}, u"||", 0, "||||", 4},
  };
  for (const auto& [what, cells, separator, quotedCount, bytes, characters] : kCases) {
    const TemporaryFile file("");
    TextWriter writer(file.descriptor(), kUtf8, u"?");
    EXPECT_TRUE(writer.writeJoined(cells, separator, quotedCount)) << what;
    writer.flush();
    EXPECT_EQ(file.content(), bytes) << what;
    EXPECT_EQ(writer.charactersEncoded(), characters) << what;
  }
}

// --- Writes that fail. ---

TEST(TextWriter, TellsAFailedWriteOnceABlockAndGoesOn) {
  const LogCatcher log;
  TextWriter writer(-1, kUtf8, u"?");
  EXPECT_TRUE(writer.write(u"abc"));
  writer.flush();
  writer.flush();  // nothing waits any more
  EXPECT_EQ(log.lines, std::vector<std::u16string>{u"Could not write string [abc] to file, errno: 9"});
  for (int i = 0; i < 100'000; ++i) EXPECT_TRUE(writer.write(u"0123456789"));
  writer.flush();
  EXPECT_GE(log.lines.size(), 4u);
  EXPECT_LE(log.lines.size(), 6u);  // a million characters in blocks of 262,144 bytes
  EXPECT_EQ(writer.bytesWritten(), 0);
  EXPECT_EQ(writer.charactersEncoded(), 1'000'003);
}

TEST(TextWriter, SurvivesAPipeThatNobodyReads) {
  const LogCatcher log;
  const auto before = std::signal(SIGPIPE, SIG_IGN);
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  close(ends[0]);
  TextWriter writer(ends[1], kUtf8, u"?");
  writer.write(u"abc");
  writer.flush();
  EXPECT_EQ(writer.bytesWritten(), 0);
  EXPECT_EQ(log.lines, std::vector<std::u16string>{u"Could not write string [abc] to file, errno: 32"});
  close(ends[1]);
  std::signal(SIGPIPE, before);
}

// In a process of its own, since the limit is one of a process. The exit status tells which check failed.
int writeBeyondTheFileSizeLimit(int descriptor) {
  std::signal(SIGXFSZ, SIG_IGN);
  const rlimit limit{100'000, 100'000};
  if (setrlimit(RLIMIT_FSIZE, &limit) != 0) return 1;
  int told = 0;
  setSystemLogSink([&](std::u16string_view) { ++told; });
  TextWriter writer(descriptor, kUtf8, u"?");
  for (int i = 0; i < 50'000; ++i)
    if (!writer.write(u"0123456789")) return 2;
  writer.flush();
  if (writer.bytesWritten() != 100'000) return 3;
  if (writer.charactersEncoded() != 500'000) return 4;
  return told == 2 ? 0 : 5;  // two blocks could not be written whole
}

TEST(TextWriter, CountsOnlyWhatReachedAFullDisk) {
  const TemporaryFile file("");
  const pid_t child = fork();
  ASSERT_GE(child, 0);
  if (child == 0) _exit(writeBeyondTheFileSizeLimit(file.descriptor()));
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  ASSERT_TRUE(WIFEXITED(status));
  EXPECT_EQ(WEXITSTATUS(status), 0);
  EXPECT_EQ(file.content().size(), 100'000u);
}

// --- Against the rule. ---

// What joins, what does not, and what the encodings lack.
const std::u16string kParts[] = {
    u"a",      u"b",          u"e",          u"\"",         u",",          u"0123456",    u"01234567",
    kNul,      u"\n",         u"é",          u"ÿ",          u"\u0080",     u"€",          u"Ω",
    u"\u2126", u"\u0301",     u"\u0308",     u"\u0327",     u"\u0903",     u"\u200D",     u"\u200C",
    u"\u0915", u"\u094D",     u"\u0937",     u"\u1100",     u"\u1161",     u"\u11A8",     u"\uAC00",
    u"\u0E33", u"\U0001F600", u"\U0001F468", u"\U0001F3FD", u"\U0001F1E9", u"\U0001F1EA", u"\U00010000",
    u"漢",     u"\uFE0F",     u"\u0600",     u"\xD83D",     u"\xDE00"};
constexpr std::int64_t kEncodings[] = {kAscii, kUtf8, kUtf8, kCp1252, kMacRoman, kUnknown};
const std::u16string kReplacements[] = {
    u"?", u"", u"é", u"e\u0301", u"\U0001F600", u"sixteen letters.", u"seventeen letters", u"\xD83D"};

// Runs of plain text of the lengths at which the fast ways change, with random parts between.
std::u16string randomText(RandomSource& random) {
  constexpr std::size_t kRuns[] = {1, 7, 8, 9, 15, 16, 17, 63, 64, 65};
  const std::u16string fillers[] = {u"x",  u"é",  u"漢",     u"x",      u"\U0001F600", u"Ж",
                                    u"か", u"한", u"xéЖ漢x", u"\u02FF", u"\u0482",     u"x\u0300"};
  std::u16string text;
  for (std::size_t i = 1 + random.below(6); i > 0; --i) {
    text += random.text(kParts, 6);
    std::size_t run = random.pick(kRuns);
    if (random.oneIn(40)) run = 4'096 - text.size() % 4'096 + random.below(4) - 2;
    const auto& filler = random.pick(fillers);
    for (std::size_t k = 0; k < run; ++k) text += filler;
  }
  return text + random.text(kParts, 4);
}

TEST(TextWriter, WritesWhatTheRuleSays) {
  const LogCatcher log;
  RandomSource random;
  for (std::uint64_t round = 0; round < testing::rounds(1'000) && !::testing::Test::HasFailure(); ++round) {
    const auto text = randomText(random);
    const auto encoding = random.pick(kEncodings);
    const auto& replacement = random.pick(kReplacements);
    EXPECT_EQ(written(text, encoding, replacement), writtenByRule(text, encoding, replacement))
        << "round " << round << " encoding " << encoding << " replacement " << toUtf8(replacement);
  }
}

std::u16string joinedByRule(const std::vector<std::u16string_view>& cells, std::u16string_view separator,
                            std::size_t quotedCount) {
  std::u16string text;
  for (std::size_t i = 0; i < cells.size(); ++i) {
    if (i > 0) text += separator;
    if (i < quotedCount)
      text += u"\"" + stringByReplacingOccurrences(cells[i], u"\"", u"\"\"") + u"\"";
    else
      text += cells[i];
  }
  return text;
}

TEST(TextWriter, JoinsWhatTheRuleSays) {
  const LogCatcher log;
  RandomSource random(1);
  const std::u16string starts[] = {u"", u"é", u"Ж", u"x", u"\"", u"漢字かな"};
  const std::u16string separators[] = {u",", u",",  u"\t", u"x",      u"1",  u"\t",
                                       u"",  u"||", u"é",  u"\u0301", u"\"", kNul};
  for (std::uint64_t round = 0; round < testing::rounds(1'000) && !::testing::Test::HasFailure(); ++round) {
    std::vector<std::u16string> texts;
    const bool plain = random.oneIn(3);
    const bool apart = random.oneIn(2);
    for (std::size_t i = random.below(6); i > 0; --i) {
      if (plain)
        texts.emplace_back(std::u16string(random.below(40), u'x') + (random.oneIn(4) ? u"\"y" : u""));
      else if (apart)  // cells that are not ASCII, which nothing joins at their start
        texts.emplace_back(random.pick(starts) + random.text(kParts, 4));
      else
        texts.emplace_back(random.oneIn(10) ? randomText(random) : random.text(kParts, 5));
    }
    const std::vector<std::u16string_view> cells(texts.begin(), texts.end());
    const auto& separator = random.pick(separators);
    const std::size_t quotedCount = random.oneIn(2) ? 0 : random.below(cells.size() + 1);
    const auto encoding = random.pick(kEncodings);
    const auto text = joinedByRule(cells, separator, quotedCount);

    const TemporaryFile file("");
    TextWriter writer(file.descriptor(), encoding, u"?");
    EXPECT_EQ(writer.writeJoined(cells, separator, quotedCount), !text.empty());
    writer.flush();
    EXPECT_EQ((Written{file.content(), writer.charactersEncoded()}), writtenByRule(text, encoding, u"?"))
        << "round " << round << " encoding " << encoding;
    TextBuffer buffer(1);
    appendJoined(cells, separator, quotedCount, buffer);
    EXPECT_EQ(buffer.view(), text) << "round " << round;
  }
}

TEST(TextAsEncoded, ShowsWhatWillBeWritten) {
  EXPECT_EQ(textAsEncoded(u"aé\U0001F600e\u0301", kAscii, u"?", 100), u"a???");
  EXPECT_EQ(textAsEncoded(u"aé\U0001F600e\u0301", kCp1252, u"?", 100), u"aé?e\u0301");
  EXPECT_EQ(textAsEncoded(u"aé\U0001F600", kUtf8, u"?", 100), u"aé\U0001F600");
  EXPECT_EQ(textAsEncoded(u"aé", kAscii, u"", 100), u"a");
  EXPECT_EQ(textAsEncoded(u"aé", kAscii, u"<é>", 100), u"a<é>");  // the text itself, convertible or not
  EXPECT_EQ(textAsEncoded(u"", kAscii, u"?", 100), u"");
}

TEST(TextAsEncoded, StopsOnceThereIsEnough) {
  EXPECT_EQ(textAsEncoded(u"abcdef", kUtf8, u"?", 3), u"abc");
  EXPECT_EQ(textAsEncoded(u"ab\U0001F600d", kUtf8, u"?", 3), u"ab\U0001F600");  // no sequence is cut
  EXPECT_EQ(textAsEncoded(u"abc", kUtf8, u"?", 0), u"");
}

}  // namespace
}  // namespace quillet
