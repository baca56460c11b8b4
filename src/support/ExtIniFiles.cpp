#include "support/ExtIniFiles.h"

#include "platform/FileTests.h"
#include "support/Korvel_Routine_New.h"
#include "support/TextLines.h"

#include <utility>

namespace {

QString Trimmed(const QString& text) {
  return TrimBelowChar(text, u' ');
}

bool IsSectionHead(const QString& line) {
  return line.startsWith(u'[') && line.endsWith(u']');
}

QString WithoutBlanksRoundEquals(const QString& line) {
  const qsizetype equals = line.indexOf(u'=');
  if (equals < 0) return line;
  return Trimmed(line.left(equals)) + u'=' + Trimmed(line.mid(equals + 1));
}

}  // namespace

void TExtIniFile::LoadFromFile(const QString& fileName) {
  const auto content = ReadWholeFile(fileName);
  if (!content) throw TIniFileError("can't read " + fileName.toStdString());
  SetStrings(TextLines(*content));
}

void TExtIniFile::SetStrings(const QStringList& lines) {
  Clear();
  THashedStringList* section = nullptr;
  for (const QString& untrimmed : lines) {
    const QString line = Trimmed(untrimmed);
    if (line.isEmpty() || line.startsWith(u';')) continue;
    if (IsSectionHead(line)) {
      section = &AddSection(Trimmed(line.mid(1, line.size() - 2)));
    } else if (section != nullptr) {
      section->Add(WithoutBlanksRoundEquals(line));
    }
  }
}

void TExtIniFile::Clear() {
  FSections.Clear();
  FSectionLines.clear();
}

QString TExtIniFile::ReadString(const QString& section, const QString& key,
                                const QString& defaultValue) const {
  const THashedStringList* lines = FindSection(section);
  return lines == nullptr ? defaultValue : lines->Value(key).value_or(defaultValue);
}

void TExtIniFile::WriteString(const QString& section, const QString& key, const QString& value) {
  THashedStringList* lines = FindSection(section);
  if (lines == nullptr) lines = &AddSection(section);
  const QString line = key + u'=' + value;
  const int place = lines->IndexOfName(key);
  if (place < 0) {
    lines->Add(line);
  } else {
    lines->Replace(place, line);
  }
}

void TExtIniFile::ReadSection(const QString& section, QStringList& keys) const {
  keys.clear();
  const THashedStringList* lines = FindSection(section);
  if (lines == nullptr) return;
  for (int place = 0; place < lines->Lines().size(); ++place)
    keys.append(lines->Name(place));
}

void TExtIniFile::ReadSections(QStringList& sections) const {
  sections = FSections.Lines();
}

void TExtIniFile::ReadSectionValues(const QString& section, QStringList& lines) const {
  const THashedStringList* found = FindSection(section);
  lines = found == nullptr ? QStringList() : found->Lines();
}

void TExtIniFile::EraseSection(const QString& section) {
  const int place = FSections.IndexOf(section);
  if (place < 0) return;
  FSections.Delete(place);
  FSectionLines.erase(FSectionLines.begin() + place);
}

void TExtIniFile::DeleteKey(const QString& section, const QString& key) {
  THashedStringList* lines = FindSection(section);
  const int place = lines == nullptr ? -1 : lines->IndexOfName(key);
  if (place >= 0) lines->Delete(place);
}

const THashedStringList* TExtIniFile::FindSection(const QString& section) const {
  const int place = FSections.IndexOf(section);
  return place < 0 ? nullptr : &FSectionLines[static_cast<size_t>(place)];
}

THashedStringList* TExtIniFile::FindSection(const QString& section) {
  return const_cast<THashedStringList*>(std::as_const(*this).FindSection(section));
}

THashedStringList& TExtIniFile::AddSection(const QString& section) {
  FSections.Add(section);
  return FSectionLines.emplace_back();
}
