#include "ui/theme.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QProxyStyle>
#include <QStyleFactory>

namespace quillet::ui {

namespace {

constexpr int kPortalPatience = 500;  // milliseconds
constexpr int kPrefersDark = 1;

QColor rgb(QRgb value) {
  return QColor::fromRgb(value);
}

const Colours kLight{rgb(0xEEF0F2), rgb(0xFFFFFF), rgb(0xF5F7F9), rgb(0x1F2328), rgb(0x57606A), rgb(0xB42318),
                     rgb(0x6B7480), rgb(0x1F5FBF), rgb(0x1F5FBF), rgb(0xFFFFFF), rgb(0x838D98), rgb(0x000000),
                     rgb(0xD5DCE4), rgb(0x57606A), rgb(0xE6E9EC), rgb(0x57606A), rgb(0x808080), rgb(0xE3E6EA),
                     rgb(0xE3E7EB), rgb(0xCDD2D8), rgb(0x3B4754)};
const Colours kDark{rgb(0x26292E), rgb(0x1B1E22), rgb(0x22262B), rgb(0xE6E8EB), rgb(0xA3ABB5), rgb(0xFF8A80),
                    rgb(0x8F98A3), rgb(0x7FB0FF), rgb(0x3874D6), rgb(0xFFFFFF), rgb(0x79838E), rgb(0x000000),
                    rgb(0x3F4751), rgb(0xB4BBC4), rgb(0x2D3137), rgb(0xA3ABB5), rgb(0x808080), rgb(0xE3E6EA),
                    rgb(0x2C3036), rgb(0x3C4249), rgb(0xC3CAD3)};

const char* const kStyleSheet = R"(
QMessageBox QLabel#qt_msgbox_label { font-weight: 600; min-width: 240px; }
QHeaderView { border: none; background: palette(base); }
QHeaderView:horizontal { background: palette(window); }
GridView QHeaderView { background: palette(window); }
QSplitter::handle { background: transparent; }
QSplitter::handle:hover { background: palette(mid); }
QPushButton[accent="true"] { background: palette(highlight); color: palette(highlighted-text); border: none;
  border-radius: 4px; padding: 5px 16px; font-weight: 600; }
QPushButton[accent="true"]:disabled { background: palette(mid); color: palette(window-text); }
QPushButton[accent="true"]:focus { border: 2px solid palette(text); padding: 3px 14px; }
)";

QString lineStyle(const Colours& colours) {
  return QStringLiteral(
             "QFrame#actionBar, QFrame#clipboardDataWindowBar { border: none; border-top: 1px solid %1; }"
             "QSplitter#mainSplitView::handle, QSplitter#clipboardDataWindowSplitView::handle { background: "
             "%1; }")
      .arg(colours.paneLine.name());
}

QString headerStyle(const Colours& colours) {
  const QString line = QColor(colours.missing.red(), colours.missing.green(), colours.missing.blue(), 60)
                           .name(QColor::HexArgb);
  return QStringLiteral(
             "QHeaderView::section { background: %1; color: %2; border: none; padding: 0 5px;"
             " border-right: 1px solid %3; border-bottom: 1px solid %3; }"
             "QTableView QTableCornerButton::section { background: %1; border: none;"
             " border-right: 1px solid %3; border-bottom: 1px solid %3; }")
      .arg(colours.header.name(), colours.headerText.name(), line);
}

// Fusion leaves a button's text hardly more room than it takes.
class HouseStyle final : public QProxyStyle {
 public:
  HouseStyle() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {}

  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* data) const override {
    return hint == SH_DialogButtonBox_ButtonsHaveIcons ? 0
                                                       : QProxyStyle::styleHint(hint, option, widget, data);
  }

  QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                         const QWidget* widget) const override {
    constexpr int kRoom = 10;  // pixels, for both sides
    QSize whole = QProxyStyle::sizeFromContents(type, option, size, widget);
    if (type == CT_PushButton && whole.width() < size.width() + 2 * kRoom)
      whole.setWidth(size.width() + 2 * kRoom);
    return whole;
  }
};

}  // namespace

Scheme schemeOf(const QPalette& palette) {
  return palette.color(QPalette::Base).lightness() < palette.color(QPalette::Text).lightness()
             ? Scheme::Dark
             : Scheme::Light;
}

const Colours& coloursOf(Scheme scheme) {
  return scheme == Scheme::Dark ? kDark : kLight;
}

const Colours& coloursOf(const QPalette& palette) {
  return coloursOf(schemeOf(palette));
}

QPalette paletteOf(Scheme scheme) {
  const Colours& colours = coloursOf(scheme);
  QPalette palette(colours.window);
  palette.setColor(QPalette::Window, colours.window);
  palette.setColor(QPalette::WindowText, colours.text);
  palette.setColor(QPalette::Base, colours.base);
  palette.setColor(QPalette::AlternateBase, colours.alternate);
  palette.setColor(QPalette::Text, colours.text);
  palette.setColor(QPalette::Button, scheme == Scheme::Dark ? colours.header : colours.base);
  palette.setColor(QPalette::ButtonText, colours.text);
  palette.setColor(QPalette::ToolTipBase, colours.base);
  palette.setColor(QPalette::ToolTipText, colours.text);
  palette.setColor(QPalette::PlaceholderText, colours.placeholder);
  palette.setColor(QPalette::Link, colours.link);
  palette.setColor(QPalette::Highlight, colours.selectedFill);
  palette.setColor(QPalette::HighlightedText, colours.selectedText);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
    palette.setColor(QPalette::Disabled, role, colours.placeholder);
  palette.setColor(QPalette::Disabled, QPalette::Base, colours.window);
  return palette;
}

// The desktop portal knows it, where there is one.
Scheme schemeOfDesktop() {
  QDBusMessage question = QDBusMessage::createMethodCall(
      QStringLiteral("org.freedesktop.portal.Desktop"), QStringLiteral("/org/freedesktop/portal/desktop"),
      QStringLiteral("org.freedesktop.portal.Settings"), QStringLiteral("Read"));
  question << QStringLiteral("org.freedesktop.appearance") << QStringLiteral("color-scheme");
  const QDBusMessage answer = QDBusConnection::sessionBus().call(question, QDBus::Block, kPortalPatience);
  if (answer.type() != QDBusMessage::ReplyMessage || answer.arguments().isEmpty()) return Scheme::Light;
  QVariant value = answer.arguments().constFirst();
  while (value.canConvert<QDBusVariant>()) value = value.value<QDBusVariant>().variant();
  return value.toInt() == kPrefersDark ? Scheme::Dark : Scheme::Light;
}

void applyTheme(QApplication& application, Scheme scheme) {
  QApplication::setStyle(new HouseStyle);
  QApplication::setPalette(paletteOf(scheme));
  application.setStyleSheet(QString::fromUtf8(kStyleSheet) + lineStyle(coloursOf(scheme)) +
                            headerStyle(coloursOf(scheme)));
}

QFont fixedWidthFont() {
  QFont font;
  font.setFamilies({QStringLiteral("Monaco"), QStringLiteral("Menlo"), QStringLiteral("DejaVu Sans Mono"),
                    QStringLiteral("Noto Sans Mono"), QStringLiteral("Consolas")});
  font.setStyleHint(QFont::Monospace);
  font.setPixelSize(13);
  return font;
}

}  // namespace quillet::ui
