#include "ui/preview_columns.h"

#include <QFontMetrics>
#include <QHeaderView>
#include <algorithm>

#include "ui/table_view.h"

namespace quillet::ui {

namespace {

constexpr int kLeast = 80;  // pixels, by the rule of the preview
constexpr int kMost = 240;
constexpr int kAround = 12;
constexpr int kMostColumns = 100;  // more are not in sight
constexpr int kMostUnits = 60;     // of a text; more do not fit the widest

}  // namespace

PreviewColumns::PreviewColumns(TableView& view) : QObject(&view), view_(view) {
  view.horizontalHeader()->setDefaultSectionSize(kLeast);
  connect(view.horizontalHeader(), &QHeaderView::sectionCountChanged, this, [this] {
    grown_.clear();
    byUser_.clear();
  });
}

int PreviewColumns::widthOfTexts(int column) const {
  const QFontMetrics metrics(view_.font());
  int width = kLeast - kAround;
  for (int row = 0; row < view_.model()->rowCount() && width < kMost; ++row) {
    const QString text = view_.model()->index(row, column).data().toString().left(kMostUnits);
    width = std::max(width, metrics.horizontalAdvance(text));
  }
  return std::min(width + kAround, kMost);
}

void PreviewColumns::forget() {
  for (int column = 0; column < static_cast<int>(grown_.size()); ++column)
    view_.showColumnWidth(column, kLeast);
  for (const auto& [column, width] : byUser_) view_.showColumnWidth(column, kLeast);
  grown_.clear();
  byUser_.clear();
  fit();
}

void PreviewColumns::fit() {
  const int count = view_.model()->columnCount();
  grown_.resize(static_cast<std::size_t>(std::min(count, kMostColumns)), kLeast);
  for (int column = 0; column < static_cast<int>(grown_.size()); ++column) {
    int& width = grown_[static_cast<std::size_t>(column)];
    width = std::max({width, view_.columnWidth(column), widthOfTexts(column)});
    if (!byUser_.count(column)) view_.showColumnWidth(column, width);
  }
  for (const auto& [column, width] : byUser_)
    if (column < count) view_.showColumnWidth(column, width);
}

}  // namespace quillet::ui
