#include "ui/catalogue_translator.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialogButtonBox>
#include <QKeySequence>
#include <QLabel>
#include <QMainWindow>
#include <QMenuBar>
#include <QPushButton>
#include <algorithm>
#include <gtest/gtest.h>
#include <map>

#include "platform/localization.h"
#include "support/environment.h"
#include "support/qt_application.h"
#include "ui/catalogue.h"
#include "ui/forms.h"
#include "ui/menus.h"
#include "ui/text_conversion.h"

namespace quillet::ui {
namespace {

using quillet::testing::Environment;
using quillet::testing::qtApplication;

constexpr const char* kLanguages[] = {"", "en", "de", "fr", "es", "ja"};  // "" is without a catalogue

// Qt and the application speak the language while this stands.
class Speaking {
 public:
  explicit Speaking(const std::string& language) {
    qtApplication();
    auto found = findCatalogue({language}, {QUILLET_CATALOGUES});
    if (found) useCatalogue(std::move(found->catalogue));
    QCoreApplication::installTranslator(&translator_);
  }
  ~Speaking() {
    QCoreApplication::removeTranslator(&translator_);
    useCatalogue(std::nullopt);
  }
  Speaking(const Speaking&) = delete;
  Speaking& operator=(const Speaking&) = delete;

 private:
  CatalogueTranslator translator_;
};

TEST(CatalogueTranslator, TranslatesTheTextsOfForms) {
  const Speaking german("de");
  const std::unique_ptr<QWidget> form = newForm("window");
  ASSERT_TRUE(form);
  EXPECT_EQ(form->findChild<QAbstractButton*>(QStringLiteral("saveJobButton"))->text(),
            QStringLiteral("Auftrag &sichern …"));
  EXPECT_EQ(form->findChild<QWidget*>(QStringLiteral("filesTableView"))->accessibleName(),
            QStringLiteral("Eingabedateien"));
}

TEST(CatalogueTranslator, TranslatesTheButtonsOfQt) {
  const Speaking spanish("es");
  const QDialogButtonBox box(QDialogButtonBox::Ok | QDialogButtonBox::Cancel | QDialogButtonBox::Close);
  const auto textOf = [&](QDialogButtonBox::StandardButton button) {
    return withoutMnemonic(box.button(button)->text());
  };
  EXPECT_EQ(textOf(QDialogButtonBox::Ok), QStringLiteral("Aceptar"));
  EXPECT_EQ(textOf(QDialogButtonBox::Cancel), QStringLiteral("Cancelar"));
  EXPECT_EQ(textOf(QDialogButtonBox::Close), QStringLiteral("Cerrar"));
}

TEST(CatalogueTranslator, LeavesWhatTheCatalogueDoesNotHave) {
  const Speaking german("de");
  EXPECT_EQ(QCoreApplication::translate("Anything", "No text of ours"), QStringLiteral("No text of ours"));
  EXPECT_EQ(QCoreApplication::translate("Anything", "Space"), QStringLiteral("Leerzeichen"));
  EXPECT_EQ(QCoreApplication::translate("QShortcut", "Space"), QStringLiteral("Space"));
}

TEST(CatalogueTranslator, LeavesShortcutsAsTheyAre) {
  for (const char* language : kLanguages) {
    const Speaking speaking(language);
    QMainWindow window;
    addMenus(window, MenuOf::Clipboard, {});
    std::vector<QString> shortcuts;
    for (const QAction* action : window.findChildren<QAction*>())
      if (const QString keys = action->shortcut().toString(QKeySequence::PortableText); !keys.isEmpty())
        shortcuts.push_back(keys);
    for (const char* keys : {"Ctrl+K", "Ctrl+Del", "Ctrl+Shift+Left", "Return", "F5", "Ctrl+,"})
      EXPECT_EQ(std::count(shortcuts.begin(), shortcuts.end(), QLatin1String(keys)), 1) << keys << language;
  }
}

TEST(CatalogueTranslator, IsInstalledForTheLanguageOfTheEnvironment) {
  Environment environment;
  for (const char* name : {"LANGUAGE", "LC_MESSAGES", "LANG"}) environment.set(name, std::nullopt);
  struct Case {
    const char* locale;
    std::u16string_view text;
  };
  const Case cases[] = {{"C", u"Refreshed from macOS Clipboard."},
                        {"POSIX", u"Refreshed from macOS Clipboard."},
                        {"en_GB.UTF-8", u"Refreshed from the clipboard."},
                        {"pl_PL.UTF-8", u"Refreshed from the clipboard."},
                        {"de_AT.UTF-8", u"Aus der Zwischenablage aufgefrischt."}};
  for (const Case& one : cases) {
    environment.set("LC_ALL", one.locale);
    installTranslations(qtApplication());
    EXPECT_EQ(localized(u"Refreshed from macOS Clipboard."), one.text) << one.locale;
    EXPECT_EQ(QCoreApplication::translate("Any", "Refreshed from macOS Clipboard."), qString(one.text));
    for (QTranslator* translator : qtApplication().findChildren<QTranslator*>()) delete translator;
    useCatalogue(std::nullopt);
  }
}

// The texts of a form that take a mnemonic, with those of its menu bar.
std::vector<QString> textsWithMnemonics(QWidget& form) {
  std::vector<QString> texts;
  for (const QLabel* label : form.findChildren<QLabel*>())
    if (label->buddy()) texts.push_back(label->text());
  for (const QAbstractButton* button : form.findChildren<QAbstractButton*>()) texts.push_back(button->text());
  if (auto* window = qobject_cast<QMainWindow*>(&form))
    for (const QAction* action : window->menuBar()->actions()) texts.push_back(action->text());
  return texts;
}

TEST(Mnemonics, AreUniqueInEachWindowInEachLanguage) {
  const std::map<std::string, MenuOf> menus = {{"window", MenuOf::Main},
                                               {"clipboardDataWindow", MenuOf::Clipboard},
                                               {"previousJobsWindow", MenuOf::Jobs}};
  for (const char* language : kLanguages) {
    const Speaking speaking(language);
    for (const std::string& name : namesOfForms()) {
      const std::unique_ptr<QWidget> form = newForm(name);
      ASSERT_TRUE(form) << name;
      if (menus.contains(name)) addMenus(static_cast<QMainWindow&>(*form), menus.at(name), {});
      std::map<QString, QString> taken;
      for (const QString& text : textsWithMnemonics(*form)) {
        const QString key = QKeySequence::mnemonic(text).toString();
        if (key.isEmpty()) continue;
        const auto [other, isFree] = taken.emplace(key, text);
        EXPECT_TRUE(isFree) << language << ' ' << name << ": " << text.toStdString() << " and "
                            << other->second.toStdString();
      }
    }
  }
}

TEST(Mnemonics, AreTakenOffAText) {
  EXPECT_EQ(withoutMnemonic(QStringLiteral("Save")), QStringLiteral("Save"));
  EXPECT_EQ(withoutMnemonic(QStringLiteral("&Save Job…")), QStringLiteral("Save Job…"));
  EXPECT_EQ(withoutMnemonic(QStringLiteral("Operatio&ns")), QStringLiteral("Operations"));
  EXPECT_EQ(withoutMnemonic(QStringLiteral("保存(&S)…")), QStringLiteral("保存…"));
  EXPECT_EQ(withoutMnemonic(QStringLiteral("Save (&all)")), QStringLiteral("Save (all)"));
  EXPECT_EQ(withoutMnemonic(QStringLiteral("Save &")), QStringLiteral("Save "));
}

}  // namespace
}  // namespace quillet::ui
