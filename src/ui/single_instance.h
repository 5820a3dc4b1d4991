// One Quillet a user. The first start holds a lock and listens on a local socket beside it, both for this
// user alone; a later start hands over what it was given and ends.
#pragma once

#include <QByteArray>
#include <QDeadlineTimer>
#include <QLocalServer>
#include <QString>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quillet::ui {

// What a start was given.
struct StartRequest {
  std::vector<std::string> paths;  // absolute, bytes as the system has them
  std::string activationToken;     // by which the desktop lets a window come forward; "" without one
};

// As it goes through the socket: {"files":[...],"token":"..."}. A path that is not UTF-8 goes as a file URL.
QByteArray messageOfRequest(const StartRequest& request);
// Nothing while the message is not whole, or is none. Files that are neither absolute paths nor file URLs are
// passed over.
std::optional<StartRequest> requestOfMessage(const QByteArray& message);

// The folder of the user's sockets, XDG_RUNTIME_DIR or what stands in for it; "" if no safe one can be had.
QString runtimeFolder();

// Main thread only. The lock goes with the object, and with the process however it ends.
class SingleInstance {
 public:
  enum class Role { First, HandedOver, Unanswered };

  // In a folder that cannot be written every start is a first one.
  explicit SingleInstance(const QString& folder);
  ~SingleInstance();
  SingleInstance(const SingleInstance&) = delete;
  SingleInstance& operator=(const SingleInstance&) = delete;

  // Takes the lock, or hands the request over to who has it. Gives up after patience milliseconds, needs no
  // event loop.
  Role start(const StartRequest& request, int patience = kPatience);
  // After First: while the server lives, received is called from the event loop with what later starts bring.
  // They have their answer before. Null, with a line in the system log, if there can be no socket.
  std::unique_ptr<QLocalServer> listen(std::function<void(const StartRequest&)> received) const;

  QString socketPath() const;

 private:
  static constexpr int kPatience = 2'000;  // milliseconds

  bool takeLock();
  bool handOver(const QByteArray& message, const QDeadlineTimer& deadline) const;

  QString folder_;
  int lock_ = -1;
};

}  // namespace quillet::ui
