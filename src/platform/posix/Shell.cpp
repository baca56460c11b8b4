#include "platform/Shell.h"

#include "platform/Paths.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDesktopServices>
#include <QDir>
#include <QGuiApplication>
#include <QRegularExpression>
#include <QStringList>
#include <QWindow>

#include <xcb/xcb.h>
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace {

// Asks the desktop's file manager, which may have to be started first, and calls the function if there is
// none or it refuses. The URI of a name that is no valid UTF-8 has its bytes.
void AskFileManager(const QString& method, const QString& path, const std::function<void()>& otherwise) {
  QDBusMessage call = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.FileManager1"),
                                                     QStringLiteral("/org/freedesktop/FileManager1"),
                                                     QStringLiteral("org.freedesktop.FileManager1"), method);
  const QByteArray uri = "file://" + NameToBytes(path).toPercentEncoding("/");
  call << QStringList{QString::fromLatin1(uri)} << QString();
  auto* const watcher = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(call));
  QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher, [watcher, otherwise] {
    if (watcher->isError()) otherwise();
    watcher->deleteLater();
  });
}

xcb_atom_t AtomOf(xcb_connection_t* x, const char* name) {
  const auto cookie = xcb_intern_atom(x, 0, static_cast<uint16_t>(std::strlen(name)), name);
  const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> reply(
      xcb_intern_atom_reply(x, cookie, nullptr), &std::free);
  return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

xcb_window_t RootOf(xcb_connection_t* x) {
  return xcb_setup_roots_iterator(xcb_get_setup(x)).data->root;
}

// A startup identifier of X11 ends in the time of the user's click, by which the window manager judges who
// may take the keyboard. 0 if there is none.
uint32_t TimeOf(const QByteArray& token) {
  const auto at = token.lastIndexOf("_TIME");
  return at < 0 ? 0 : token.mid(at + 5).toUInt();
}

// Qt's own request bears the time of the last click in this program, which is too old.
void RequestActivation(xcb_connection_t* x, xcb_window_t window, uint32_t time) {
  constexpr uint32_t kFromApplication = 1;
  xcb_client_message_event_t request{};
  request.response_type = XCB_CLIENT_MESSAGE;
  request.format = 32;
  request.window = window;
  request.type = AtomOf(x, "_NET_ACTIVE_WINDOW");
  request.data.data32[0] = kFromApplication;
  request.data.data32[1] = time;
  xcb_send_event(x, 0, RootOf(x), XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                 reinterpret_cast<const char*>(&request));
}

// Tells the desktop that the start has come to its end, so that it stops to show one. The text goes in pieces
// of 20 bytes, its end marked by a null.
void EndStartup(xcb_connection_t* x, xcb_window_t window, const QByteArray& token) {
  QByteArray text = "remove: ID=\"" + token + "\"";
  text.append('\0');
  xcb_client_message_event_t message{};
  message.response_type = XCB_CLIENT_MESSAGE;
  message.format = 8;
  message.window = window;
  message.type = AtomOf(x, "_NET_STARTUP_INFO_BEGIN");
  constexpr qsizetype kPiece = sizeof message.data;
  for (qsizetype at = 0; at < text.size(); at += kPiece) {
    const auto size = static_cast<size_t>(std::min(kPiece, text.size() - at));
    std::memset(&message.data, 0, sizeof message.data);
    std::memcpy(&message.data, text.constData() + at, size);
    xcb_send_event(x, 0, RootOf(x), XCB_EVENT_MASK_PROPERTY_CHANGE, reinterpret_cast<const char*>(&message));
    message.type = AtomOf(x, "_NET_STARTUP_INFO");
  }
}

void AskWindowManager(const QWindow& window, const QByteArray& token) {
  const auto* native = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
  if (native == nullptr || token.isEmpty()) return;
  xcb_connection_t* x = native->connection();
  const auto id = static_cast<xcb_window_t>(window.winId());
  if (const uint32_t time = TimeOf(token)) RequestActivation(x, id, time);
  EndStartup(x, id, token);
  xcb_flush(x);
}

}  // namespace

QUrl TargetUrl(const QString& target) {
  static const QRegularExpression scheme(QStringLiteral("^[A-Za-z][A-Za-z0-9+.-]+:"));
  if (scheme.match(target).hasMatch()) return QUrl(target);
  const QString path =
      IsAbsolutePath(target) ? target : IncludeTrailingPathDelimiter(QDir::currentPath()) + target;
  return QUrl::fromEncoded("file://" + NameToBytes(path).toPercentEncoding("/:"));
}

bool OpenTarget(const QString& target) {
  return !target.isEmpty() && QDesktopServices::openUrl(TargetUrl(target));
}

bool StartProgram(const QString&, const QString&) {
  return false;
}

bool OpenFile(const QString& path, QWindow*, TShowWindow) {
  return OpenTarget(path);
}

void ShowInFileManager(const QString& path) {
  AskFileManager(QStringLiteral("ShowItems"), path, [path] { OpenTarget(ExtractFileDir(path)); });
}

void ShowPropertiesDialog(const QString& path, const std::function<void()>& otherwise) {
  AskFileManager(QStringLiteral("ShowItemProperties"), path, otherwise);
}

// Under Wayland Qt takes the token from the environment, where it must not stay for others to inherit.
bool ForceForeground(QWindow& window, const QByteArray& token) {
  const bool wayland = QGuiApplication::platformName().startsWith(u"wayland"_qs);
  if (wayland && !token.isEmpty()) qputenv("XDG_ACTIVATION_TOKEN", token);
  window.setWindowStates(window.windowStates() & ~Qt::WindowMinimized);
  window.raise();
  window.requestActivate();
  if (wayland) qunsetenv("XDG_ACTIVATION_TOKEN");
  AskWindowManager(window, token);
  return true;
}
