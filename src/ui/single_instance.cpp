#include "ui/single_instance.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocalSocket>
#include <QStandardPaths>
#include <QThread>
#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>
#include <utility>

#include "platform/folders.h"
#include "platform/system_log.h"
#include "ui/text_conversion.h"

namespace quillet::ui {

namespace {

constexpr qint64 kLongestMessageInBytes = 64 << 20;
constexpr int kPause = 20;  // milliseconds between two attempts
const char* const kAnswer = "{\"taken\":true}\n";

QJsonValue jsonOfPath(const std::string& path) {
  const QString text = QString::fromStdString(path);
  return text.toStdString() == path ? text : QString::fromStdString(fileUrlFromPath(path));
}

std::optional<std::string> pathOfJson(const QJsonValue& value) {
  const std::string text = value.toString().toStdString();
  if (text.find('\0') != std::string::npos) return {};
  return text.starts_with('/') ? text : pathFromFileUrl(text);
}

// Answered before anything is done with it: files may take longer than the other's patience.
void read(QLocalSocket& socket, const std::function<void(const StartRequest&)>& received) {
  if (socket.bytesAvailable() > kLongestMessageInBytes) return socket.abort();
  const auto request = requestOfMessage(socket.peek(socket.bytesAvailable()));
  if (!request) return;
  socket.readAll();
  socket.write(kAnswer);
  socket.flush();
  socket.disconnectFromServer();
  received(*request);
}

// The socket is a child of its server, until it is disconnected.
void serve(QLocalSocket& socket, const std::function<void(const StartRequest&)>& received) {
  QObject::connect(&socket, &QLocalSocket::disconnected, &socket, &QObject::deleteLater);
  QObject::connect(&socket, &QLocalSocket::readyRead, &socket,
                   [&socket, received] { read(socket, received); });
}

}  // namespace

QByteArray messageOfRequest(const StartRequest& request) {
  QJsonArray files;
  for (const std::string& path : request.paths) files.append(jsonOfPath(path));
  const QJsonObject message = {{QStringLiteral("files"), files},
                               {QStringLiteral("token"), QString::fromStdString(request.activationToken)}};
  return QJsonDocument(message).toJson(QJsonDocument::Compact) + '\n';
}

std::optional<StartRequest> requestOfMessage(const QByteArray& message) {
  // An object is whole with its last brace: no need to read the others' beginnings again and again.
  if (!message.trimmed().endsWith('}')) return {};
  const QJsonDocument document = QJsonDocument::fromJson(message);
  if (!document.isObject()) return {};
  StartRequest request;
  for (const auto& file : document[QStringLiteral("files")].toArray())
    if (auto path = pathOfJson(file)) request.paths.push_back(std::move(*path));
  request.activationToken = document[QStringLiteral("token")].toString().toStdString();
  return request;
}

QString runtimeFolder() {
  return QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
}

SingleInstance::SingleInstance(const QString& folder) : folder_(folder) {}

SingleInstance::~SingleInstance() {
  if (lock_ >= 0) ::close(lock_);
}

QString SingleInstance::socketPath() const {
  return folder_ + QStringLiteral("/org.quillet.Quillet.socket");
}

// The kernel drops the lock of a process that has ended, so it is never stale, as the socket may be.
bool SingleInstance::takeLock() {
  const QByteArray path = folder_.toUtf8() + "/org.quillet.Quillet.lock";
  const int descriptor = ::open(path.constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
  if (descriptor < 0) return true;
  if (::flock(descriptor, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) {
    ::close(descriptor);
    return false;
  }
  lock_ = descriptor;
  return true;
}

SingleInstance::Role SingleInstance::start(const StartRequest& request, int patience) {
  const QDeadlineTimer deadline(patience);
  const QByteArray message = messageOfRequest(request);
  do {
    if (takeLock()) return Role::First;
    // Who has the lock may not listen yet, or no more.
    if (handOver(message, deadline)) return Role::HandedOver;
    QThread::msleep(kPause);
  } while (!deadline.hasExpired());
  return Role::Unanswered;
}

bool SingleInstance::handOver(const QByteArray& message, const QDeadlineTimer& deadline) const {
  const auto rest = [&deadline] { return std::max(1, static_cast<int>(deadline.remainingTime())); };
  QLocalSocket socket;
  socket.connectToServer(socketPath());
  if (!socket.waitForConnected(rest())) return false;
  socket.write(message);
  while (socket.bytesToWrite() > 0)
    if (!socket.waitForBytesWritten(rest())) return false;
  while (!socket.canReadLine())
    if (!socket.waitForReadyRead(rest())) return false;
  return true;
}

std::unique_ptr<QLocalServer> SingleInstance::listen(
    std::function<void(const StartRequest&)> received) const {
  if (lock_ < 0) {
    logToSystem(u"No place for the socket of a single Quillet: " + u16String(folder_));
    return nullptr;
  }
  // With the lock in hand a socket that is there belongs to nobody.
  QLocalServer::removeServer(socketPath());
  auto server = std::make_unique<QLocalServer>();
  server->setSocketOptions(QLocalServer::UserAccessOption);
  QObject::connect(server.get(), &QLocalServer::newConnection, server.get(),
                   [server = server.get(), received = std::move(received)] {
                     while (QLocalSocket* socket = server->nextPendingConnection()) serve(*socket, received);
                   });
  if (server->listen(socketPath())) return server;
  logToSystem(u"No socket for a single Quillet: " + u16String(server->errorString()));
  return nullptr;
}

}  // namespace quillet::ui
