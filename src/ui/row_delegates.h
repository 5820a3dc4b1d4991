// How rows are drawn: operations with an icon, a title and a line of detail, saved jobs with the letter of
// their kind, what a combo box offers with its note.
#pragma once

#include <QStyledItemDelegate>

namespace quillet::ui {

// The thin line at the right of a cell that is not selected.
void paintColumnLine(QPainter& painter, const QStyleOptionViewItem& option);

class OperationDelegate final : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;
  // What the two lines of a row take in the view's font, in logical pixels.
  static int heightOf(const QFont& font);
  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

class JobDelegate final : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;
  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                        const QModelIndex& index) const override;
  void setEditorData(QWidget* editor, const QModelIndex& index) const override;
  void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                            const QModelIndex& index) const override;
};

// What a combo box offers: a text as it would be typed, and beside it what it means.
constexpr int kNoteRole = Qt::UserRole + 1;

class NoteDelegate final : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;
  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

// The text of a cell as it fits into so many pixels, elided at the right.
QString fittingText(const QStyleOptionViewItem& option, const QModelIndex& index, int width);

// A cell of the preview; one that its line does not have gets a thin frame.
class CellDelegate final : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;
  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

}  // namespace quillet::ui
