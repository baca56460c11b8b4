#include "platform/FileActionsGui.h"

#include "platform/Paths.h"
#include "platform/Shell.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QStringList>

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

}  // namespace

bool OpenFile(const QString& path, QWindow*, TShowWindow) {
  return OpenTarget(path);
}

void ShowInFileManager(const QString& path) {
  AskFileManager(QStringLiteral("ShowItems"), path, [path] { OpenTarget(ExtractFileDir(path)); });
}

void ShowPropertiesDialog(const QString& path, const std::function<void()>& otherwise) {
  AskFileManager(QStringLiteral("ShowItemProperties"), path, otherwise);
}
