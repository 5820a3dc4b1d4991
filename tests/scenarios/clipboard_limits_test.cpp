// The largest texts that the clipboard data window takes, and what is one too many, in the whole application.
// They are large, so only the long mode has them.
#include <string>

#include "scenarios/clipboard_scenario.h"
#include "support/random_source.h"

namespace quillet::testing {
namespace {

constexpr std::uint64_t kLongMode = 50;  // from so many rounds on
constexpr std::size_t kMostCharacters = 100'000'000;
constexpr std::size_t kMostLines = 1'048'576;
constexpr std::size_t kMostColumns = 16'384;

class ClipboardLimits : public ClipboardScenario {
 protected:
  void SetUp() override {
    if (environmentNumber("QUILLET_TEST_ROUNDS", 1) < kLongMode)
      GTEST_SKIP() << "texts of a hundred million characters: set QUILLET_TEST_ROUNDS to 50 or more";
    launch();
  }
  json alertsOf(const json& result) { return result.value("alerts", json::array()); }
  json splitAt(const std::string& lines, const std::string& columns) {
    return perform({{"Code", 102}, {"Arg1", lines}, {"Arg2", columns}});
  }
};

// A text is told by how many lines it has when it is cut at each of its characters.
TEST_F(ClipboardLimits, AHundredMillionCharactersAreTaken) {
  const json kTooManyLines = {clipboardSheet("Too many lines",
                                             "This app is limited to 1048576 lines.\n"
                                             "100000001 lines were found on the clipboard.")};
  EXPECT_EQ(alertsOf(refresh(std::string(kMostCharacters, 'x'))), json::array());
  EXPECT_EQ(alertsOf(splitAt("x", "")), kTooManyLines);

  EXPECT_EQ(alertsOf(refresh(std::string(kMostCharacters + 1, 'y'))),
            (json{clipboardSheet("Too many characters",
                                 "This app is limited to 100000000 characters.\n"
                                 "100000001 characters were found on the clipboard.")}));
  EXPECT_EQ(alertsOf(splitAt("x", "")), kTooManyLines) << "the text is as it was";
  EXPECT_EQ(alertsOf(splitAt("y", "")), json::array());
  refresh("");
  EXPECT_EQ(operations(), json::array());
}

TEST_F(ClipboardLimits, AMillionLinesAreMade) {
  const std::string most(kMostLines - 1, '/');
  refresh(most);
  EXPECT_EQ(alertsOf(splitAt("/", "|")), json::array());
  EXPECT_EQ(window()["grid"].size(), kMostLines);

  refresh("x" + most + "/");
  EXPECT_EQ(alertsOf(splitAt("/", "|")),
            (json{clipboardSheet("Too many lines",
                                 "This app is limited to 1048576 lines.\n"
                                 "1048577 lines were found on the clipboard.")}));
  const json refused = window();
  EXPECT_EQ(refused["grid"], (json{{"x" + most + "/"}}));
  EXPECT_EQ(refused["shown"], "text");
  EXPECT_EQ(refused["status"], status("Too many lines", 2));
  EXPECT_EQ(refused["columns"], 1);
  EXPECT_EQ(refused["operations"].size(), 1u);
}

TEST_F(ClipboardLimits, SixteenThousandColumnsAreMade) {
  const std::string most(kMostColumns - 1, '|');
  refresh("a/" + most + "/b");
  EXPECT_EQ(alertsOf(splitAt("/", "|")), json::array());
  const json split = window();
  EXPECT_EQ(split["columns"], kMostColumns);
  EXPECT_EQ(split["grid"].size(), 3u);
  EXPECT_EQ(split["grid"][1].size(), kMostColumns);

  refresh("a/b/" + most + "|/c");
  EXPECT_EQ(alertsOf(splitAt("/", "|")),
            (json{clipboardSheet("Too many columns",
                                 "This app is limited to 16384 columns.\n"
                                 "16385 columns were found on the clipboard on line 3.")}));
  const json refused = window();
  EXPECT_EQ(refused["grid"], (json{{"a"}, {"b"}})) << "the lines before it";
  EXPECT_EQ(refused["shown"], "grid");
  EXPECT_EQ(refused["status"], status("Too many columns", 2));
  EXPECT_EQ(refused["columns"], 1);
}

}  // namespace
}  // namespace quillet::testing
