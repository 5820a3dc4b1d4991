#include "ui/large_text_view.h"

#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QTextLayout>
#include <algorithm>
#include <utility>

namespace {

constexpr int kMargin = 6;  // pixels around the text
// Units of a line that are laid out on each side of those that fixed widths would show: marks that join and
// narrow characters make a part of a line hold more of them.
constexpr qsizetype kAround = 64;

}  // namespace

LargeTextView::LargeTextView(QWidget* parent) : QAbstractScrollArea(parent), lineStarts_{0} {
  setFocusPolicy(Qt::StrongFocus);
  viewport()->setCursor(Qt::IBeamCursor);
  setContextMenuPolicy(Qt::ActionsContextMenu);
}

void LargeTextView::setText(QString text) {
  text_ = std::move(text);
  lineStarts_.assign(1, 0);
  longestLine_ = 0;
  qsizetype start = 0;
  for (qsizetype end = text_.indexOf(QLatin1Char('\n')); end >= 0;
       end = text_.indexOf(QLatin1Char('\n'), start)) {
    longestLine_ = std::max(longestLine_, end - start);
    start = end + 1;
    lineStarts_.push_back(start);
  }
  longestLine_ = std::max(longestLine_, text_.size() - start);
  anchor_ = caret_ = 0;
  verticalScrollBar()->setValue(0);
  horizontalScrollBar()->setValue(0);
  updateScrollBars();
  viewport()->update();
}

int LargeTextView::lineHeight() const {
  return std::max(fontMetrics().lineSpacing(), 1);
}

void LargeTextView::updateScrollBars() {
  const int linesInSight = std::max((viewport()->height() - 2 * kMargin) / lineHeight(), 1);
  verticalScrollBar()->setPageStep(linesInSight);
  verticalScrollBar()->setRange(0, static_cast<int>(std::max<qsizetype>(lineCount() - linesInSight, 0)));
  const int unit = std::max(fontMetrics().averageCharWidth(), 1);
  const int unitsInSight = std::max((viewport()->width() - 2 * kMargin) / unit, 1);
  horizontalScrollBar()->setPageStep(unitsInSight);
  horizontalScrollBar()->setRange(0, static_cast<int>(std::max<qsizetype>(longestLine_ - unitsInSight, 0)));
}

QStringView LargeTextView::line(qsizetype index) const {
  const auto at = static_cast<std::size_t>(index);
  const qsizetype start = lineStarts_[at];
  const qsizetype end = at + 1 < lineStarts_.size() ? lineStarts_[at + 1] - 1 : text_.size();
  return QStringView(text_).mid(start, end - start);
}

QStringView LargeTextView::partInSight(qsizetype index, qsizetype& firstUnit) const {
  const QStringView whole = line(index);
  firstUnit = std::min<qsizetype>(horizontalScrollBar()->value(), whole.size());
  // Not in the middle of a pair.
  if (firstUnit > 0 && firstUnit < whole.size() && whole[firstUnit].isLowSurrogate()) --firstUnit;
  return whole.mid(firstUnit, horizontalScrollBar()->pageStep() + kAround);
}

void LargeTextView::paintEvent(QPaintEvent* event) {
  QPainter painter(viewport());
  painter.setPen(palette().color(QPalette::Text));
  const qsizetype first = verticalScrollBar()->value();
  const qsizetype from = first + std::max((event->rect().top() - kMargin) / lineHeight(), 0);
  const qsizetype to = first + std::max((event->rect().bottom() - kMargin) / lineHeight(), 0);
  for (qsizetype index = from; index <= to && index < lineCount(); ++index)
    paintLine(painter, index, kMargin + static_cast<int>(index - first) * lineHeight());
}

void LargeTextView::paintLine(QPainter& painter, qsizetype index, int y) const {
  qsizetype firstUnit = 0;
  const QStringView part = partInSight(index, firstUnit);
  QTextLayout layout(part.toString(), font());
  layout.beginLayout();
  layout.createLine();
  layout.endLayout();
  const qsizetype start = lineStarts_[static_cast<std::size_t>(index)] + firstUnit;
  const qsizetype from = std::max(std::min(anchor_, caret_), start);
  const qsizetype to = std::min(std::max(anchor_, caret_), start + part.size());
  QList<QTextLayout::FormatRange> selections;
  if (from < to) {
    QTextLayout::FormatRange range;
    range.start = static_cast<int>(from - start);
    range.length = static_cast<int>(to - from);
    range.format.setBackground(palette().highlight());
    range.format.setForeground(palette().highlightedText());
    selections.append(range);
  }
  layout.draw(&painter, QPointF(kMargin, y), selections);
}

qsizetype LargeTextView::positionAt(const QPoint& point) const {
  const qsizetype inSight = std::max(point.y() - kMargin, 0) / lineHeight();
  const qsizetype index = std::min(verticalScrollBar()->value() + inSight, lineCount() - 1);
  qsizetype firstUnit = 0;
  QTextLayout layout(partInSight(index, firstUnit).toString(), font());
  layout.beginLayout();
  const QTextLine shown = layout.createLine();
  layout.endLayout();
  const int unit = shown.isValid() ? shown.xToCursor(point.x() - kMargin) : 0;
  return lineStarts_[static_cast<std::size_t>(index)] + firstUnit + unit;
}

void LargeTextView::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return QAbstractScrollArea::mousePressEvent(event);
  caret_ = positionAt(event->position().toPoint());
  if (!event->modifiers().testFlag(Qt::ShiftModifier)) anchor_ = caret_;
  viewport()->update();
}

void LargeTextView::mouseMoveEvent(QMouseEvent* event) {
  if (!event->buttons().testFlag(Qt::LeftButton)) return;
  const int y = static_cast<int>(event->position().y());
  if (y < 0) verticalScrollBar()->triggerAction(QAbstractSlider::SliderSingleStepSub);
  if (y > viewport()->height()) verticalScrollBar()->triggerAction(QAbstractSlider::SliderSingleStepAdd);
  caret_ = positionAt(event->position().toPoint());
  viewport()->update();
}

void LargeTextView::copy() const {
  if (!hasSelection()) return;
  const qsizetype from = std::min(anchor_, caret_);
  QApplication::clipboard()->setText(text_.mid(from, std::max(anchor_, caret_) - from));
}

void LargeTextView::selectAll() {
  anchor_ = 0;
  caret_ = text_.size();
  viewport()->update();
}

void LargeTextView::keyPressEvent(QKeyEvent* event) {
  const auto scroll = [](QScrollBar* bar, QAbstractSlider::SliderAction action) {
    bar->triggerAction(action);
  };
  if (event->matches(QKeySequence::Copy)) return copy();
  if (event->matches(QKeySequence::SelectAll)) return selectAll();
  switch (event->key()) {
    case Qt::Key_Up:
      return scroll(verticalScrollBar(), QAbstractSlider::SliderSingleStepSub);
    case Qt::Key_Down:
      return scroll(verticalScrollBar(), QAbstractSlider::SliderSingleStepAdd);
    case Qt::Key_Left:
      return scroll(horizontalScrollBar(), QAbstractSlider::SliderSingleStepSub);
    case Qt::Key_Right:
      return scroll(horizontalScrollBar(), QAbstractSlider::SliderSingleStepAdd);
    case Qt::Key_PageUp:
      return scroll(verticalScrollBar(), QAbstractSlider::SliderPageStepSub);
    case Qt::Key_PageDown:
      return scroll(verticalScrollBar(), QAbstractSlider::SliderPageStepAdd);
    case Qt::Key_Home:
      return scroll(verticalScrollBar(), QAbstractSlider::SliderToMinimum);
    case Qt::Key_End:
      return scroll(verticalScrollBar(), QAbstractSlider::SliderToMaximum);
    default:
      QAbstractScrollArea::keyPressEvent(event);
  }
}

void LargeTextView::resizeEvent(QResizeEvent* event) {
  QAbstractScrollArea::resizeEvent(event);
  updateScrollBars();
}

void LargeTextView::changeEvent(QEvent* event) {
  QAbstractScrollArea::changeEvent(event);
  if (event->type() == QEvent::FontChange) updateScrollBars();
}
