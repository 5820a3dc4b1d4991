// All windows of the application as widgets: made from their forms, joined to the controls, with menus, tool
// bar, drops and keys. Nothing of what they do is decided here.
#pragma once

#include <QMainWindow>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "shell/app_delegate.h"
#include "ui/menus.h"
#include "ui/qt_desktop.h"

class TableView;

namespace quillet::ui {

// Main thread only. Both references outlive it.
class ApplicationWindows final : public QObject {
 public:
  ApplicationWindows(AppDelegate& application, QtDesktop& desktop, std::function<void()> quit);
  ~ApplicationWindows() override;

  QWidget* widget(std::string_view window) const;  // null when there is none
  // Whether a sheet of the application, which is no alert, stands before the window.
  bool hasSheet(std::string_view window) const;
  const std::vector<QString>& controlsWithoutWidget() const { return controlsWithoutWidget_; }

 protected:
  // Closing asks the application; Escape and closing a sheet is its Cancel.
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  template <typename Widget>
  Widget* find(std::string_view window, const char* name) const {
    return widget(window)->findChild<Widget*>(QLatin1String(name));
  }

  void addWindow(Window& window);
  void dressSheet(Window& window, QWidget& form);
  void addToolBar(Window& window, QMainWindow& form);
  void dressMainWindow();
  void showNoteForSeveralFiles();
  void frameMissingCells(const char* table, PreviewStores::Side side);
  void dressClipboardWindow();
  void tickWhereASeparatorIsGiven(const char* comboBox, const char* checkBox);
  void dressJobsWindow();
  void showFilesOfSelectedJob(TableView& jobs);
  void renameSelectedJob();
  void dressPreferences();
  MenuActions menuActions(Window& window);
  void addDrops();
  void perform(const std::string& command);
  void updateMenusSoon();
  void addKeys();
  void addPaneKeys(std::string_view window, const QStringList& panes);
  void addContextMenus();
  void moveSelectedRows(TableView& view, int rows);
  bool close(Window& window);
  // Whether a sheet or an alert stands before it. A widget of the window may still have keys then.
  bool isBlocked(const QWidget& form) const;
  bool takesKey(const QObject* watched, const QKeyEvent& key);
  Window* windowOf(const QObject* widget) const;

  AppDelegate& application_;
  QtDesktop& desktop_;
  std::function<void()> quit_;
  std::map<std::string, std::unique_ptr<QWidget>, std::less<>> widgets_;
  std::vector<QString> controlsWithoutWidget_;
  bool menusAreStale_ = false;
};

}  // namespace quillet::ui
