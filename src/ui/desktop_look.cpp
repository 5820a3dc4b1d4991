#include "ui/desktop_look.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QStyle>
#include <algorithm>
#include <cmath>
#include <utility>

namespace quillet::ui {

namespace {

constexpr int kPortalPatience = 500;  // milliseconds
constexpr int kPrefersDark = 1;
constexpr int kPrefersContrast = 1;
constexpr double kHighContrast = 15.0;

const QString kPortal = QStringLiteral("org.freedesktop.portal.Desktop");
const QString kPortalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString kSettings = QStringLiteral("org.freedesktop.portal.Settings");
const QString kAppearance = QStringLiteral("org.freedesktop.appearance");
const QString kColourScheme = QStringLiteral("color-scheme");
const QString kContrast = QStringLiteral("contrast");

// A variant in variants.
int numberOf(QVariant value) {
  while (value.canConvert<QDBusVariant>()) value = value.value<QDBusVariant>().variant();
  return value.toInt();
}

// 0, which is no preference, where there is no portal.
int settingOfPortal(const QString& key) {
  QDBusMessage question =
      QDBusMessage::createMethodCall(kPortal, kPortalPath, kSettings, QStringLiteral("Read"));
  question << kAppearance << key;
  const QDBusMessage answer = QDBusConnection::sessionBus().call(question, QDBus::Block, kPortalPatience);
  if (answer.type() != QDBusMessage::ReplyMessage || answer.arguments().isEmpty()) return 0;
  return numberOf(answer.arguments().constFirst());
}

double linear(double channel) {
  return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& colour) {
  return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

bool isBlackOrWhite(const QColor& colour) {
  return colour.rgb() == QColor(Qt::black).rgb() || colour.rgb() == QColor(Qt::white).rgb();
}

bool keepsStyle(const QString& style) {
  constexpr const char* kKept[] = {"macos", "windows", "windowsvista", "windows11", "breeze"};
  return std::any_of(std::begin(kKept), std::end(kKept), [&](const char* kept) {
    return style.compare(QLatin1String(kept), Qt::CaseInsensitive) == 0;
  });
}

QPalette blackAndWhite(Scheme scheme) {
  const bool isDark = scheme == Scheme::Dark;
  const QColor back = isDark ? Qt::black : Qt::white;
  const QColor front = isDark ? Qt::white : Qt::black;
  QPalette palette(back);
  for (const auto role : {QPalette::Window, QPalette::Base, QPalette::AlternateBase, QPalette::Button,
                          QPalette::ToolTipBase, QPalette::HighlightedText})
    palette.setColor(role, back);
  for (const auto role :
       {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText,
        QPalette::PlaceholderText, QPalette::Link, QPalette::LinkVisited, QPalette::Highlight})
    palette.setColor(role, front);
  return palette;
}

}  // namespace

double contrastOf(const QColor& one, const QColor& other) {
  const auto [darker, brighter] = std::minmax({luminance(one), luminance(other)});
  return (brighter + 0.05) / (darker + 0.05);
}

bool isHighContrast(const QPalette& palette) {
  const auto colour = [&](QPalette::ColorRole role) { return palette.color(QPalette::Active, role); };
  return isBlackOrWhite(colour(QPalette::Window)) &&
         contrastOf(colour(QPalette::WindowText), colour(QPalette::Window)) >= kHighContrast &&
         contrastOf(colour(QPalette::Text), colour(QPalette::Base)) >= kHighContrast;
}

Look lookFor(const DesktopLook& desktop) {
  if (keepsStyle(desktop.style)) return {true, desktop.palette.value_or(QPalette())};
  if (desktop.palette && isHighContrast(*desktop.palette)) return {false, *desktop.palette};
  const Scheme wanted = desktop.prefersDark ? Scheme::Dark : Scheme::Light;
  const Scheme scheme = desktop.palette ? schemeOf(*desktop.palette) : wanted;
  return {false, desktop.prefersContrast ? blackAndWhite(scheme) : paletteOf(scheme)};
}

// A palette that is the style's own says nothing about the desktop.
DesktopLook lookOfDesktop() {
  DesktopLook desktop;
  desktop.style = QApplication::style()->name();
  if (QApplication::palette() != QApplication::style()->standardPalette())
    desktop.palette = QApplication::palette();
  desktop.prefersDark = settingOfPortal(kColourScheme) == kPrefersDark;
  desktop.prefersContrast = settingOfPortal(kContrast) == kPrefersContrast;
  return desktop;
}

LookFollower::LookFollower(QApplication& application, DesktopLook desktop)
    : application_(application), desktop_(std::move(desktop)) {
  // Qt knows the type of the value by its name only, and only when somebody has told it.
  qRegisterMetaType<QDBusVariant>("QDBusVariant");
  QDBusConnection::sessionBus().connect(kPortal, kPortalPath, kSettings, QStringLiteral("SettingChanged"),
                                        this, SLOT(settingChanged(QString, QString, QDBusVariant)));
  apply();
}

void LookFollower::settingChanged(const QString& group, const QString& key, const QDBusVariant& value) {
  if (group != kAppearance) return;
  const int number = numberOf(value.variant());
  if (key == kColourScheme)
    desktop_.prefersDark = number == kPrefersDark;
  else if (key == kContrast)
    desktop_.prefersContrast = number == kPrefersContrast;
  else
    return;
  apply();
}

void LookFollower::apply() {
  const Look look = lookFor(desktop_);
  if (look.keepsStyle)
    applySpaces(application_, QApplication::palette());
  else
    applyTheme(application_, look.palette);
}

}  // namespace quillet::ui
