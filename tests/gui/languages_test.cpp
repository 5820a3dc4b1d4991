// Windows and sheets in each language: nothing is cut off.
#include <QAbstractButton>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLayout>
#include <QLibraryInfo>
#include <QMainWindow>
#include <QMenuBar>
#include <QPushButton>
#include <QToolBar>
#include <QTranslator>
#include <algorithm>

#include "gui/every_window.h"
#include "platform/localization.h"
#include "ui/catalogue.h"
#include "ui/catalogue_translator.h"
#include "ui/elided_label.h"
#include "ui/text_conversion.h"

namespace quillet::testing {
namespace {

// Speaks the language from before the windows are made until they are gone.
class Languages : public EveryWindowTest, public ::testing::WithParamInterface<const char*> {
 protected:
  void SetUp() override {
    auto found = ui::findCatalogue({GetParam()}, {QUILLET_CATALOGUES});
    ASSERT_TRUE(found);
    ui::useCatalogue(std::move(found->catalogue));
    QCoreApplication::installTranslator(&translator_);
  }
  void TearDown() override {
    QCoreApplication::removeTranslator(&translator_);
    ui::useCatalogue(std::nullopt);
  }

 private:
  ui::CatalogueTranslator translator_;
};

bool isOwnSize(const QWidget& widget) {
  return qobject_cast<const QLabel*>(&widget) || qobject_cast<const QAbstractButton*>(&widget) ||
         qobject_cast<const QComboBox*>(&widget);
}

// A text that wraps has the height for it; one that is elided may be short; the rest needs its width.
std::string faultOf(QWidget& widget) {
  if (widget.inherits("ElidedLabel")) return "";
  if (const auto* label = qobject_cast<QLabel*>(&widget); label && label->wordWrap())
    return label->height() < label->heightForWidth(label->width()) ? "is too low for its text" : "";
  const auto* comboBox = qobject_cast<QComboBox*>(&widget);
  const int needed =
      comboBox && comboBox->isEditable() ? comboBox->minimumSizeHint().width() : widget.sizeHint().width();
  if (widget.width() < needed)
    return "has " + std::to_string(widget.width()) + " of " + std::to_string(needed);
  return "";
}

// As small as the window can be made; a text that wraps takes its height from the width.
QSize leastSizeOf(const QWidget& form) {
  QSize size = form.minimumSize().expandedTo(form.minimumSizeHint());
  if (form.layout() && form.layout()->hasHeightForWidth())
    size.setHeight(std::max(size.height(), form.layout()->totalMinimumHeightForWidth(size.width())));
  return size;
}

// Returns how many widgets were looked at.
int expectNothingCutOff(const std::string& window, QWidget& form) {
  int count = 0;
  const QRect all(QPoint(), form.size());
  for (QWidget* widget : form.findChildren<QWidget*>()) {
    if (!isOwnSize(*widget) || !widget->isVisible() || widget->window() != &form) continue;
    if (qobject_cast<QComboBox*>(widget->parentWidget()) || widget->objectName().isEmpty() ||
        widget->objectName().startsWith(QLatin1String("qt_")))
      continue;
    ++count;
    const std::string name = window + " " + widget->objectName().toStdString() + " ";
    EXPECT_EQ(faultOf(*widget), "") << name;
    EXPECT_TRUE(all.contains(QRect(widget->mapTo(&form, QPoint()), widget->size()))) << name;
  }
  return count;
}

TEST_P(Languages, NothingIsCutOffAtTheFirstSizeOfAWindowAndAtTheLeast) {
  launchWithFile();
  int count = 0;
  const auto check = [&](const std::string& window, QWidget& form) {
    count += expectNothingCutOff(window + " as it opens", form);
    form.resize(leastSizeOf(form));
    QApplication::processEvents();
    count += expectNothingCutOff(window, form);
  };
  forEveryMainWindow(check);
  forEverySheet(check);
  EXPECT_GT(count, 300);
}

// The whole bar is seen, without an arrow to the rest.
TEST_P(Languages, MenuBarsAndToolBarsAreSeenWhole) {
  launchWithFile();
  forEveryMainWindow([&](const std::string& window, QWidget& form) {
    auto* main = qobject_cast<QMainWindow*>(&form);
    if (!main) return;
    form.resize(form.minimumSize());
    QApplication::processEvents();
    int width = 0;
    for (QAction* action : main->menuBar()->actions())
      width += main->menuBar()->actionGeometry(action).width();
    EXPECT_LE(width, form.width()) << window;
    for (const QToolBar* bar : form.findChildren<QToolBar*>())
      EXPECT_LE(bar->sizeHint().width(), bar->width()) << window;
  });
}

TEST_P(Languages, TheButtonsOfQtSpeakIt) {
  const QDialogButtonBox box(QDialogButtonBox::Ok | QDialogButtonBox::Cancel | QDialogButtonBox::Close);
  const std::string language = GetParam();
  for (const auto button : {QDialogButtonBox::Cancel, QDialogButtonBox::Close}) {
    const QString text = ui::withoutMnemonic(box.button(button)->text());
    const QString key =
        button == QDialogButtonBox::Cancel ? QStringLiteral("Cancel") : QStringLiteral("Close");
    EXPECT_EQ(text, ui::qString(localized(ui::u16String(key))));
    EXPECT_EQ(text == key, language == "en");
  }
}

// Where the system has them: all that Qt shows by itself, as in its panel for files.
TEST_P(Languages, QtsOwnTextsAreThereWhereTheSystemHasThem) {
  const std::string language = GetParam();
  QTranslator qt;
  if (language == "en" || !qt.load(QStringLiteral("qtbase_") + QLatin1String(GetParam()),
                                   QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
    GTEST_SKIP() << "no translations of Qt for " << language;
  EXPECT_NE(qt.translate("QFileDialog", "Look in:"), QString());
}

INSTANTIATE_TEST_SUITE_P(All, Languages, ::testing::Values("en", "de", "fr", "es", "ja"),
                         [](const auto& one) { return std::string(one.param); });

}  // namespace
}  // namespace quillet::testing
