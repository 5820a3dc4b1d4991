// A read-only view of a plain text of any size. It knows where the lines begin and lays out only what is in
// sight, of long lines too, so a hundred million characters scroll as a page does. Lines are not wrapped.
//
// Positions are UTF-16 units from 0.
#pragma once

#include <QAbstractScrollArea>
#include <QString>
#include <vector>

class LargeTextView final : public QAbstractScrollArea {
  Q_OBJECT

 public:
  explicit LargeTextView(QWidget* parent = nullptr);

  const QString& text() const { return text_; }
  void setText(QString text);
  bool hasSelection() const { return anchor_ != caret_; }

 public slots:
  void copy() const;
  void selectAll();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void updateScrollBars();
  int lineHeight() const;
  qsizetype lineCount() const { return static_cast<qsizetype>(lineStarts_.size()); }
  QStringView line(qsizetype index) const;  // without its line feed
  // The part of a line that can be in sight, and where it begins.
  QStringView partInSight(qsizetype index, qsizetype& firstUnit) const;
  void paintLine(QPainter& painter, qsizetype index, int y) const;
  qsizetype positionAt(const QPoint& point) const;

  QString text_;
  std::vector<qsizetype> lineStarts_;
  qsizetype longestLine_ = 0;  // units
  qsizetype anchor_ = 0;
  qsizetype caret_ = 0;
};
