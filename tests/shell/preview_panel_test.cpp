#include "shell/preview_panel.h"

#include <gtest/gtest.h>

#include "support/temporary_folder.h"

namespace quillet {
namespace {

constexpr auto kInput = PreviewStores::Side::Input;

class PreviewPanelTest : public ::testing::Test {
 protected:
  PreviewPanelTest() { panel_.addCommandsTo(interface_.commands()); }

  void addFile(InputFile file) {
    files_.insert(files_.count(), {std::make_shared<InputFile>(std::move(file))});
  }
  static InputFile fileOf(const std::string& path) {
    InputFile file;
    file.filePath = path;
    return file;
  }
  void select(std::initializer_list<std::int64_t> rows) { selection_.select(IndexSet(rows)); }
  bool isHidden(const char* name) { return interface_.control(name)->isHidden(); }
  // Which of the two tables and the text are shown.
  std::string shown() {
    std::string result;
    for (const char* name : {"previewTableView", "previewOutputTableView", "previewTextView"})
      if (!isHidden(name)) result += std::string(name) + " ";
    return result;
  }

  testing::TemporaryFolder home_;
  UserDefaults defaults_{home_.path("defaults.json")};
  UserInterface interface_;
  Window window_{interface_, "window", u""};
  InputFiles files_;
  FileSelection selection_{window_, files_};
  PreviewStores stores_;
  PreviewPanel panel_{window_, stores_, selection_, defaults_};
};

TEST_F(PreviewPanelTest, ThePathLabelFollowsTheSelection) {
  addFile(fileOf("/a"));
  addFile(fileOf("/b"));
  addFile({});
  struct Case {
    std::initializer_list<std::int64_t> rows;
    std::u16string expected;
  };
  const Case cases[] = {
      {{}, u""},
      {{0}, u"/a"},
      {{0, 1}, u"(Multiple)"},
      {{1}, u"/b"},
      {{}, u""},
      {{1, 2}, u"(Multiple)"},
      {{2}, u"(Multiple)"},  // a file without a path leaves the label as it is
      {{}, u""},
      {{2}, u""},
  };
  for (const auto& one : cases) {
    select(one.rows);
    panel_.updatePreviewPanel();
    EXPECT_EQ(panel_.pathLabel(), one.expected);
  }
}

TEST_F(PreviewPanelTest, ASelectedRowThatIsNoFileAnyMoreHasNoPath) {
  addFile(fileOf("/a"));
  select({0});
  panel_.updatePreviewPanel();
  files_.setAll({});
  panel_.updatePreviewPanel();
  EXPECT_EQ(panel_.pathLabel(), u"");
}

TEST_F(PreviewPanelTest, TellsTheExpectedColumnsOfTheOneSelectedFile) {
  std::vector<std::vector<ColumnEntry>> told;
  panel_.setRefillJoinColumns([&](const std::vector<ColumnEntry>& columns) { told.push_back(columns); });
  InputFile file = fileOf("/a");
  file.expectedColumnsInLine = {{0, u"x"}, {1, u"y"}};
  addFile(file);
  addFile(fileOf("/b"));
  panel_.updatePreviewPanel();
  EXPECT_TRUE(told.empty()) << "none is selected";
  select({0, 1});
  panel_.updatePreviewPanel();
  EXPECT_TRUE(told.empty()) << "two are selected";
  select({0});
  panel_.updatePreviewPanel();
  select({1});
  panel_.updatePreviewPanel();
  EXPECT_EQ(told, (std::vector<std::vector<ColumnEntry>>{{{0, u"x"}, {1, u"y"}}, {}}));
}

TEST_F(PreviewPanelTest, EachTypeHasItsView) {
  EXPECT_EQ(shown(), "previewTableView ") << "at first";
  const std::pair<std::int64_t, const char*> cases[] = {{0, "previewTextView "},
                                                        {1, "previewTableView "},
                                                        {3, "previewTextView "},
                                                        {2, "previewOutputTableView "}};
  for (const auto& [type, view] : cases) {
    panel_.setPreviewType(type);
    EXPECT_EQ(shown(), view) << type;
  }
  panel_.setPreviewType(4);
  EXPECT_EQ(panel_.previewType(), 2) << "there is no such type";
  EXPECT_EQ(shown(), "previewOutputTableView ");
}

TEST_F(PreviewPanelTest, TheTextIsSetForOneFileOnly) {
  addFile(fileOf("/a"));
  addFile(fileOf("/b"));
  stores_.setInputString(u"in\r\nput");
  stores_.setInputLineSeparator(u"\r\n");
  stores_.appendOutput(u"out\r\nput");
  panel_.setPreviewType(0);
  EXPECT_EQ(panel_.text(), u"") << "no file is selected";
  select({0});
  panel_.updatePreviewArea();
  EXPECT_EQ(panel_.text(), u"in\nput");
  panel_.setPreviewType(3);
  EXPECT_EQ(panel_.text(), u"out\u240D\nput") << "the separator is not folded here";
  select({0, 1});
  panel_.setPreviewType(0);
  EXPECT_EQ(panel_.text(), u"out\u240D\nput") << "the old text stays";
  select({});
  panel_.updatePreviewArea();
  EXPECT_EQ(panel_.text(), u"out\u240D\nput");
  panel_.setPreviewType(1);
  select({0});
  panel_.updatePreviewArea();
  EXPECT_EQ(panel_.text(), u"out\u240D\nput") << "a table leaves the text alone";
  stores_.reset();
  panel_.setPreviewType(0);
  EXPECT_EQ(panel_.text(), u"");
}

TEST_F(PreviewPanelTest, ShowPreviewGoesBackToTheFirstLineOfASelectedFile) {
  addFile(fileOf("/a"));
  addFile(fileOf("/b"));
  panel_.setStartPreviewFromLine(7);
  panel_.showPreview();
  EXPECT_EQ(panel_.startPreviewFromLine(), 7) << "none is selected";
  for (int i = 0; i < 12; ++i) stores_.addRow(kInput, {u"x"});
  select({0, 1});
  panel_.showPreview();
  EXPECT_EQ(panel_.startPreviewFromLine(), 1);
  EXPECT_EQ(panel_.pathLabel(), u"(Multiple)");
  EXPECT_EQ(panel_.inputTable().shownCells().front(), (PreviewStores::Row{u"1", u"x"}));
}

TEST_F(PreviewPanelTest, ADoubleClickOnAFileShowsItsRawText) {
  addFile(fileOf("/a"));
  stores_.setInputString(u"raw");
  dynamic_cast<Table*>(interface_.control("filesTableView"))->userDoubleClicks(0);
  EXPECT_EQ(panel_.previewType(), 0);
  EXPECT_EQ(panel_.text(), u"raw");
  EXPECT_EQ(shown(), "previewTextView ");
}

}  // namespace
}  // namespace quillet
