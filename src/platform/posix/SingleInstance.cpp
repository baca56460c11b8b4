// The lock decides who is the first copy, and the kernel frees it however a process ends; the socket only
// carries calls. A call is one datagram: the token, or nothing. Nobody but this user can write to either, as
// the runtime folder is checked to be his alone, but a token is cut and calls are counted all the same.
#include "platform/SingleInstance.h"

#include "platform/posix/FileDescriptor.h"

#include <QCryptographicHash>
#include <QDeadlineTimer>
#include <QSocketNotifier>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>
#include <array>
#include <cerrno>

namespace {

constexpr int kPollMicroseconds = 2000;
constexpr size_t kLongestToken = 1024;  // bytes; what is longer is no token
// A caller that never ends must not keep the event loop here; what is left comes with the next activation.
constexpr int kCallsAtOnce = 1000;

// The runtime folder if it can be trusted: of this user, and nobody else may enter it.
TFileDescriptor OpenRuntimeFolder() {
  TFileDescriptor folder = OpenPath(qgetenv("XDG_RUNTIME_DIR"), O_RDONLY | O_DIRECTORY);
  struct stat status {};
  const bool safe = folder.IsOpen() && fstat(folder.Get(), &status) == 0 && status.st_uid == geteuid() &&
                    (status.st_mode & (S_IRWXG | S_IRWXO)) == 0;
  return safe ? std::move(folder) : TFileDescriptor();
}

// The file is never removed, since a copy might just be waiting for it. The sticky bit keeps it from those
// who tidy the folder up.
TFileDescriptor OpenLockFile(int folder, const QByteArray& name) {
  TFileDescriptor file(
      openat(folder, name.constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, S_IRUSR | S_IWUSR));
  if (file.IsOpen()) fchmod(file.Get(), S_ISVTX | S_IRUSR | S_IWUSR);
  return file;
}

// A socket's path has little room: this one leads through the open folder.
sockaddr_un AddressOf(int folder, const QByteArray& name) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  const QByteArray path = "/proc/self/fd/" + QByteArray::number(folder) + '/' + name;
  path.left(sizeof address.sun_path - 1).toStdString().copy(address.sun_path, sizeof address.sun_path - 1);
  return address;
}

TFileDescriptor MakeSocket() {
  return TFileDescriptor(socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
}

// What the desktop gave this start, by the newer way or the older one.
QByteArray ActivationToken() {
  const QByteArray token = qgetenv("XDG_ACTIVATION_TOKEN");
  return (token.isEmpty() ? qgetenv("DESKTOP_STARTUP_ID") : token).left(kLongestToken);
}

}  // namespace

struct TSingleInstance::TGuard {
  TFileDescriptor Folder;
  TFileDescriptor Lock;    // held from the making to the end of the process, which frees it however it ends
  TFileDescriptor Socket;  // of the first copy
  sockaddr_un Address{};
  std::unique_ptr<QSocketNotifier> Notifier;

  // Also where the folder's file system knows no locks.
  [[nodiscard]] bool TakeLock() const {
    return flock(Lock.Get(), LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
  }

  // The lock is held, so a socket that is there has nobody behind it.
  void Listen(const QByteArray& name) {
    unlinkat(Folder.Get(), name.constData(), 0);
    Socket = MakeSocket();
    bind(Socket.Get(), reinterpret_cast<const sockaddr*>(&Address), sizeof Address);
  }

  // False if nobody listens (yet), or the first copy has left too many calls untaken.
  [[nodiscard]] bool Call(const QByteArray& token) const {
    const TFileDescriptor caller = MakeSocket();
    return sendto(caller.Get(), token.constData(), static_cast<size_t>(token.size()), MSG_NOSIGNAL,
                  reinterpret_cast<const sockaddr*>(&Address), sizeof Address) >= 0;
  }
};

// Whoever has the lock is the first. One that neither gets it nor is heard tries both again for a while: the
// first copy may be on its way up, or down.
TSingleInstance::TSingleInstance(const QString& identity) : FGuard(std::make_unique<TGuard>()) {
  const QByteArray name =
      "tallyscope-" +
      QCryptographicHash::hash(identity.toUtf8(), QCryptographicHash::Sha256).toHex().left(32);
  FGuard->Folder = OpenRuntimeFolder();
  if (!FGuard->Folder.IsOpen()) return;
  FGuard->Lock = OpenLockFile(FGuard->Folder.Get(), name + ".lock");
  if (!FGuard->Lock.IsOpen()) return;
  FGuard->Address = AddressOf(FGuard->Folder.Get(), name + ".socket");

  const QByteArray token = ActivationToken();
  const QDeadlineTimer deadline(kCallMs);
  do {
    if (FGuard->TakeLock()) {
      FGuard->Listen(name + ".socket");
      return;
    }
    if (FGuard->Call(token)) break;
    usleep(kPollMicroseconds);
  } while (!deadline.hasExpired());
  FIsFirst = false;
}

TSingleInstance::~TSingleInstance() = default;

// Calls that have come together are one.
void TSingleInstance::OnCall(std::function<void(const QByteArray& token)> called) {
  if (!FGuard->Socket.IsOpen()) return;
  const int socket = FGuard->Socket.Get();
  FGuard->Notifier = std::make_unique<QSocketNotifier>(socket, QSocketNotifier::Read);
  QObject::connect(FGuard->Notifier.get(), &QSocketNotifier::activated, FGuard->Notifier.get(),
                   [socket, called = std::move(called)] {
                     std::array<char, kLongestToken> buffer;
                     QByteArray token;
                     ssize_t length = recv(socket, buffer.data(), buffer.size(), 0);
                     if (length < 0) return;
                     for (int calls = 0; length >= 0 && calls < kCallsAtOnce; ++calls) {
                       if (length > 0) token = QByteArray(buffer.data(), length);
                       length = recv(socket, buffer.data(), buffer.size(), 0);
                     }
                     called(token);
                   });
}
