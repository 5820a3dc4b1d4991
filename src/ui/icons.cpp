#include "ui/icons.h"

#include <QFile>
#include <QGuiApplication>
#include <QIconEngine>
#include <QMap>
#include <QPainter>
#include <QSvgRenderer>

#include "ui/theme.h"

namespace quillet::ui {

namespace {

QByteArray drawing(const QString& name) {
  QFile file(QStringLiteral(":/icons/%1.svg").arg(name));
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// Paints a drawing whose strokes are "currentColor".
class DrawingEngine final : public QIconEngine {
 public:
  DrawingEngine(QByteArray svg, IconOn on) : svg_(std::move(svg)), on_(on) {}

  // In the colour of the moment: the palette may change while the icon stands.
  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
    const Colours& colours = coloursOf(QGuiApplication::palette());
    const bool isOnSelection = mode == QIcon::Selected || on_ == IconOn::Selection;
    QColor colour = isOnSelection ? colours.selectedText : colours.icon;
    if (mode == QIcon::Disabled) colour.setAlphaF(0.4F);
    QByteArray svg = svg_;
    svg.replace("currentColor", colour.name(QColor::HexRgb).toLatin1());
    QSvgRenderer renderer(svg);
    painter->save();
    painter->setOpacity(painter->opacity() * colour.alphaF());
    renderer.render(painter, rect);
    painter->restore();
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    QPixmap pixmap(size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    paint(&painter, QRect(QPoint(), size), mode, state);
    return pixmap;
  }

  QIconEngine* clone() const override { return new DrawingEngine(svg_, on_); }

 private:
  QByteArray svg_;
  IconOn on_;
};

}  // namespace

QIcon icon(const QString& name, IconOn on) {
  static QMap<QString, QByteArray> drawings;
  auto found = drawings.find(name);
  if (found == drawings.end()) found = drawings.insert(name, drawing(name));
  return found->isEmpty() ? QIcon() : QIcon(new DrawingEngine(*found, on));
}

}  // namespace quillet::ui
