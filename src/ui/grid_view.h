// The table of the clipboard grid. It draws the selection of the application and hands every key and click to
// it; a million lines and 16,384 columns scroll at once, as only cells in sight are asked for.
#pragma once

#include <QAbstractTableModel>

#include "shell/clipboard/clipboard_group.h"
#include "ui/table_view.h"

namespace quillet::ui {

class GridModel final : public QAbstractTableModel {
 public:
  // The group outlives the model.
  GridModel(ClipboardGroup& group, QObject* parent);

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  void refresh();  // after a change of the grid, its columns or its selection

 private:
  int gridRowCount() const;
  int gridColumnCount() const;

  ClipboardGroup& group_;
  int rowCount_ = 0;
  int columnCount_ = 0;
};

}  // namespace quillet::ui

class GridView final : public TableView {
  Q_OBJECT

 public:
  explicit GridView(QWidget* parent = nullptr);

  // Shows the grid of this group, which outlives the view.
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
  void resizeEvent(QResizeEvent* event) override;
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
  bool focusNextPrevChild(bool next) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void listenToHeaders();
  void mouseDown(const QPoint& position, int clickCount, Qt::KeyboardModifiers modifiers);
  void rowNumberDown(int row, int clickCount);
  void fitColumnToText(int column);
  void tellWidth(int width);
  void applyColumnWidths();
  void showFocus();
  void tellFocusedCell();

  quillet::ClipboardGroup* group_ = nullptr;
  quillet::ui::GridModel* model_ = nullptr;
  bool applyingWidths_ = false;
};
