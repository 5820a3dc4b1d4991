// One running Quillet: the application object over a real desktop, its windows, and its beginning and end.
#pragma once

#include <QObject>
#include <memory>
#include <string>
#include <vector>

#include "ui/application_windows.h"
#include "ui/qt_desktop.h"
#include "ui/single_instance.h"
#include "ui/window_places.h"

namespace quillet::ui {

// Main thread only; after the QApplication, which outlives it.
class QuilletApplication final : public QObject {
 public:
  // The places of the windows are kept beside the user defaults.
  explicit QuilletApplication(std::shared_ptr<const Folders> folders);
  ~QuilletApplication() override;

  // The paths go to the application before its windows come up.
  void launch(const std::vector<std::string>& paths);
  // What a later start hands over. The main window comes forward, also without files; behind a sheet of it
  // they wait for the sheet's end.
  void receive(const StartRequest& request);
  // Stores the session and leaves the event loop. A run is not awaited.
  void terminate();
  bool isRunGoingOn();

  AppDelegate& application() { return *application_; }
  ApplicationWindows& windows() { return *windows_; }

 protected:
  // What the desktop asks of the whole application: to quit, to open a file.
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void followSession();
  void takeWaitingFiles();
  void storeSession();
  template <typename Action>
  void forEachMainWindow(Action action);

  QtDesktop desktop_;
  std::shared_ptr<MainThread> mainThread_;
  WindowPlaces places_;
  std::unique_ptr<AppDelegate> application_;
  std::unique_ptr<ApplicationWindows> windows_;
  std::vector<std::string> waitingFiles_;
  bool terminated_ = false;
};

}  // namespace quillet::ui
