// Brings the signals that ask a program to end (SIGTERM, SIGINT, SIGHUP) into the event loop.
#pragma once

#include <QSocketNotifier>
#include <functional>
#include <memory>

namespace quillet::ui {

// Main thread only, at most one at a time. The first of a kind calls terminate from the event loop, a second
// one ends the process at once, as the system would. A signal that was ignored when the process began (nohup)
// stays so. The destructor gives the signals back.
class TerminationSignals {
 public:
  explicit TerminationSignals(std::function<void()> terminate);
  ~TerminationSignals();
  TerminationSignals(const TerminationSignals&) = delete;
  TerminationSignals& operator=(const TerminationSignals&) = delete;

 private:
  int pipe_[2] = {-1, -1};  // from the handler, which may do next to nothing, to the event loop
  std::unique_ptr<QSocketNotifier> notifier_;
  std::function<void()> terminate_;
};

}  // namespace quillet::ui
