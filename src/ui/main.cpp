#include <QApplication>
#include <QFile>
#include <QFileInfo>
#include <clocale>

#include "ui/guide_pictures.h"
#include "ui/icons.h"
#include "ui/quillet_application.h"
#include "ui/screenshots.h"
#include "ui/theme.h"

namespace {

std::vector<std::string> pathsOf(const QStringList& arguments) {
  std::vector<std::string> paths;
  for (const QString& argument : arguments.mid(1))
    paths.push_back(QFile::encodeName(QFileInfo(argument).absoluteFilePath()).toStdString());
  return paths;
}

// --screenshots SAMPLES FOLDER: every window and sheet, in both palettes. --screenshots --guide SAMPLES
// FOLDER: the pictures of the guide. Not told to users.
bool takePictures(QApplication& application, const QStringList& arguments) {
  if (arguments.value(0) == QLatin1String("--guide"))
    return quillet::ui::writeGuidePictures(application, arguments.value(1), arguments.value(2));
  return quillet::ui::writeScreenshots(application, arguments.value(0), arguments.value(1));
}

}  // namespace

int main(int argc, char** argv) {
  QApplication qt(argc, argv);
  QApplication::setApplicationName(QStringLiteral("quillet"));
  QApplication::setApplicationDisplayName(QStringLiteral("Quillet"));
  QApplication::setDesktopFileName(QStringLiteral("org.quillet.Quillet"));
  QApplication::setQuitOnLastWindowClosed(false);
  if (QApplication::arguments().value(1) == QLatin1String("--screenshots"))
    return takePictures(qt, QApplication::arguments().mid(2)) ? 0 : 1;
  quillet::ui::applyTheme(qt, quillet::ui::schemeOfDesktop());
  quillet::ui::QuilletApplication quillet(std::make_shared<quillet::UserFolders>());
  QApplication::setWindowIcon(QIcon(QStringLiteral(":/icons/org.quillet.Quillet.svg")));
  quillet.launch(pathsOf(QApplication::arguments()));
  return QApplication::exec();
}
