#include "ui/application_windows.h"

#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenuBar>
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

constexpr int kLeastSheetWidth = 420;  // logical pixels
constexpr QSize kCellTextSize(420, 140);
constexpr const char* kBlocked = "blocked";  // by a sheet or an alert

bool isSheet(const Window& window) {
  return window.cancelButton() != nullptr;
}

QDialogButtonBox* buttonBox(const QWidget& form) {
  return form.findChild<QDialogButtonBox*>(QStringLiteral("buttonBox"));
}

// Cancel and Done as the platform orders them.
void addSheetButtons(const Window& window, QWidget& form) {
  const auto add = [box = buttonBox(form)](const Button& button, QDialogButtonBox::ButtonRole role) {
    auto* widget = new QPushButton(withoutMnemonics(button.title()));
    widget->setObjectName(QString::fromStdString(button.name()));
    box->addButton(widget, role);
    return widget;
  };
  if (window.cancelButton() != window.doneButton()) add(*window.cancelButton(), QDialogButtonBox::RejectRole);
  add(*window.doneButton(), QDialogButtonBox::AcceptRole)->setDefault(true);
}

// Every field is set in the fixed-width font, as data is.
void setDataFont(QWidget& form) {
  for (QLineEdit* edit : form.findChildren<QLineEdit*>()) edit->setFont(fixedWidthFont());
  for (QPlainTextEdit* edit : form.findChildren<QPlainTextEdit*>()) edit->setFont(fixedWidthFont());
  for (QComboBox* comboBox : form.findChildren<QComboBox*>())
    if (comboBox->isEditable()) comboBox->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

// Nothing where the sheet has no help.
const Button* helpButton(const Window& window) {
  for (const Control* control : window.controls()) {
    const auto* button = dynamic_cast<const Button*>(control);
    if (!button || button == window.doneButton() || button == window.cancelButton()) continue;
    if (button->handler() == "helpButtonPressed") return button;
  }
  return nullptr;
}

// At the left of the last row.
void addHelp(const Button& button, QWidget& form) {
  auto* help = new QToolButton;
  help->setObjectName(QString::fromStdString(button.name()));
  help->setAutoRaise(true);
  help->setAccessibleName(withoutMnemonic(QCoreApplication::translate("Menu", "&Help")));
  setIcon(help, "help");
  auto* rows = static_cast<QVBoxLayout*>(form.layout());
  QDialogButtonBox* box = buttonBox(form);
  rows->removeWidget(box);
  auto* last = new QHBoxLayout;
  last->addWidget(help);
  last->addStretch();
  last->addWidget(box);
  rows->addLayout(last);
  form.setAccessibleDescription(qString(button.toolTip()));
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

void ApplicationWindows::dressSheet(Window& window, QWidget& form) {
  form.setMinimumWidth(kLeastSheetWidth);
  addSheetButtons(window, form);
  setDataFont(form);
  for (QPlainTextEdit* edit : form.findChildren<QPlainTextEdit*>()) {
    edit->setMinimumSize(kCellTextSize);
    edit->setAccessibleName(qString(window.title()));
    edit->installEventFilter(this);
  }
  if (const Button* help = helpButton(window)) addHelp(*help, form);
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
  switch (event->type()) {
    case QEvent::PaletteChange:
    case QEvent::StyleChange:
      // Qt takes colours off again on its way through the widgets of a form.
      if (auto* form = qobject_cast<QWidget*>(watched); form && form->isWindow())
        QMetaObject::invokeMethod(
            form, [form] { colourLabels(*form); }, Qt::QueuedConnection);
      break;
    case QEvent::Show:
      if (const Window* window = windowOf(watched); window && isSheet(*window))
        beginSheetWithTheFirstField(*window, *static_cast<QWidget*>(watched));
      break;
    case QEvent::Close:
      if (Window* window = windowOf(watched)) {
        if (window->isShown() && !close(*window)) event->ignore();
        return isSheet(*window);
      }
      break;
    case QEvent::WindowBlocked:
    case QEvent::WindowUnblocked:
      watched->setProperty(kBlocked, event->type() == QEvent::WindowBlocked);
      break;
    case QEvent::KeyPress:
      if (takesKey(watched, *static_cast<QKeyEvent*>(event))) return true;
      break;
    default:
      break;
  }
  return QObject::eventFilter(watched, event);
}

bool ApplicationWindows::takesKey(const QObject* watched, const QKeyEvent& key) {
  Window* window = windowOf(watched);
  const bool isReturn = key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
  if (window && isSheet(*window)) {
    if (key.key() != Qt::Key_Escape) return false;
    close(*window);
    return true;
  }
  if (!isReturn) return false;
  if (window) {
    // Return presses the button that has the focus, as Space does; in a sheet it is Qt that cares for it.
    auto* button = qobject_cast<QAbstractButton*>(QApplication::focusWidget());
    if (button) button->click();
    return button;
  }
  // In the text of a cell Return is Done, with Shift it is a line break.
  const auto* edit = qobject_cast<const QPlainTextEdit*>(watched);
  if (!edit || key.modifiers().testFlag(Qt::ShiftModifier)) return false;
  if (Window* sheet = windowOf(edit->window())) sheet->doneButton()->press();
  return true;
}

bool ApplicationWindows::isBlocked(const QWidget& form) const {
  return form.property(kBlocked).toBool();
}

MenuActions ApplicationWindows::menuActions(Window& window) {
  MenuActions actions;
  const auto whileFree = [this, &window](auto run) {
    return [this, &window, run](const auto&... arguments) {
      if (!isBlocked(*widget(window.name()))) run(arguments...);
    };
  };
  actions.perform = whileFree([this](const std::string& command) { perform(command); });
  actions.isEnabled = [this](const std::string& command) { return application_.validateMenuItem(command); };
  actions.close = whileFree([this, &window] { widget(window.name())->close(); });
  actions.quit = quit_;
  actions.about = whileFree([this, &window] { desktop_.showAbout(*widget(window.name())); });
  actions.guide = whileFree([this] {
    const std::string page = guidePage(QCoreApplication::applicationDirPath());
    if (page.empty() || !desktop_.open(page)) desktop_.showAlert(localized(u"Could not open URL"), {});
  });
  actions.moveSelectedOperations = whileFree(
      [this](int rows) { moveSelectedRows(*find<TableView>("window", "operationsTableView"), rows); });
  actions.hasSelectedOperations = [this] {
    return !find<TableView>("window", "operationsTableView")->selectedRowIndexes().isEmpty();
  };
  actions.choosePreview = whileFree([this](int tag) {
    if (auto* popUp = dynamic_cast<PopUpButton*>(application_.interface().control("previewTypePopUpButton")))
      popUp->userSelects(tag);
  });
  actions.previewType = [this] { return static_cast<int>(application_.previewPanel().previewType()); };
  actions.renameJob = whileFree([this] { renameSelectedJob(); });
  actions.showPerformedOperations = [this](bool shown) {
    find<QWidget>("clipboardDataWindow", "clipboardDataWindowOperationsPane")->setVisible(shown);
  };
  actions.performedOperationsShown = [this] {
    return find<QWidget>("clipboardDataWindow", "clipboardDataWindowOperationsPane")->isVisible();
  };
  UndoManager& undo = application_.clipboard().data().undoManager();
  actions.undoName = [&undo] { return qString(undo.undoActionName()); };
  actions.redoName = [&undo] { return qString(undo.redoActionName()); };
  actions.undo = whileFree([&undo] { undo.undo(); });
  actions.redo = whileFree([&undo] { undo.redo(); });
  actions.restoreTitle = [this] {
    auto* button =
        dynamic_cast<Button*>(application_.interface().control("previousJobsWindowRestoreOperationsButton"));
    return button ? withoutMnemonics(button->title()) : QString();
  };
  return actions;
}

}  // namespace quillet::ui
