#include "download/BrowserSettings.h"

#include "download/SettingsFile.h"
#include "platform/AnsiText.h"
#include "platform/FileTests.h"
#include "platform/KnownFolders.h"
#include "platform/Paths.h"
#include "platform/PrivateProfile.h"

#include <algorithm>

namespace {

constexpr char kQuote = '"';

bool EndsLine(char c) {
  return c == '\n' || c == '\r';
}

// The last step is the same for both browsers.
QString DownloadDirIn(const QString& prefs, QByteArrayView marker) {
  QString dir = FindLineValue(ReadSettingsFile(prefs), marker, kQuote).value_or(QString());
  dir.replace(u"\\\\"_qs, u"\\"_qs);
  return dir.isEmpty() ? GetDownloadsFolder() : dir;
}

}  // namespace

QString GetFirefoxPrefsPath() {
  const QString folder = GetBrowserFolder(TBrowser::Firefox);
  if (folder.isEmpty()) return {};
  const QString base = IncludeTrailingPathDelimiter(folder);
  QString profile = ReadPrivateProfile(base + u"profiles.ini"_qs, u"Profile0"_qs, u"Path"_qs, {});
  if (profile.isEmpty()) return {};
  profile.replace(u'/', PathDelim);
  const QString prefs = IncludeTrailingPathDelimiter(base + profile) + u"prefs.js"_qs;
  return FileExists(prefs) ? prefs : QString();
}

QString GetChromePrefsPath() {
  const QString folder = GetBrowserFolder(TBrowser::Chrome);
  if (folder.isEmpty()) return {};
  return IncludeTrailingPathDelimiter(folder) + u"Default"_qs + PathDelim + u"Preferences"_qs;
}

QString GetFirefoxDownloadDir() {
  const QString prefs = GetFirefoxPrefsPath();
  return prefs.isEmpty() ? QString() : DownloadDirIn(prefs, R"(user_pref("browser.download.dir", ")");
}

QString GetChromeDownloadDir() {
  const QString prefs = GetChromePrefsPath();
  return FileExists(prefs) ? DownloadDirIn(prefs, R"("default_directory": ")") : QString();
}

std::optional<QString> FindLineValue(QByteArrayView text, QByteArrayView marker, char terminator) {
  for (auto begin = text.begin(); begin != text.end();) {
    const auto end = std::find_if(begin, text.end(), EndsLine);
    const auto found = std::search(begin, end, marker.begin(), marker.end());
    if (found != end) {
      const auto value = found + marker.size();
      const auto close = std::find(value, end, terminator);
      if (close != end) return TextFromAnsi({value, close});
    }
    begin = std::find_if_not(end, text.end(), EndsLine);
  }
  return std::nullopt;
}
