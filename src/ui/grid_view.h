// The table of the clipboard grid. It draws the selection of the application and hands every key and click to
// it; a million lines and 16,384 columns scroll at once, as only cells in sight are asked for.
#pragma once

#include "shell/clipboard/clipboard_group.h"
#include "ui/sized_model.h"
#include "ui/table_view.h"

namespace quillet::ui {

class GridModel final : public SizedModel {
 public:
  // The group outlives the model.
  GridModel(ClipboardGroup& group, QObject* parent);

  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  ClipboardGroup& group_;
};

}  // namespace quillet::ui

class GridView final : public TableView {
  Q_OBJECT

 public:
  explicit GridView(QWidget* parent = nullptr);

  // Shows the grid of this group, which outlives the view. The view has its parent by then, and fills it.
  void setGroup(quillet::ClipboardGroup& group);
  void refresh();

 signals:
  void contextMenuRequestedAt(const QPoint& globalPosition, int part);

 public:
  // What a context menu was asked for on.
  enum Part { Cells, RowNumbers, Headers };

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
  bool focusNextPrevChild(bool next) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void listenToHeaders();
  void selectForMenu(const QHeaderView& header, int section);
  void mouseDown(const QPoint& position, int clickCount, Qt::KeyboardModifiers modifiers);
  void rowNumberDown(int row, int clickCount);
  void fitColumnToText(int column);
  void tellWidth();
  void showFocus();
  void tellFocusedCell();

  quillet::ClipboardGroup* group_ = nullptr;
  quillet::ui::GridModel* model_ = nullptr;
  QPoint shownFocus_{-1, -1};  // column and row
  bool wasShown_ = false;
};
