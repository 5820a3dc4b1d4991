#include "ui/catalogue.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <utility>

#include "platform/localization.h"
#include "platform/unicode_text.h"

namespace quillet::ui {

namespace {

constexpr std::uint32_t kMagic = 0x950412de;
constexpr std::size_t kHeaderLength = 20;  // up to the place of the second table
constexpr std::size_t kEntryLength = 8;

// The parts of a .mo file. What points outside the file is absent.
class MessageFile {
 public:
  explicit MessageFile(std::string_view bytes) : bytes_(bytes) {}

  bool hasHeader() const {
    return bytes_.size() >= kHeaderLength && number(0) == kMagic && number(4) >> 16 == 0;
  }
  std::size_t count() const { return number(8); }
  std::optional<std::string_view> key(std::size_t index) const { return text(number(12), index); }
  std::optional<std::string_view> translation(std::size_t index) const { return text(number(16), index); }

 private:
  // msgfmt writes the lowest byte first on any machine.
  std::uint32_t number(std::size_t offset) const {
    std::uint32_t value = 0;
    for (std::size_t i = 4; i-- > 0;) value = value << 8 | static_cast<unsigned char>(bytes_[offset + i]);
    return value;
  }

  std::optional<std::string_view> text(std::size_t table, std::size_t index) const {
    const std::size_t entry = table + index * kEntryLength;
    if (entry + kEntryLength > bytes_.size()) return std::nullopt;
    const std::size_t length = number(entry);
    const std::size_t offset = number(entry + 4);
    if (offset > bytes_.size() || length > bytes_.size() - offset) return std::nullopt;
    return bytes_.substr(offset, length);
  }

  std::string_view bytes_;
};

std::string variable(const char* name) {
  const char* value = std::getenv(name);
  return value ? value : "";
}

bool isPlainLocale(std::string_view locale) {
  return locale.empty() || locale == "C" || locale == "POSIX" || locale.starts_with("C.");
}

// "de_AT.UTF-8@euro" stands for "de_AT" and "de".
void appendNames(std::string_view locale, std::vector<std::string>& names) {
  locale = locale.substr(0, locale.find_first_of(".@"));
  // The name becomes part of a path.
  if (locale.empty() || locale.find('/') != std::string_view::npos) return;
  names.emplace_back(locale);
  if (const std::size_t end = locale.find('_'); end != std::string_view::npos && end > 0)
    names.emplace_back(locale.substr(0, end));
}

std::optional<std::string> contentsOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) return std::nullopt;
  return std::string(std::istreambuf_iterator<char>(file), {});
}

std::optional<Catalogue>& catalogueInUse() {
  static std::optional<Catalogue> catalogue;
  return catalogue;
}

std::u16string translation(std::u16string_view key) {
  const std::u16string* text = catalogueInUse()->find(key);
  return text ? *text : std::u16string(key);
}

}  // namespace

std::optional<Catalogue> Catalogue::read(std::string_view bytes) {
  const MessageFile file(bytes);
  if (!file.hasHeader()) return std::nullopt;
  Catalogue catalogue;
  for (std::size_t index = 0; index < file.count(); ++index) {
    const auto key = file.key(index);
    const auto text = file.translation(index);
    if (!key || !text) return std::nullopt;
    // The header has no key.
    if (!key->empty() && !text->empty()) catalogue.texts_.insert_or_assign(toUtf16(*key), toUtf16(*text));
  }
  return catalogue;
}

const std::u16string* Catalogue::find(std::u16string_view key) const {
  const auto found = texts_.find(key);
  return found == texts_.end() ? nullptr : &found->second;
}

LocaleVariables localeVariablesOfEnvironment() {
  return {variable("LANGUAGE"), variable("LC_ALL"), variable("LC_MESSAGES"), variable("LANG")};
}

std::vector<std::string> languagesOf(const LocaleVariables& variables) {
  const std::string& locale = !variables.lcAll.empty()        ? variables.lcAll
                              : !variables.lcMessages.empty() ? variables.lcMessages
                                                              : variables.lang;
  if (isPlainLocale(locale)) return {};
  std::vector<std::string> names;
  std::string_view wanted = variables.language.empty() ? locale : variables.language;
  while (!wanted.empty()) {
    const std::string_view one = wanted.substr(0, wanted.find(':'));
    wanted.remove_prefix(std::min(one.size() + 1, wanted.size()));
    if (!one.empty() && isPlainLocale(one))
      return names;  // texts as they stand are wanted before what follows
    appendNames(one, names);
  }
  names.emplace_back("en");
  return names;
}

std::optional<CatalogueOfLanguage> findCatalogue(const std::vector<std::string>& languages,
                                                 const std::vector<std::string>& localeFolders) {
  for (const std::string& language : languages)
    for (const std::string& folder : localeFolders) {
      const auto bytes =
          contentsOf(std::string(folder).append("/").append(language).append("/LC_MESSAGES/quillet.mo"));
      if (!bytes) continue;
      if (auto catalogue = Catalogue::read(*bytes))
        return CatalogueOfLanguage{language, std::move(*catalogue)};
    }
  return std::nullopt;
}

void useCatalogue(std::optional<Catalogue> catalogue) {
  catalogueInUse() = std::move(catalogue);
  setTranslator(catalogueInUse() ? translation : nullptr);
}

}  // namespace quillet::ui
