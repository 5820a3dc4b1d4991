#include "ui/catalogue.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <map>

#include "platform/localization.h"
#include "support/environment.h"
#include "support/random_source.h"
#include "support/temporary_folder.h"

namespace quillet::ui {
namespace {

using quillet::testing::Environment;
using quillet::testing::RandomSource;
using quillet::testing::rounds;
using quillet::testing::TemporaryFolder;

void appendNumber(std::size_t number, std::string& bytes) {
  for (int shift = 0; shift < 32; shift += 8) bytes += static_cast<char>(number >> shift & 0xFF);
}

// A .mo file with these texts: header, table of keys, table of translations, then all texts, each with a NUL.
std::string moFile(const std::map<std::string, std::string>& texts) {
  constexpr std::size_t kHeader = 28;
  std::string bytes;
  for (const std::size_t number : {std::size_t{0x950412de}, std::size_t{0}, texts.size(), kHeader,
                                   kHeader + 8 * texts.size(), std::size_t{0}, std::size_t{0}})
    appendNumber(number, bytes);
  std::string content;
  const auto add = [&](const std::string& text) {
    appendNumber(text.size(), bytes);
    appendNumber(kHeader + 16 * texts.size() + content.size(), bytes);
    content += text + '\0';
  };
  for (const auto& [key, text] : texts) add(key);
  for (const auto& [key, text] : texts) add(text);
  return bytes + content;
}

const std::map<std::string, std::string> kTexts = {
    {"", "Language: de\n"}, {"Save Job…", "Auftrag sichern …"}, {"Lines\n", "Zeilen\n"}, {"Not yet", ""}};

std::string found(const Catalogue& catalogue, std::u16string_view key) {
  const std::u16string* text = catalogue.find(key);
  return text ? std::string(text->begin(), text->end()) : "none";
}

TEST(Catalogue, FindsATextByItsKey) {
  const auto catalogue = Catalogue::read(moFile(kTexts));
  ASSERT_TRUE(catalogue);
  ASSERT_TRUE(catalogue->find(u"Save Job…"));
  EXPECT_EQ(*catalogue->find(u"Save Job…"), u"Auftrag sichern …");
  EXPECT_EQ(found(*catalogue, u"Lines\n"), "Zeilen\n");
  EXPECT_EQ(found(*catalogue, u"Lines"), "none");
}

TEST(Catalogue, HasNoTextForTheHeaderOrForWhatIsNotTranslated) {
  const auto catalogue = Catalogue::read(moFile(kTexts));
  ASSERT_TRUE(catalogue);
  EXPECT_EQ(found(*catalogue, u""), "none");
  EXPECT_EQ(found(*catalogue, u"Not yet"), "none");
  EXPECT_EQ(catalogue->size(), 2U);
}

TEST(Catalogue, RefusesWhatIsNoCatalogue) {
  const std::string whole = moFile(kTexts);
  EXPECT_FALSE(Catalogue::read(""));
  EXPECT_FALSE(Catalogue::read("msgid \"Save Job…\"\nmsgstr \"x\"\n"));
  std::string otherVersion = whole;
  otherVersion[6] = 1;
  EXPECT_FALSE(Catalogue::read(otherVersion));
  // Without the last text, of which only the closing NUL may be missing.
  for (std::size_t length = 0; length + 1 < whole.size(); ++length)
    EXPECT_FALSE(Catalogue::read(std::string(whole, 0, length))) << length;
  EXPECT_TRUE(Catalogue::read(whole));
}

TEST(Catalogue, ReadsNothingBeyondABrokenFile) {
  RandomSource random;
  const std::string whole = moFile(kTexts);
  for (std::uint64_t round = 0; round < rounds(20'000); ++round) {
    std::string broken = whole;
    for (std::size_t i = random.below(4) + 1; i > 0; --i)
      broken[random.below(broken.size())] = static_cast<char>(random.below(256));
    const std::vector<char> exact(broken.begin(), broken.end());
    const auto catalogue = Catalogue::read({exact.data(), exact.size()});
    EXPECT_LE(catalogue ? catalogue->size() : 0, kTexts.size());
  }
}

TEST(Catalogue, ChoosesLanguagesByTheEnvironment) {
  struct Case {
    LocaleVariables variables;
    std::vector<std::string> languages;
  };
  const Case cases[] = {
      {{"", "", "", ""}, {}},
      {{"", "", "", "C"}, {}},
      {{"", "", "", "POSIX"}, {}},
      {{"", "", "", "C.UTF-8"}, {}},
      {{"de", "", "", "C.UTF-8"}, {}},  // the locale C has no languages
      {{"", "", "", "de_DE.UTF-8"}, {"de_DE", "de", "en"}},
      {{"", "", "", "de"}, {"de", "en"}},
      {{"", "", "", "de_AT.ISO-8859-15@euro"}, {"de_AT", "de", "en"}},
      {{"", "", "", "sr@latin"}, {"sr", "en"}},
      {{"", "", "", "en_GB.UTF-8"}, {"en_GB", "en", "en"}},
      {{"", "", "", "pl_PL.UTF-8"}, {"pl_PL", "pl", "en"}},
      {{"", "", "fr_FR.UTF-8", "de_DE.UTF-8"}, {"fr_FR", "fr", "en"}},
      {{"", "ja_JP.UTF-8", "fr_FR.UTF-8", "de_DE.UTF-8"}, {"ja_JP", "ja", "en"}},
      {{"", "C", "fr_FR.UTF-8", "de_DE.UTF-8"}, {}},
      {{"es:fr", "", "", "de_DE.UTF-8"}, {"es", "fr", "en"}},
      {{"pt_BR::es", "", "", "de_DE.UTF-8"}, {"pt_BR", "pt", "es", "en"}},
      {{"C:es", "", "", "de_DE.UTF-8"}, {}},
      {{"es:C:fr", "", "", "de_DE.UTF-8"}, {"es"}},
      {{"../../etc:es", "", "", "de_DE.UTF-8"}, {"es", "en"}},
      {{"_DE", "", "", "de_DE.UTF-8"}, {"_DE", "en"}},
  };
  for (const Case& one : cases)
    EXPECT_EQ(languagesOf(one.variables), one.languages)
        << one.variables.language << ' ' << one.variables.lcAll << ' ' << one.variables.lang;
}

TEST(Catalogue, ReadsTheVariablesOfTheEnvironment) {
  Environment environment;
  environment.set("LANGUAGE", "es:fr");
  environment.set("LC_ALL", std::nullopt);
  environment.set("LC_MESSAGES", "fr_FR.UTF-8");
  environment.set("LANG", "de_DE.UTF-8");
  const LocaleVariables variables = localeVariablesOfEnvironment();
  EXPECT_EQ(variables.language, "es:fr");
  EXPECT_EQ(variables.lcAll, "");
  EXPECT_EQ(variables.lcMessages, "fr_FR.UTF-8");
  EXPECT_EQ(variables.lang, "de_DE.UTF-8");
}

class CatalogueFolders : public ::testing::Test {
 protected:
  void write(const std::string& folder, const std::string& language, const std::string& bytes) {
    std::filesystem::create_directories(folders_.path(folder + "/" + language + "/LC_MESSAGES"));
    folders_.write(folder + "/" + language + "/LC_MESSAGES/quillet.mo", bytes);
  }
  std::string found(const std::vector<std::string>& languages) {
    const auto catalogue = findCatalogue(languages, {folders_.path("one"), folders_.path("two")});
    if (!catalogue) return "none";
    const std::u16string* text = catalogue->catalogue.find(u"key");
    return catalogue->language + ' ' + (text ? std::string(text->begin(), text->end()) : "");
  }

  TemporaryFolder folders_;
};

TEST_F(CatalogueFolders, TakesTheFirstLanguageThatIsThere) {
  write("one", "de", moFile({{"key", "one"}}));
  write("two", "de", moFile({{"key", "two"}}));
  write("two", "en", moFile({{"key", "english"}}));
  EXPECT_EQ(found({"de_AT", "de", "en"}), "de one");
  EXPECT_EQ(found({"pl", "en"}), "en english");
  EXPECT_EQ(found({"pl"}), "none");
  EXPECT_EQ(found({}), "none");
}

TEST_F(CatalogueFolders, PassesABrokenCatalogueOver) {
  write("one", "de", "no catalogue");
  write("two", "de", moFile({{"key", "two"}}));
  EXPECT_EQ(found({"de"}), "de two");
}

TEST(CatalogueInUse, IsWhatTextsAreTakenFrom) {
  useCatalogue(Catalogue::read(moFile({{"%@ deleted", "%@ gone"}})));
  EXPECT_EQ(localized(u"%@ deleted"), u"%@ gone");
  EXPECT_EQ(localizedFormat(u"%@ deleted", {u"one"}), u"one gone");
  EXPECT_EQ(localized(u"Other"), u"Other");
  useCatalogue(std::nullopt);
  EXPECT_EQ(localized(u"%@ deleted"), u"%@ deleted");
}

// What the other platform's parts are called here.
TEST(CompiledCatalogues, WordEnglishForThisPlatform) {
  const auto english = findCatalogue({"en"}, {QUILLET_CATALOGUES});
  ASSERT_TRUE(english);
  struct Case {
    std::u16string_view key;
    std::u16string_view text;
  };
  const Case cases[] = {{u"Refreshed from macOS Clipboard.", u"Refreshed from the clipboard."},
                        {u"Could not write to pasteboard", u"Could not write to the clipboard"},
                        {u"OS X / Unix (LF)", u"Linux, macOS (LF)"},
                        {u"Run Job", u"Run Job"}};
  for (const Case& one : cases) {
    const std::u16string* text = english->catalogue.find(one.key);
    ASSERT_TRUE(text);
    EXPECT_EQ(*text, one.text);
  }
}

TEST(CompiledCatalogues, AreWholeInEachLanguage) {
  const auto english = findCatalogue({"en"}, {QUILLET_CATALOGUES});
  ASSERT_TRUE(english);
  for (const char* language : {"de", "fr", "es", "ja"}) {
    const auto catalogue = findCatalogue({language}, {QUILLET_CATALOGUES});
    ASSERT_TRUE(catalogue) << language;
    EXPECT_EQ(catalogue->catalogue.size(), english->catalogue.size()) << language;
    EXPECT_NE(*catalogue->catalogue.find(u"Run Job"), u"Run Job") << language;
  }
}

}  // namespace
}  // namespace quillet::ui
