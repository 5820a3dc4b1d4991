// How the rows of two kinds of tables are drawn: operations with an icon, a title and a line of detail, and
// saved jobs with the letter of their kind.
#pragma once

#include <QStyledItemDelegate>

namespace quillet::ui {

// The thin line at the right of a cell that is not selected.
void paintColumnLine(QPainter& painter, const QStyleOptionViewItem& option);

class OperationDelegate final : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;
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

// The text of a cell as it fits into so many pixels, elided at the right.
QString fittingText(const QStyleOptionViewItem& option, const QModelIndex& index, int width);

// A cell of the preview; one that its line does not have gets a thin frame.
class CellDelegate final : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;
  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

}  // namespace quillet::ui
