#include "gui/user.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDesktopServices>
#include <QDrag>
#include <QDropEvent>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPointer>
#include <QScrollBar>
#include <QTimer>
#include <QWindow>
#include <QtTest>

#include "ui/large_text_view.h"
#include "ui/table_model.h"

namespace quillet::testing {

namespace {

constexpr int kPatience = 20'000;  // milliseconds

// Stands for the programs that open files and pages.
class Opener final : public QObject {
  Q_OBJECT

 public:
  Opener() {
    for (const char* scheme : kSchemes) QDesktopServices::setUrlHandler(QLatin1String(scheme), this, "open");
  }
  ~Opener() override {
    for (const char* scheme : kSchemes) QDesktopServices::unsetUrlHandler(QLatin1String(scheme));
  }
  QList<QUrl> opened;

 public slots:
  void open(const QUrl& url) { opened << url; }

 private:
  static constexpr const char* kSchemes[] = {"file", "http", "https"};
};

Opener* opener = nullptr;

QString plain(QString text) {
  return text.remove(QLatin1Char('&'));
}

QAction* actionOf(const QList<QAction*>& actions, const QString& text) {
  for (QAction* action : actions)
    if (plain(action->text()) == text) return action;
  throw std::runtime_error("no such item: " + text.toStdString());
}

template <typename Widget>
Widget* shownTopLevel() {
  for (QWidget* widget : QApplication::topLevelWidgets())
    if (auto* found = qobject_cast<Widget*>(widget); found && found->isVisible()) return found;
  return nullptr;
}

// As the user does: it opens, its items are set, it closes, and the item acts.
void chooseFrom(QMenu& menu, const QString& item) {
  const QStringList path = item.split(QLatin1Char('/'));
  QMenu* open = &menu;
  for (const QString& submenu : path.mid(0, path.size() - 1)) {
    open = actionOf(open->actions(), submenu)->menu();
    emit open->aboutToShow();
  }
  QAction* action = actionOf(open->actions(), path.back());
  if (!action->isEnabled()) throw std::runtime_error("the item is off: " + item.toStdString());
  menu.close();
  settle();
  action->trigger();
  settle();
}

QWindow& screenWindowOf(const QWidget& widget) {
  QWindow* window = widget.window()->windowHandle();
  if (!window || !widget.isVisible())
    throw std::runtime_error("not to be seen: " + widget.objectName().toStdString());
  return *window;
}

// As a window manager does: a window that is gone gives the keys to the one that had them before.
class KeyGiver {
 public:
  void settle() {
    if (QApplication::activePopupWidget()) return;
    std::erase_if(windows_, [](const QPointer<QWidget>& window) { return !window || !window->isVisible(); });
    const QWindow* focused = QGuiApplication::focusWindow();
    QWidget* active = QApplication::activeWindow();
    if (focused && focused->isVisible() && active && active->isVisible()) return remember(active);
    QWidget* next = QApplication::activeModalWidget();
    if (!next && !windows_.empty()) next = windows_.back();
    if (!next) return;
    next->activateWindow();
    QApplication::processEvents();
  }

 private:
  void remember(QWidget* active) {
    std::erase(windows_, active);
    windows_.emplace_back(active);
  }
  std::vector<QPointer<QWidget>> windows_;  // the last one had the keys last
};

KeyGiver keyGiver;

// A click brings a window forward, unless a sheet stands before it.
void bringForward(const QWidget& widget) {
  if (widget.isActiveWindow() || widget.window()->windowType() == Qt::Popup) return;
  if (QApplication::activePopupWidget()) return;
  if (const QWidget* modal = QApplication::activeModalWidget(); modal && modal != widget.window()) return;
  widget.window()->activateWindow();
  settle();
}

// What a table puts on a drag, kept before the drag is destroyed.
class DragWatcher final : public QObject {
 public:
  explicit DragWatcher(QObject& view) : view_(view) { view.installEventFilter(this); }
  std::unique_ptr<QMimeData> data;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (watched == &view_ && event->type() == QEvent::ChildAdded)
      static_cast<QChildEvent*>(event)->child()->installEventFilter(this);
    if (auto* drag = qobject_cast<QDrag*>(watched); drag && event->type() == QEvent::DeferredDelete) {
      data = std::make_unique<QMimeData>();
      for (const QString& format : drag->mimeData()->formats())
        data->setData(format, drag->mimeData()->data(format));
    }
    return false;
  }

 private:
  QObject& view_;
};

QPoint inWindow(const QWidget& widget, QPoint at) {
  if (at.isNull()) at = widget.rect().center();
  return widget.mapTo(widget.window(), at);
}

}  // namespace

UserTest::UserTest() {
  opener = new Opener;
}

UserTest::~UserTest() {
  delete opener;
  opener = nullptr;
}

const QList<QUrl>& UserTest::opened() const {
  return opener->opened;
}

Texts UserTest::launchWithFiles(const Texts& contents) {
  Texts paths;
  char name = 'a';
  for (const std::string& content : contents)
    paths.push_back(home_.write(std::string(1, name++) + ".csv", content));
  launch(paths);
  settle();
  return paths;
}

QWidget& UserTest::form(const char* window) {
  QWidget* found = quillet().windows().widget(window);
  if (!found) throw std::runtime_error(std::string("no such window: ") + window);
  return *found;
}

QObject* UserTest::child(const char* name) {
  for (const Window* window : application().interface().windows())
    if (QWidget* found = quillet().windows().widget(window->name())->findChild<QWidget*>(QLatin1String(name)))
      return found;
  return nullptr;
}

Texts UserTest::column(const char* table, int column) {
  const QAbstractItemModel* model = widget<QTableView>(table).model();
  Texts texts;
  for (int row = 0; row < model->rowCount(); ++row) texts.push_back(data(table, row, column));
  return texts;
}

std::string UserTest::data(const char* table, int row, int column, int role) {
  const QAbstractItemModel* model = widget<QTableView>(table).model();
  return model->index(row, column).data(role).toString().toStdString();
}

std::string UserTest::detail(int row) {
  return data("operationsTableView", row, 0, ui::TableModel::DetailRole);
}

std::vector<int> UserTest::selection(const char* table) {
  std::vector<int> rows;
  const IndexSet selected = widget<TableView>(table).selectedRowIndexes();
  for (const auto& range : selected.ranges())
    for (std::int64_t row = range.first; row <= range.last; ++row) rows.push_back(static_cast<int>(row));
  return rows;
}

std::string UserTest::text(const char* name) {
  QWidget& found = widget(name);
  if (const auto* button = qobject_cast<QAbstractButton*>(&found)) return plain(button->text()).toStdString();
  if (const auto* label = qobject_cast<QLabel*>(&found)) return label->text().toStdString();
  if (const auto* line = qobject_cast<QLineEdit*>(&found)) return line->text().toStdString();
  if (const auto* popUp = qobject_cast<QComboBox*>(&found)) return popUp->currentText().toStdString();
  if (const auto* edit = qobject_cast<QPlainTextEdit*>(&found)) return edit->toPlainText().toStdString();
  if (const auto* view = qobject_cast<LargeTextView*>(&found)) return view->text().toStdString();
  throw std::runtime_error(std::string("has no text: ") + name);
}

bool UserTest::isOn(const char* checkBox) {
  return widget<QCheckBox>(checkBox).isChecked();
}

bool UserTest::isShown(const char* window) {
  return form(window).isVisible();
}

void UserTest::click(QWidget& target, QPoint at, Qt::KeyboardModifiers modifiers, Qt::MouseButton button) {
  QWindow& screen = screenWindowOf(target);
  bringForward(target);
  QTest::mouseClick(&screen, button, modifiers, inWindow(target, at));
  settle();
}

void UserTest::doubleClick(QWidget& target, QPoint at) {
  QWindow& screen = screenWindowOf(target);
  bringForward(target);
  QTest::mouseDClick(&screen, Qt::LeftButton, {}, inWindow(target, at));
  settle();
}

QPoint UserTest::placeOf(const QTableView& view, int row, int column) {
  const QRect rect = view.visualRect(view.model()->index(row, column));
  if (!rect.isValid()) throw std::runtime_error("no such cell in " + view.objectName().toStdString());
  return {rect.left() + std::min(rect.width() / 2, 20), rect.center().y()};
}

void UserTest::clickRow(const char* table, int row, Qt::KeyboardModifiers modifiers, int column) {
  auto& view = widget<QTableView>(table);
  click(*view.viewport(), placeOf(view, row, column), modifiers);
}

void UserTest::doubleClickRow(const char* table, int row, int column) {
  auto& view = widget<QTableView>(table);
  doubleClick(*view.viewport(), placeOf(view, row, column));
}

void UserTest::chooseFromContextMenu(QWidget& target, QPoint at, const char* item) {
  const QPoint point = inWindow(target, at);
  click(target, at, {}, Qt::RightButton);
  // The platform of the tests leaves it to us to say that a right click asks for a menu.
  if (!QApplication::activePopupWidget()) {
    QContextMenuEvent event(QContextMenuEvent::Mouse, target.mapFrom(target.window(), point),
                            target.window()->mapToGlobal(point));
    QApplication::sendEvent(&target, &event);
    settle();
  }
  auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
  if (!menu) throw std::runtime_error("no menu has opened");
  chooseFrom(*menu, QString::fromUtf8(item));
}

namespace {

QPoint dividerOf(const QHeaderView& header, int column) {
  return {header.sectionViewportPosition(column) + header.sectionSize(column) - 1, header.height() / 2};
}

}  // namespace

void UserTest::doubleClickDivider(const char* table, int column) {
  const QHeaderView& header = *widget<QTableView>(table).horizontalHeader();
  doubleClick(*header.viewport(), dividerOf(header, column));
}

void UserTest::dragDivider(const char* table, int column, int pixels) {
  const QHeaderView& header = *widget<QTableView>(table).horizontalHeader();
  QWindow& screen = screenWindowOf(header);
  const QPoint from = inWindow(*header.viewport(), dividerOf(header, column));
  QTest::mousePress(&screen, Qt::LeftButton, {}, from);
  QTest::mouseMove(&screen, from + QPoint(pixels / 2, 0));
  QTest::mouseMove(&screen, from + QPoint(pixels, 0));
  QTest::mouseRelease(&screen, Qt::LeftButton, {}, from + QPoint(pixels, 0));
  settle();
}

void UserTest::press(QKeyCombination key) {
  settle();
  QWindow* window = QGuiApplication::focusWindow();
  if (!window) throw std::runtime_error("no window has the keys");
  QTest::keyClick(window, key.key(), key.keyboardModifiers());
  settle();
}

void UserTest::type(const QString& text) {
  for (const QChar letter : text) {
    QWindow* window = QGuiApplication::focusWindow();
    if (!window) throw std::runtime_error("no window has the keys");
    QTest::sendKeyEvent(QTest::Click, window, static_cast<Qt::Key>(letter.toUpper().unicode()),
                        QString(letter), {});
  }
  settle();
}

void UserTest::focus(const char* name) {
  widget(name).setFocus(Qt::TabFocusReason);
  settle();
  if (!widget(name).hasFocus()) throw std::runtime_error(std::string("takes no focus: ") + name);
}

void UserTest::fill(const char* field, const QString& text) {
  QWidget& found = widget(field);
  const auto* comboBox = qobject_cast<QComboBox*>(&found);
  click(comboBox ? *comboBox->lineEdit() : found);
  press(Qt::Key_A, Qt::ControlModifier);
  press(Qt::Key_Delete);
  type(text);
}

void UserTest::choose(const char* popUp, const char* item) {
  auto& box = widget<QComboBox>(popUp);
  if (!box.isVisible() || !box.isEnabled()) throw std::runtime_error(std::string("is off: ") + popUp);
  focus(popUp);
  press(Qt::Key_Home);
  for (int i = 0; i < box.count() && box.currentText() != QString::fromUtf8(item); ++i) press(Qt::Key_Down);
  if (box.currentText() != QString::fromUtf8(item))
    throw std::runtime_error(std::string(popUp) + " has no " + item);
}

void UserTest::chooseWithTheMouse(const char* popUp, const char* item) {
  auto& box = widget<QComboBox>(popUp);
  // Of an editable one at its arrow.
  click(box, box.isEditable() ? QPoint(box.width() - 8, box.height() / 2) : QPoint());
  QAbstractItemView& list = *box.view();
  if (!list.isVisible()) throw std::runtime_error(std::string("does not open: ") + popUp);
  const QModelIndex index = box.model()->index(box.findText(QString::fromUtf8(item)), 0);
  if (!index.isValid()) throw std::runtime_error(std::string(popUp) + " has no " + item);
  list.scrollTo(index);
  // A list that has just opened takes the release of the click that opened it for no choice.
  QTest::qWait(QApplication::doubleClickInterval());
  const QPoint at = inWindow(*list.viewport(), list.visualRect(index).center());
  QTest::mouseMove(&screenWindowOf(list), at);
  QTest::mouseClick(&screenWindowOf(list), Qt::LeftButton, {}, at);
  settle();
}

void UserTest::tick(const char* checkBox, bool on) {
  if (isOn(checkBox) != on) click(widget(checkBox), {8, widget(checkBox).height() / 2});
  if (isOn(checkBox) != on) throw std::runtime_error(std::string("stays as it is: ") + checkBox);
}

QAction& UserTest::menuItem(const char* window, const char* menu, const char* item) {
  auto& main = dynamic_cast<QMainWindow&>(form(window));
  QMenu* found = actionOf(main.menuBar()->actions(), QString::fromUtf8(menu))->menu();
  emit found->aboutToShow();
  // An item may have become another's name.
  for (QAction* action : found->actions())
    if (plain(action->text()) == QString::fromUtf8(item)) return *action;
  throw std::runtime_error(std::string("no such item: ") + item);
}

void UserTest::chooseMenu(const char* window, const char* menu, const char* item) {
  QAction& action = menuItem(window, menu, item);
  if (!action.isEnabled()) throw std::runtime_error(std::string("the item is off: ") + item);
  action.trigger();
  settle();
}

void UserTest::chooseByKeys(Qt::Key mnemonic, const char* item) {
  press(mnemonic, Qt::AltModifier);
  auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
  if (!menu) throw std::runtime_error("no menu opens");
  const QString wanted = QString::fromUtf8(item);
  for (int i = 0; i < 30 && !(menu->activeAction() && plain(menu->activeAction()->text()) == wanted); ++i)
    QTest::keyClick(menu, Qt::Key_Down);
  if (!menu->activeAction() || plain(menu->activeAction()->text()) != wanted ||
      !menu->activeAction()->isEnabled()) {
    menu->close();
    throw std::runtime_error(std::string("the arrows do not reach ") + item);
  }
  QTest::keyClick(menu, Qt::Key_Return);
  settle();
}

bool UserTest::isMenuItemOn(const char* window, const char* menu, const char* item) {
  return menuItem(window, menu, item).isEnabled();
}

void UserTest::chooseFromButton(const char* button, const char* item) {
  QWidget& found = widget(button);
  bool chosen = false;
  std::string problem;
  // A button's menu has an event loop of its own, until it closes.
  QTimer::singleShot(0, &found, [&] {
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    if (!menu) return;
    chosen = true;
    const QString path = QString::fromUtf8(item);
    try {
      chooseFrom(*menu, path);
    } catch (const std::runtime_error& error) {
      problem = error.what();
      menu->close();
    }
  });
  click(found);
  eventually([&] { return chosen; });
  if (!chosen) throw std::runtime_error(std::string("no menu: ") + button);
  if (!problem.empty()) throw std::runtime_error(problem);
}

QMimeData* UserTest::files(const Texts& paths) {
  QList<QUrl> urls;
  for (const std::string& path : paths) urls << QUrl::fromLocalFile(QString::fromStdString(path));
  auto* data = new QMimeData;
  data->setUrls(urls);
  return data;
}

bool UserTest::drop(const char* table, QMimeData* data, QPoint at) {
  const std::unique_ptr<QMimeData> owned(data);
  QWidget* viewport = widget<QTableView>(table).viewport();
  screenWindowOf(*viewport);
  QDragEnterEvent enter(at, Qt::CopyAction, data, Qt::LeftButton, {});
  QApplication::sendEvent(viewport, &enter);
  if (!enter.isAccepted()) return false;
  QDragMoveEvent move(at, Qt::CopyAction, data, Qt::LeftButton, {});
  QApplication::sendEvent(viewport, &move);
  if (!move.isAccepted()) return false;
  QDropEvent dropped(at, Qt::CopyAction, data, Qt::LeftButton, {});
  QApplication::sendEvent(viewport, &dropped);
  settle();
  return dropped.isAccepted();
}

QPoint UserTest::gapBefore(const char* table, int row) {
  const auto& view = widget<QTableView>(table);
  if (row < view.model()->rowCount()) return {30, view.rowViewportPosition(row) + 2};
  return {30, view.rowViewportPosition(row - 1) + view.rowHeight(row - 1) + 6};
}

// The platform of the tests starts drags and brings them nowhere, so what the table has put on it is brought
// by hand.
void UserTest::dragRow(const char* table, int row, int gap) {
  auto& view = widget<QTableView>(table);
  QWindow& screen = screenWindowOf(view);
  const QPoint from = inWindow(*view.viewport(), placeOf(view, row));
  DragWatcher watcher(view);
  QTest::mousePress(&screen, Qt::LeftButton, {}, from);
  QTest::mouseMove(&screen, from + QPoint(0, 1));
  QTest::mouseMove(&screen, from + QPoint(0, QApplication::startDragDistance() + 2));
  QTest::mouseRelease(&screen, Qt::LeftButton, {}, from);
  settle();
  if (!watcher.data) throw std::runtime_error(std::string("no drag begins in ") + table);
  drop(table, watcher.data.release(), gapBefore(table, gap));
}

QMessageBox& UserTest::alert() {
  if (!eventually([] { return shownTopLevel<QMessageBox>() != nullptr; }))
    throw std::runtime_error("no alert");
  return *shownTopLevel<QMessageBox>();
}

bool UserTest::hasAlert() {
  settle();
  return shownTopLevel<QMessageBox>() != nullptr;
}

void UserTest::answer(const char* button) {
  for (QAbstractButton* found : alert().buttons())
    if (plain(found->text()) == QString::fromUtf8(button)) return click(*found);
  throw std::runtime_error(std::string("the alert has no ") + button);
}

QFileDialog& UserTest::panel() {
  if (!eventually([] { return shownTopLevel<QFileDialog>() != nullptr; }))
    throw std::runtime_error("no panel");
  return *shownTopLevel<QFileDialog>();
}

void UserTest::answerPanel(const std::string& path) {
  auto* field = panel().findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
  click(*field);
  press(Qt::Key_A, Qt::ControlModifier);
  type(QString::fromStdString(path));
  if (QWidget* completions = QApplication::activePopupWidget()) completions->close();
  for (QAbstractButton* button : panel().findChildren<QAbstractButton*>())
    if (button->isVisible() && button->property("default").toBool()) {
      click(*button);
      break;
    }
  if (!eventually([] { return shownTopLevel<QFileDialog>() == nullptr; }))
    throw std::runtime_error("the panel stays");
}

void settle() {
  QApplication::processEvents();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  keyGiver.settle();
}

bool eventually(const std::function<bool()>& holds) {
  return QTest::qWaitFor(holds, kPatience);
}

}  // namespace quillet::testing

#include "user.moc"
