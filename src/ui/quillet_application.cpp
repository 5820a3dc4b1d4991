#include "ui/quillet_application.h"

#include <QApplication>
#include <QMetaObject>

// Resources of a static library are not found by themselves.
static void initResources() {
  Q_INIT_RESOURCE(icons);
}

namespace quillet::ui {

QuilletApplication::QuilletApplication(std::shared_ptr<const Folders> folders)
    : desktop_([this] { terminate(); }), mainThread_(std::make_shared<MainThread>([this] {
        QMetaObject::invokeMethod(
            this, [this] { mainThread_->runPending(); }, Qt::QueuedConnection);
      })) {
  initResources();
  auto defaults = std::make_shared<UserDefaults>(folders->defaultsFile());
  application_ =
      std::make_unique<AppDelegate>(desktop_.desktop(), std::move(folders), std::move(defaults), mainThread_);
  windows_ = std::make_unique<ApplicationWindows>(*application_, desktop_, [this] { terminate(); });
}

QuilletApplication::~QuilletApplication() {
  mainThread_->close();
  windows_.reset();
  application_.reset();
}

void QuilletApplication::launch(const std::vector<std::string>& paths) {
  if (!paths.empty()) application_->openFiles(paths);
  application_->applicationDidFinishLaunching();
}

void QuilletApplication::terminate() {
  if (terminated_) return;
  terminated_ = true;
  application_->applicationWillTerminate();
  QCoreApplication::quit();
}

}  // namespace quillet::ui
