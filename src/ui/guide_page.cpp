#include "ui/guide_page.h"

#include <QDir>
#include <QFile>

namespace quillet::ui {

std::string guidePage(const QString& programFolder) {
  const QDir folder(programFolder);
  for (const char* page : {"guide/index.html", "docs/index.md"})
    for (const char* documents : {"../share/doc/quillet/", "share/doc/quillet/"}) {
      const QString path = QDir::cleanPath(folder.filePath(QLatin1String(documents) + QLatin1String(page)));
      if (QFile::exists(path)) return QFile::encodeName(path).toStdString();
    }
  return {};
}

}  // namespace quillet::ui
