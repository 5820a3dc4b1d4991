// The look that the desktop wants, at the start and later.
#include "ui/desktop_look.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QLabel>
#include <QStyle>
#include <QToolButton>
#include <vector>

#include "gui/every_window.h"
#include "ui/table_view.h"

namespace quillet::ui {
namespace {

QPalette paletteWith(const QColor& window, const QColor& base, const QColor& text) {
  QPalette palette(window);
  palette.setColor(QPalette::Window, window);
  palette.setColor(QPalette::Base, base);
  palette.setColor(QPalette::WindowText, text);
  palette.setColor(QPalette::Text, text);
  return palette;
}

TEST(DesktopLook, TheStylesOfOtherPlatformsAreKept) {
  for (const char* style : {"macos", "windowsvista", "windows11", "windows", "breeze", "Breeze"})
    EXPECT_TRUE(lookFor({QLatin1String(style), {}, true, true}).keepsStyle) << style;
  for (const char* style : {"fusion", "gtk2", "cleanlooks", ""})
    EXPECT_FALSE(lookFor({QLatin1String(style), {}, false, false}).keepsStyle) << style;
}

TEST(DesktopLook, ThePaletteFollowsTheSystemsAndElseThePortal) {
  const QPalette darkSystem = paletteWith(QColor(0x303030), QColor(0x202020), QColor(0xeeeeee));
  const QPalette lightSystem = paletteWith(QColor(0xefefef), Qt::white, QColor(0x101010));
  struct Case {
    DesktopLook desktop;
    Scheme scheme;
  };
  const QString fusion = QStringLiteral("fusion");
  const Case cases[] = {{{fusion, {}, false, false}, Scheme::Light},
                        {{fusion, {}, true, false}, Scheme::Dark},
                        {{fusion, darkSystem, false, false}, Scheme::Dark},
                        {{fusion, lightSystem, true, false}, Scheme::Light}};
  for (const Case& one : cases) EXPECT_EQ(lookFor(one.desktop).palette, paletteOf(one.scheme));
}

TEST(DesktopLook, AHighContrastOfTheSystemWins) {
  const QPalette black = paletteWith(Qt::black, Qt::black, Qt::white);
  const QPalette white = paletteWith(Qt::white, Qt::white, Qt::black);
  const QPalette yellow = paletteWith(Qt::black, Qt::black, Qt::yellow);
  for (const QPalette& palette : {black, white, yellow}) {
    EXPECT_TRUE(isHighContrast(palette));
    EXPECT_EQ(lookFor({QStringLiteral("fusion"), palette, false, false}).palette, palette);
  }
  EXPECT_FALSE(isHighContrast(paletteWith(QColor(0xefefef), Qt::white, Qt::black))) << "Fusion's own";
  EXPECT_FALSE(isHighContrast(paletteWith(Qt::white, Qt::white, QColor(0x555555))));
  for (const Scheme scheme : {Scheme::Light, Scheme::Dark}) EXPECT_FALSE(isHighContrast(paletteOf(scheme)));
}

TEST(DesktopLook, ThePortalsWishForContrastGivesBlackAndWhite) {
  for (const bool dark : {false, true}) {
    const QPalette palette = lookFor({QStringLiteral("fusion"), {}, dark, true}).palette;
    EXPECT_TRUE(isHighContrast(palette));
    EXPECT_EQ(schemeOf(palette), dark ? Scheme::Dark : Scheme::Light);
    const Colours& colours = coloursOf(palette);
    EXPECT_GE(contrastOf(colours.secondary, colours.window), 15.0);
    EXPECT_GE(contrastOf(colours.selectedText, colours.selectedFill), 15.0);
    EXPECT_GE(contrastOf(colours.text, colours.selectedRow), 7.0);
    EXPECT_GE(contrastOf(colours.cellUnfocusedText, colours.cellUnfocused), 4.5);
    EXPECT_GE(contrastOf(colours.cellUnfocused, colours.base), 3.0);
    EXPECT_GE(contrastOf(colours.missing, colours.base), 3.0);
    EXPECT_GE(contrastOf(colours.headerText, colours.header), 15.0);
  }
}

class LookChange : public testing::EveryWindowTest {
 protected:
  void TearDown() override { applyTheme(*qApp, Scheme::Light); }
};

bool hasColour(const QImage& image, const QColor& colour) {
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width(); ++x)
      if (image.pixelColor(x, y).rgb() == colour.rgb()) return true;
  return false;
}

TEST_F(LookChange, WindowsThatAreOpenTakeTheNewColours) {
  LookFollower look(*qApp, {QStringLiteral("fusion"), {}, false, false});
  launchWithFile();
  perform("quilletWindowMenuItemClicked");
  auto* status = static_cast<Label*>(application().interface().control("statusLabel"));
  status->setText(u"Failed.");
  status->setColour(TextColour::Red);
  auto* button = find<QToolButton>("window", "addInputFileButton");
  auto* path = find<QLabel>("window", "previewPanelInputFilePathLabel");
  const std::string cells = find<QWidget>("window", "previewTableView")->font().toString().toStdString();
  const auto expect = [&](Scheme scheme) {
    QApplication::processEvents();
    const Colours& colours = coloursOf(scheme);
    EXPECT_EQ(path->palette().color(QPalette::WindowText), colours.secondary);
    EXPECT_EQ(find<QLabel>("window", "statusLabel")->palette().color(QPalette::WindowText), colours.red);
    EXPECT_EQ(find<QWidget>("window", "previewTableView")->font().toString().toStdString(), cells);
    EXPECT_EQ(form("window")->palette().color(QPalette::Window), colours.window);
    EXPECT_TRUE(hasColour(button->icon().pixmap(96).toImage(), colours.icon));
    EXPECT_TRUE(hasColour(find<TableView>("window", "operationsTableView")->grab().toImage(), colours.base));
  };
  const QString group = QStringLiteral("org.freedesktop.appearance");
  const QString key = QStringLiteral("color-scheme");
  expect(Scheme::Light);
  look.settingChanged(group, key, QDBusVariant(1U));
  expect(Scheme::Dark);
  look.settingChanged(QStringLiteral("org.gnome.desktop.interface"), key, QDBusVariant(0U));
  look.settingChanged(group, QStringLiteral("accent-color"), QDBusVariant(0U));
  expect(Scheme::Dark);
  look.settingChanged(group, key, QDBusVariant(QVariant::fromValue(QDBusVariant(2U))));
  expect(Scheme::Light);
}

// With a desktop portal of the test's own, where there is a bus: dbus-run-session makes one.
TEST_F(LookChange, ThePortalIsHeardOverTheBus) {
  const QString name = QStringLiteral("org.freedesktop.portal.Desktop");
  QDBusConnection portal =
      QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("portal of the test"));
  if (!portal.isConnected() || !portal.registerService(name)) GTEST_SKIP() << "no bus, or a real portal";
  const LookFollower look(*qApp, {QStringLiteral("fusion"), {}, false, false});
  QDBusMessage signal = QDBusMessage::createSignal(QStringLiteral("/org/freedesktop/portal/desktop"),
                                                   QStringLiteral("org.freedesktop.portal.Settings"),
                                                   QStringLiteral("SettingChanged"));
  signal << QStringLiteral("org.freedesktop.appearance") << QStringLiteral("color-scheme")
         << QVariant::fromValue(QDBusVariant(1U));
  // Sent again and again, as the two connections to the bus do not wait for each other.
  const auto isHeard = [&] {
    return schemeOf(QApplication::palette()) == Scheme::Dark || !portal.send(signal);
  };
  EXPECT_TRUE(QTest::qWaitFor(isHeard, 5000));
  EXPECT_EQ(schemeOf(QApplication::palette()), Scheme::Dark);
  portal.unregisterService(name);
  QDBusConnection::disconnectFromBus(QStringLiteral("portal of the test"));
}

}  // namespace
}  // namespace quillet::ui
