// Makes Qt ask the application's catalogue for every text: those of forms, of tr(), and the words on Qt's own
// buttons.
#pragma once

#include <QCoreApplication>
#include <QTranslator>
#include <string>
#include <vector>

namespace quillet::ui {

// A text that the catalogue in use does not have is left to the translators that were installed before.
class CatalogueTranslator final : public QTranslator {
 public:
  using QTranslator::QTranslator;
  QString translate(const char* context, const char* text, const char* disambiguation,
                    int number) const override;
  bool isEmpty() const override { return false; }
};

// Where catalogues are: beside the installed program's folder, or in the build tree.
std::vector<std::string> localeFolders();

// Chooses the catalogue by the environment and installs it, and Qt's own translations of that language below
// it. Before the first text is made.
void installTranslations(QCoreApplication& application);

}  // namespace quillet::ui
