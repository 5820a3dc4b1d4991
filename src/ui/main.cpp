#include <QApplication>
#include <QFile>
#include <QFileInfo>
#include <clocale>

#include "ui/icons.h"
#include "ui/quillet_application.h"
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
  QApplication::setApplicationName(QStringLiteral("quillet"));
  QApplication::setApplicationDisplayName(QStringLiteral("Quillet"));
  QApplication::setDesktopFileName(QStringLiteral("org.quillet.Quillet"));
  QApplication::setQuitOnLastWindowClosed(false);
  quillet::ui::applyTheme(qt, quillet::ui::schemeOfDesktop());
  QApplication::setWindowIcon(QIcon(QStringLiteral(":/icons/org.quillet.Quillet.svg")));
  quillet::ui::QuilletApplication quillet(std::make_shared<quillet::UserFolders>());
  quillet.launch(pathsOf(QApplication::arguments()));
  return QApplication::exec();
}
