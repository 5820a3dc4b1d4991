// make_icons DRAWING FOLDER NAME SIZE... : draws an SVG in each size, as FOLDER/SIZExSIZE/apps/NAME.png. Runs
// while Quillet is built, so that the build needs no other tool for it.
#include <QDir>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <cstdio>
#include <cstdlib>

namespace {

bool makeIcon(QSvgRenderer& drawing, const QString& folder, const QString& name, int size) {
  const QString place = QStringLiteral("%1/%2x%2/apps").arg(folder).arg(size);
  if (!QDir().mkpath(place)) return false;
  QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  drawing.render(&painter);
  painter.end();
  return image.save(place + QLatin1Char('/') + name + QStringLiteral(".png"), "PNG");
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 5) return std::fputs("usage: make_icons DRAWING FOLDER NAME SIZE...\n", stderr), EXIT_FAILURE;
  QSvgRenderer drawing(QString::fromLocal8Bit(argv[1]));
  if (!drawing.isValid()) return std::fprintf(stderr, "%s is no drawing\n", argv[1]), EXIT_FAILURE;
  for (int i = 4; i < argc; ++i)
    if (!makeIcon(drawing, QString::fromLocal8Bit(argv[2]), QString::fromLocal8Bit(argv[3]),
                  std::atoi(argv[i])))
      return std::fprintf(stderr, "The icon of size %s could not be made.\n", argv[i]), EXIT_FAILURE;
  return EXIT_SUCCESS;
}
