// A table view of the house: rows of one height, whole rows selected, a text in the middle while it is empty,
// and drops between rows that go to the application.
#pragma once

#include <QBasicTimer>
#include <QString>
#include <QTableView>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include "platform/index_set.h"
#include "shell/controls.h"

class TableView : public QTableView {
  Q_OBJECT
  Q_PROPERTY(QString emptyText READ emptyText WRITE setEmptyText)

 public:
  explicit TableView(QWidget* parent = nullptr);

  const QString& emptyText() const { return emptyText_; }
  void setEmptyText(const QString& text);

  // The height of every row: the given one, or what the rows need in the view's font, which is one line
  // where nothing is said. In logical pixels.
  using HeightOfFont = std::function<int(const QFont& font)>;
  void setRowHeight(int height, HeightOfFont needed = {});

  // Gives the columns the widths of the table's, which begin at firstColumn there; a width of 0 leaves one as
  // it is. Nothing while the table has the columns of the last call.
  void showColumnWidths(const quillet::Table& table, int firstColumn);

  // Gives a column a width, in logical pixels, that is not the user's.
  void showColumnWidth(int column, int width);

  // How rows are dragged, and what is taken. Rows count from 0.
  struct Drops {
    QString mimeType;  // of this table's own rows
    std::function<bool(const QMimeData& data)> accepts;
    std::function<void(const QMimeData& data, int row)> drop;  // before the row
  };
  void setDrops(Drops drops);

  // The first row and column are in sight.
  void scrollToStart();

  quillet::IndexSet selectedRowIndexes() const;
  void selectRows(int first, int last);  // these alone, as the user does

  // Sees each key first; true takes it.
  void setKeyFilter(std::function<bool(const QKeyEvent& event)> filter) { keyFilter_ = std::move(filter); }

 signals:
  void columnResized(int column, int width);  // by the user
  void activatedRow(int row);                 // by a double click
  void moveAsked(int direction);              // Alt with an arrow: -1 up, 1 down

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void startDrag(Qt::DropActions actions) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragMoveEvent(QDragMoveEvent* event) override;
  void dragLeaveEvent(QDragLeaveEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  void changeEvent(QEvent* event) override;
  QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
  void timerEvent(QTimerEvent* event) override;

 private:
  void applyRowHeight();
  bool isList() const;
  bool selectsFirst(const QKeyEvent& event);
  int edgeAt(const QPoint& point) const;
  int dropRowAt(const QPoint& point) const;
  void paintDropLine();

  QString emptyText_;
  int rowHeight_ = 22;
  HeightOfFont neededHeight_;
  std::uint64_t shownColumns_ = 0;  // their version
  bool showsWidth_ = false;
  Drops drops_;
  std::function<bool(const QKeyEvent& event)> keyFilter_;
  int dropRow_ = -1;
  QPoint dragPoint_;  // in the viewport
  QBasicTimer dragScroll_;
};

// The rows of one of this process's tables on their way to a drop; nothing for those of another process.
QMimeData* mimeDataOfRows(const QString& mimeType, const quillet::IndexSet& rows);
std::optional<quillet::IndexSet> rowsOfMimeData(const QMimeData& data, const QString& mimeType);
