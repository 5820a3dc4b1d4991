// quillet [PATH...]
#include <QApplication>
#include <QFile>
#include <QIcon>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "ui/catalogue_translator.h"
#include "ui/desktop_look.h"
#include "ui/guide_pictures.h"
#include "ui/quillet_application.h"
#include "ui/screenshots.h"
#include "ui/single_instance.h"
#include "ui/termination_signals.h"

namespace {

using quillet::ui::SingleInstance;
using quillet::ui::StartRequest;

const char* const kUsage =
    "usage: quillet [PATH...]\n"
    "\n"
    "Opens Quillet with the text files of these paths. When it is running already they go to the end of its\n"
    "list, and its window comes forward.\n"
    "\n"
    "  --help      prints this\n"
    "  --version   prints the version\n";

// Every argument is a path, also one that begins with a dash: alone one of these two is told first.
bool answerQuestion(const std::vector<std::string>& arguments) {
  if (arguments.size() != 1) return false;
  if (arguments[0] == "--help") return std::fputs(kUsage, stdout) >= 0;
  if (arguments[0] == "--version") return std::puts("quillet " QUILLET_VERSION) >= 0;
  return false;
}

// As bytes, which need not be UTF-8.
StartRequest requestOf(const std::vector<std::string>& arguments) {
  StartRequest request;
  std::error_code error;
  for (const std::string& argument : arguments)
    if (!argument.empty())
      request.paths.push_back(std::filesystem::absolute(argument, error).lexically_normal().string());
  if (const char* token = std::getenv("XDG_ACTIVATION_TOKEN")) request.activationToken = token;
  return request;
}

// Without an application object of the windows: it needs no display.
SingleInstance::Role handOver(SingleInstance& instance, const StartRequest& request, int argc, char** argv) {
  const QCoreApplication qt(argc, argv);
  return instance.start(request);
}

void prepare() {
  QApplication::setApplicationName(QStringLiteral("quillet"));
  QApplication::setApplicationDisplayName(QStringLiteral("Quillet"));
  QApplication::setApplicationVersion(QStringLiteral(QUILLET_VERSION));
  QApplication::setDesktopFileName(QStringLiteral("org.quillet.Quillet"));
  QApplication::setQuitOnLastWindowClosed(false);
  // A write that fails is told to the one who writes.
  std::signal(SIGXFSZ, SIG_IGN);
  std::signal(SIGPIPE, SIG_IGN);
}

int run(QApplication& qt, const SingleInstance& instance, const StartRequest& request) {
  const quillet::ui::LookFollower look(qt, quillet::ui::lookOfDesktop());
  quillet::ui::QuilletApplication quillet(std::make_shared<quillet::UserFolders>());
  QApplication::setWindowIcon(QIcon(QStringLiteral(":/icons/org.quillet.Quillet.svg")));
  const quillet::ui::TerminationSignals termination([&quillet] { quillet.terminate(); });
  const auto server = instance.listen([&quillet](const StartRequest& later) { quillet.receive(later); });
  quillet.launch(request.paths);
  const int status = QApplication::exec();
  // The end does not wait for a run, and destroys nothing that it uses.
  if (quillet.isRunGoingOn()) {
    quillet::PrivateTemporaryFolder::removeAll();
    std::_Exit(status);
  }
  return status;
}

// --screenshots SAMPLES FOLDER: every window and sheet, in both palettes. --screenshots --guide SAMPLES
// FOLDER: the pictures of the guide. Not told to users.
bool takePictures(QApplication& application, std::vector<std::string> arguments) {
  const bool ofGuide = arguments.front() == "--guide";
  if (ofGuide) arguments.erase(arguments.begin());
  if (arguments.size() != 2) return false;
  const QString samples = QFile::decodeName(arguments[0].c_str());
  const QString folder = QFile::decodeName(arguments[1].c_str());
  return ofGuide ? quillet::ui::writeGuidePictures(application, samples, folder)
                 : quillet::ui::writeScreenshots(application, samples, folder);
}

}  // namespace

int main(int argc, char** argv) {
  const std::vector<std::string> arguments(argv + 1, argv + argc);
  if (answerQuestion(arguments)) return EXIT_SUCCESS;
  prepare();
  int noArguments = 1;  // none of them is for Qt
  if (arguments.size() >= 3 && arguments[0] == "--screenshots") {
    QApplication qt(noArguments, argv);
    quillet::ui::installTranslations(qt);
    return takePictures(qt, {arguments.begin() + 1, arguments.end()}) ? EXIT_SUCCESS : EXIT_FAILURE;
  }
  const StartRequest request = requestOf(arguments);
  SingleInstance instance(quillet::ui::runtimeFolder());
  switch (handOver(instance, request, noArguments, argv)) {
    case SingleInstance::Role::HandedOver:
      return EXIT_SUCCESS;
    case SingleInstance::Role::Unanswered:
      std::fputs("quillet: it is running and does not answer\n", stderr);
      return EXIT_FAILURE;
    case SingleInstance::Role::First:
      break;
  }
  QApplication qt(noArguments, argv);
  quillet::ui::installTranslations(qt);
  return run(qt, instance, request);
}
