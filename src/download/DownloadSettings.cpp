#include "download/DownloadSettings.h"

#include "platform/FileTests.h"
#include "platform/KnownFolders.h"
#include "platform/Paths.h"
#include "platform/SystemSettings.h"
#include "platform/XmlDocument.h"
#include "support/ExtIniFiles.h"

#include <algorithm>
#include <limits>

namespace {

TRegistryRoot RootOf(const QString& name) {
  if (name == u"HKEY_LOCAL_MACHINE") return TRegistryRoot::LocalMachine;
  if (name == u"HKEY_CURRENT_CONFIG") return TRegistryRoot::CurrentConfig;
  return TRegistryRoot::CurrentUser;
}

// Unit by unit, as a path may hold surrogates that are no text.
QString RegistryText(const TRegistryValue& value) {
  // A numeric value or one with variables is no folder; types that the reader has no name for pass as text.
  if (value.Type != TRegistryType::String && value.Type != TRegistryType::Unknown) return {};
  const QString text(reinterpret_cast<const QChar*>(value.Bytes.constData()), value.Bytes.size() / 2);
  return text.left(text.indexOf(QChar()));
}

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

// The preferences of a browser can be longer than the usual bound of a file that is read whole.
QByteArray ReadSettingsFile(const QString& file) {
  const auto content = ReadWholeFile(file, std::numeric_limits<int>::max());
  if (!content) throw TSettingsError("can't read " + file.toStdString());
  return *content;
}

QString ReadRegistryValue(const QString& rootName, const QString& keyPath, const QString& valueName) {
  const auto value = ReadRegistry(RootOf(rootName), keyPath, valueName);
  return value ? RegistryText(*value) : QString();
}

QString ReadFromRegistry(const QString& rootName, const QString& keyPath, const QString& valueName,
                         const QString& defaultValue) {
  const QString value = ReadRegistryValue(rootName, keyPath, valueName);
  return value.isEmpty() ? defaultValue : value;
}

QString ReadFromIni(const QString& file, const QString& section, const QString& key,
                    const QString& defaultValue) {
  return FileExists(file) ? ReadPrivateProfile(file, section, key, defaultValue) : QString();
}

QString ReadFromDat(const QString& file, const QString& key, const QString& defaultValue) {
  return FileExists(file) ? FindDatValue(ReadSettingsFile(file), key, defaultValue) : QString();
}

QString ReadFromKeyValue(const QString& file, const QString& key) {
  return FileExists(file) ? FindKeyValue(ReadSettingsFile(file), key) : QString();
}

QString ReadFromXml(const QString& file, const QString& path, const QString& defaultValue) {
  return FileExists(file) ? LoadXml(file).SelectText(path).value_or(defaultValue) : QString();
}

QString FindKeyValue(const QByteArray& content, const QString& key) {
  for (const QString& line : TextLines(content)) {
    const qsizetype equals = line.indexOf(u'=');
    // The blanks round the '=' belong to key and value: such files are written by programs, without any.
    if (equals < 0 || CompareText(line.left(equals), key) != 0) continue;
    QString value = line.mid(equals + 1);
    // Only a backslash and a colon are written escaped in the paths that these files hold.
    value.replace(u"\\\\"_qs, u"\\"_qs).replace(u"\\:"_qs, u":"_qs);
    // Of a list of folders the first one counts, its semicolon included.
    const qsizetype semicolon = value.indexOf(u';');
    return semicolon < 0 ? value : value.left(semicolon + 1);
  }
  return {};
}

QString FindDatValue(QByteArrayView bytes, const QString& key, const QString& defaultValue) {
  QString token;
  qsizetype position = 1;  // behind the letter that opens the outer dictionary
  while (position < bytes.size()) {
    position = NextDatToken(bytes, position, token);
    if (position == 0) break;
    if (token == key) {
      (void)NextDatToken(bytes, position, token);
      return token;
    }
  }
  return defaultValue;
}

// The layout is "<digits>:<that many bytes>", one behind the other. What stands between two strings (the
// letters that open lists and dictionaries, numbers) is not taken apart: the digits are read backwards from
// the colon, so that whatever is ahead of them is passed over. Neither letters nor numbers hold a colon; one
// in a string is stepped over with the string.
qsizetype NextDatToken(QByteArrayView bytes, qsizetype position, QString& token) {
  token.clear();
  const auto colon = std::find(bytes.begin() + std::min(position, bytes.size()), bytes.end(), ':');
  if (colon == bytes.end()) return 0;
  const qsizetype start = colon - bytes.begin() + 1;
  const qsizetype length = TrailingNumber(bytes.sliced(position, start - 1 - position));
  if (length > bytes.size() - start) return 0;
  token = QString::fromLatin1(bytes.sliced(start, length));
  return start + length;
}

int TrailingNumber(QByteArrayView bytes) {
  const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
  const auto digits = std::find_if_not(bytes.rbegin(), bytes.rend(), isDigit).base();
  qint64 number = 0;
  for (auto digit = digits; digit != bytes.end(); ++digit) {
    // Checked at each digit, so that no count of digits overflows the wider type.
    number = number * 10 + (*digit - '0');
    if (number > std::numeric_limits<int>::max()) throw TSettingsError("a length beyond all bounds");
  }
  return static_cast<int>(number);
}

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
    // Within the line alone: a marker or value that runs on into the next one is none.
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
