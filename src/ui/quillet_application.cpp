#include "ui/quillet_application.h"

#include <QApplication>
#include <QFile>
#include <QFileInfo>
#include <QFileOpenEvent>
#include <QMetaObject>
#include <QSessionManager>
#include <utility>

#include "platform/system_log.h"

// Resources of a static library are not found by themselves.
static void initResources() {
  Q_INIT_RESOURCE(icons);
}

namespace quillet::ui {

namespace {

constexpr const char* kActivationToken = "XDG_ACTIVATION_TOKEN";

// "" for a user without a folder for it; nothing is stored then.
QString placesFile(const Folders& folders) {
  if (folders.defaultsFile().empty()) return {};
  return QFileInfo(QFile::decodeName(folders.defaultsFile().c_str())).absolutePath() +
         QStringLiteral("/windows.ini");
}

}  // namespace

QuilletApplication::QuilletApplication(std::shared_ptr<const Folders> folders)
    : desktop_([this] { terminate(); }),
      mainThread_(std::make_shared<MainThread>([this] {
        QMetaObject::invokeMethod(
            this, [this] { mainThread_->runPending(); }, Qt::QueuedConnection);
      })),
      places_(placesFile(*folders)) {
  initResources();
  auto defaults = std::make_shared<UserDefaults>(folders->defaultsFile());
  application_ =
      std::make_unique<AppDelegate>(desktop_.desktop(), std::move(folders), std::move(defaults), mainThread_);
  windows_ = std::make_unique<ApplicationWindows>(*application_, desktop_, [this] { terminate(); });
  forEachMainWindow([this](const QString& name, QWidget& window) { places_.restore(name, window); });
  followSession();
}

QuilletApplication::~QuilletApplication() {
  mainThread_->close();
  windows_.reset();
  application_.reset();
}

template <typename Action>
void QuilletApplication::forEachMainWindow(Action action) {
  const MainWindows& windows = application_->windows();
  for (const Window* window :
       {&windows.main, &windows.clipboardData, &windows.previousJobs, &windows.preferences})
    if (QWidget* widget = windows_->widget(window->name()))
      action(QString::fromStdString(window->name()), *widget);
}

// The desktop asks for the data before its session ends, and then to quit, unless the user thinks better of
// it.
void QuilletApplication::followSession() {
  qApp->installEventFilter(this);
  connect(qApp, &QGuiApplication::commitDataRequest, this, [this] { storeSession(); });
  connect(qApp, &QGuiApplication::saveStateRequest, this, [this](QSessionManager& session) {
    storeSession();
    // The session is ours to bring back: the next start needs no argument, and arguments are paths only.
    session.setRestartCommand({QCoreApplication::applicationFilePath()});
  });
}

bool QuilletApplication::eventFilter(QObject* watched, QEvent* event) {
  // The sheet that ends is not done yet with what is selected.
  if (event->type() == QEvent::Hide && !waitingFiles_.empty())
    QMetaObject::invokeMethod(
        this, [this] { takeWaitingFiles(); }, Qt::QueuedConnection);
  if (watched != qApp) return QObject::eventFilter(watched, event);
  if (event->type() == QEvent::Quit) {
    // Not by closing all windows first: the session tells which were open.
    terminate();
    return true;
  }
  if (event->type() == QEvent::FileOpen) {
    const QString file = static_cast<QFileOpenEvent*>(event)->file();
    if (!file.isEmpty()) receive({{QFile::encodeName(file).toStdString()}, {}});
    return true;
  }
  return QObject::eventFilter(watched, event);
}

void QuilletApplication::launch(const std::vector<std::string>& paths) {
  if (!paths.empty()) application_->openFiles(paths);
  application_->applicationDidFinishLaunching();
}

// Qt's platforms look for the token where the desktop leaves it for a new process. New files are selected,
// and a sheet works on those that are: it would change others than it was opened for.
void QuilletApplication::receive(const StartRequest& request) {
  if (!request.activationToken.empty())
    qputenv(kActivationToken, QByteArray::fromStdString(request.activationToken));
  const bool waits = windows_->hasSheet(application_->windows().main.name());
  if (waits) waitingFiles_.insert(waitingFiles_.end(), request.paths.begin(), request.paths.end());
  application_->filesFromLaterStart(waits ? std::vector<std::string>() : request.paths);
  qunsetenv(kActivationToken);
}

void QuilletApplication::takeWaitingFiles() {
  if (waitingFiles_.empty() || windows_->hasSheet(application_->windows().main.name())) return;
  application_->filesFromLaterStart(std::exchange(waitingFiles_, {}));
}

void QuilletApplication::storeSession() {
  application_->applicationWillTerminate();
  forEachMainWindow([this](const QString& name, QWidget& window) { places_.store(name, window); });
  if (!places_.sync()) logToSystem(u"The places of the windows could not be stored.");
}

void QuilletApplication::terminate() {
  if (terminated_) return;
  terminated_ = true;
  if (!waitingFiles_.empty()) application_->fileCommands().dropAtEnd(std::exchange(waitingFiles_, {}));
  storeSession();
  QCoreApplication::exit(0);
}

bool QuilletApplication::isRunGoingOn() {
  return *application_->jobController().runsGoingOn() > 0;
}

}  // namespace quillet::ui
