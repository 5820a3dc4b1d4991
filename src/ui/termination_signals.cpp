#include "ui/termination_signals.h"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

namespace quillet::ui {

namespace {

constexpr int kSignals[] = {SIGTERM, SIGINT, SIGHUP};

volatile std::sig_atomic_t endToWrite = -1;

void tellEventLoop(int) {
  const int error = errno;
  const char byte = 0;
  [[maybe_unused]] const ssize_t written = ::write(endToWrite, &byte, 1);
  errno = error;
}

bool isIgnored(int signal) {
  struct sigaction action {};
  return sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

void handle(int signal) {
  struct sigaction action {};
  action.sa_handler = tellEventLoop;
  action.sa_flags = SA_RESTART | static_cast<int>(SA_RESETHAND);
  sigemptyset(&action.sa_mask);
  sigaction(signal, &action, nullptr);
}

}  // namespace

TerminationSignals::TerminationSignals(std::function<void()> terminate) : terminate_(std::move(terminate)) {
  if (::pipe2(pipe_, O_CLOEXEC | O_NONBLOCK) != 0) return;
  endToWrite = pipe_[1];
  notifier_ = std::make_unique<QSocketNotifier>(pipe_[0], QSocketNotifier::Read);
  QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(), [this] {
    char byte = 0;
    while (::read(pipe_[0], &byte, 1) > 0) {
    }
    terminate_();
  });
  for (const int signal : kSignals)
    if (!isIgnored(signal)) handle(signal);
}

TerminationSignals::~TerminationSignals() {
  for (const int signal : kSignals)
    if (!isIgnored(signal)) std::signal(signal, SIG_DFL);
  endToWrite = -1;
  for (const int end : pipe_)
    if (end >= 0) ::close(end);
}

}  // namespace quillet::ui
