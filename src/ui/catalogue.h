// The translations of one language, from a .mo file as gettext's msgfmt writes it. The English text of the
// sources is the key. The C library reads such files too, but only in a locale that is installed on the
// machine, from the environment of the process, and with one state for all of it; here none of this matters.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace quillet::ui {

class Catalogue {
 public:
  // Nothing where the bytes are no whole catalogue in UTF-8.
  static std::optional<Catalogue> read(std::string_view bytes);

  // Null where there is no translation; else good as long as the catalogue.
  const std::u16string* find(std::u16string_view key) const;
  std::size_t size() const { return texts_.size(); }

 private:
  struct Hash {
    using is_transparent = void;
    std::size_t operator()(std::u16string_view key) const { return std::hash<std::u16string_view>()(key); }
  };
  std::unordered_map<std::u16string, std::u16string, Hash, std::equal_to<>> texts_;
};

// The variables of the environment that choose a language; an absent one is "".
struct LocaleVariables {
  std::string language;    // LANGUAGE: a list with ":" between
  std::string lcAll;       // LC_ALL
  std::string lcMessages;  // LC_MESSAGES
  std::string lang;        // LANG
};
LocaleVariables localeVariablesOfEnvironment();

// The names under which catalogues are looked for, best first, such as "de_AT", "de", "en". In the locale C
// (and POSIX) there are none, and texts stay as they stand in the sources. In any other English comes last:
// the texts of the sources name parts of another platform.
std::vector<std::string> languagesOf(const LocaleVariables& variables);

struct CatalogueOfLanguage {
  std::string language;
  Catalogue catalogue;
};

// The first that is there: FOLDER/LANGUAGE/LC_MESSAGES/quillet.mo, for each language in all folders.
std::optional<CatalogueOfLanguage> findCatalogue(const std::vector<std::string>& languages,
                                                 const std::vector<std::string>& localeFolders);

// Makes localized() ask this catalogue, or none. Before threads start.
void useCatalogue(std::optional<Catalogue> catalogue);

}  // namespace quillet::ui
