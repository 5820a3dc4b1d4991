// The icons: SVG drawings in one colour, painted in that of the palette at any size.
#pragma once

#include <QIcon>
#include <QPalette>
#include <QString>

namespace quillet::ui {

// By its name, as in "split-path". A null icon for an unknown one.
QIcon icon(const QString& name, const QPalette& palette);

}  // namespace quillet::ui
