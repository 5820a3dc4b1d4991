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

  // After the texts have changed. Told of no column but the user's.
  void fit();
  // Begins anew.
  void forget();
  // Whether fit() is at work, which makes the view tell of widths that are not the user's.
  bool isFitting() const { return fitting_; }
  void userResizes(int column, int width) { byUser_[column] = width; }

 private:
  int widthOfTexts(int column) const;
  void show(int column, int width);

  TableView& view_;
  std::vector<int> grown_;  // pixels, of the first columns
  std::map<int, int> byUser_;
  bool fitting_ = false;
};

}  // namespace quillet::ui
