// The XDG base directories and user directories.
#include "platform/KnownFolders.h"

#include "platform/Paths.h"

#include <QStandardPaths>

#include <pwd.h>
#include <unistd.h>
#include <array>
#include <optional>
#include <vector>

namespace {

QString HomeFolder() {
  const QByteArray home = qgetenv("HOME");
  if (home.startsWith('/')) return ExcludeTrailingPathDelimiter(NameFromBytes(home));
  std::vector<char> buffer(16 * 1024);
  passwd entry{};
  passwd* found = nullptr;
  const bool known =
      getpwuid_r(getuid(), &entry, buffer.data(), buffer.size(), &found) == 0 && found != nullptr;
  return known ? ExcludeTrailingPathDelimiter(NameFromBytes(entry.pw_dir)) : QString();
}

// A base directory that is not absolute counts as not set.
QString BaseFolder(const char* variable, const QString& below) {
  const QByteArray folder = qgetenv(variable);
  if (folder.startsWith('/')) return ExcludeTrailingPathDelimiter(NameFromBytes(folder));
  const QString home = HomeFolder();
  return home.isEmpty() ? QString() : IncludeTrailingPathDelimiter(home) + below;
}

// The first folder of the search list for settings of all users.
QString CommonSettingsFolder() {
  for (const QByteArray& folder : qgetenv("XDG_CONFIG_DIRS").split(':')) {
    if (folder.startsWith('/')) return ExcludeTrailingPathDelimiter(NameFromBytes(folder));
  }
  return QStringLiteral("/etc/xdg");
}

// The variables that other systems set and this one lacks.
std::optional<QString> GivenVariable(const QString& name) {
  const QString upper = name.toUpper();
  if (upper == QLatin1String("HOMEPATH") || upper == QLatin1String("USERPROFILE")) return HomeFolder();
  if (upper == QLatin1String("APPDATA")) return GetKnownFolder(TSpecialFolder::AppData);
  if (upper == QLatin1String("LOCALAPPDATA")) return GetKnownFolder(TSpecialFolder::LocalAppData);
  return std::nullopt;
}

std::optional<QString> ValueOf(const QString& name) {
  if (CompareText(name, QStringLiteral("HOMEDRIVE")) == 0) return QString();
  const std::optional<QString> given = GivenVariable(name);
  const QByteArray variable = NameToBytes(given ? name.toUpper() : name);
  if (qEnvironmentVariableIsSet(variable)) return NameFromBytes(qgetenv(variable));
  return given;
}

}  // namespace

QString GetKnownFolder(TSpecialFolder folder) {
  switch (folder) {
    case TSpecialFolder::Personal:
      return QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    case TSpecialFolder::Desktop:
      return QStandardPaths::writableLocation(QStandardPaths::DesktopLocation);
    case TSpecialFolder::AppData:
      return BaseFolder("XDG_CONFIG_HOME", QStringLiteral(".config"));
    case TSpecialFolder::LocalAppData:
      return BaseFolder("XDG_DATA_HOME", QStringLiteral(".local/share"));
    case TSpecialFolder::CommonAppData:
      return CommonSettingsFolder();
    case TSpecialFolder::Profile:
      return HomeFolder();
  }
  return {};
}

QString GetDownloadsFolder() {
  const QString home = HomeFolder();
  if (home.isEmpty()) return {};
  const QString folder = QStandardPaths::writableLocation(QStandardPaths::DownloadLocation);
  return folder.isEmpty() || SameFolder(folder, home)
             ? IncludeTrailingPathDelimiter(home) + QStringLiteral("Downloads")
             : folder;
}

QString GetBrowserFolder(TBrowser browser) {
  if (browser == TBrowser::Chrome) {
    const QString settings = GetKnownFolder(TSpecialFolder::AppData);
    return settings.isEmpty() ? settings
                              : IncludeTrailingPathDelimiter(settings) + QStringLiteral("google-chrome");
  }
  const QString home = HomeFolder();
  return home.isEmpty() ? home : IncludeTrailingPathDelimiter(home) + QStringLiteral(".mozilla/firefox");
}

QString GetWindowsFolder() {
  return PathDelim;
}

QString GetSystemFolder() {
  return PathDelim;
}

QString SystemVolumeRoot() {
  return PathDelim;
}

// A percent sign that ends an unknown name may begin the next one.
QString ExpandEnvironment(const QString& text) {
  QString expanded;
  qsizetype place = 0;
  for (;;) {
    const qsizetype begin = text.indexOf(u'%', place);
    const qsizetype end = begin < 0 ? -1 : text.indexOf(u'%', begin + 1);
    if (end < 0) return expanded + text.mid(place);
    expanded += text.mid(place, begin - place);
    const QString name = text.mid(begin + 1, end - begin - 1);
    if (const auto value = name.isEmpty() ? std::nullopt : ValueOf(name)) {
      expanded += *value;
      place = end + 1;
    } else {
      expanded += text.mid(begin, end - begin);
      place = end;
    }
  }
}

QString ProgramFile() {
  std::array<char, 4096> target;
  const ssize_t length = readlink("/proc/self/exe", target.data(), target.size());
  return length > 0 ? NameFromBytes(QByteArrayView(target.data(), length)) : QString();
}

QString ProgramFolder() {
  return ExtractFilePath(ProgramFile());
}
