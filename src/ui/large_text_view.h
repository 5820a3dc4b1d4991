// A read-only view of a plain text of any size. It knows where the lines begin and lays out only what is in
// sight, of long lines too, so a hundred million characters scroll as a page does. Lines are not wrapped.
// Keys move a caret, with Shift they select; what a layout would not show has a sign in its place.
//
// Positions are UTF-16 units from 0.
#pragma once

#include <QAbstractScrollArea>
#include <QElapsedTimer>
#include <QString>
#include <QTextLayout>

#include "ui/text_lines.h"

class LargeTextView final : public QAbstractScrollArea {
  Q_OBJECT

 public:
  explicit LargeTextView(QWidget* parent = nullptr);

  const QString& text() const { return lines_.text(); }
  void setText(QString text);
  bool hasSelection() const { return anchor_ != caret_; }
  QString selectedText() const;
  // What a screen reader tells: the lines in sight, each as far as it is in sight.
  QString textInSight() const;

 public slots:
  void copy() const;
  void selectAll();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void changeEvent(QEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  enum class Extend { No, Yes };

  void updateScrollBars();
  int lineHeight() const;
  qsizetype linesInSight() const;
  // The part of a line that is in sight, as its units and where it begins in the line.
  QStringView partInSight(qsizetype line, qsizetype& firstUnit) const;
  // Lays that part out; false for a line that has nothing there.
  bool layOut(QTextLayout& layout, QStringView part) const;
  void paintLine(QPainter& painter, qsizetype line, int y) const;
  qsizetype positionAt(const QPoint& point) const;
  qsizetype positionInLine(qsizetype line, qreal x) const;
  qreal caretX() const;
  void moveTo(qsizetype position, Extend extend);
  void moveByLines(qsizetype count, Extend extend);
  void select(qsizetype from, qsizetype to);
  void showCaret();
  bool moveByKey(const QKeyEvent& event);

  quillet::ui::TextLines lines_;
  qsizetype anchor_ = 0;
  qsizetype caret_ = 0;
  qreal wantedX_ = -1;  // of moves from line to line, in pixels; below 0 it is the caret's
  QElapsedTimer sinceDoubleClick_;
};
