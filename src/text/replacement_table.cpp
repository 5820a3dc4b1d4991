#include "text/replacement_table.h"

#include <algorithm>
#include <optional>

#include "platform/character_set.h"
#include "platform/composed_sequences.h"
#include "platform/text_search.h"
#include "platform/unicode_text.h"

namespace quillet {

namespace {

constexpr std::int64_t kControlClass = 1;
constexpr std::int64_t kUncommonClass = 2;

bool classContains(std::int64_t key, char16_t firstUnit) {
  if (key == kControlClass) return isControl(firstUnit);
  if (key == kUncommonClass) return isSurrogate(firstUnit);
  return false;
}

// What a letter behind a backslash stands for.
std::optional<char16_t> escapedCharacter(std::u16string_view sequence) {
  if (sequence.size() != 1) return std::nullopt;
  switch (sequence[0]) {
    case u'a':
      return u'\a';
    case u'b':
      return u'\b';
    case u'f':
      return u'\f';
    case u'n':
      return u'\n';
    case u'r':
      return u'\r';
    case u't':
      return u'\t';
    case u'v':
      return u'\v';
    default:
      return std::nullopt;
  }
}

// The characters that a list names. A backslash only ever sets the flag, so none can be named: this is meant.
std::vector<std::u16string> listedCharacters(std::u16string_view list) {
  std::vector<std::u16string> result;
  bool escapePending = false;
  forEachComposedSequence(list, [&](std::u16string_view sequence) {
    if (sequence == u"\\") {
      escapePending = true;
    } else if (!escapePending) {
      result.emplace_back(sequence);
    } else {
      escapePending = false;
      if (const auto character = escapedCharacter(sequence)) result.emplace_back(1, *character);
    }
  });
  return result;
}

bool textContains(std::u16string_view text, std::u16string_view part) {
  return rangeOfString(text, part, 0).has_value();
}

}  // namespace

ReplacementTable::ReplacementTable(std::vector<Pair> pairs, std::u16string_view quoteString,
                                   std::u16string_view lineSeparator, std::u16string_view columnSeparator)
    : pairs_(std::move(pairs)),
      protected_{std::u16string(quoteString), std::u16string(lineSeparator),
                 std::u16string(columnSeparator)} {
  for (const auto& [key, replacement] : pairs_) {
    if (const auto* number = std::get_if<std::int64_t>(&key)) {
      if (*number == kUncommonClass) affectsUncommon_ = true;
      for (std::size_t unit = 0; unit < affectsLow_.size(); ++unit)
        if (classContains(*number, static_cast<char16_t>(unit))) affectsLow_.set(unit);
    } else if (const auto& text = std::get<std::u16string>(key); !text.empty()) {
      const char32_t first = codePointAt(text, 0);
      if (first < affectsLow_.size())
        affectsLow_.set(first);
      else
        affectedAbove_.push_back(first);
    }
  }
  std::sort(affectedAbove_.begin(), affectedAbove_.end());
  // A long table is walked once a character, not once an occurrence.
  for (const auto& [key, replacement] : pairs_) {
    const auto* text = std::get_if<std::u16string>(&key);
    if (text && !text->empty() && !known_.contains(*text)) known_.emplace(*text, walked(*text));
  }
}

bool ReplacementTable::affects(char32_t character) const {
  if (character < affectsLow_.size()) return affectsLow_[character];
  if (affectsUncommon_ && (character > 0xFFFF || isSurrogate(static_cast<char16_t>(character)))) return true;
  return std::binary_search(affectedAbove_.begin(), affectedAbove_.end(), character);
}

std::u16string_view ReplacementTable::replaced(std::u16string_view character) const {
  if (pairs_.empty() || character.empty() || !affects(codePointAt(character, 0))) return character;
  if (pairs_.size() > 1) {
    if (const auto found = known_.find(character); found != known_.end()) return found->second;
  }
  return walked(character);
}

// The rule: pair by pair.
std::u16string_view ReplacementTable::walked(std::u16string_view character) const {
  const char16_t firstUnit = character[0];
  std::u16string_view current = character;
  for (const auto& [key, replacement] : pairs_) {
    if (const auto* number = std::get_if<std::int64_t>(&key)) {
      // The class is that of the original character, whatever stands in its place by now: this is meant. An
      // empty text is in no protected text, so a class applies to it.
      if (!classContains(*number, firstUnit)) continue;
      if (std::any_of(std::begin(protected_), std::end(protected_),
                      [&](const std::u16string& text) { return textContains(text, current); }))
        continue;
    } else if (std::get<std::u16string>(key) != current) {
      continue;
    }
    current = replacement;
  }
  return current;
}

void appendReplacementPairs(std::int64_t characterClass, std::u16string_view characters,
                            std::u16string_view replacement, std::u16string_view quoteString,
                            std::u16string_view lineSeparator, std::u16string_view columnSeparator,
                            std::vector<ReplacementTable::Pair>& pairs) {
  if (characterClass == kControlClass || characterClass == kUncommonClass) {
    pairs.emplace_back(characterClass, replacement);
    return;
  }
  if (characterClass != 0) return;
  for (auto& character : listedCharacters(characters)) {
    // The structure of the file is never replaced.
    if (textContains(quoteString, character) || textContains(lineSeparator, character) ||
        textContains(columnSeparator, character))
      continue;
    pairs.emplace_back(std::move(character), replacement);
  }
}

}  // namespace quillet
