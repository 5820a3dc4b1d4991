// The icons: SVG drawings in one colour, painted in that of the palette at any size.
#pragma once

#include <QIcon>
#include <QString>

namespace quillet::ui {

// What an icon stands on; that of a row that gets selected is told by the icon's mode.
enum class IconOn { Window, Selection };

// By its name, as in "split-path". A null icon for an unknown one. It is painted in the colours of the
// application's palette at that time.
QIcon icon(const QString& name, IconOn on = IconOn::Window);

}  // namespace quillet::ui
