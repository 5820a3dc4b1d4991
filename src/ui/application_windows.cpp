#include "ui/application_windows.h"

#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenuBar>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>
#include <QWindow>
#include <algorithm>
#include <utility>

#include "platform/localization.h"
#include "ui/accessible_names.h"
#include "ui/binder.h"
#include "ui/form_dressing.h"
#include "ui/forms.h"
#include "ui/grid_view.h"
#include "ui/guide_page.h"
#include "ui/label_colour.h"
#include "ui/tab_order.h"
#include "ui/table_view.h"
#include "ui/text_conversion.h"
#include "ui/theme.h"

namespace quillet::ui {

namespace {

constexpr int kLeastSheetWidth = 420;

bool isSheet(const Window& window) {
  return window.cancelButton() != nullptr;
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

}  // namespace quillet::ui
