// The widths of a preview's columns as they are seen. They grow with their texts and do not shrink again, as
// paging through a file would make them dance; what the user has drawn stays. Both end where another file
// is selected, or the table has more columns or fewer.
#pragma once

#include <QObject>
#include <map>
#include <vector>

class TableView;

namespace quillet::ui {

class PreviewColumns final : public QObject {
  Q_OBJECT

 public:
  // The view owns it.
  explicit PreviewColumns(TableView& view);

  // After the texts have changed.
  void fit();
  // Begins anew.
  void forget();
  void userResizes(int column, int width) { byUser_[column] = width; }

 private:
  int widthOfTexts(int column) const;

  TableView& view_;
  std::vector<int> grown_;  // pixels, of the first columns
  std::map<int, int> byUser_;
};

}  // namespace quillet::ui
