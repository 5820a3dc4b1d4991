// A user before the windows of a whole Quillet. Clicks and keys go to the windows of the screen, which find
// the widget below the mouse and the one with the focus as they do for a hand; nothing is called that a user
// would click. What is not there, or cannot be seen, ends the test.
#pragma once

#include <QAbstractItemView>
#include <QAction>
#include <QByteArray>
#include <QFileDialog>
#include <QKeyCombination>
#include <QMenu>
#include <QMessageBox>
#include <QMimeData>
#include <QPoint>
#include <QString>
#include <QUrl>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "gui/gui_application.h"
#include "ui/table_view.h"

namespace quillet::testing {

using Texts = std::vector<std::string>;

// What is under way in the event loop is done.
void settle();
// Waits until it holds, some seconds at most.
bool eventually(const std::function<bool()>& holds);

class UserTest : public GuiTest {
 protected:
  UserTest();
  ~UserTest() override;

  // Launches with files of these contents, named a.csv, b.csv...; their paths.
  Texts launchWithFiles(const Texts& contents);

  // --- What is there. Names of widgets are unique among all windows.
  QWidget& form(const char* window);
  template <typename Widget = QWidget>
  Widget& widget(const char* name) {
    auto* found = qobject_cast<Widget*>(child(name));
    if (!found) throw std::runtime_error(std::string("no such widget: ") + name);
    return *found;
  }
  // Of a table: the texts of a column; of one row for a role of the model.
  Texts column(const char* table, int column = 0);
  std::string data(const char* table, int row, int column, int role = Qt::DisplayRole);
  Texts titles() { return column("operationsTableView"); }
  std::string detail(int row);  // of the operations
  // The numbers of the selected rows, from 0.
  std::vector<int> selection(const char* table);
  std::string text(const char* name);  // of a label, a field, a pop-up or a text view
  bool isOn(const char* checkBox);
  bool isShown(const char* window);

  // --- The mouse. Without a place in the middle of the widget.
  void click(QWidget& widget, QPoint at = {}, Qt::KeyboardModifiers modifiers = {},
             Qt::MouseButton button = Qt::LeftButton);
  void click(const char* name) { click(widget(name)); }
  void doubleClick(QWidget& widget, QPoint at);
  void clickRow(const char* table, int row, Qt::KeyboardModifiers modifiers = {}, int column = 0);
  void doubleClickRow(const char* table, int row, int column = 0);
  // Right, and chooses from the menu that opens.
  void chooseFromContextMenu(QWidget& widget, QPoint at, const char* item);
  // Right of the column's header, where it is made wider: a double click, or a drag by so many pixels.
  void doubleClickDivider(const char* table, int column);
  void dragDivider(const char* table, int column, int pixels);
  static QPoint placeOf(const QTableView& view, int row, int column = 0);

  // --- Keys, to where the focus is.
  void press(QKeyCombination key);
  void press(Qt::Key key, Qt::KeyboardModifiers modifiers) { press(QKeyCombination(modifiers, key)); }
  void type(const QString& text);
  // Clicks into the field or editable combo box and replaces what it holds.
  void fill(const char* field, const QString& text);
  void focus(const char* name);

  // --- Controls.
  void choose(const char* popUp, const char* item);  // by the arrow keys
  void chooseWithTheMouse(const char* popUp, const char* item);
  void tick(const char* checkBox, bool on = true);

  // --- Menus: of a window's bar, or one that is open.
  QAction& menuItem(const char* window, const char* menu, const char* item);
  void chooseMenu(const char* window, const char* menu, const char* item);
  // Of the window with the keys: its menu is opened by Alt with the letter, the item reached by the arrows.
  void chooseByKeys(Qt::Key mnemonic, const char* item);
  bool isMenuItemOn(const char* window, const char* menu, const char* item);
  // Of a button, opened by a click; a submenu's item is "Lines/Merge Up…".
  void chooseFromButton(const char* button, const char* item);

  // --- Drags from other programs, and of rows.
  static QMimeData* files(const Texts& paths);
  // False when it is refused. The data is destroyed.
  bool drop(const char* table, QMimeData* data, QPoint at);
  QPoint gapBefore(const char* table, int row);
  // With the mouse, over the threshold and on to the gap.
  void dragRow(const char* table, int row, int gap);

  // --- Alerts and panels.
  QMessageBox& alert();  // the one that is shown
  bool hasAlert();
  void answer(const char* button);
  QFileDialog& panel();
  void answerPanel(const std::string& path);

  // What was opened in other programs.
  const QList<QUrl>& opened() const;

 private:
  QObject* child(const char* name);
};

}  // namespace quillet::testing
