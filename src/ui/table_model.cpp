#include "ui/table_model.h"

#include <QSize>
#include <algorithm>
#include <limits>

#include "ui/text_conversion.h"

namespace quillet::ui {

namespace {

constexpr int kTitle = 0;
constexpr int kIcon = 1;
constexpr int kDetail = 2;
constexpr int kJobName = 1;
constexpr std::size_t kJobBadge = 2;

int intOf(std::size_t value) {
  return static_cast<int>(std::min<std::size_t>(value, std::numeric_limits<int>::max()));
}

}  // namespace

TableModel::TableModel(Table& table, Kind kind, QObject* parent)
    : QAbstractTableModel(parent),
      table_(table),
      kind_(kind),
      rowCount_(tableRowCount()),
      columnCount_(tableColumnCount()) {}

int TableModel::tableRowCount() const {
  return intOf(table_.rowCount());
}

int TableModel::tableColumnCount() const {
  return std::max(intOf(table_.columnCount()) - firstColumn(), kind_ == Kind::Numbered ? 0 : 1);
}

int TableModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : rowCount_;
}

int TableModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : columnCount_;
}

void TableModel::refresh() {
  cachedRow_ = -1;
  const int rows = tableRowCount();
  const int columns = tableColumnCount();
  if (rows != rowCount_ || columns != columnCount_) {
    beginResetModel();
    rowCount_ = rows;
    columnCount_ = columns;
    endResetModel();
  } else if (rows && columns) {
    emit dataChanged(index(0, 0), index(rows - 1, columns - 1));
    emit headerDataChanged(Qt::Horizontal, 0, columns - 1);
  }
}

const Table::Row& TableModel::row(int row) const {
  if (row != cachedRow_) {
    cached_ = table_.row(static_cast<std::size_t>(row));
    cachedRow_ = row;
  }
  return cached_;
}

std::u16string TableModel::text(int row, int column) const {
  const Table::Row& texts = this->row(row);
  const auto at = static_cast<std::size_t>(column);
  return at < texts.size() ? texts[at] : std::u16string();
}

QVariant TableModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= rowCount_) return {};
  if (kind_ == Kind::Operations) return operationData(index, role);
  if (role == Qt::AccessibleTextRole) return accessibleText(index);
  if (role == Qt::DisplayRole) return qString(text(index.row(), index.column() + firstColumn()));
  if (role == MissingRole) return isMissing_ && isMissing_(index.row(), index.column());
  if (role == BadgeRole && kind_ == Kind::Jobs && index.column() == kJobName)
    return qString(text(index.row(), static_cast<int>(kJobBadge)));
  return {};
}

QString TableModel::accessibleText(const QModelIndex& index) const {
  if (data(index, MissingRole).toBool()) return tr("missing");
  QString shown = data(index, Qt::DisplayRole).toString();
  const QString badge = data(index, BadgeRole).toString();
  if (badge.isEmpty()) return shown;
  const QString kind = badge == QLatin1String("C") ? tr("clipboard job") : tr("file job");
  return QString(shown + QLatin1String(", ") + kind);
}

QVariant TableModel::operationData(const QModelIndex& index, int role) const {
  const auto part = [&](int column) { return qString(text(index.row(), column)); };
  switch (role) {
    case Qt::DisplayRole:
      return part(kTitle);
    case IconRole:
      return part(kIcon);
    case DetailRole:
    case Qt::ToolTipRole:
      return part(kDetail);
    case Qt::AccessibleTextRole:
      return QString(part(kTitle) + QLatin1String(", ") + part(kDetail));
    default:
      return {};
  }
}

QVariant TableModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation == Qt::Vertical)
    return role == Qt::DisplayRole && kind_ == Kind::Numbered && section < rowCount_
               ? QVariant(qString(text(section, 0)))
               : QVariant();
  const auto column = static_cast<std::size_t>(section + firstColumn());
  if (column >= table_.columnCount()) return {};
  const Table::Column described = table_.column(column);
  if (role == Qt::DisplayRole) return qString(described.title);
  if (role == Qt::TextAlignmentRole)
    return static_cast<int>(described.titleIsCentred ? Qt::AlignCenter : Qt::AlignLeft | Qt::AlignVCenter);
  return {};
}

Qt::ItemFlags TableModel::flags(const QModelIndex& index) const {
  // Drops go between rows, so no row takes one.
  if (!index.isValid()) return Qt::ItemIsDropEnabled;
  return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDragEnabled;
}

}  // namespace quillet::ui
