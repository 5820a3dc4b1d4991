// A table of the application as Qt sees it: texts are asked for the rows in sight only. Where the first
// column of the table holds row numbers it is the vertical header, and the columns of the model begin behind
// it.
#pragma once

#include <cstdint>
#include <functional>

#include "shell/controls.h"
#include "ui/sized_model.h"

namespace quillet::ui {

class TableModel final : public SizedModel {
 public:
  // What a row says beyond the text of its first column.
  enum Role { DetailRole = Qt::UserRole + 1, IconRole, BadgeRole, MissingRole };
  enum class Kind { Plain, Numbered, Operations, Jobs };

  // The table outlives the model.
  TableModel(Table& table, Kind kind, QObject* parent);

  Table& table() const { return table_; }
  Kind kind() const { return kind_; }

  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;

  Qt::DropActions supportedDropActions() const override { return Qt::CopyAction; }

  // The index of the model's first column among those of the table.
  int firstColumn() const { return firstColumn(kind_); }

  // Tells which cells of the model their row does not have; none without it.
  void setIsMissing(std::function<bool(int row, int column)> isMissing) { isMissing_ = std::move(isMissing); }

  // After a change of the table.
  void refresh();

 private:
  static int firstColumn(Kind kind) { return kind == Kind::Numbered ? 1 : 0; }
  const Table::Row& row(int row) const;
  std::u16string text(int row, int column) const;
  QVariant operationData(const QModelIndex& index, int role) const;
  static int columnsOf(const Table& table, Kind kind);

  Table& table_;
  Kind kind_;
  std::function<bool(int row, int column)> isMissing_;
  std::uint64_t shownColumns_ = 0;  // their version
  std::u16string firstNumber_;      // of the rows, as it was told
  // The row that was asked last: a view asks for the columns of one row in turn.
  mutable int cachedRow_ = -1;
  mutable Table::Row cached_;
};

}  // namespace quillet::ui
