#include "htmled/start/running_instance.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <QApplication>
#include <QCryptographicHash>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocalSocket>
#include <cstring>

#include "tvx/base/private_folder.h"

namespace tvx::htmled {
namespace {

constexpr int patience = 5000;  // milliseconds
constexpr qint64 longest_message = 1 << 20;
const QByteArray answer = "opened\n";

/// One for each user and screen. Empty: there can be none.
QByteArray socket_path() {
  std::string folder = absolute_path_in("XDG_RUNTIME_DIR");
  if (folder.empty() || ::access(folder.c_str(), W_OK | X_OK) != 0) folder = private_temporary_folder();
  QByteArray screen;
  for (const char* variable : {"QT_QPA_PLATFORM", "WAYLAND_DISPLAY", "DISPLAY"})
    screen += qgetenv(variable) + '\n';
  const QByteArray path = QByteArray::fromStdString(folder) + "/htmled-" +
                          QCryptographicHash::hash(screen, QCryptographicHash::Sha1).toHex().left(12);
  return folder.empty() || path.size() >= qsizetype(sizeof(sockaddr_un::sun_path)) ? QByteArray() : path;
}

/// An open socket, closed in the end.
class Connection {
 public:
  explicit Connection(const QByteArray& path) : socket_(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, path.constData(), std::size_t(path.size()));
    open_ =
        socket_ >= 0 && ::connect(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
  }
  ~Connection() {
    if (socket_ >= 0) ::close(socket_);
  }
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  bool is_open() const { return open_; }
  bool send(QByteArray bytes) {
    while (!bytes.isEmpty()) {
      const ssize_t count = ::send(socket_, bytes.constData(), std::size_t(bytes.size()), MSG_NOSIGNAL);
      if (count <= 0) return false;
      bytes.remove(0, count);
    }
    return true;
  }
  bool answers() {
    pollfd waited{socket_, POLLIN, 0};
    char first = 0;
    return ::poll(&waited, 1, patience) == 1 && ::recv(socket_, &first, 1, 0) == 1;
  }

 private:
  const int socket_;
  bool open_ = false;
};

}  // namespace

bool hand_to_running_instance(const QStringList& files) {
  const QByteArray path = socket_path();
  if (path.isEmpty()) return false;
  Connection connection(path);
  if (!connection.is_open()) return false;
  QJsonArray paths;
  for (const QString& file : files) paths.append(QFileInfo(file).absoluteFilePath());
  const QJsonObject message{{QStringLiteral("files"), paths},
                            {QStringLiteral("activation"), qEnvironmentVariable("XDG_ACTIVATION_TOKEN")}};
  return connection.send(QJsonDocument(message).toJson(QJsonDocument::Compact) + '\n') &&
         connection.answers();
}

RunningInstance::RunningInstance(QObject* parent) : QObject(parent) {
  const QByteArray path = socket_path();
  if (path.isEmpty()) return;
  constexpr int soon = 200;
  later_.setInterval(soon);
  connect(&later_, &QTimer::timeout, this, &RunningInstance::tell_when_free);
  connect(&server_, &QLocalServer::newConnection, this, [this] {
    while (QLocalSocket* socket = server_.nextPendingConnection()) {
      connect(socket, &QLocalSocket::readyRead, this, [this, socket] { hear(*socket); });
      connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
    }
  });
  server_.setSocketOptions(QLocalServer::UserAccessOption);
  const QString name = QString::fromLocal8Bit(path);
  // Listening would take the socket from a program that has it, and nobody would hear the next start once
  // this program has ended.
  if (Connection(path).is_open()) return;
  QLocalServer::removeServer(name);
  server_.listen(name);
}

void RunningInstance::hear(QLocalSocket& socket) {
  if (!socket.canReadLine()) {
    if (socket.bytesAvailable() > longest_message) socket.abort();
    return;
  }
  const QJsonObject message = QJsonDocument::fromJson(socket.readLine()).object();
  QStringList files;
  for (const QJsonValue& file : message[QStringLiteral("files")].toArray()) files.append(file.toString());
  const QString activation = message[QStringLiteral("activation")].toString();
  if (!activation.isEmpty()) qputenv("XDG_ACTIVATION_TOKEN", activation.toUtf8());
  socket.write(answer);
  socket.flush();
  socket.disconnectFromServer();
  untold_.append(files);
  tell_when_free();
}

// A dialog asks about the document that is in front: none may come before that meanwhile.
void RunningInstance::tell_when_free() {
  if (QApplication::activeModalWidget()) return later_.start();
  later_.stop();
  for (const QStringList& files : std::exchange(untold_, {})) emit started_again(files);
}

}  // namespace tvx::htmled
