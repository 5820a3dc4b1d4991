#include "ui/theme.h"

#include <QApplication>
#include <QWidget>
#include <utility>
#include <vector>

#include "ui/frame_style.h"

namespace quillet::ui {

namespace {

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
QMessageBox QLabel#qt_msgbox_label { font-weight: 600; }
QToolButton#clipboardDataWindowPerformToolbarItem { padding-right: 12px; }
QToolButton#clipboardDataWindowPerformToolbarItem::menu-indicator { subcontrol-origin: padding;
  subcontrol-position: center right; }
QHeaderView { border: none; background: palette(base); }
QHeaderView#columnHeader { background: palette(window); }
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

// One of our palettes, whatever colour of text a label has got.
bool isOurs(const QPalette& palette, const Colours& ours) {
  return palette.color(QPalette::Active, QPalette::Base) == ours.base &&
         palette.color(QPalette::Active, QPalette::Window) == ours.window;
}

// So much of the text's colour on the other.
QColor mixed(const QColor& back, const QColor& text, float share) {
  const auto part = [&](float one, float other) { return one + (other - one) * share; };
  return QColor::fromRgbF(part(back.redF(), text.redF()), part(back.greenF(), text.greenF()),
                          part(back.blueF(), text.blueF()));
}

// What we draw by ourselves, in a palette of the system: from its colours alone, so that a high contrast
// stays one.
Colours coloursFrom(const QPalette& palette, const Colours& ours) {
  constexpr float kBarely = 0.2F;
  constexpr float kClearly = 0.46F;
  const auto colour = [&](QPalette::ColorRole role) { return palette.color(QPalette::Active, role); };
  Colours colours = ours;
  colours.window = colour(QPalette::Window);
  colours.base = colour(QPalette::Base);
  colours.alternate = colour(QPalette::AlternateBase);
  colours.text = colour(QPalette::Text);
  colours.secondary = colours.icon = colour(QPalette::WindowText);
  colours.placeholder = colour(QPalette::PlaceholderText);
  colours.link = colour(QPalette::Link);
  colours.selectedFill = colour(QPalette::Highlight);
  colours.selectedText = colours.missingSelected = colour(QPalette::HighlightedText);
  colours.cellUnfocused = mixed(colours.base, colours.text, kClearly);
  colours.cellUnfocusedText = schemeOf(palette) == Scheme::Dark ? Qt::white : Qt::black;
  colours.selectedRow = mixed(colours.base, colours.text, kBarely);
  colours.selectedRowDetail = colours.text;
  colours.header = colour(QPalette::Button);
  colours.headerText = colour(QPalette::ButtonText);
  colours.missing = mixed(colours.base, colours.text, kClearly);
  colours.columnLine = colours.paneLine = mixed(colours.base, colours.text, kBarely);
  return colours;
}

}  // namespace

Scheme schemeOf(const QPalette& palette) {
  return palette.color(QPalette::Active, QPalette::Base).lightness() <
                 palette.color(QPalette::Active, QPalette::Text).lightness()
             ? Scheme::Dark
             : Scheme::Light;
}

const Colours& coloursOf(Scheme scheme) {
  return scheme == Scheme::Dark ? kDark : kLight;
}

const Colours& coloursOf(const QPalette& palette) {
  const Colours& ours = coloursOf(schemeOf(palette));
  if (isOurs(palette, ours)) return ours;
  static qint64 key = 0;
  static Colours theirs;
  if (key != palette.cacheKey()) {
    theirs = coloursFrom(palette, ours);
    key = palette.cacheKey();
  }
  return theirs;
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
  palette.setColor(QPalette::LinkVisited, colours.link);
  palette.setColor(QPalette::Highlight, colours.selectedFill);
  palette.setColor(QPalette::HighlightedText, colours.selectedText);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
    palette.setColor(QPalette::Disabled, role, colours.placeholder);
  palette.setColor(QPalette::Disabled, QPalette::Base, colours.window);
  return palette;
}

void applySpaces(QApplication& application, const QPalette& palette) {
  // A new style sheet takes the fonts off the widgets that have their own.
  std::vector<std::pair<QWidget*, QFont>> fonts;
  for (QWidget* widget : QApplication::allWidgets())
    if (widget->testAttribute(Qt::WA_SetFont)) fonts.emplace_back(widget, widget->font());
  application.setStyleSheet(QString::fromUtf8(kStyleSheet) + lineStyle(coloursOf(palette)) +
                            headerStyle(coloursOf(palette)));
  for (const auto& [widget, font] : fonts) widget->setFont(font);
}

void applyTheme(QApplication& application, const QPalette& palette) {
  // Once: it draws with whatever palette there is.
  constexpr const char* kHasStyle = "hasFrameStyle";
  if (!application.property(kHasStyle).toBool()) QApplication::setStyle(new FrameStyle);
  // The application owns it. NOLINTNEXTLINE(clang-analyzer-cplusplus.NewDeleteLeaks)
  application.setProperty(kHasStyle, true);
  QApplication::setPalette(palette);
  applySpaces(application, palette);
}

void applyTheme(QApplication& application, Scheme scheme) {
  applyTheme(application, paletteOf(scheme));
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
