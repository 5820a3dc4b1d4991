#include <QApplication>
#include <QFile>
#include <QFileInfo>

#include "ui/catalogue_translator.h"
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

}  // namespace

int main(int argc, char** argv) {
  QApplication qt(argc, argv);
  quillet::ui::installTranslations(qt);
  QApplication::setApplicationName(QStringLiteral("quillet"));
  QApplication::setApplicationDisplayName(QStringLiteral("Quillet"));
  QApplication::setDesktopFileName(QStringLiteral("org.quillet.Quillet"));
  QApplication::setQuitOnLastWindowClosed(false);
  // For the pictures of the guide; not told to users.
  if (const QStringList arguments = QApplication::arguments();
      arguments.value(1) == QLatin1String("--screenshots"))
    return quillet::ui::writeScreenshots(qt, arguments.value(2), arguments.value(3)) ? 0 : 1;
  quillet::ui::applyTheme(qt, quillet::ui::schemeOfDesktop());
  quillet::ui::QuilletApplication quillet(std::make_shared<quillet::UserFolders>());
  QApplication::setWindowIcon(QIcon(QStringLiteral(":/icons/org.quillet.Quillet.svg")));
  quillet.launch(pathsOf(QApplication::arguments()));
  return QApplication::exec();
}
