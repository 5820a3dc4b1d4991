#include "ui/qt_desktop.h"

#include <QApplication>
#include <QClipboard>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDesktopServices>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QMimeData>
#include <QPushButton>
#include <QTimer>
#include <QUrl>
#include <QVBoxLayout>
#include <limits>

#include "platform/localization.h"
#include "shell/controls.h"
#include "ui/text_conversion.h"
#include "ui/theme.h"

namespace quillet::ui {

namespace {

constexpr int kFileManagerPatience = 2'000;  // milliseconds
constexpr int kPromptFieldWidth = 200;
constexpr int kAlertIconSize = 48;
constexpr int kLeastAlertWidth = 320;  // logical pixels

// By a space in its layout: a box whose label has a least width takes that for all that the text needs.
void widen(QMessageBox& box) {
  auto* grid = qobject_cast<QGridLayout*>(box.layout());
  if (grid) grid->addItem(new QSpacerItem(kLeastAlertWidth, 0), grid->rowCount(), 0, 1, grid->columnCount());
}

constexpr const char* kEnded = "ended";

// Before anything else hears of its end, which may bring the next one.
void rememberEnd(QDialog& dialog) {
  dialog.setProperty(kEnded, false);
  QObject::connect(&dialog, &QDialog::finished, &dialog, [&dialog] { dialog.setProperty(kEnded, true); });
}

// Opens what stands before a window. Of one window they come one after the other: the next one opens when the
// one before it has ended.
void openInTurn(QDialog* dialog) {
  QDialog* before = nullptr;
  if (QWidget* window = dialog->parentWidget())
    for (auto* other : window->findChildren<QDialog*>(QString(), Qt::FindDirectChildrenOnly))
      if (const QVariant ended = other->property(kEnded);
          other != dialog && ended.isValid() && !ended.toBool())
        before = other;
  if (before)
    QObject::connect(before, &QDialog::finished, dialog, &QDialog::open);
  else
    dialog->open();
}

QMessageBox* newAlert(std::u16string_view title, std::u16string_view message, QWidget* parent) {
  auto* box = new QMessageBox(parent);
  rememberEnd(*box);
  box->setAttribute(Qt::WA_DeleteOnClose);
  box->setIconPixmap(QIcon(QStringLiteral(":/icons/org.quillet.Quillet.svg")).pixmap(kAlertIconSize));
  box->setText(qString(title));
  box->setInformativeText(qString(message));
  // Names of files and what is in them are shown as they are; the box itself cares for its first text alone.
  for (QLabel* label : box->findChildren<QLabel*>()) label->setTextFormat(Qt::PlainText);
  box->setWindowModality(parent ? Qt::WindowModal : Qt::ApplicationModal);
  if (parent) box->setWindowFlag(Qt::Sheet);
  widen(*box);
  return box;
}

std::vector<std::string> pathsOf(const QStringList& paths) {
  std::vector<std::string> result;
  for (const QString& path : paths) result.push_back(QFile::encodeName(path).toStdString());
  return result;
}

QFileDialog* newPanel(std::u16string_view title, std::u16string_view prompt, QWidget* parent) {
  auto* panel = new QFileDialog(parent, qString(title));
  rememberEnd(*panel);
  panel->setAttribute(Qt::WA_DeleteOnClose);
  panel->setWindowModality(Qt::WindowModal);
  panel->setLabelText(QFileDialog::Accept, qString(prompt));
  return panel;
}

// What stands before the window and has its keys: a sheet or an alert of it, or of the whole application.
QWidget* modalBefore(QWidget& window) {
  for (auto* dialog : window.findChildren<QDialog*>(QString(), Qt::FindDirectChildrenOnly))
    if (dialog->isVisible() && dialog->isModal()) return dialog;
  QWidget* modal = QApplication::activeModalWidget();
  return modal && modal->windowModality() == Qt::ApplicationModal ? modal : nullptr;
}

void bringToFront(QWidget& window) {
  window.raise();
  QWidget* front = &window;
  if (QWidget* modal = modalBefore(window)) {
    modal->raise();
    front = modal;
  }
  front->activateWindow();
}

QUrl folderOf(const std::string& path) {
  return QUrl::fromLocalFile(QFileInfo(QFile::decodeName(path.c_str())).absolutePath());
}

}  // namespace

void QtDesktop::addWindow(Window& window, QWidget& widget) {
  widgets_[&window] = &widget;
  window.setObserver([&window, &widget] { widget.setWindowTitle(qString(window.title())); });
  widget.setWindowTitle(qString(window.title()));
}

QWidget* QtDesktop::widgetOf(const Window& window) const {
  const auto found = widgets_.find(&window);
  return found == widgets_.end() ? nullptr : found->second;
}

QWidget* QtDesktop::widgetOf(WindowName name) const {
  for (const auto& [window, widget] : widgets_)
    if (window->name() == nameOf(name)) return widget;
  return nullptr;
}

void QtDesktop::showAbout(QWidget& window) {
  QMessageBox* box = newAlert(u16String(QStringLiteral("Quillet ") + QCoreApplication::applicationVersion()),
                              u16String(QObject::tr("Quillet prepares delimited text data.")), &window);
  box->setWindowTitle(QObject::tr("About Quillet"));
  openInTurn(box);
}

void QtDesktop::showAlert(std::u16string_view title, std::u16string_view message) {
  newAlert(title, message, nullptr)->show();  // open() would make it modal to a window
}

void QtDesktop::showAlertInWindow(std::u16string_view title, std::u16string_view message, WindowName window) {
  openInTurn(newAlert(title, message, widgetOf(window)));
}

void QtDesktop::askInWindow(std::u16string_view title, std::u16string_view message,
                            const std::vector<std::u16string>& buttons, WindowName window,
                            std::function<void(std::size_t)> answered) {
  QMessageBox* box = newAlert(title, message, widgetOf(window));
  std::vector<QAbstractButton*> added;
  added.reserve(buttons.size());
  for (const std::u16string& button : buttons)
    added.push_back(box->addButton(withoutMnemonics(button),
                                   added.empty() ? QMessageBox::AcceptRole : QMessageBox::RejectRole));
  box->setEscapeButton(added.back());
  QObject::connect(box, &QMessageBox::finished, box, [box, added, answered = std::move(answered)] {
    const auto pressed = std::find(added.begin(), added.end(), box->clickedButton());
    answered(pressed == added.end() ? added.size() - 1 : static_cast<std::size_t>(pressed - added.begin()));
  });
  openInTurn(box);
}

void QtDesktop::askForText(std::u16string_view prompt, std::u16string_view info, std::u16string_view text,
                           WindowName window, std::function<void(const std::u16string&)> confirmed) {
  auto* dialog = new QDialog(widgetOf(window), Qt::Sheet);
  rememberEnd(*dialog);
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->setWindowModality(Qt::WindowModal);
  if (!info.empty()) dialog->setWindowTitle(qString(prompt));  // else it is the label
  auto* field = new QLineEdit;
  field->setFont(fixedWidthFont());
  field->setMaxLength(std::numeric_limits<int>::max());
  field->setText(qString(text));
  field->setMinimumWidth(kPromptFieldWidth);
  auto* label = new QLabel(qString(info.empty() ? prompt : info));
  label->setTextFormat(Qt::PlainText);
  label->setBuddy(field);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
  QObject::connect(buttons, &QDialogButtonBox::accepted, dialog, &QDialog::accept);
  QObject::connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::reject);
  QObject::connect(dialog, &QDialog::accepted, dialog,
                   [field, confirmed = std::move(confirmed)] { confirmed(u16String(field->text())); });
  auto* layout = new QVBoxLayout(dialog);
  layout->setContentsMargins(16, 16, 16, 16);
  layout->addWidget(label);
  layout->addWidget(field);
  layout->addWidget(buttons);
  field->selectAll();
  openInTurn(dialog);
}

void QtDesktop::chooseFiles(std::u16string_view title, std::u16string_view prompt,
                            const std::vector<std::string>& extensions,
                            std::function<void(const std::vector<std::string>&)> confirmed) {
  QFileDialog* panel = newPanel(title, prompt, widgetOf(WindowName::Main));
  panel->setFileMode(QFileDialog::ExistingFiles);
  QStringList patterns;
  for (const std::string& extension : extensions)
    patterns << QStringLiteral("*.") + QString::fromStdString(extension);
  if (!patterns.isEmpty())
    panel->setNameFilters({qString(localized(u"Text files")) + QStringLiteral(" (") +
                           patterns.join(QLatin1Char(' ')) + QLatin1Char(')')});
  QObject::connect(
      panel, &QFileDialog::filesSelected, panel,
      [confirmed = std::move(confirmed)](const QStringList& paths) { confirmed(pathsOf(paths)); });
  openInTurn(panel);
}

void QtDesktop::chooseFolder(std::u16string_view title, std::u16string_view prompt,
                             std::function<void(const std::vector<std::string>&)> confirmed) {
  QFileDialog* panel = newPanel(title, prompt, widgetOf(WindowName::Main));
  panel->setFileMode(QFileDialog::Directory);
  panel->setOption(QFileDialog::ShowDirsOnly);
  QObject::connect(
      panel, &QFileDialog::filesSelected, panel,
      [confirmed = std::move(confirmed)](const QStringList& paths) { confirmed(pathsOf(paths)); });
  openInTurn(panel);
}

// The file manager is asked without waiting for it; where there is none the folder is opened instead.
bool QtDesktop::reveal(const std::vector<std::string>& paths) {
  if (paths.empty()) return false;
  QStringList addresses;
  for (const std::string& path : paths)
    addresses << QUrl::fromLocalFile(QFile::decodeName(path.c_str())).toString(QUrl::FullyEncoded);
  QDBusMessage message = QDBusMessage::createMethodCall(
      QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("/org/freedesktop/FileManager1"),
      QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("ShowItems"));
  message << addresses << QString();
  const QDBusConnection bus = QDBusConnection::sessionBus();
  if (!bus.isConnected()) return QDesktopServices::openUrl(folderOf(paths.front()));
  auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(message, kFileManagerPatience), qApp);
  QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher,
                   [watcher, folder = folderOf(paths.front())] {
                     if (watcher->isError()) QDesktopServices::openUrl(folder);
                     watcher->deleteLater();
                   });
  return true;
}

bool QtDesktop::open(const std::string& pathOrAddress) {
  const bool isPath = !pathOrAddress.empty() && pathOrAddress.front() == '/';
  return QDesktopServices::openUrl(isPath ? QUrl::fromLocalFile(QFile::decodeName(pathOrAddress.c_str()))
                                          : QUrl(QString::fromStdString(pathOrAddress)));
}

void QtDesktop::requestTermination() {
  QTimer::singleShot(0, qApp, [this] { terminate_(); });
}

void QtDesktop::makeKeyAndOrderFront(Window& window) {
  window.show();
  QWidget* widget = widgetOf(window);
  if (!widget) return;
  if (widget->isMinimized())
    widget->showNormal();
  else
    widget->show();
  bringToFront(*widget);
  keyWidget_ = widget;
}

void QtDesktop::orderBack(Window& window) {
  window.show();
  QWidget* widget = widgetOf(window);
  if (!widget) return;
  widget->setAttribute(Qt::WA_ShowWithoutActivating);
  widget->show();
  widget->lower();
  widget->setAttribute(Qt::WA_ShowWithoutActivating, false);
  // Not every desktop lets a window come up behind the others and without the keys.
  if (keyWidget_ && keyWidget_ != widget && keyWidget_->isVisible()) bringToFront(*keyWidget_);
}

void QtDesktop::beginSheet(Window& sheet, WindowName parent) {
  sheet.show(parent);
  auto* dialog = qobject_cast<QDialog*>(widgetOf(sheet));
  if (!dialog) return;
  if (QWidget* window = widgetOf(parent)) {
    if (dialog->parentWidget() != window) dialog->setParent(window, Qt::Sheet | Qt::Dialog);
    window->show();
    window->raise();
  }
  dialog->setWindowModality(Qt::WindowModal);
  dialog->open();
}

void QtDesktop::endSheet(Window& sheet) {
  sheet.hide();
  QWidget* widget = widgetOf(sheet);
  if (!widget) return;
  // Not every desktop gives the keys back to the window by itself. An alert may stand before it by now.
  const bool hasKeys = widget->isActiveWindow();
  widget->hide();
  QWidget* next = QApplication::activeModalWidget();
  if (!next && hasKeys) next = widget->parentWidget();
  if (next) next->window()->activateWindow();
}

const Window* QtDesktop::keyWindow() const {
  const QWidget* active = QApplication::activeWindow();
  for (const auto& [window, widget] : widgets_)
    if (widget == active) return window;
  return nullptr;
}

void QtDesktop::focus(Control& control) {
  QWidget* widget = widgetOf(control.window());
  auto* field = widget ? widget->findChild<QWidget*>(QString::fromStdString(control.name())) : nullptr;
  if (!field) return;
  field->setFocus();
  if (auto* line = qobject_cast<QLineEdit*>(field)) line->selectAll();
}

std::optional<std::u16string> QtDesktop::readString() {
  const QMimeData* data = QApplication::clipboard()->mimeData();
  if (!data || !data->hasText()) return std::nullopt;
  return u16String(data->text());
}

bool QtDesktop::writeString(std::u16string_view text) {
  QApplication::clipboard()->setText(qString(text));
  return QApplication::clipboard()->ownsClipboard();
}

}  // namespace quillet::ui
