// The three windows and the preferences as ApplicationWindows dresses them: their sizes, icons, tool bar and
// what their widgets do among themselves.
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>
#include <QSplitter>
#include <QToolBar>
#include <QToolButton>

#include "shell/preview_cells.h"
#include "ui/application_windows.h"
#include "ui/form_dressing.h"
#include "ui/grid_view.h"
#include "ui/icons.h"
#include "ui/preview_columns.h"
#include "ui/tab_order.h"
#include "ui/table_model.h"
#include "ui/table_view.h"
#include "ui/text_conversion.h"
#include "ui/theme.h"

namespace quillet::ui {

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
  // The step that has just been performed is the last one.
  auto* performed = find<TableView>("clipboardDataWindow", "clipboardDataWindowOperationsTableView");
  connect(performed->model(), &QAbstractItemModel::rowsInserted, performed, &QTableView::scrollToBottom);
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
  showFilesOfSelectedJob(*jobs);
  static_cast<TableModel*>(jobs->model())->setEditing(kNameColumn, [this](int row, const QString& name) {
    application_.previousJobsWindow().saveJobName(u16String(name), row);
  });
}

// A search, a save and a new name empty the list of files though the job stays selected: a click on it, or
// Space, brings them back, and until then the list does not ask for a job.
void ApplicationWindows::showFilesOfSelectedJob(TableView& jobs) {
  auto* files = find<TableView>("previousJobsWindow", "previousJobsWindowFilesTableView");
  auto* control = dynamic_cast<Table*>(application_.interface().control("previousJobsWindowJobsTableView"));
  const auto isWithoutFiles = [&jobs, files] {
    return files->model()->rowCount() == 0 && jobs.selectedRowIndexes().count() == 1;
  };
  const auto showAgain = [&jobs, control, isWithoutFiles] {
    if (isWithoutFiles()) control->userSelects(jobs.selectedRowIndexes());
  };
  connect(&jobs, &QTableView::clicked, files, showAgain);
  jobs.setKeyFilter([showAgain](const QKeyEvent& event) {
    if (event.key() == Qt::Key_Space && event.modifiers() == Qt::NoModifier) showAgain();
    return false;
  });
  const auto tellWhatIsMissing = [files, isWithoutFiles, text = files->emptyText()] {
    files->setEmptyText(isWithoutFiles() ? QString() : text);
  };
  connect(files->model(), &QAbstractItemModel::rowsRemoved, files, tellWhatIsMissing);
  connect(jobs.selectionModel(), &QItemSelectionModel::selectionChanged, files, tellWhatIsMissing);
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
  // It has no menus, so it has the keys of theirs that concern every window.
  const auto add = [form](const QKeySequence& key, auto&& run) {
    connect(new QShortcut(key, form), &QShortcut::activated, form, run);
  };
  for (const QKeySequence& key : {QKeySequence(Qt::Key_Escape), QKeySequence(Qt::CTRL | Qt::Key_W)})
    add(key, [form] { form->close(); });
  add(Qt::CTRL | Qt::Key_Q, [this] { quit_(); });
  add(Qt::CTRL | Qt::Key_1, [this] { perform("quilletWindowMenuItemClicked"); });
  add(Qt::CTRL | Qt::Key_2, [this] { perform("clipboardDataWindowMenuItemClicked"); });
  add(Qt::CTRL | Qt::Key_3, [this] { perform("previousJobsWindowMenuItemActionClicked"); });
}

}  // namespace quillet::ui
