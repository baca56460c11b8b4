#include "platform/KnownFolders.h"

#include "platform/Paths.h"
#include "platform/windows/FileEntry.h"

#include <windows.h>

#include <shlobj.h>
#include <array>

namespace {

constexpr int kSpecialFolderUnits = 261;
constexpr UINT kSystemFolderUnits = 255;
constexpr qsizetype kExpandedUnits = 259;

// A folder of the system that is told in a buffer of fixed size.
QString SystemFolder(UINT(WINAPI* ask)(LPWSTR, UINT)) {
  std::array<wchar_t, kSystemFolderUnits> path{};
  const UINT length = ask(path.data(), kSystemFolderUnits);
  if (length == 0 || length >= kSystemFolderUnits) return {};
  return ExcludeTrailingPathDelimiter(QString::fromWCharArray(path.data()));
}

}  // namespace

QString GetKnownFolder(TSpecialFolder folder) {
  std::array<wchar_t, kSpecialFolderUnits> path{};
  if (SHGetSpecialFolderPathW(nullptr, path.data(), static_cast<int>(folder), FALSE) == 0) return {};
  return ExcludeTrailingPathDelimiter(QString::fromWCharArray(path.data()));
}

QString GetDownloadsFolder() {
  return ExpandEnvironment(QStringLiteral("%HOMEDRIVE%%HOMEPATH%\\Downloads")).left(kExpandedUnits);
}

QString GetBrowserFolder(TBrowser browser) {
  if (browser == TBrowser::Chrome)
    return ExpandEnvironment(QStringLiteral("%LocalAppdata%")).left(kExpandedUnits) +
           QStringLiteral("\\Google\\Chrome\\User Data");
  const QString settings = GetKnownFolder(TSpecialFolder::AppData);
  return settings.isEmpty() ? settings
                            : IncludeTrailingPathDelimiter(settings) + QStringLiteral("Mozilla\\Firefox");
}

QString GetWindowsFolder() {
  return SystemFolder(GetWindowsDirectoryW);
}

QString GetSystemFolder() {
  return SystemFolder(GetSystemDirectoryW);
}

QString SystemVolumeRoot() {
  return GetSystemFolder().left(3);
}

QString ExpandEnvironment(const QString& text) {
  std::wstring expanded(kExpandedUnits + 1, L'\0');
  for (;;) {
    const DWORD needed =
        ExpandEnvironmentStringsW(WideText(text), expanded.data(), static_cast<DWORD>(expanded.size()));
    if (needed == 0) return text;
    if (needed <= expanded.size()) return QString::fromWCharArray(expanded.c_str());
    expanded.resize(needed);
  }
}

QString ProgramFile() {
  constexpr size_t kLongestProgramPath = 32768;
  for (std::wstring path(MAX_PATH, L'\0'); path.size() <= kLongestProgramPath; path.resize(path.size() * 2)) {
    const DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    if (length == 0) return {};
    if (length < path.size()) return QString::fromWCharArray(path.data(), static_cast<qsizetype>(length));
  }
  return {};
}

QString ProgramFolder() {
  return ExtractFilePath(ProgramFile());
}
