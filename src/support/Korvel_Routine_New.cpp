#include "support/Korvel_Routine_New.h"

#include "platform/FileEnumeration.h"
#include "platform/FileTests.h"
#include "platform/KnownFolders.h"
#include "platform/Paths.h"
#include "platform/SystemSettings.h"

#include <QLocale>

#include <algorithm>
#include <optional>

namespace {

// The remainder of a division by up to 2^30 fits with room to spare, so rounding is exact.
QString WithTwoDecimals(qint64 bytes, qint64 unit) {
  const qint64 hundredths = (bytes % unit * 200 + unit) / (2 * unit);
  const qint64 whole = bytes / unit + hundredths / 100;
  return QString::number(whole) + QLocale().decimalPoint() +
         QString::number(hundredths % 100).rightJustified(2, u'0');
}

}  // namespace

QString SizeToText(qint64 bytes) {
  constexpr qint64 kKilo = 1024;
  constexpr qint64 kMega = kKilo * kKilo;
  constexpr qint64 kGiga = kMega * kKilo;
  if (bytes < kKilo) return QString::number(bytes) + u" Byte"_qs;
  if (bytes < kMega) return WithTwoDecimals(bytes, kKilo) + u" KB"_qs;
  if (bytes < kGiga) return WithTwoDecimals(bytes, kMega) + u" MB"_qs;
  return WithTwoDecimals(bytes, kGiga) + u" GB"_qs;
}

QString GetWindowsDir() {
  return GetWindowsFolder();
}

QString GetSystemDir() {
  return GetSystemFolder();
}

QString GetSpecialFolderPath(int number) {
  return GetKnownFolder(static_cast<TSpecialFolder>(number));
}

QString GetFileTypeName(const QString& extension) {
  if (extension.isEmpty()) return u"FILE"_qs;
  const QString type = FileTypeText(extension);
  if (!type.isEmpty()) return type;
  return RightOfLastChar(extension, 0, u'.').toUpper() + u" FILE"_qs;
}

QStringList SplitToList(const QString& text, const QString& delimiter) {
  return delimiter.isEmpty() ? QStringList(text) : text.split(delimiter);
}

QString LeftOfChar(const QString& text, int count, QChar character) {
  const qsizetype length = character.isNull() ? count : text.indexOf(character);
  return text.left(std::max(length, qsizetype{0}));
}

QString RightOfLastChar(const QString& text, int count, QChar character) {
  if (character.isNull()) return text.right(std::max(count, 0));
  return text.mid(LastCharPos(text, character, 1));
}

int LastCharPos(const QString& text, QChar character, int n) {
  int found = 0;
  for (qsizetype place = text.size(); place > 0; --place) {
    if (text[place - 1] == character && ++found == n) return static_cast<int>(place);
  }
  return 0;
}

QString TrimBelowChar(const QString& text, QChar character) {
  const auto stays = [character](QChar c) { return c > character; };
  const auto begin = std::find_if(text.begin(), text.end(), stays);
  const auto end = std::find_if(text.rbegin(), std::make_reverse_iterator(begin), stays).base();
  return QString(begin, end - begin);
}

namespace {

// The steps that find the file path in a command line, in their order.
//
// Names compare without regard to the case of ASCII letters and of no other ones.
QString AsciiLower(QString text) {
  for (QChar& c : text)
    if (c >= u'A' && c <= u'Z') c = QChar(c.unicode() + (u'a' - u'A'));
  return text;
}

void RemoveFirst(QString& text, const QString& part) {
  const qsizetype place = text.indexOf(part);
  if (place >= 0) text.remove(place, part.size());
}

void CutAt(QString& text, QChar character) {
  const qsizetype place = text.indexOf(character);
  if (place >= 0) text.truncate(place);
}

// The value goes to the front for as many characters as the name has, and the delimiter behind it, wherever
// the name stands.
void ExpandVariables(QString& text) {
  for (const QString& name : {u"%windir%"_qs, u"%systemroot%"_qs, u"%programfiles%"_qs}) {
    if (!AsciiLower(text).contains(name)) continue;
    const QString value = ExpandEnvironment(name);
    if (value == name) continue;
    text = value + PathDelim + text.mid(name.size() + 1);
    text.replace(QString(2, PathDelim), PathDelim);
  }
}

// Deletes the token where it begins the text, and fewer characters the further to the right it stands.
void ExpandSystemRoot(QString& text) {
  const QString token = PathDelim + u"systemroot"_qs;
  const qsizetype place = AsciiLower(text).indexOf(token);
  if (place < 0) return;
  text.remove(place, std::max(token.size() - place, qsizetype{0}));
  text.prepend(GetWindowsDir());
}

// The blank and the hyphen must stand together somewhere; the cut is made at the first hyphen anywhere.
void CutAtSwitch(QString& text) {
  if (text.contains(u" -"_qs)) CutAt(text, u'-');
}

void BringDriveToFront(QString& text) {
  const qsizetype place = text.indexOf(u":\\"_qs);
  text.remove(0, std::max(place - 1, qsizetype{0}));
}

// The program that runs a library is taken off only if the library is found in a folder of the system.
QString WithoutRunDll(const QString& text) {
  const QString runDll = u"rundll32.exe "_qs;
  if (AsciiLower(text.left(runDll.size())) != runDll) return text;
  const QString library = text.mid(runDll.size());
  if (FileExists(library)) return text;
  for (const QString& folder : {GetWindowsDir(), GetSystemDir()}) {
    const QString path = IncludeTrailingPathDelimiter(folder) + library;
    if (FileExists(path)) return path;
  }
  return text;
}

}  // namespace

QString ExtractCommandPath(const QString& commandLine) {
  const bool drivePaths = PathDelim != u'/';
  QString text = commandLine;
  RemoveFirst(text, u";"_qs);
  if (drivePaths) CutAt(text, u'/');
  RemoveFirst(text, PathDelim + u"??"_qs + PathDelim);
  ExpandVariables(text);
  ExpandSystemRoot(text);
  RemoveFirst(text, u"%1"_qs);
  CutAt(text, u',');
  CutAtSwitch(text);
  text = TrimBelowChar(text, u'"');
  CutAt(text, u'"');
  if (drivePaths) BringDriveToFront(text);
  return WithoutRunDll(text);
}

namespace {

// Hidden, system, read-only and linked folders count for nothing.
bool IsEntered(const QString& name, unsigned attributes) {
  return attributes == kAttributeDirectory && !name.startsWith(u'.');
}

// With a list of the folders to come in place of recursion.
quint64 SumBelow(const QString& root) {
  quint64 total = 0;
  TFileEnumeration enumeration;
  QStringList folders{root};  // each with its delimiter
  while (!folders.isEmpty()) {
    const QString folder = folders.takeLast();
    TFoundFile found;
    for (bool more = enumeration.First(folder, found); more; more = enumeration.Next(found)) {
      total += found.Size;
      if (IsEntered(found.Name, found.Attributes)) folders.append(folder + found.Name + PathDelim);
    }
  }
  return total;
}

}  // namespace

quint64 FolderSizeOf(const QString& pathOrMask) {
  const QString name = ExtractFileName(pathOrMask);
  if (name == u"*.*") return SumBelow(ExtractFilePath(pathOrMask));
  const auto status = name.isEmpty() ? std::nullopt : GetFileStatus(pathOrMask);
  if (!status) return 0;
  return status->Size + (IsEntered(name, status->Attributes) ? SumBelow(pathOrMask + PathDelim) : 0);
}
