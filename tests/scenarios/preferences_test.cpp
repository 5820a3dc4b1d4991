// The preferences window over its five settings.
#include "scenarios/drive_session.h"

namespace quillet::testing {
namespace {

const std::string kDecode = "preferencesWindowDecodeErrorReplacementTextField";
const std::string kEncode = "preferencesWindowEncodeErrorReplacementTextField";
const std::string kSplit = "preferencesWindowAutoSplitButton";
const std::string kOpenLog = "preferencesWindowOpenLastLogFileAfterCompleteButton";
const std::string kOpenFolder = "preferencesWindowOpenOutputFolderAfterCompleteButton";

class Preferences : public Scenario {
 protected:
  void open() { EXPECT_EQ(done("menu", {{"action", "preferencesMenuItemClicked"}})["performed"], true); }
  bool close() { return done("closeWindow", {{"window", "preferencesWindow"}})["closed"]; }
  json shown(const std::string& control) {
    return done("controls", {{"window", "preferencesWindow"}})["controls"][control]["value"];
  }
  void set(const std::string& control, const json& value, bool endEditing = true) {
    done("setControl", {{"name", control}, {"value", value}, {"endEditing", endEditing}});
  }
};

TEST_F(Preferences, ControlsShowTheSettings) {
  const struct {
    std::string control, key;
    json stored, shown;
  } cases[] = {
      {kDecode, "DecodeErrorReplacement", nullptr, "?"},
      {kDecode, "DecodeErrorReplacement", "", ""},
      {kDecode, "DecodeErrorReplacement", "é😀", "é😀"},
      {kDecode, "DecodeErrorReplacement", 3, "3"},
      {kDecode, "DecodeErrorReplacement", json::array({"x"}), "?"},
      {kEncode, "EncodeErrorReplacement", nullptr, "?"},
      {kEncode, "EncodeErrorReplacement", "", ""},
      {kEncode, "EncodeErrorReplacement", "--", "--"},
      {kSplit, "DontAutoSplit", nullptr, true},
      {kSplit, "DontAutoSplit", true, false},
      {kSplit, "DontAutoSplit", false, true},
      {kSplit, "DontAutoSplit", json::object(), true},
      {kOpenLog, "OpenLastLogAfterComplete", nullptr, false},
      {kOpenLog, "OpenLastLogAfterComplete", true, true},
      {kOpenLog, "OpenLastLogAfterComplete", 1, true},
      {kOpenFolder, "DontOpenOutputFolderAfterComplete", nullptr, true},
      {kOpenFolder, "DontOpenOutputFolderAfterComplete", true, false},
      {kOpenFolder, "DontOpenOutputFolderAfterComplete", "YES", false},
  };
  launch();
  for (const auto& [control, key, stored, value] : cases) {
    setDefault(key, stored);
    open();  // again: the settings are read each time
    EXPECT_EQ(shown(control), value) << key << " " << stored;
  }
}

TEST_F(Preferences, TheWindowBecomesKeyAndStoresNothingByItself) {
  launch();
  EXPECT_EQ(done("controls", {{"window", "preferencesWindow"}})["open"], false);
  open();
  EXPECT_EQ(done("controls", {{"window", "preferencesWindow"}})["open"], true);
  EXPECT_EQ(done("menuEnabled", {{"action", "addInputFileMenuItemClicked"}})["enabled"], false)
      << "the main window is not key";
  EXPECT_EQ(defaultOf("DecodeErrorReplacement"), nullptr);
}

TEST_F(Preferences, ACheckBoxTogglesItsSettingAtOnceAndASecondClickBack) {
  const struct {
    std::string control, key;
  } cases[] = {{kSplit, "DontAutoSplit"},
               {kOpenLog, "OpenLastLogAfterComplete"},
               {kOpenFolder, "DontOpenOutputFolderAfterComplete"}};
  launch();
  for (const auto& [control, key] : cases) {
    for (const bool stored : {false, true}) {
      setDefault(key, stored);
      open();
      const bool on = shown(control);
      set(control, !on);
      EXPECT_EQ(defaultOf(key), !stored) << key;
      EXPECT_EQ(shown(control), !on) << key;
      set(control, on);
      EXPECT_EQ(defaultOf(key), stored) << key;
    }
  }
}

TEST_F(Preferences, ACheckBoxIsPressedAsAButton) {
  launch();
  open();
  for (const bool stored : {true, false}) {
    done("press", {{"name", kSplit}});
    EXPECT_EQ(defaultOf("DontAutoSplit"), stored);
    EXPECT_EQ(shown(kSplit), !stored);
  }
}

TEST_F(Preferences, ACheckBoxTogglesWhatIsStoredAndNotWhatItShows) {
  launch();
  open();
  setDefault("DontAutoSplit", true);  // the box still shows that files are split
  EXPECT_EQ(shown(kSplit), true);
  set(kSplit, false);
  EXPECT_EQ(defaultOf("DontAutoSplit"), false);
  EXPECT_EQ(shown(kSplit), false);
  set(kSplit, true);
  EXPECT_EQ(defaultOf("DontAutoSplit"), true) << "a second click restores the earlier value";
}

TEST_F(Preferences, SettingsOfAnyKindAreToggled) {
  const struct {
    json stored;
    bool toggled;
  } cases[] = {{nullptr, true}, {"YES", false}, {"no", true}, {2, false}, {0.0, true}, {json::array(), true}};
  launch();
  open();
  for (const auto& [stored, toggled] : cases) {
    setDefault("OpenLastLogAfterComplete", stored);
    set(kOpenLog, true);
    EXPECT_EQ(defaultOf("OpenLastLogAfterComplete"), toggled) << stored;
  }
}

TEST_F(Preferences, TheEndOfEditingInEitherFieldStoresBoth) {
  launch();
  open();
  set(kDecode, "d", false);
  EXPECT_EQ(defaultOf("DecodeErrorReplacement"), nullptr) << "still editing";
  set(kEncode, "e");
  EXPECT_EQ(defaultOf("DecodeErrorReplacement"), "d");
  EXPECT_EQ(defaultOf("EncodeErrorReplacement"), "e");
  set(kEncode, "f", false);
  set(kDecode, "é😀");
  EXPECT_EQ(defaultOf("DecodeErrorReplacement"), "é😀");
  EXPECT_EQ(defaultOf("EncodeErrorReplacement"), "f");
}

TEST_F(Preferences, AnEmptyTextIsStoredAsItIs) {
  launch();
  open();
  set(kDecode, "");
  EXPECT_EQ(defaultOf("DecodeErrorReplacement"), "");
  EXPECT_EQ(defaultOf("EncodeErrorReplacement"), "?") << "the other field's text, though it was never set";
  open();
  EXPECT_EQ(shown(kDecode), "");
}

TEST_F(Preferences, ClosingStoresATextThatIsStillEdited) {
  launch();
  open();
  set(kEncode, "typed", false);
  EXPECT_TRUE(close());
  EXPECT_EQ(defaultOf("EncodeErrorReplacement"), "typed");
  EXPECT_EQ(done("controls", {{"window", "preferencesWindow"}})["open"], false);
  EXPECT_FALSE(close());
}

TEST_F(Preferences, ClosingAnotherWindowStoresNothing) {
  launch();
  open();
  set(kEncode, "typed", false);
  done("closeWindow", {{"window", "window"}});
  EXPECT_EQ(defaultOf("EncodeErrorReplacement"), nullptr);
  terminate();
  EXPECT_EQ(defaultOf("EncodeErrorReplacement"), nullptr) << "nor does the end";
}

TEST_F(Preferences, SplittingIsSwitchedOffForFilesThatAreAddedLater) {
  launch();
  add({write("a.txt", "1\n")});
  const json before = entries()[0]["Operations"];
  open();
  set(kSplit, false);
  EXPECT_EQ(entries()[0]["Operations"], before);
  add({write("b.txt", "1\n")});
  EXPECT_NE(entries()[1]["Operations"][0]["IntArg1"], before[0]["IntArg1"]);
}

}  // namespace
}  // namespace quillet::testing
