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
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;

  Qt::DropActions supportedDropActions() const override { return Qt::CopyAction; }

  // The index of the model's first column among those of the table.
  int firstColumn() const { return firstColumn(kind_); }
  // That of the table which the model's column shows.
  std::size_t tableColumn(int column) const {
    return static_cast<std::size_t>(column) + static_cast<std::size_t>(firstColumn());
  }

  // Tells which cells of the model their row does not have; none without it.
  void setIsMissing(std::function<bool(int row, int column)> isMissing) { isMissing_ = std::move(isMissing); }

  // The texts of this column are edited in their place, and stored so; none without it.
  void setEditing(int column, std::function<void(int row, const QString& text)> store);

  // After a change of the table.
  void refresh();

 private:
  static int firstColumn(Kind kind) { return kind == Kind::Numbered ? 1 : 0; }
  const Table::Row& row(int row) const;
  std::u16string text(int row, int column) const;
  QString accessibleText(const QModelIndex& index) const;
  QVariant operationData(const QModelIndex& index, int role) const;
  static int columnsOf(const Table& table, Kind kind);

  Table& table_;
  Kind kind_;
  std::function<bool(int row, int column)> isMissing_;
  std::uint64_t shownColumns_ = 0;  // their version
  int editedColumn_ = -1;
  std::function<void(int row, const QString& text)> store_;
  std::u16string firstNumber_;  // of the rows, as it was told
  // The row that was asked last: a view asks for the columns of one row in turn.
  mutable int cachedRow_ = -1;
  mutable Table::Row cached_;
};

}  // namespace quillet::ui
