#include "ui/text_lines.h"

#include <QStringList>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "support/random_source.h"

namespace quillet::ui {
namespace {

using Of = TextLines::Of;

QString text16(const char16_t* text) {
  return QString::fromUtf16(text);
}

TEST(TextLines, EndAtLineFeedsOnly) {
  const TextLines lines(text16(u"one\r\ntwo\u2028three\n\nfour"));
  ASSERT_EQ(lines.count(), 4);
  EXPECT_EQ(lines.line(0), text16(u"one\r"));
  EXPECT_EQ(lines.line(1), text16(u"two\u2028three"));
  EXPECT_EQ(lines.line(2), QString());
  EXPECT_EQ(lines.line(3), text16(u"four"));
  EXPECT_EQ(lines.longest(), 9);
}

TEST(TextLines, AnEmptyTextIsOneLine) {
  const TextLines lines;
  EXPECT_EQ(lines.count(), 1);
  EXPECT_EQ(lines.line(0), QString());
  EXPECT_EQ(lines.lineAt(0), 0);
  EXPECT_EQ(TextLines(text16(u"a\n")).count(), 2);
}

// The plain rule is QString::split.
TEST(TextLines, AreThoseOfASplit) {
  testing::RandomSource random;
  for (std::uint64_t round = testing::rounds(300); round > 0; --round) {
    QString text;
    const auto length = static_cast<qsizetype>(random.below(80));
    while (text.size() < length) text += QLatin1Char("ab\n\n"[random.below(4)]);
    const TextLines lines(text);
    const QStringList expected = text.split(QLatin1Char('\n'));
    ASSERT_EQ(lines.count(), expected.size());
    qsizetype position = 0;
    qsizetype longest = 0;
    for (qsizetype line = 0; line < lines.count(); ++line) {
      ASSERT_EQ(lines.line(line), expected[line]);
      ASSERT_EQ(lines.start(line), position);
      for (qsizetype i = 0; i <= expected[line].size(); ++i) ASSERT_EQ(lines.lineAt(position + i), line);
      position += expected[line].size() + 1;
      longest = std::max(longest, expected[line].size());
    }
    ASSERT_EQ(lines.longest(), longest);
  }
}

// A count of a block must not run over.
TEST(TextLines, CountsLongTexts) {
  EXPECT_EQ(TextLines(QString(200'000, QLatin1Char('\n'))).count(), 200'001);
  EXPECT_FALSE(TextLines(QString(65'536, QChar(0x6F22))).isOfOneWidth());
  EXPECT_FALSE(TextLines(QString(131'072, QLatin1Char('\t'))).isOfOneWidth());
}

TEST(TextLines, KnowWhetherAllHasOneWidth) {
  struct Case {
    const char16_t* text;
    bool isOfOneWidth;
    qsizetype mostColumns;
  };
  const Case cases[] = {{u"plain é\nto", true, 7},     {u"\u6F22\u5B57", false, 4}, {u"ab\u30FB", false, 4},
                        {u"e\u0301", false, 3},        {u"\t", false, 12},          {u"\uFDFD", false, 16},
                        {u"\u05E9\nabcdefg", false, 7}};
  for (const Case& one : cases) {
    const TextLines lines(text16(one.text));
    EXPECT_EQ(lines.isOfOneWidth(), one.isOfOneWidth) << text16(one.text).toStdString();
    EXPECT_EQ(lines.mostColumns(), one.mostColumns) << text16(one.text).toStdString();
  }
}

TEST(TextLines, GoByCharactersAndWords) {
  const TextLines lines(text16(u"e\u0301 \xD83D\xDE00 two, three"));
  EXPECT_EQ(lines.next(0, Of::Character), 2) << "a mark belongs to its letter";
  EXPECT_EQ(lines.next(3, Of::Character), 5) << "a pair is one";
  EXPECT_EQ(lines.previous(5, Of::Character), 3);
  EXPECT_EQ(lines.previous(0, Of::Character), 0);
  EXPECT_EQ(lines.next(lines.text().size(), Of::Word), lines.text().size());
  EXPECT_EQ(lines.next(6, Of::Word), 9);
  EXPECT_EQ(lines.wordAt(7).from, 6);
  EXPECT_EQ(lines.wordAt(7).to, 9);
}

TEST(TextLines, AVeryLongWordIsPassedInPieces) {
  const TextLines lines(QString(10'000, QLatin1Char('x')));
  EXPECT_GT(lines.next(5'000, Of::Word), 5'000);
  EXPECT_LT(lines.previous(5'000, Of::Word), 5'000);
  EXPECT_LE(lines.wordAt(5'000).from, 5'000);
  EXPECT_GT(lines.wordAt(5'000).to, 5'000);
}

TEST(ShownForm, HasASignForWhatHasNoShape) {
  struct Case {
    char16_t unit;
    char16_t shown;
  };
  const Case cases[] = {{0, 0x2400},    {u'\r', 0x240D},  {0x1F, 0x241F},   {0x7F, 0x2421},
                        {0x85, 0x2424}, {0x80, 0xFFFD},   {0x9F, 0xFFFD},   {0x2028, 0x21B5},
                        {0x2029, 0xB6}, {0xFFFC, 0xFFFD}, {0xD800, 0xFFFD}, {0xDC00, 0xFFFD},
                        {u'\t', u'\t'}, {u' ', u' '},     {0xA0, 0xA0},     {0x6F22, 0x6F22}};
  for (const Case& one : cases)
    EXPECT_EQ(shownForm(QString(QChar(one.unit)) + QLatin1Char('x')),
              QString(QChar(one.shown)) + QLatin1Char('x'))
        << std::hex << static_cast<int>(one.unit);
  const QString pair = text16(u"a\xD83D\xDE00z");
  EXPECT_EQ(shownForm(pair), pair);
  EXPECT_EQ(shownForm(QStringView(pair).left(2)), text16(u"a\uFFFD"));
}

}  // namespace
}  // namespace quillet::ui
