#include "ui/application_windows.h"

#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFile>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QShortcut>
#include <QSplitter>
#include <QStackedWidget>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>
#include <QUrl>
#include <QVBoxLayout>
#include <QWindow>
#include <algorithm>
#include <utility>

#include "platform/localization.h"
#include "shell/drag_and_drop.h"
#include "shell/preview_cells.h"
#include "shell/table_keys.h"
#include "ui/accessible_names.h"
#include "ui/binder.h"
#include "ui/forms.h"
#include "ui/grid_view.h"
#include "ui/guide_page.h"
#include "ui/icons.h"
#include "ui/label_colour.h"
#include "ui/large_text_view.h"
#include "ui/preview_columns.h"
#include "ui/tab_order.h"
#include "ui/table_model.h"
#include "ui/table_view.h"
#include "ui/text_conversion.h"
#include "ui/theme.h"

namespace quillet::ui {

namespace {

constexpr int kLeastSheetWidth = 420;
constexpr int kKerning = 2;  // pixels; what one pair of letters may move together

bool isSheet(const Window& window) {
  return window.cancelButton() != nullptr;
}

QString mimeTypeOf(DropTable table) {
  switch (table) {
    case DropTable::Files:
      return QStringLiteral("application/x-quillet-inputfiles");
    case DropTable::Operations:
      return QStringLiteral("application/x-quillet-operations");
    case DropTable::RearrangeColumns:
      return QStringLiteral("application/x-quillet-rearrangecolumns");
  }
  return {};
}

std::vector<DragType> typesOf(const QMimeData& data) {
  std::vector<DragType> types;
  if (data.hasUrls()) types.push_back(DragType::FileNames);
  if (data.hasText()) types.push_back(DragType::String);
  for (const DropTable table : {DropTable::Files, DropTable::Operations, DropTable::RearrangeColumns})
    if (rowsOfMimeData(data, mimeTypeOf(table))) types.push_back(dragTypeOfRows(table));
  return types;
}

std::vector<std::string> localPaths(const QMimeData& data) {
  std::vector<std::string> paths;
  for (const QUrl& url : data.urls())
    if (url.isLocalFile()) paths.push_back(QFile::encodeName(url.toLocalFile()).toStdString());
  return paths;
}

void setIcon(QAbstractButton* button, const char* name, int size = 18) {
  if (!button) return;
  button->setIcon(icon(QLatin1String(name)));
  button->setIconSize({size, size});
}

// The numbers of the steps in a help box.
void numberSteps(QWidget& form) {
  for (QLabel* label : form.findChildren<QLabel*>())
    if (const int step = label->property("step").toInt())
      label->setText(QStringLiteral("%1.  %2").arg(step).arg(label->text()));
}

// A label looks as its field does, on or off.
class Dimmer final : public QObject {
 public:
  explicit Dimmer(QLabel& label) : QObject(&label), label_(label) { label.buddy()->installEventFilter(this); }

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::EnabledChange)
      label_.setEnabled(static_cast<QWidget*>(watched)->isEnabled());
    return false;
  }

 private:
  QLabel& label_;
};

void dimWithBuddy(QLabel& label) {
  label.setEnabled(label.buddy()->isEnabled());
  new Dimmer(label);
}

// What a label is for, as its form says: a heading, a title, or a note.
void dressLabels(QWidget& form) {
  for (QLabel* label : form.findChildren<QLabel*>()) {
    const QString role = label->property("role").toString();
    QFont font = label->font();
    if (role == QLatin1String("heading")) font.setBold(true);
    if (role == QLatin1String("title")) font.setPixelSize(20);
    label->setFont(font);
    // Where a letter is underlined there is no kerning, so the text is wider than Qt measures it.
    if (label->buddy()) {
      label->setMinimumWidth(label->sizeHint().width() + kKerning);
      dimWithBuddy(*label);
    }
    if (role == QLatin1String("secondary")) setTextColour(*label, TextColour::SecondaryLabel);
  }
}

void showAbout(QWidget& window) {
  auto* box = new QMessageBox(&window);
  box->setAttribute(Qt::WA_DeleteOnClose);
  box->setWindowTitle(QObject::tr("About Quillet"));
  box->setIconPixmap(QIcon(QStringLiteral(":/icons/org.quillet.Quillet.svg")).pixmap(64));
  box->setText(QStringLiteral("Quillet ") + QCoreApplication::applicationVersion());
  box->setInformativeText(QObject::tr("Quillet prepares delimited text data."));
  box->open();
}

}  // namespace

ApplicationWindows::ApplicationWindows(AppDelegate& application, QtDesktop& desktop,
                                       std::function<void()> quit)
    : application_(application), desktop_(desktop), quit_(std::move(quit)) {
  for (Window* window : application_.interface().windows()) addWindow(*window);
  dressMainWindow();
  dressClipboardWindow();
  dressJobsWindow();
  dressPreferences();
  addDrops();
  addKeys();
  addContextMenus();
  connect(qApp, &QGuiApplication::focusWindowChanged, this, [this] { updateMenusSoon(); });
  auto* grid = find<GridView>("clipboardDataWindow", "clipboardDataTableView");
  connect(grid->model(), &QAbstractItemModel::dataChanged, this, [this] { updateMenusSoon(); });
  connect(grid->model(), &QAbstractItemModel::modelReset, this, [this] { updateMenusSoon(); });
}

// Controls outlive the widgets, so nothing may tell them any more.
ApplicationWindows::~ApplicationWindows() {
  for (Window* window : application_.interface().windows()) {
    window->setObserver({});
    for (Control* control : window->controls()) control->setObserver({});
  }
  // A sheet that was open once is a child of its window.
  for (auto& [name, form] : widgets_) form->setParent(nullptr);
}

QWidget* ApplicationWindows::widget(std::string_view window) const {
  const auto found = widgets_.find(window);
  return found == widgets_.end() ? nullptr : found->second.get();
}

bool ApplicationWindows::hasSheet(std::string_view window) const {
  const QWidget* parent = widget(window);
  return std::any_of(widgets_.begin(), widgets_.end(), [parent](const auto& form) {
    return form.second->isVisible() && form.second->parentWidget() == parent;
  });
}

Window* ApplicationWindows::windowOf(const QObject* widget) const {
  for (const auto& [name, form] : widgets_)
    if (form.get() == widget) return application_.interface().window(name);
  return nullptr;
}

void ApplicationWindows::addWindow(Window& window) {
  std::unique_ptr<QWidget> form = newForm(window.name());
  if (!form) {
    controlsWithoutWidget_.push_back(QString::fromStdString(window.name()));
    return;
  }
  if (isSheet(window)) dressSheet(window, *form);
  if (&window == &application_.windows().clipboardData) addToolBar(window, static_cast<QMainWindow&>(*form));
  if (auto* grid = form->findChild<GridView*>()) grid->setGroup(application_.clipboard());
  for (const QString& name : bindControls(window, *form, [this] { updateMenusSoon(); }))
    controlsWithoutWidget_.push_back(name);
  numberSteps(*form);
  dressLabels(*form);
  nameFieldsWithoutLabel(*form);
  desktop_.addWindow(window, *form);
  form->installEventFilter(this);
  widgets_.emplace(window.name(), std::move(form));
}

// The last row: help at the left, then Cancel and Done as the platform orders them.
void ApplicationWindows::dressSheet(Window& window, QWidget& form) {
  form.setMinimumWidth(kLeastSheetWidth);
  auto* box = form.findChild<QDialogButtonBox*>(QStringLiteral("buttonBox"));
  const auto add = [&](const Button& button, QDialogButtonBox::ButtonRole role) {
    auto* widget = new QPushButton(withoutMnemonics(button.title()));
    widget->setObjectName(QString::fromStdString(button.name()));
    box->addButton(widget, role);
    return widget;
  };
  if (window.cancelButton() != window.doneButton()) add(*window.cancelButton(), QDialogButtonBox::RejectRole);
  QPushButton* done = add(*window.doneButton(), QDialogButtonBox::AcceptRole);
  done->setDefault(true);
  // A column panel's table and every field is set in the fixed-width font, as data is.
  for (QLineEdit* edit : form.findChildren<QLineEdit*>()) edit->setFont(fixedWidthFont());
  for (QComboBox* comboBox : form.findChildren<QComboBox*>())
    if (comboBox->isEditable()) comboBox->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  for (QPlainTextEdit* edit : form.findChildren<QPlainTextEdit*>()) {
    edit->setFont(fixedWidthFont());
    edit->setMinimumSize(420, 140);
    edit->setAccessibleName(qString(window.title()));
    edit->installEventFilter(this);
  }
  for (Control* control : window.controls()) {
    auto* button = dynamic_cast<Button*>(control);
    if (!button || button == window.doneButton() || button == window.cancelButton()) continue;
    if (button->handler() != "helpButtonPressed") continue;
    auto* help = new QToolButton;
    help->setObjectName(QString::fromStdString(button->name()));
    help->setAutoRaise(true);
    help->setAccessibleName(withoutMnemonic(QCoreApplication::translate("Menu", "&Help")));
    setIcon(help, "help");
    auto* rows = static_cast<QVBoxLayout*>(form.layout());
    auto* last = new QHBoxLayout;
    rows->removeWidget(box);
    last->addWidget(help);
    last->addStretch();
    last->addWidget(box);
    rows->addLayout(last);
    form.setAccessibleDescription(qString(button->toolTip()));
  }
}

void ApplicationWindows::perform(const std::string& command) {
  application_.interface().commands().perform(command);
}

bool ApplicationWindows::close(Window& window) {
  if (isSheet(window)) {
    window.cancelButton()->press();
    return !window.isShown();
  }
  if (!application_.windowShouldClose(window)) return false;
  window.hide();
  return true;
}

// Once for all that happens before the next event; the items are asked as when their menus open.
void ApplicationWindows::updateMenusSoon() {
  if (std::exchange(menusAreStale_, true)) return;
  QMetaObject::invokeMethod(
      this,
      [this] {
        menusAreStale_ = false;
        for (const auto& [name, form] : widgets_)
          if (const auto* window = qobject_cast<QMainWindow*>(form.get())) updateMenus(*window->menuBar());
      },
      Qt::QueuedConnection);
}

bool ApplicationWindows::eventFilter(QObject* watched, QEvent* event) {
  // Qt takes colours off again on its way through the widgets of a form.
  if (event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange)
    if (auto* form = qobject_cast<QWidget*>(watched); form && form->isWindow())
      QMetaObject::invokeMethod(
          form, [form] { colourLabels(*form); }, Qt::QueuedConnection);
  if (event->type() == QEvent::Show) {
    const Window* window = windowOf(watched);
    if (window && isSheet(*window)) beginSheetWithTheFirstField(*window, *static_cast<QWidget*>(watched));
  }
  if (event->type() == QEvent::Close) {
    Window* window = windowOf(watched);
    if (window && window->isShown() && !close(*window)) event->ignore();
    return window && isSheet(*window);
  }
  if (event->type() == QEvent::KeyPress) {
    const auto* key = static_cast<QKeyEvent*>(event);
    Window* window = windowOf(watched);
    if (window && isSheet(*window) && key->key() == Qt::Key_Escape) {
      close(*window);
      return true;
    }
    const bool isReturn = key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter;
    // Return presses the button that has the focus, as Space does; in a sheet it is Qt that cares for it.
    auto* button = qobject_cast<QAbstractButton*>(QApplication::focusWidget());
    if (window && !isSheet(*window) && isReturn && button) {
      button->click();
      return true;
    }
    // In the text of a cell Return is Done, with Shift it is a line break.
    if (auto* edit = qobject_cast<QPlainTextEdit*>(watched);
        edit && isReturn && !key->modifiers().testFlag(Qt::ShiftModifier)) {
      if (Window* sheet = windowOf(edit->window())) sheet->doneButton()->press();
      return true;
    }
  }
  return QObject::eventFilter(watched, event);
}

MenuActions ApplicationWindows::menuActions(Window& window) {
  MenuActions actions;
  actions.perform = [this](const std::string& command) { perform(command); };
  actions.isEnabled = [this](const std::string& command) { return application_.validateMenuItem(command); };
  actions.close = [this, &window] { widget(window.name())->close(); };
  actions.quit = quit_;
  actions.about = [this, &window] { showAbout(*widget(window.name())); };
  actions.guide = [this] {
    const std::string page = guidePage(QCoreApplication::applicationDirPath());
    if (page.empty() || !desktop_.open(page)) desktop_.showAlert(localized(u"Could not open URL"), {});
  };
  actions.moveSelectedOperations = [this](int rows) {
    moveSelectedRows(*find<TableView>("window", "operationsTableView"), rows);
  };
  actions.hasSelectedOperations = [this] {
    return !find<TableView>("window", "operationsTableView")->selectedRowIndexes().isEmpty();
  };
  actions.choosePreview = [this](int tag) {
    if (auto* popUp = dynamic_cast<PopUpButton*>(application_.interface().control("previewTypePopUpButton")))
      popUp->userSelects(tag);
  };
  actions.previewType = [this] { return static_cast<int>(application_.previewPanel().previewType()); };
  actions.renameJob = [this] { renameSelectedJob(); };
  actions.showPerformedOperations = [this](bool shown) {
    find<QWidget>("clipboardDataWindow", "clipboardDataWindowOperationsPane")->setVisible(shown);
  };
  actions.performedOperationsShown = [this] {
    return find<QWidget>("clipboardDataWindow", "clipboardDataWindowOperationsPane")->isVisible();
  };
  UndoManager& undo = application_.clipboard().data().undoManager();
  actions.undoName = [&undo] { return qString(undo.undoActionName()); };
  actions.redoName = [&undo] { return qString(undo.redoActionName()); };
  actions.undo = [&undo] { undo.undo(); };
  actions.redo = [&undo] { undo.redo(); };
  actions.restoreTitle = [this] {
    auto* button =
        dynamic_cast<Button*>(application_.interface().control("previousJobsWindowRestoreOperationsButton"));
    return button ? withoutMnemonics(button->title()) : QString();
  };
  return actions;
}

void ApplicationWindows::dressMainWindow() {
  auto& window = static_cast<QMainWindow&>(*widget("window"));
  const MenuActions actions = menuActions(application_.windows().main);
  addMenus(window, MenuOf::Main, actions);
  setIcon(find<QAbstractButton>("window", "addInputFileButton"), "plus");
  setIcon(find<QAbstractButton>("window", "removeInputFilesButton"), "minus");
  setIcon(find<QAbstractButton>("window", "showInFinderButton"), "reveal");
  setIcon(find<QAbstractButton>("window", "editOperationButton"), "compose");
  setIcon(find<QAbstractButton>("window", "deleteOperationButton"), "trash");
  setIcon(find<QAbstractButton>("window", "clearStatusLabelButton"), "clear", 14);
  auto* add = find<QPushButton>("window", "addOperationButton");
  setIcon(add, "plus", 16);
  add->setMenu(newAddOperationMenu(add, actions));
  auto* run = find<QPushButton>("window", "runButton");
  run->setIcon(icon(QStringLiteral("run"), IconOn::Selection));
  auto* split = find<QSplitter>("window", "mainSplitView");
  split->setStretchFactor(0, 0);
  split->setStretchFactor(1, 1);
  split->setSizes({260, 1020});
  find<QWidget>("window", "filesPane")->setMinimumWidth(180);
  find<QWidget>("window", "filesPane")->setMaximumWidth(480);
  find<QWidget>("window", "operationsTableView")->setMinimumHeight(130);
  find<QSplitter>("window", "rightSideSplitView")->setSizes({300, 300});
  showNoteForSeveralFiles();
  frameMissingCells("previewTableView", PreviewStores::Side::Input);
  frameMissingCells("previewOutputTableView", PreviewStores::Side::Output);
  for (const char* table : {"previewTableView", "previewOutputTableView"})
    if (auto* columns = find<TableView>("window", table)->findChild<PreviewColumns*>())
      connect(find<TableView>("window", "filesTableView")->selectionModel(),
              &QItemSelectionModel::selectionChanged, columns, &PreviewColumns::forget);
  find<QWidget>("window", "previewStack")->setMinimumHeight(200);
  connect(find<QPushButton>("window", "rightSideHelpBoxAddButton"), &QPushButton::clicked, this,
          [this] { perform("addInputFileMenuItemClicked"); });
}

void ApplicationWindows::frameMissingCells(const char* table, PreviewStores::Side side) {
  auto* model = static_cast<TableModel*>(find<TableView>("window", table)->model());
  model->setIsMissing([this, side](int row, int column) {
    return previewTableCellViewIsEmpty(*application_.shared().previewStores,
                                       previewCellTag(side, row, column + 1));
  });
}

// Under the operations, while they are those of several files.
void ApplicationWindows::showNoteForSeveralFiles() {
  auto* files = find<TableView>("window", "filesTableView");
  auto* note = find<QLabel>("window", "severalFilesLabel");
  const auto show = [files, note] { note->setVisible(files->selectedRowIndexes().count() > 1); };
  connect(files->selectionModel(), &QItemSelectionModel::selectionChanged, note, show);
  show();
}

void ApplicationWindows::dressClipboardWindow() {
  auto& window = static_cast<QMainWindow&>(*widget("clipboardDataWindow"));
  const MenuActions actions = menuActions(application_.windows().clipboardData);
  addMenus(window, MenuOf::Clipboard, actions);
  setIcon(find<QAbstractButton>("clipboardDataWindow", "clipboardDataWindowClearStatusLabelButton"), "clear",
          14);
  auto* split = find<QSplitter>("clipboardDataWindow", "clipboardDataWindowSplitView");
  split->setStretchFactor(0, 1);
  split->setStretchFactor(1, 0);
  split->setSizes({860, 240});
  auto* pane = find<QWidget>("clipboardDataWindow", "clipboardDataWindowOperationsPane");
  pane->setMinimumWidth(160);
  pane->setMaximumWidth(400);
  find<TableView>("clipboardDataWindow", "clipboardDataWindowOperationsTableView")
      ->setSelectionMode(QAbstractItemView::NoSelection);
  connect(find<QPushButton>("clipboardDataWindow", "clipboardDataWindowHelpBoxRefreshButton"),
          &QPushButton::clicked, this, [this] { perform("clipboardDataWindowRefreshNowButtonPressed"); });
  tickWhereASeparatorIsGiven("clipboardDataSplitWindowLineSeparatorComboBox",
                             "clipboardDataSplitWindowSplitClipboardIntoLinesCheckbox");
  tickWhereASeparatorIsGiven("clipboardDataSplitWindowColumnSeparatorComboBox",
                             "clipboardDataSplitWindowSplitLinesIntoColumnsCheckbox");
  auto* grid = find<GridView>("clipboardDataWindow", "clipboardDataTableView");
  QMenu* menus[] = {newPerformMenu(grid, actions), newLinesMenu(grid, actions),
                    newColumnsMenu(grid, actions)};
  connect(grid, &GridView::contextMenuRequestedAt, this,
          [cells = menus[0], lines = menus[1], columns = menus[2]](const QPoint& at, int part) {
            (part == GridView::RowNumbers ? lines : part == GridView::Headers ? columns : cells)->popup(at);
          });
}

// Who names a separator wants the split.
void ApplicationWindows::tickWhereASeparatorIsGiven(const char* comboBox, const char* checkBox) {
  auto* separator = find<QComboBox>("clipboardDataSplitWindow", comboBox);
  auto* box = find<QCheckBox>("clipboardDataSplitWindow", checkBox);
  const auto tick = [box](const QString& text) {
    if (!text.isEmpty() && !box->isChecked()) box->click();
  };
  connect(separator->lineEdit(), &QLineEdit::textEdited, box, tick);
  connect(separator, &QComboBox::textActivated, box, tick);
}

// Some of its buttons are controls, so it stands before they are joined to their widgets.
void ApplicationWindows::addToolBar(Window& window, QMainWindow& form) {
  const MenuActions actions = menuActions(window);
  auto* bar = new QToolBar(tr("Tools"));
  bar->setObjectName(QStringLiteral("clipboardDataWindowToolBar"));
  bar->setMovable(false);
  bar->setIconSize({18, 18});
  bar->setFloatable(false);
  bar->setContextMenuPolicy(Qt::PreventContextMenu);
  form.addToolBar(bar);
  const auto add = [&](const char* name, const char* iconName, const QString& text) {
    auto* button = new QToolButton;
    button->setObjectName(QLatin1String(name));
    button->setText(text);
    button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::TabFocus);
    setIcon(button, iconName);
    bar->addWidget(button);
    return button;
  };
  const auto performs = [this](QToolButton* button, const char* command) {
    connect(button, &QToolButton::clicked, this, [this, command] { perform(command); });
  };
  performs(add("clipboardDataWindowRefreshToolbarItem", "refresh-1", tr("Refresh")),
           "clipboardDataWindowRefreshNowButtonPressed");
  performs(add("clipboardDataWindowSplitToolbarItem", "split-path", tr("Split…")),
           "clipboardDataWindowSplitButtonPressed");
  QToolButton* performItem = add("clipboardDataWindowPerformToolbarItem", "perform", tr("Perform"));
  performItem->setPopupMode(QToolButton::InstantPopup);
  performItem->setMenu(newPerformMenu(performItem, actions));
  add("clipboardDataWindowJoinToolbarItem", "join-path", tr("Join…"));
  auto* gap = new QWidget;
  gap->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
  bar->addWidget(gap);
  performs(add("clipboardDataWindowSaveToolbarItem", "save", tr("Save Job…")), "saveJobMenuItemClicked");
  std::vector<QWidget*> order;
  for (auto* button : bar->findChildren<QToolButton*>())
    if (!button->objectName().startsWith(QLatin1String("qt_"))) order.push_back(button);
  for (const char* name :
       {"clipboardDataWindowHelpBoxRefreshButton", "clipboardDataWindowTextView", "clipboardDataTableView",
        "clipboardDataWindowOperationsTableView", "clipboardDataWindowClearStatusLabelButton"})
    order.push_back(form.findChild<QWidget*>(QLatin1String(name)));
  setTabOrder(order);
}

void ApplicationWindows::dressJobsWindow() {
  auto& window = static_cast<QMainWindow&>(*widget("previousJobsWindow"));
  addMenus(window, MenuOf::Jobs, menuActions(application_.windows().previousJobs));
  auto* split = find<QSplitter>("previousJobsWindow", "previousJobsWindowSplitView");
  split->setStretchFactor(0, 2);
  split->setStretchFactor(1, 3);
  split->setSizes({390, 580});
  constexpr int kNameColumn = 1;
  auto* jobs = find<TableView>("previousJobsWindow", "previousJobsWindowJobsTableView");
  jobs->setEditTriggers(QAbstractItemView::DoubleClicked);
  static_cast<TableModel*>(jobs->model())->setEditing(kNameColumn, [this](int row, const QString& name) {
    application_.previousJobsWindow().saveJobName(u16String(name), row);
  });
}

// In its place in the table.
void ApplicationWindows::renameSelectedJob() {
  auto* jobs = find<TableView>("previousJobsWindow", "previousJobsWindowJobsTableView");
  const IndexSet rows = jobs->selectedRowIndexes();
  if (rows.count() != 1) return;
  jobs->setFocus();
  const QModelIndex name = jobs->model()->index(static_cast<int>(rows.firstIndex()), 1);
  jobs->setCurrentIndex(name);
  jobs->edit(name);
}

void ApplicationWindows::dressPreferences() {
  auto* form = widget("preferencesWindow");
  form->setWindowFlags(Qt::Window);
  form->setFixedWidth(480);
  for (QLineEdit* edit : form->findChildren<QLineEdit*>()) edit->setFont(fixedWidthFont());
  connect(form->findChild<QDialogButtonBox*>(), &QDialogButtonBox::rejected, form, &QWidget::close);
  connect(new QShortcut(QKeySequence(Qt::Key_Escape), form), &QShortcut::activated, form, &QWidget::close);
}

namespace {

// The first character of a key press as the application names it; 0 for a key that it does not know.
char16_t keyOf(const QKeyEvent& event) {
  switch (event.key()) {
    case Qt::Key_Up:
      return kUpArrowKey;
    case Qt::Key_Down:
      return kDownArrowKey;
    case Qt::Key_Space:
      return kSpaceKey;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return kReturnKey;
    default:
      return 0;
  }
}

}  // namespace

// What tables do with keys before Qt sees them. F6 goes round the panes of a window.
void ApplicationWindows::addKeys() {
  for (const char* name : {"previewTableView", "previewOutputTableView"}) {
    auto* view = find<TableView>("window", name);
    auto* table = dynamic_cast<Table*>(application_.interface().control(name));
    view->setKeyFilter([this, table](const QKeyEvent& event) {
      const char16_t key = keyOf(event);
      return key &&
             application_.previewKeys().keyDown(*table, {key, event.modifiers().testFlag(Qt::AltModifier),
                                                         event.modifiers().testFlag(Qt::ControlModifier)});
    });
  }
  find<TableView>("window", "filesTableView")->setKeyFilter([](const QKeyEvent& event) {
    return swallowsKey("filesTableView", keyOf(event));
  });
  addPaneKeys("window", {"filesTableView", "operationsTableView", "previewStack"});
  addPaneKeys("clipboardDataWindow", {"clipboardDataWindowStack", "clipboardDataWindowOperationsTableView"});
  addPaneKeys("previousJobsWindow", {"previousJobsWindowJobsTableView", "previousJobsWindowFilesTableView",
                                     "previousJobFileWindowOperationsTableView"});
}

void ApplicationWindows::addPaneKeys(std::string_view window, const QStringList& panes) {
  QWidget* form = widget(window);
  const auto go = [form, panes](int step) {
    const auto count = static_cast<int>(panes.size());
    int now = step > 0 ? -1 : count;
    for (int i = 0; i < count; ++i) {
      const auto* pane = form->findChild<QWidget*>(panes[i]);
      if (pane->hasFocus() || pane->isAncestorOf(QApplication::focusWidget())) now = i;
    }
    auto* next = form->findChild<QWidget*>(panes[(now + step + count) % count]);
    if (auto* stack = qobject_cast<QStackedWidget*>(next)) next = stack->currentWidget();
    next->setFocus(Qt::ShortcutFocusReason);
  };
  connect(new QShortcut(QKeySequence(Qt::Key_F6), form), &QShortcut::activated, form, [go] { go(1); });
  connect(new QShortcut(QKeySequence(Qt::SHIFT | Qt::Key_F6), form), &QShortcut::activated, form,
          [go] { go(-1); });
}

void ApplicationWindows::addContextMenus() {
  const auto add = [this](const char* window, const char* table, QMenu* menu) {
    auto* view = find<TableView>(window, table);
    view->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(view, &QWidget::customContextMenuRequested, menu,
            [view, menu](const QPoint& point) { menu->popup(view->viewport()->mapToGlobal(point)); });
  };
  const MenuActions ofMain = menuActions(application_.windows().main);
  add("window", "filesTableView", newFilesMenu(widget("window"), ofMain));
  add("window", "operationsTableView", newOperationsMenu(widget("window"), ofMain));
  add("previousJobsWindow", "previousJobsWindowJobsTableView",
      newJobsMenu(widget("previousJobsWindow"), menuActions(application_.windows().previousJobs)));
}

void ApplicationWindows::addDrops() {
  const auto add = [&](const char* window, const char* name, DropTable table,
                       std::function<void(const QMimeData&, int)> drop) {
    auto* view = find<TableView>(window, name);
    view->setDrops(
        {mimeTypeOf(table),
         [table](const QMimeData& data) { return validateDrop(table, typesOf(data)) == DropOperation::Copy; },
         std::move(drop)});
    connect(view, &TableView::moveAsked, this,
            [this, view](int direction) { moveSelectedRows(*view, direction); });
  };
  add("window", "filesTableView", DropTable::Files, [this](const QMimeData& data, int row) {
    application_.fileCommands().acceptDrop(
        {rowsOfMimeData(data, mimeTypeOf(DropTable::Files)), localPaths(data)}, row);
  });
  add("window", "operationsTableView", DropTable::Operations, [this](const QMimeData& data, int row) {
    if (const auto rows = rowsOfMimeData(data, mimeTypeOf(DropTable::Operations)))
      application_.operationEditor().acceptDrop(*rows, row);
  });
  add("rearrangeColumnsOperationWindow", "rearrangeColumnsOperationWindowColumnsTableView",
      DropTable::RearrangeColumns, [this](const QMimeData& data, int row) {
        if (const auto rows = rowsOfMimeData(data, mimeTypeOf(DropTable::RearrangeColumns)))
          application_.operationEditor().panels().rearrangeColumns().acceptDrop(*rows, row);
      });
}

// As a drop of the selected rows one gap further. The moved rows are selected afterwards, so that the next
// key moves them on. An operation stays between the two ends.
void ApplicationWindows::moveSelectedRows(TableView& view, int rows) {
  const IndexSet selected = view.selectedRowIndexes();
  if (selected.isEmpty()) return;
  RearrangeColumnsPanel& columns = application_.operationEditor().panels().rearrangeColumns();
  if (view.objectName() == QLatin1String("rearrangeColumnsOperationWindowColumnsTableView"))
    return rows < 0 ? columns.moveSelectedRowsUp() : columns.moveSelectedRowsDown();
  const bool isOperations = view.objectName() == QLatin1String("operationsTableView");
  const int ends = isOperations ? 1 : 0;
  const std::int64_t row = rows < 0 ? selected.firstIndex() - 1 : selected.lastIndex() + 2;
  const std::int64_t first = selected.firstIndex();
  const std::int64_t last = view.model()->rowCount() - 1;
  const bool hasEnd = first < ends || selected.lastIndex() > last - ends;
  // An end that is selected is refused in words.
  if (!hasEnd && (row < ends || row > last + 1 - ends)) return;
  if (row < 0 || row > last + 1) return;
  if (isOperations)
    application_.operationEditor().acceptDrop(selected, row);
  else
    application_.fileCommands().acceptDrop({selected, {}}, row);
  if (hasEnd && isOperations) return;
  const std::int64_t moved = rows < 0 ? row : row - selected.count();
  view.selectRows(static_cast<int>(moved), static_cast<int>(moved + selected.count() - 1));
}

}  // namespace quillet::ui
