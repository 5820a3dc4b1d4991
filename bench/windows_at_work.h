// A whole Quillet with its windows in a home of its own, on the offscreen platform, for measurements.
#pragma once

#include <QApplication>
#include <QClipboard>
#include <QEventLoop>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "ui/quillet_application.h"
#include "ui/temporary_folders.h"
#include "ui/theme.h"

namespace quillet::bench {

class TemporaryHome {
 public:
  TemporaryHome() {
    std::string name = std::filesystem::temp_directory_path() / "quillet-bench-XXXXXX";
    path_ = ::mkdtemp(name.data()) ? name : "";
  }
  ~TemporaryHome() {
    std::error_code ignored;
    if (!path_.empty()) std::filesystem::remove_all(path_, ignored);
  }
  TemporaryHome(const TemporaryHome&) = delete;
  TemporaryHome& operator=(const TemporaryHome&) = delete;

  std::string path(const std::string& name) const { return path_ + "/" + name; }
  const std::string& path() const { return path_; }

 private:
  std::string path_;
};

class WindowsAtWork {
 public:
  WindowsAtWork() : quillet_(std::make_shared<ui::TemporaryFolders>(home_.path())) { quillet_.launch({}); }

  AppDelegate& application() { return quillet_.application(); }
  ui::QuilletApplication& quillet() { return quillet_; }
  const TemporaryHome& home() const { return home_; }
  void perform(const char* command) { application().interface().commands().perform(command); }
  template <typename Widget>
  Widget* find(const char* window, const char* name) {
    return quillet_.windows().widget(window)->findChild<Widget*>(QLatin1String(name));
  }

 private:
  TemporaryHome home_;
  ui::QuilletApplication quillet_;
};

// Until nothing waits any more: delayed layouts and the painting are part of what was done.
inline void settle() {
  for (int i = 0; i < 3; ++i) {
    QApplication::sendPostedEvents();
    QApplication::processEvents();
  }
}

template <typename Action>
double milliseconds(Action action) {
  const auto start = std::chrono::steady_clock::now();
  action();
  settle();
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

// Of the process, in megabytes.
inline double residentMegabytes() {
  std::ifstream file("/proc/self/statm");
  double size = 0;
  double resident = 0;
  file >> size >> resident;
  return resident * 4096 / 1e6;
}

// On a screen that nobody sees, unless the platform is chosen.
template <typename Measure>
void withWindows(int argc, char** argv, Measure measure) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  ui::applyTheme(application, ui::Scheme::Light);
  measure();
}

}  // namespace quillet::bench
