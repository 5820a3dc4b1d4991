#include "text/file_scan.h"

#include <cerrno>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <utility>
#include <vector>

#include "platform/unicode_text.h"
#include "support/temporary_folder.h"

namespace quillet {
namespace {

using Log = std::vector<std::pair<int, std::u16string>>;
using namespace std::string_literals;

constexpr std::int64_t kTab = 1;
constexpr std::int64_t kCsv = 2;
constexpr std::int64_t kPipe = 3;
constexpr std::int64_t kPreset = 99;

struct Scan {
  bool lineEndsInCR = false;
  std::int64_t fileType = kPreset;
  Log log = {};
};

Scan scan(const std::string& path, std::int64_t encoding = 4) {
  Scan result;
  scanFile(path, encoding, &result.lineEndsInCR, &result.fileType,
           [&](int level, std::u16string_view text) { result.log.emplace_back(level, text); });
  return result;
}

std::u16string withPath(std::u16string_view before, const std::string& path,
                        std::u16string_view after = u"") {
  return std::u16string(before) + u"\"" + toUtf16(path) + u"\"" + std::u16string(after);
}

TEST(FileScan, TellsTheFileType) {
  struct Case {
    const char* name;
    std::string content;
    std::int64_t fileType;
  };
  const Case cases[] = {
      {"data.CSV", "a,b\nc,d\n", kCsv},
      {"data.csv", "a", kCsv},
      {"data.CsV", "a", kCsv},
      {".csv", "a", kCsv},
      {"data.txt", "a,b\nc,d\n", kTab},
      {"datacsv", "a,b", kTab},
      {"data.csv.txt", "a,b", kTab},
      {"data.csv", "a|b", kPipe},
      {"data.txt", "a,b\nc\nd|e", kPipe},  // the whole block counts
      {"data.csv", "a,\"b\tc\"\n", kTab},
      {"data.csv", "a|b\tc", kTab},
      {"data.txt", std::string(16383, 'a') + "|", kPipe},  // the last byte of the block
      {"data.txt", std::string(16384, 'a') + "|", kTab},
      {"data.csv", std::string(16384, 'a') + "\t", kCsv},
      {"data.csv", "a\0\t|"s, kCsv},  // the text ends at a NUL
      {"data.csv", "a\0\xFF"s, kCsv},
  };
  for (const Case& one : cases) {
    const testing::TemporaryFolder folder;
    const Scan result = scan(folder.write(one.name, one.content));
    EXPECT_EQ(result.fileType, one.fileType) << one.name << ": " << one.content.substr(0, 20);
    EXPECT_EQ(result.log, Log{});
  }
}

TEST(FileScan, TellsABareCarriageReturn) {
  const std::pair<std::string, bool> cases[] = {
      {"a\nb\n", false},       {"a\rb\r", true},     {"a\r\nb\r\n", false}, {"a\n\rb\n\r", false},
      {"a\r\nb\rc\r\n", true}, {"a\r\r\nb\n", true}, {"a\r\r\r\n", true},   {"a", false},
      {"a\r", true},           {"\n\r\r\n", false},  {"a\0\r"s, false},
  };
  const testing::TemporaryFolder folder;
  for (const auto& [content, expected] : cases)
    EXPECT_EQ(scan(folder.write("data", content)).lineEndsInCR, expected)
        << ::testing::PrintToString(content);
}

TEST(FileScan, SaysWhatDoesNotDecodeAndWritesNothing) {
  struct Case {
    const char* what;
    std::int64_t encoding;
    std::string content;
    bool decodes;
  };
  const std::string nearlyFull(16383, 'a');
  const Case cases[] = {
      {"UTF-8", 4, "caf\xC3\xA9", true},
      {"replacement character itself", 4, "\xEF\xBF\xBD", true},
      {"mark at the start", 4,
       "\xEF\xBB\xBF"
       "a",
       true},
      {"non-character", 4, "\xEF\xBF\xBF", true},
      {"bad byte", 4, "a\xFF", false},
      {"surrogate", 4, "\xED\xA0\x80", false},
      {"overlong", 4, "\xC0\x80", false},
      {"cut by the file's end", 4, "a\xC3", false},
      {"cut by the block's end", 4, nearlyFull + "\xC3\xA9", false},
      {"bad byte behind the block", 4, nearlyFull + "a\xFF", true},
      {"bad byte behind a NUL", 4, "a\0\xFF"s, true},
      {"CP1252", 12, "caf\xE9 \x80", true},
      {"undefined in CP1252", 12, "\x81", false},
      {"Mac Roman", 30, "\x81\x8D\xFF", true},
      {"ASCII", 1, "plain", true},
      {"above ASCII", 1, "\x80", false},
      {"unknown encoding", 7, "plain", false},
      {"unknown encoding and no text", 7, "\0"s, false},
  };
  for (const Case& one : cases) {
    const testing::TemporaryFolder folder;
    const std::string path = folder.write("data.txt", one.content + "\t\r");
    const Scan result = scan(path, one.encoding);
    if (one.decodes) {
      EXPECT_EQ(result.log, Log{}) << one.what;
      EXPECT_EQ(result.fileType, kTab) << one.what;
      continue;
    }
    const std::u16string label = one.encoding == 4    ? u"UTF-8"
                                 : one.encoding == 12 ? u"Windows CP1252"
                                 : one.encoding == 1  ? u"ASCII"
                                                      : u"(Unknown)";
    const std::u16string message = u"Could not encode first line using encoding " + label + u" in ";
    EXPECT_EQ(result.log, (Log{{2, withPath(message, path)}})) << one.what;
    EXPECT_EQ(result.fileType, kPreset) << one.what;
    EXPECT_FALSE(result.lineEndsInCR) << one.what;
  }
}

TEST(FileScan, AnEmptyFileSaysNothingAndWritesNothing) {
  const testing::TemporaryFolder folder;
  const Scan result = scan(folder.write("data.csv", ""));
  EXPECT_EQ(result.log, Log{});
  EXPECT_EQ(result.fileType, kPreset);
}

TEST(FileScan, AFileThatStartsWithANulHasAnEmptyFirstLine) {
  const testing::TemporaryFolder folder;
  const std::string path = folder.write("data.csv", "\0\t\r"s);
  const Scan result = scan(path);
  EXPECT_EQ(result.log, (Log{{0, withPath(u"First line was empty in ", path)}}));
  EXPECT_EQ(result.fileType, kCsv);  // it has been told by then
  EXPECT_FALSE(result.lineEndsInCR);
}

TEST(FileScan, SaysWhatCannotBeOpenedOrRead) {
  const testing::TemporaryFolder folder;
  const std::string missing = folder.path("missing.csv");
  Scan result = scan(missing);
  EXPECT_EQ(result.log, (Log{{2, withPath(u"Error 2: Could not open ", missing, u" for scan")}}));
  EXPECT_EQ(result.fileType, kPreset);
  result = scan(folder.path());  // a folder opens and cannot be read
  EXPECT_EQ(result.log, (Log{{2, withPath(u"Error 21: Could not read file ", folder.path())}}));
  EXPECT_EQ(result.fileType, kPreset);
}

TEST(FileScan, DoesNotWaitForAPipeThatNobodyWritesTo) {
  const testing::TemporaryFolder folder;
  ASSERT_EQ(::mkfifo(folder.path("pipe").c_str(), 0600), 0);
  EXPECT_EQ(scan(folder.path("pipe")).log, Log{});
}

TEST(FileScan, WritesOnlyWhatIsAskedFor) {
  const testing::TemporaryFolder folder;
  const std::string path = folder.write("data.csv", "a\rb");
  bool lineEndsInCR = false;
  std::int64_t fileType = kPreset;
  const auto log = [](int, std::u16string_view) { FAIL(); };
  scanFile(path, 4, nullptr, nullptr, log);
  scanFile(path, 4, &lineEndsInCR, nullptr, log);
  EXPECT_TRUE(lineEndsInCR);
  scanFile(path, 4, nullptr, &fileType, log);
  EXPECT_EQ(fileType, kCsv);
}

}  // namespace
}  // namespace quillet
