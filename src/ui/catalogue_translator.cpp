#include "ui/catalogue_translator.h"

#include <QDir>
#include <QFile>
#include <QLibraryInfo>
#include <cstring>
#include <utility>

#include "platform/localization.h"
#include "ui/catalogue.h"
#include "ui/text_conversion.h"

namespace quillet::ui {

namespace {

// What Qt shows of itself in our windows, so that it is translated where Qt's own catalogues are not
// installed: the button of a prompt and the menu of a text field.
[[maybe_unused]] constexpr const char* kTextsOfQt[] = {
    localizable("OK"),   localizable("&Undo"), localizable("&Redo"),
    localizable("Cu&t"), localizable("&Copy"), localizable("&Paste"),
};

}  // namespace

QString CatalogueTranslator::translate(const char* context, const char* text, const char*, int) const {
  // The names of keys are Qt's.
  if (!text || (context && std::strcmp(context, "QShortcut") == 0)) return {};
  const std::u16string key = u16String(QString::fromUtf8(text));
  const std::u16string translation = localized(key);
  return translation == key ? QString() : qString(translation);
}

std::vector<std::string> localeFolders() {
  const QDir programs(QCoreApplication::applicationDirPath());
  std::vector<std::string> folders;
  for (const char* folder : {"../" QUILLET_LOCALE_DIR, QUILLET_LOCALE_DIR})
    folders.push_back(
        QFile::encodeName(QDir::cleanPath(programs.filePath(QLatin1String(folder)))).toStdString());
  return folders;
}

void installTranslations(QCoreApplication& application) {
  auto found = findCatalogue(languagesOf(localeVariablesOfEnvironment()), localeFolders());
  if (!found) return;
  auto* qt = new QTranslator(&application);
  if (qt->load(QStringLiteral("qtbase_") + QString::fromStdString(found->language),
               QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
    QCoreApplication::installTranslator(qt);
  useCatalogue(std::move(found->catalogue));
  QCoreApplication::installTranslator(new CatalogueTranslator(&application));
}

}  // namespace quillet::ui
