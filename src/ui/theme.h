// The look: two palettes and their colours. A platform's own style and its high-contrast palettes are left
// alone; elsewhere the Fusion style gets these.
#pragma once

#include <QColor>
#include <QFont>
#include <QPalette>

class QApplication;

namespace quillet::ui {

struct Colours {
  QColor window, base, alternate;
  QColor text, secondary, red, placeholder, link;
  QColor selectedFill, selectedText;
  QColor cellUnfocused, cellUnfocusedText;  // of the grid without the keys
  QColor selectedRow, selectedRowDetail;    // of a list without the keys
  QColor header, headerText;
  QColor missing, missingSelected;  // the frame of a cell that is not there
  QColor columnLine, paneLine;      // between columns of cells; between panes of a window
  QColor icon;
};

inline constexpr QRgb kClipboardJobBadgeRgb = 0xFF7BD88F;
inline constexpr QRgb kFileJobBadgeRgb = 0xFF8AB8FF;
inline const QColor kClipboardJobBadge{QColor::fromRgb(kClipboardJobBadgeRgb)};
inline const QColor kFileJobBadge{QColor::fromRgb(kFileJobBadgeRgb)};

enum class Scheme { Light, Dark };

// By the lightness of the palette.
Scheme schemeOf(const QPalette& palette);
const Colours& coloursOf(Scheme scheme);
// Of a palette that is not ours they are made from its own; they stand until the next such call.
const Colours& coloursOf(const QPalette& palette);
QPalette paletteOf(Scheme scheme);

// Fusion with this palette; all windows are drawn anew. The forced scheme is for pictures.
void applyTheme(QApplication& application, const QPalette& palette);
void applyTheme(QApplication& application, Scheme scheme);
// What the house adds to any style; the colours are those of the palette.
void applySpaces(QApplication& application, const QPalette& palette);

QFont fixedWidthFont();  // 13 pixels

}  // namespace quillet::ui
