#include "ui/row_delegates.h"

#include <QApplication>
#include <QLineEdit>
#include <QPainter>
#include <algorithm>
#include <limits>

#include "ui/icons.h"
#include "ui/table_model.h"
#include "ui/theme.h"

namespace quillet::ui {

namespace {

constexpr int kIconSize = 20;
constexpr int kDetailSize = 12;
constexpr int kBadgeSize = 18;
constexpr int kLineGap = 3;  // pixels; between a title and its detail

bool isSelected(const QStyleOptionViewItem& option) {
  return option.state.testFlag(QStyle::State_Selected);
}

// Whether the view has the keys; its selection is drawn stronger then.
bool isActive(const QStyleOptionViewItem& option) {
  return option.state.testFlag(QStyle::State_Active) && option.widget && option.widget->hasFocus();
}

void paintBackground(QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index) {
  const Colours& colours = coloursOf(option.palette);
  if (!isSelected(option)) return;
  painter.fillRect(option.rect, isActive(option) ? colours.selectedFill : colours.selectedRow);
  if (!isActive(option) && index.column() == 0)
    painter.fillRect(QRect(option.rect.topLeft(), QSize(3, option.rect.height())), colours.link);
}

QColor textColour(const QStyleOptionViewItem& option) {
  const Colours& colours = coloursOf(option.palette);
  return isSelected(option) && isActive(option) ? colours.selectedText : colours.text;
}

QColor detailColour(const QStyleOptionViewItem& option) {
  const Colours& colours = coloursOf(option.palette);
  if (!isSelected(option)) return colours.secondary;
  return isActive(option) ? colours.selectedText : colours.selectedRowDetail;
}

void paintFocus(QPainter& painter, const QStyleOptionViewItem& option) {
  if (!option.state.testFlag(QStyle::State_HasFocus) || isSelected(option)) return;
  painter.setPen(coloursOf(option.palette).link);
  painter.drawRect(option.rect.adjusted(0, 0, -1, -1));
}

}  // namespace

void paintColumnLine(QPainter& painter, const QStyleOptionViewItem& option) {
  const QRect& cell = option.rect;
  painter.fillRect(QRect(cell.right(), cell.top(), 1, cell.height()), coloursOf(option.palette).columnLine);
}

namespace {

QFont titleFont(QFont font) {
  font.setWeight(QFont::DemiBold);
  return font;
}

QFont detailFont(QFont font) {
  font.setPixelSize(kDetailSize);
  return font;
}

}  // namespace

int OperationDelegate::heightOf(const QFont& font) {
  return QFontMetrics(titleFont(font)).height() + kLineGap + QFontMetrics(detailFont(font)).height();
}

void OperationDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const {
  painter->save();
  paintBackground(*painter, option, index);
  const QRect rect = option.rect.adjusted(10, 0, -8, 0);
  const QRect iconRect(rect.left(), rect.center().y() - kIconSize / 2 + 1, kIconSize, kIconSize);
  const bool white = isSelected(option) && isActive(option);
  icon(index.data(TableModel::IconRole).toString())
      .paint(painter, iconRect, Qt::AlignCenter, white ? QIcon::Selected : QIcon::Normal);

  const QRect texts = rect.adjusted(kIconSize + 12, 0, 0, 0);
  const QFont title = titleFont(option.font);
  const QFont detail = detailFont(option.font);
  const int titleHeight = QFontMetrics(title).height();
  const int detailHeight = QFontMetrics(detail).height();
  const QString detailText = index.data(TableModel::DetailRole).toString();
  // A title alone stands in the middle.
  const int linesHeight = detailText.isEmpty() ? titleHeight : heightOf(option.font);
  const int top = rect.center().y() - linesHeight / 2 + 1;
  const auto paintText = [&](const QFont& font, const QColor& colour, int y, int height,
                             const QString& text) {
    painter->setFont(font);
    painter->setPen(colour);
    const QString shown = QFontMetrics(font).elidedText(text, Qt::ElideRight, texts.width());
    painter->drawText(QRect(texts.left(), y, texts.width(), height),
                      static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter), shown);
  };
  paintText(title, textColour(option), top, titleHeight, index.data(Qt::DisplayRole).toString());
  paintText(detail, detailColour(option), top + titleHeight + kLineGap, detailHeight, detailText);
  paintFocus(*painter, option);
  painter->restore();
}

void JobDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                        const QModelIndex& index) const {
  painter->save();
  paintBackground(*painter, option, index);
  QRect rect = option.rect.adjusted(8, 0, -4, 0);
  const QString badge = index.data(TableModel::BadgeRole).toString();
  if (!badge.isEmpty()) {
    const QRect box(rect.left(), rect.center().y() - kBadgeSize / 2 + 1, kBadgeSize, kBadgeSize);
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(badge == QLatin1String("C") ? kClipboardJobBadge : kFileJobBadge);
    painter->drawRoundedRect(box, 4, 4);
    QFont bold = option.font;
    bold.setBold(true);
    painter->setFont(bold);
    painter->setPen(Qt::black);
    painter->drawText(box, Qt::AlignCenter, badge);
    rect.adjust(kBadgeSize + 8, 0, 0, 0);
  }
  painter->setFont(option.font);
  painter->setPen(textColour(option));
  painter->drawText(
      rect, static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter),
      option.fontMetrics.elidedText(index.data(Qt::DisplayRole).toString(), Qt::ElideRight, rect.width()));
  paintFocus(*painter, option);
  painter->restore();
}

QWidget* JobDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                   const QModelIndex& index) const {
  QWidget* editor = QStyledItemDelegate::createEditor(parent, option, index);
  if (auto* line = qobject_cast<QLineEdit*>(editor)) line->setMaxLength(std::numeric_limits<int>::max());
  return editor;
}

// What the user has begun stays when the table is shown anew.
void JobDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const {
  const auto* line = qobject_cast<QLineEdit*>(editor);
  if (line && (line->isModified() || line->text() == index.data(Qt::EditRole).toString())) return;
  QStyledItemDelegate::setEditorData(editor, index);
}

// Behind the badge, over the name.
void JobDelegate::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                                       const QModelIndex&) const {
  constexpr int kBeforeName = 8 + kBadgeSize + 8 - 2;  // less what the editor leaves before its text
  editor->setGeometry(option.rect.adjusted(kBeforeName, 0, 0, 0));
}

namespace {

constexpr int kNoteMargin = 6;  // pixels; before the text, between it and its note, and behind

// The notes of all separators begin below each other.
int noteStart() {
  return 2 * kNoteMargin + QFontMetrics(fixedWidthFont()).horizontalAdvance(QStringLiteral("\\r\\n"));
}

}  // namespace

void NoteDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const {
  painter->save();
  const Colours& colours = coloursOf(option.palette);
  const bool selected = isSelected(option);
  painter->fillRect(option.rect, selected ? colours.selectedFill : colours.base);
  painter->setFont(fixedWidthFont());
  painter->setPen(selected ? colours.selectedText : colours.text);
  const auto middle = static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine);
  painter->drawText(option.rect.adjusted(kNoteMargin, 0, 0, 0), middle,
                    index.data(Qt::DisplayRole).toString());
  painter->setFont(option.font);
  if (!selected) painter->setPen(colours.secondary);
  painter->drawText(option.rect.adjusted(noteStart(), 0, 0, 0), middle, index.data(kNoteRole).toString());
  painter->restore();
}

QSize NoteDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
  const int note = option.fontMetrics.horizontalAdvance(index.data(kNoteRole).toString());
  return {noteStart() + note + kNoteMargin,
          std::max(option.fontMetrics.height(), QFontMetrics(fixedWidthFont()).height()) + kNoteMargin};
}

// Of a long text no more is measured than a cell of that width could show.
QString fittingText(const QStyleOptionViewItem& option, const QModelIndex& index, int width) {
  const QString text = index.data(Qt::DisplayRole).toString();
  return option.fontMetrics.elidedText(text.left(std::max(width, 0) + 1), Qt::ElideRight, width);
}

void CellDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const {
  painter->save();
  const Colours& colours = coloursOf(option.palette);
  if (index.row() % 2) painter->fillRect(option.rect, colours.alternate);
  paintBackground(*painter, option, index);
  if (!isSelected(option)) paintColumnLine(*painter, option);
  if (index.data(TableModel::MissingRole).toBool()) {
    painter->setPen(isSelected(option) ? colours.missingSelected : colours.missing);
    painter->drawRect(option.rect.adjusted(0, 0, -1, -1));
  } else {
    painter->setFont(option.font);
    painter->setPen(textColour(option));
    const QRect rect = option.rect.adjusted(4, 0, -2, 0);
    painter->drawText(rect, static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine),
                      fittingText(option, index, rect.width()));
  }
  painter->restore();
}

}  // namespace quillet::ui
