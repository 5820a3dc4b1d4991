// Between the application's UTF-16 texts and Qt's, unit by unit.
#pragma once

#include <QString>
#include <QTextDocument>
#include <string>
#include <string_view>

namespace quillet::ui {

inline QString qString(std::u16string_view text) {
  return QString(reinterpret_cast<const QChar*>(text.data()), static_cast<qsizetype>(text.size()));
}

inline std::u16string u16String(const QString& text) {
  return {reinterpret_cast<const char16_t*>(text.constData()), static_cast<std::size_t>(text.size())};
}

// A text of the application for a place where "&" would mark a mnemonic.
inline QString withoutMnemonics(std::u16string_view text) {
  return qString(text).replace(QLatin1Char('&'), QLatin1String("&&"));
}

// A tool tip that shows the text as it is, though it looks like a page.
inline QString plainToolTip(const QString& text) {
  return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text) : text;
}

// The text as it is read, of one that marks its mnemonic: "&Save" or, where letters are none of the
// language's, "保存(&S)".
inline QString withoutMnemonic(QString text) {
  const qsizetype mark = text.indexOf(QLatin1Char('&'));
  if (mark < 0) return text;
  const bool isBracketed =
      mark > 0 && text[mark - 1] == QLatin1Char('(') && text.mid(mark + 2, 1) == QLatin1String(")");
  return isBracketed ? text.remove(mark - 1, 4) : text.remove(mark, 1);
}

}  // namespace quillet::ui
