// Runs the event loop until something holds.
#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <functional>

namespace quillet::testing {

inline bool runEventLoopUntil(const std::function<bool()>& holds, int patience = 10'000) {
  const QDeadlineTimer deadline(patience);
  while (!holds() && !deadline.hasExpired())
    QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 20);
  return holds();
}

}  // namespace quillet::testing
