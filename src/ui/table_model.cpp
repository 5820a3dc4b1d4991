#include "ui/table_model.h"

#include <QSize>
#include <algorithm>
#include <utility>

#include "ui/text_conversion.h"

namespace quillet::ui {

namespace {

constexpr int kTitle = 0;
constexpr int kIcon = 1;
constexpr int kDetail = 2;
constexpr int kJobName = 1;
constexpr std::size_t kJobBadge = 2;

}  // namespace

TableModel::TableModel(Table& table, Kind kind, QObject* parent)
    : SizedModel(
          [&table, kind] {
            return Size{intOf(table.rowCount()), columnsOf(table, kind)};
          },
          parent),
      table_(table),
      kind_(kind) {}

int TableModel::columnsOf(const Table& table, Kind kind) {
  return std::max(intOf(table.columnCount()) - firstColumn(kind), kind == Kind::Numbered ? 0 : 1);
}

void TableModel::refresh() {
  cachedRow_ = -1;
  SizedModel::refresh();
  // A view measures its header anew when it is told, which costs more than the rest.
  const bool sameColumns = std::exchange(shownColumns_, table_.columnsVersion()) == table_.columnsVersion();
  if (!sameColumns && columnCount()) emit headerDataChanged(Qt::Horizontal, 0, columnCount() - 1);
  const std::u16string firstNumber = kind_ == Kind::Numbered && rowCount() ? text(0, 0) : std::u16string();
  if (std::exchange(firstNumber_, firstNumber) != firstNumber)
    emit headerDataChanged(Qt::Vertical, 0, std::max(rowCount() - 1, 0));
}

const Table::Row& TableModel::row(int row) const {
  if (row != cachedRow_) {
    cached_ = table_.row(static_cast<std::size_t>(row));
    cachedRow_ = row;
  }
  return cached_;
}

std::u16string TableModel::text(int row, int column) const {
  // A row of the preview can have thousands of cells.
  if (kind_ == Kind::Numbered)
    return table_.cell(static_cast<std::size_t>(row), static_cast<std::size_t>(column));
  const Table::Row& texts = this->row(row);
  const auto at = static_cast<std::size_t>(column);
  return at < texts.size() ? texts[at] : std::u16string();
}

QVariant TableModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= shownSize().rows) return {};
  if (kind_ == Kind::Operations) return operationData(index, role);
  if (role == Qt::AccessibleTextRole) return accessibleText(index);
  if (role == Qt::DisplayRole || role == Qt::EditRole)
    return qString(text(index.row(), index.column() + firstColumn()));
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
      return part(kDetail);
    case Qt::ToolTipRole:
      return plainToolTip(part(kDetail).isEmpty() ? part(kTitle) : part(kDetail));
    case Qt::AccessibleTextRole:
      return QString(part(kTitle) + QLatin1String(", ") + part(kDetail));
    default:
      return {};
  }
}

QVariant TableModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation == Qt::Vertical)
    return role == Qt::DisplayRole && kind_ == Kind::Numbered && section < shownSize().rows
               ? QVariant(qString(text(section, 0)))
               : QVariant();
  const auto column = tableColumn(section);
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
  const bool isEdited = index.column() == editedColumn_;
  return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDragEnabled |
         (isEdited ? Qt::ItemIsEditable : Qt::NoItemFlags);
}

void TableModel::setEditing(int column, std::function<void(int row, const QString& text)> store) {
  editedColumn_ = column;
  store_ = std::move(store);
}

// Storing tells the table, which shows itself anew.
bool TableModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (role != Qt::EditRole || !index.isValid() || index.column() != editedColumn_) return false;
  store_(index.row(), value.toString());
  return true;
}

}  // namespace quillet::ui
