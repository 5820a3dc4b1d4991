// One running Quillet: the application object over a real desktop, its windows, and its beginning and end.
#pragma once

#include <QObject>
#include <memory>
#include <string>
#include <vector>

#include "ui/application_windows.h"
#include "ui/qt_desktop.h"

namespace quillet::ui {

// Main thread only; after the QApplication, which outlives it.
class QuilletApplication final : public QObject {
 public:
  explicit QuilletApplication(std::shared_ptr<const Folders> folders);
  ~QuilletApplication() override;

  // The paths go to the application before its windows come up.
  void launch(const std::vector<std::string>& paths);
  void filesFromLaterStart(const std::vector<std::string>& paths) {
    application_->filesFromLaterStart(paths);
  }
  // Stores the session and leaves the event loop. A run is not awaited.
  void terminate();

  AppDelegate& application() { return *application_; }
  ApplicationWindows& windows() { return *windows_; }

 private:
  QtDesktop desktop_;
  std::shared_ptr<MainThread> mainThread_;
  std::unique_ptr<AppDelegate> application_;
  std::unique_ptr<ApplicationWindows> windows_;
  bool terminated_ = false;
};

}  // namespace quillet::ui
