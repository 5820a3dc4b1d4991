// A table of the application as Qt sees it: texts are asked for the rows in sight only. Where the first
// column of the table holds row numbers it is the vertical header, and the columns of the model begin behind
// it.
#pragma once

#include <QAbstractTableModel>
#include <functional>

#include "shell/controls.h"

namespace quillet::ui {

class TableModel final : public QAbstractTableModel {
 public:
  // What a row says beyond the text of its first column.
  enum Role { DetailRole = Qt::UserRole + 1, IconRole, BadgeRole, MissingRole };
  enum class Kind { Plain, Numbered, Operations, Jobs };

  // The table outlives the model.
  TableModel(Table& table, Kind kind, QObject* parent);

  Table& table() const { return table_; }
  Kind kind() const { return kind_; }

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;

  Qt::DropActions supportedDropActions() const override { return Qt::CopyAction; }

  // The index of the model's first column among those of the table.
  int firstColumn() const { return kind_ == Kind::Numbered ? 1 : 0; }

  // Tells which cells of the model their row does not have; none without it.
  void setIsMissing(std::function<bool(int row, int column)> isMissing) { isMissing_ = std::move(isMissing); }

  // After a change of the table: rows and columns that are there stay where they are in the view.
  void refresh();

 private:
  const Table::Row& row(int row) const;
  std::u16string text(int row, int column) const;
  QString accessibleText(const QModelIndex& index) const;
  QVariant operationData(const QModelIndex& index, int role) const;
  int tableRowCount() const;
  int tableColumnCount() const;

  Table& table_;
  Kind kind_;
  int rowCount_ = 0;
  int columnCount_ = 0;
  std::function<bool(int row, int column)> isMissing_;
  // The row that was asked last: a view asks for the columns of one row in turn.
  mutable int cachedRow_ = -1;
  mutable Table::Row cached_;
};

}  // namespace quillet::ui
