#include "platform/Shell.h"

#include "platform/Paths.h"

#include <QDesktopServices>
#include <QDir>
#include <QRegularExpression>

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
