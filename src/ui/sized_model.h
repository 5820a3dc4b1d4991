// What the models of tables share: how many rows and columns a view has been told of. Behind them more or
// fewer can stand at any time; refresh() tells the view.
#pragma once

#include <QAbstractTableModel>
#include <cstddef>
#include <functional>

namespace quillet::ui {

class SizedModel : public QAbstractTableModel {
 public:
  struct Size {
    int rows = 0;
    int columns = 0;
    bool operator==(const Size&) const = default;
  };

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;

  // After a change of what is shown. Rows and columns come and go at the ends, so that a view stays where it
  // is scrolled to; all cells are told as changed.
  void refresh();

 protected:
  // sizeNow is asked by each refresh.
  SizedModel(std::function<Size()> sizeNow, QObject* parent);

  const Size& shownSize() const { return shown_; }
  static int intOf(std::size_t value);

 private:
  void showRows(int count);
  void showColumns(int count);

  std::function<Size()> sizeNow_;
  Size shown_;
};

}  // namespace quillet::ui
