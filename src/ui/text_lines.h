// A plain text of any size as lines: where they begin, and how a part of one is shown.
//
// Positions are UTF-16 units from 0, lines count from 0 and end at a line feed.
#pragma once

#include <QString>
#include <QStringView>
#include <cstddef>
#include <vector>

namespace quillet::ui {

class TextLines {
 public:
  TextLines() = default;
  explicit TextLines(QString text);

  const QString& text() const { return text_; }
  qsizetype count() const { return static_cast<qsizetype>(starts_.size()); }  // at least 1
  qsizetype start(qsizetype line) const { return starts_[static_cast<std::size_t>(line)]; }
  QStringView line(qsizetype line) const;  // without its line feed; good as long as the object
  qsizetype lineAt(qsizetype position) const;

  qsizetype longest() const { return longest_; }  // units
  // Every line has room in so many characters of one width; may be more than it takes.
  qsizetype mostColumns() const { return mostColumns_; }
  // Whether units and columns are the same.
  bool isOfOneWidth() const { return isOfOneWidth_; }

  // The boundary of a character or of a word that is next to the position, or the same at an end of the text.
  // What is longer than a thousand units is passed in pieces.
  enum class Of { Character, Word };
  qsizetype next(qsizetype position, Of of) const;
  qsizetype previous(qsizetype position, Of of) const;
  // The word that the position is in, or what is between two words.
  struct Range {
    qsizetype from = 0;
    qsizetype to = 0;
  };
  Range wordAt(qsizetype position) const;

 private:
  void findStarts(std::size_t lineFeeds);

  QString text_;
  std::vector<qsizetype> starts_{0};
  qsizetype longest_ = 0;
  qsizetype mostColumns_ = 0;
  bool isOfOneWidth_ = true;
};

// Unit by unit, with a sign in the place of what would be invisible, end the line of a layout or have no
// shape.
QString shownForm(QStringView part);

}  // namespace quillet::ui
