#include "ui/large_text_view.h"

#include <QAccessibleWidget>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>
#include <utility>

using quillet::ui::TextLines;

namespace {

constexpr int kMargin = 6;  // pixels around the text
// Units of a line that are laid out beyond those that fixed widths would show: marks that join and narrow
// characters make room for more of them.
constexpr qsizetype kAround = 64;

// Of a text that may be large: what is in sight is all that is told.
class AccessibleText final : public QAccessibleWidget {
 public:
  explicit AccessibleText(LargeTextView* view) : QAccessibleWidget(view, QAccessible::EditableText) {}

  QString text(QAccessible::Text kind) const override {
    return kind == QAccessible::Value ? static_cast<LargeTextView*>(widget())->textInSight()
                                      : QAccessibleWidget::text(kind);
  }
  QAccessible::State state() const override {
    QAccessible::State result = QAccessibleWidget::state();
    result.readOnly = true;
    result.multiLine = true;
    result.selectableText = true;
    return result;
  }
};

QAccessibleInterface* newAccessibleText(const QString&, QObject* object) {
  auto* view = qobject_cast<LargeTextView*>(object);
  return view ? new AccessibleText(view) : nullptr;
}

}  // namespace

LargeTextView::LargeTextView(QWidget* parent) : QAbstractScrollArea(parent) {
  [[maybe_unused]] static const bool installed = [] {
    QAccessible::installFactory(newAccessibleText);
    return true;
  }();
  setFocusPolicy(Qt::StrongFocus);
  viewport()->setCursor(Qt::IBeamCursor);
}

void LargeTextView::setText(QString text) {
  lines_ = TextLines(std::move(text));
  anchor_ = caret_ = 0;
  wantedX_ = -1;
  verticalScrollBar()->setValue(0);
  horizontalScrollBar()->setValue(0);
  updateScrollBars();
  viewport()->update();
}

int LargeTextView::lineHeight() const {
  return std::max(fontMetrics().lineSpacing(), 1);
}

qsizetype LargeTextView::linesInSight() const {
  return std::max((viewport()->height() - 2 * kMargin) / lineHeight(), 1);
}

// Sideways in units. Where they have several widths, each can come to the left edge, so none is out of reach.
void LargeTextView::updateScrollBars() {
  const auto lines = static_cast<int>(linesInSight());
  verticalScrollBar()->setPageStep(lines);
  verticalScrollBar()->setRange(0, static_cast<int>(std::max<qsizetype>(lines_.count() - lines, 0)));
  const qreal unit = std::max(QFontMetricsF(font()).horizontalAdvance(QLatin1Char('x')), 1.0);
  const int units = std::max(static_cast<int>((viewport()->width() - 2 * kMargin) / unit), 1);
  const qsizetype most = lines_.isOfOneWidth() ? lines_.longest() + 1 - units : lines_.longest() - 1;
  const qsizetype range = lines_.mostColumns() > units ? std::max<qsizetype>(most, 0) : 0;
  horizontalScrollBar()->setPageStep(units);
  horizontalScrollBar()->setRange(0, static_cast<int>(range));
}

QStringView LargeTextView::partInSight(qsizetype line, qsizetype& firstUnit) const {
  const QStringView whole = lines_.line(line);
  firstUnit = std::min<qsizetype>(horizontalScrollBar()->value(), whole.size());
  // Not in the middle of a pair.
  if (firstUnit > 0 && firstUnit < whole.size() && whole[firstUnit].isLowSurrogate() &&
      whole[firstUnit - 1].isHighSurrogate())
    --firstUnit;
  return whole.mid(firstUnit, horizontalScrollBar()->pageStep() + kAround);
}

// As far as it fits, in the order of reading: what is read first from right to left would else lie beyond the
// right edge.
bool LargeTextView::layOut(QTextLayout& layout, QStringView part) const {
  QTextOption option;
  option.setWrapMode(QTextOption::WrapAnywhere);
  layout.setTextOption(option);
  layout.setFont(font());
  layout.setText(quillet::ui::shownForm(part));
  layout.beginLayout();
  QTextLine shown = layout.createLine();
  if (shown.isValid()) shown.setLineWidth(std::max(viewport()->width() - kMargin, 1));
  layout.endLayout();
  return shown.isValid();
}

void LargeTextView::paintEvent(QPaintEvent* event) {
  QPainter painter(viewport());
  painter.setPen(palette().color(QPalette::Text));
  const qsizetype first = verticalScrollBar()->value();
  const qsizetype from = first + std::max((event->rect().top() - kMargin) / lineHeight(), 0);
  const qsizetype to = first + std::max((event->rect().bottom() - kMargin) / lineHeight(), 0);
  for (qsizetype line = from; line <= to && line < lines_.count(); ++line)
    paintLine(painter, line, kMargin + static_cast<int>(line - first) * lineHeight());
}

void LargeTextView::paintLine(QPainter& painter, qsizetype line, int y) const {
  qsizetype firstUnit = 0;
  QTextLayout layout;
  layOut(layout, partInSight(line, firstUnit));
  const qsizetype start = lines_.start(line) + firstUnit;
  const qsizetype end = start + (layout.lineCount() ? layout.lineAt(0).textLength() : 0);
  const qsizetype from = std::max(std::min(anchor_, caret_), start);
  const qsizetype to = std::min(std::max(anchor_, caret_), end);
  QList<QTextLayout::FormatRange> selections;
  if (from < to) {
    QTextLayout::FormatRange range;
    range.start = static_cast<int>(from - start);
    range.length = static_cast<int>(to - from);
    range.format.setBackground(palette().highlight());
    range.format.setForeground(palette().highlightedText());
    selections.append(range);
  }
  // A font that steps in for a character may be higher; the lines stand evenly all the same.
  const qreal ascent = layout.lineCount() ? layout.lineAt(0).ascent() : 0;
  const QPointF at(kMargin, y + QFontMetricsF(font()).ascent() - ascent);
  layout.draw(&painter, at, selections);
  if (hasFocus() && caret_ >= start && caret_ <= end)
    layout.drawCursor(&painter, at, static_cast<int>(caret_ - start));
}

qsizetype LargeTextView::positionInLine(qsizetype line, qreal x) const {
  qsizetype firstUnit = 0;
  QTextLayout layout;
  const bool hasText = layOut(layout, partInSight(line, firstUnit));
  return lines_.start(line) + firstUnit + (hasText ? layout.lineAt(0).xToCursor(x - kMargin) : 0);
}

qsizetype LargeTextView::positionAt(const QPoint& point) const {
  const qsizetype inSight = std::max(point.y() - kMargin, 0) / lineHeight();
  return positionInLine(std::min(verticalScrollBar()->value() + inSight, lines_.count() - 1), point.x());
}

qreal LargeTextView::caretX() const {
  const qsizetype line = lines_.lineAt(caret_);
  qsizetype firstUnit = 0;
  QTextLayout layout;
  if (!layOut(layout, partInSight(line, firstUnit))) return kMargin;
  const qsizetype unit = std::max<qsizetype>(caret_ - lines_.start(line) - firstUnit, 0);
  return kMargin + layout.lineAt(0).cursorToX(static_cast<int>(unit));
}

void LargeTextView::showCaret() {
  const qsizetype line = lines_.lineAt(caret_);
  const qsizetype first = verticalScrollBar()->value();
  if (line < first) verticalScrollBar()->setValue(static_cast<int>(line));
  if (line >= first + linesInSight())
    verticalScrollBar()->setValue(static_cast<int>(line - linesInSight() + 1));
  qsizetype firstUnit = 0;
  QTextLayout layout;
  const bool hasText = layOut(layout, partInSight(line, firstUnit));
  const qsizetype unit = caret_ - lines_.start(line);
  if (unit >= firstUnit && unit <= firstUnit + (hasText ? layout.lineAt(0).textLength() : 0)) return;
  // Wide characters take the room of several.
  const int before = horizontalScrollBar()->pageStep() / (lines_.isOfOneWidth() ? 2 : 4);
  horizontalScrollBar()->setValue(static_cast<int>(unit - before));
}

void LargeTextView::moveTo(qsizetype position, Extend extend) {
  caret_ = std::clamp<qsizetype>(position, 0, text().size());
  if (extend == Extend::No) anchor_ = caret_;
  wantedX_ = -1;
  showCaret();
  viewport()->update();
}

void LargeTextView::moveByLines(qsizetype count, Extend extend) {
  const qreal x = wantedX_ >= 0 ? wantedX_ : caretX();
  const qsizetype line = std::clamp<qsizetype>(lines_.lineAt(caret_) + count, 0, lines_.count() - 1);
  moveTo(positionInLine(line, x), extend);
  wantedX_ = x;
}

void LargeTextView::select(qsizetype from, qsizetype to) {
  anchor_ = from;
  caret_ = to;
  wantedX_ = -1;
  viewport()->update();
}

void LargeTextView::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return QAbstractScrollArea::mousePressEvent(event);
  const qsizetype position = positionAt(event->position().toPoint());
  // The third press of three is that of the line.
  if (sinceDoubleClick_.isValid() && !sinceDoubleClick_.hasExpired(QApplication::doubleClickInterval())) {
    sinceDoubleClick_.invalidate();
    const qsizetype line = lines_.lineAt(position);
    return select(lines_.start(line), line + 1 < lines_.count() ? lines_.start(line + 1) : text().size());
  }
  select(event->modifiers().testFlag(Qt::ShiftModifier) ? anchor_ : position, position);
}

void LargeTextView::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  const TextLines::Range word = lines_.wordAt(positionAt(event->position().toPoint()));
  select(word.from, word.to);
  sinceDoubleClick_.start();
}

void LargeTextView::mouseMoveEvent(QMouseEvent* event) {
  if (!event->buttons().testFlag(Qt::LeftButton)) return;
  const QPoint point = event->position().toPoint();
  const auto follow = [](QScrollBar* bar, int at, int length) {
    if (at < 0) bar->triggerAction(QAbstractSlider::SliderSingleStepSub);
    if (at > length) bar->triggerAction(QAbstractSlider::SliderSingleStepAdd);
  };
  follow(verticalScrollBar(), point.y(), viewport()->height());
  follow(horizontalScrollBar(), point.x(), viewport()->width());
  select(anchor_, positionAt(point));
}

QString LargeTextView::selectedText() const {
  return text().mid(std::min(anchor_, caret_), std::abs(caret_ - anchor_));
}

void LargeTextView::copy() const {
  if (hasSelection()) QApplication::clipboard()->setText(selectedText());
}

void LargeTextView::selectAll() {
  select(0, text().size());
}

QString LargeTextView::textInSight() const {
  QString result;
  const qsizetype first = verticalScrollBar()->value();
  for (qsizetype line = first; line < std::min(first + linesInSight(), lines_.count()); ++line) {
    qsizetype firstUnit = 0;
    if (line > first) result += QLatin1Char('\n');
    result += partInSight(line, firstUnit);
  }
  return result;
}

void LargeTextView::contextMenuEvent(QContextMenuEvent* event) {
  auto* menu = new QMenu(this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  menu->addAction(tr("Copy"), this, &LargeTextView::copy)->setEnabled(hasSelection());
  menu->addAction(tr("Select All"), this, &LargeTextView::selectAll)->setEnabled(!text().isEmpty());
  menu->popup(event->globalPos());
}

bool LargeTextView::moveByKey(const QKeyEvent& event) {
  const Extend extend = event.modifiers().testFlag(Qt::ShiftModifier) ? Extend::Yes : Extend::No;
  const bool control = event.modifiers().testFlag(Qt::ControlModifier);
  const auto step = control ? TextLines::Of::Word : TextLines::Of::Character;
  const qsizetype line = lines_.lineAt(caret_);
  switch (event.key()) {
    case Qt::Key_Up:
      return moveByLines(-1, extend), true;
    case Qt::Key_Down:
      return moveByLines(1, extend), true;
    case Qt::Key_PageUp:
      return moveByLines(-linesInSight(), extend), true;
    case Qt::Key_PageDown:
      return moveByLines(linesInSight(), extend), true;
    case Qt::Key_Left:
      return moveTo(lines_.previous(caret_, step), extend), true;
    case Qt::Key_Right:
      return moveTo(lines_.next(caret_, step), extend), true;
    case Qt::Key_Home:
      return moveTo(control ? 0 : lines_.start(line), extend), true;
    case Qt::Key_End:
      return moveTo(control ? text().size() : lines_.start(line) + lines_.line(line).size(), extend), true;
    default:
      return false;
  }
}

void LargeTextView::keyPressEvent(QKeyEvent* event) {
  if (event->matches(QKeySequence::Copy)) return copy();
  if (event->matches(QKeySequence::SelectAll)) return selectAll();
  const auto others = Qt::AltModifier | Qt::MetaModifier;
  if ((event->modifiers() & others) || !moveByKey(*event)) QAbstractScrollArea::keyPressEvent(event);
}

void LargeTextView::resizeEvent(QResizeEvent* event) {
  QAbstractScrollArea::resizeEvent(event);
  updateScrollBars();
}

void LargeTextView::changeEvent(QEvent* event) {
  QAbstractScrollArea::changeEvent(event);
  if (event->type() == QEvent::FontChange) updateScrollBars();
}

// The caret is shown where the keys go.
void LargeTextView::focusInEvent(QFocusEvent* event) {
  QAbstractScrollArea::focusInEvent(event);
  viewport()->update();
}

void LargeTextView::focusOutEvent(QFocusEvent* event) {
  QAbstractScrollArea::focusOutEvent(event);
  viewport()->update();
}
