#include "shell/file_commands.h"

#include "shell/application_fixture.h"
#include "support/random_source.h"

namespace quillet::testing {
namespace {

using Paths = std::vector<std::string>;  // or other texts

class FileCommandsTest : public ApplicationTest {
 protected:
  FileCommands& commands() { return application().fileCommands(); }
};

TEST_F(FileCommandsTest, ThePanelAsksForTextFiles) {
  add({"/a"});
  ASSERT_TRUE(perform("addInputFileMenuItemClicked"));
  const auto& panel = desktop_.filePanel;
  ASSERT_TRUE(panel);
  EXPECT_EQ(panel->title, u"Add Input File");
  EXPECT_EQ(panel->prompt, u"Add");
  EXPECT_EQ(panel->extensions, (std::vector<std::string>{"txt", "tab", "csv"}));
  add({"/b"});  // while the panel is open
  panel->confirmed({"/c", "/a", "/d"});
  EXPECT_EQ(listedPaths(), (Paths{"/a", "/b", "/c", "/d"})) << "at the end as it is by now";
  EXPECT_EQ(selectedRows(), IndexSet({2, 3}));
  panel->confirmed({});
  EXPECT_EQ(selectedRows(), IndexSet({2, 3}));
}

TEST_F(FileCommandsTest, ButtonsOfTheListHaveTheirHandlers) {
  const std::pair<const char*, const char*> cases[] = {
      {"addInputFileButton", "addInputFileMenuItemClicked"},
      {"removeInputFilesButton", "removeSelectedInputFilesMenuItemClicked"},
      {"showInFinderButton", "showInFinderButtonPressed"},
  };
  for (const auto& [name, handler] : cases) {
    const auto* button = dynamic_cast<Button*>(application().windows().main.control(name));
    ASSERT_TRUE(button) << name;
    EXPECT_EQ(button->handler(), handler);
    EXPECT_FALSE(button->toolTip().empty()) << "it has no title";
    EXPECT_TRUE(application().interface().commands().has(handler));
  }
}

TEST_F(FileCommandsTest, RowsArePreferredToPathsInADrop) {
  add({"/a", "/b"});
  commands().acceptDrop({IndexSet({1}), {"/c"}}, 0);
  EXPECT_EQ(listedPaths(), (Paths{"/b", "/a"}));
  commands().acceptDrop({std::nullopt, {"/c"}}, 1);
  EXPECT_EQ(listedPaths(), (Paths{"/b", "/c", "/a"}));
  commands().acceptDrop({}, 1);
  EXPECT_EQ(listedPaths(), (Paths{"/b", "/c", "/a"})) << "plain text brings nothing";
  EXPECT_EQ(selectedRows(), IndexSet({1}));
}

TEST_F(FileCommandsTest, OneFileWithAFullPathIsRevealed) {
  std::vector<InputFile> files(3);
  files[0].filePath = "/a b";
  files[1].filePath = "relative";
  application().inputFileList().setInputFiles(files);
  perform("showInFinderButtonPressed");
  application().fileSelection().select(IndexSet({0, 1}));
  perform("showInFinderButtonPressed");
  application().fileSelection().select(2);  // it has no path
  perform("showInFinderButtonPressed");
  EXPECT_TRUE(desktop_.events.empty());
  application().fileSelection().select(1);
  perform("showInFinderButtonPressed");
  EXPECT_EQ(std::exchange(desktop_.events, {}),
            Paths{"sheet of window Error|Could not create documentsPath URL"});
  application().fileSelection().select(std::size_t{0});
  perform("showInFinderButtonPressed");
  EXPECT_EQ(desktop_.events, Paths{"reveal /a b"});
}

TEST_F(FileCommandsTest, FilesOfALaterStartAreDroppedAtTheEnd) {
  add({"/a", "/b"});
  application().filesFromLaterStart({"/c", "/a", "/d"});
  EXPECT_EQ(listedPaths(), (Paths{"/a", "/b", "/c", "/d"}));
  EXPECT_EQ(selectedRows(), IndexSet({2, 3}));
  EXPECT_EQ(desktop_.events, Paths{"front window"});
  application().filesFromLaterStart({"/e"});
  EXPECT_EQ(listedPaths().back(), "/e") << "unlike the first files from outside, later ones count, too";
  application().filesFromLaterStart({});
  EXPECT_EQ(listedPaths().size(), 5u);
  EXPECT_EQ(desktop_.events.size(), 3u);
}

// Where the entries and the selection are after a move, with placeholders as in a drop.
struct MoveReference {
  Paths paths;
  IndexSet selected;

  void move(const std::vector<std::size_t>& moved, std::size_t row) {
    Paths copies;
    for (const auto index : moved) copies.push_back(paths[index]);
    for (const auto index : moved) paths[index] = "";
    paths.insert(paths.begin() + static_cast<std::ptrdiff_t>(row), copies.begin(), copies.end());
    std::erase(paths, "");
    selected.clear();
    for (std::size_t i = row; i < row + moved.size() && i < paths.size(); ++i)
      selected.addIndex(static_cast<std::int64_t>(i));
  }
  void remove(const std::vector<std::size_t>& removed) {
    if (removed.empty()) return;
    const std::int64_t next =
        static_cast<std::int64_t>(removed.back()) - static_cast<std::int64_t>(removed.size());
    for (const auto index : removed) paths[index] = "";
    std::erase(paths, "");
    selected.clear();
    if (!paths.empty()) selected.addIndex(next >= 0 && next < std::ssize(paths) ? next : 0);
  }
};

TEST_F(FileCommandsTest, MovesAndRemovalsAgreeWithAPlainReference) {
  RandomSource random(604);
  MoveReference reference;
  int made = 0;
  for (std::uint64_t round = 0; round < rounds(500); ++round) {
    if (reference.paths.size() < 2) {
      Paths added;
      for (int i = 0; i < 12; ++i) added.push_back("/" + std::to_string(++made));
      add(added);
      reference.paths.insert(reference.paths.end(), added.begin(), added.end());
    }
    std::vector<std::size_t> picked;
    IndexSet set;
    const std::size_t oneIn = 1 + random.below(6);
    for (std::size_t i = 0; i < reference.paths.size(); ++i) {
      if (!random.oneIn(oneIn)) continue;
      picked.push_back(i);
      set.addIndex(static_cast<std::int64_t>(i));
    }
    if (random.oneIn(8)) {
      application().fileSelection().select(set);
      if (!picked.empty())
        reference.remove(picked);
      else
        reference.selected.clear();
      commands().removeSelectedInputFilesMenuItemClicked();
    } else {
      const std::size_t row = random.below(reference.paths.size() + 1);
      reference.move(picked, row);
      commands().acceptDrop({set, {}}, static_cast<std::int64_t>(row));
    }
    ASSERT_EQ(listedPaths(), reference.paths);
    ASSERT_EQ(selectedRows(), reference.selected);
  }
}

}  // namespace
}  // namespace quillet::testing
