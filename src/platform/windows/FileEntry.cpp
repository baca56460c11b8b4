#include "platform/windows/FileEntry.h"

#include "platform/Paths.h"

#include <QStringList>

namespace {

// What stands before the components of a path, and how much of the path that replaces.
struct TPrefix {
  QString Text;
  qsizetype Length = 0;
};

TPrefix PrefixOf(const QString& path) {
  if (path.startsWith(QLatin1String("\\\\"))) return {QStringLiteral("\\\\?\\UNC\\"), 2};
  return {QStringLiteral("\\\\?\\") + path.left(3), 3};
}

bool HasDriveAndRoot(const QString& path) {
  return path.size() >= 3 && path[1] == u':' && path[2] == u'\\';
}

bool IsShare(const QString& path) {
  return path.size() > 2 && path.startsWith(QLatin1String("\\\\")) && path[2] != u'?' && path[2] != u'.';
}

QString SettledComponents(const QString& path) {
  QStringList settled;
  for (const QString& component : path.split(u'\\', Qt::SkipEmptyParts)) {
    if (component == QLatin1String("..")) {
      if (!settled.isEmpty()) settled.removeLast();
    } else if (component != QLatin1String(".")) {
      settled << component;
    }
  }
  const bool delimiterAtEnd = path.endsWith(u'\\') && !settled.isEmpty();
  return settled.join(u'\\') + (delimiterAtEnd ? QStringLiteral("\\") : QString());
}

}  // namespace

TFileHandle OpenEntry(const QString& path, DWORD rights, DWORD flags) {
  constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  return TakeHandle<TFileHandle>(
      CreateFileW(LongPath(path).c_str(), rights, kShareAll, nullptr, OPEN_EXISTING, flags, nullptr));
}

TSearchHandle OpenSearch(const QString& folder, WIN32_FIND_DATAW& first) {
  const std::wstring pattern = LongPath(IncludeTrailingPathDelimiter(folder)) + L'*';
  return TakeHandle<TSearchHandle>(FindFirstFileExW(
      pattern.c_str(), FindExInfoBasic, &first, FindExSearchNameMatch, nullptr, FIND_FIRST_EX_LARGE_FETCH));
}

std::wstring LongPath(const QString& path) {
  QString native = path;
  native.replace(u'/', u'\\');
  if (HasDriveAndRoot(native) || IsShare(native)) {
    const TPrefix prefix = PrefixOf(native);
    native = prefix.Text + SettledComponents(native.mid(prefix.Length));
  }
  return native.toStdWString();
}
