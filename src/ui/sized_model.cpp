#include "ui/sized_model.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace quillet::ui {

SizedModel::SizedModel(std::function<Size()> sizeNow, QObject* parent)
    : QAbstractTableModel(parent), sizeNow_(std::move(sizeNow)), shown_(sizeNow_()) {}

int SizedModel::intOf(std::size_t value) {
  return static_cast<int>(std::min<std::size_t>(value, std::numeric_limits<int>::max()));
}

int SizedModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : shown_.rows;
}

int SizedModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : shown_.columns;
}

void SizedModel::showRows(int count) {
  if (count > shown_.rows) {
    beginInsertRows({}, shown_.rows, count - 1);
    shown_.rows = count;
    endInsertRows();
  } else if (count < shown_.rows) {
    beginRemoveRows({}, count, shown_.rows - 1);
    shown_.rows = count;
    endRemoveRows();
  }
}

void SizedModel::showColumns(int count) {
  if (count > shown_.columns) {
    beginInsertColumns({}, shown_.columns, count - 1);
    shown_.columns = count;
    endInsertColumns();
  } else if (count < shown_.columns) {
    beginRemoveColumns({}, count, shown_.columns - 1);
    shown_.columns = count;
    endRemoveColumns();
  }
}

void SizedModel::refresh() {
  const Size now = sizeNow_();
  showRows(now.rows);
  showColumns(now.columns);
  if (now.rows == 0 || now.columns == 0) return;
  emit dataChanged(index(0, 0), index(now.rows - 1, now.columns - 1));
}

}  // namespace quillet::ui
