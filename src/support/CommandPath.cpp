// ExtractCommandPath: the steps that find the file path in a command line, in their order.
#include "platform/FileTests.h"
#include "platform/KnownFolders.h"
#include "platform/Paths.h"
#include "support/Korvel_Routine_New.h"

#include <algorithm>

namespace {

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
