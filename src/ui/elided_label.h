// A label of one line that leaves out the middle of a text which is too long, such as a path.
#pragma once

#include <QLabel>

class ElidedLabel final : public QLabel {
  Q_OBJECT

 public:
  using QLabel::QLabel;

  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
};
