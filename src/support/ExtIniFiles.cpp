#include "support/ExtIniFiles.h"

#include "platform/FileTests.h"
#include "platform/Paths.h"
#include "support/Korvel_Routine_New.h"

#include <QLocale>
#include <QStringConverter>

#include <utility>

namespace {

struct TMark {
  const char* Bytes;
  QStringConverter::Encoding Encoding;
};

constexpr TMark kMarks[] = {
    {"\xff\xfe", QStringConverter::Utf16LE},
    {"\xfe\xff", QStringConverter::Utf16BE},
    {"\xef\xbb\xbf", QStringConverter::Utf8},
};

// The longer marks need not come first, since none begins with another. A byte that is no text in the
// encoding of its mark becomes the replacement character; half a letter at the end is dropped.
QString Decoded(const QByteArray& content) {
  for (const TMark& mark : kMarks) {
    if (!content.startsWith(mark.Bytes)) continue;
    const QByteArrayView text = QByteArrayView(content).sliced(QByteArrayView(mark.Bytes).size());
    return QStringDecoder(mark.Encoding, QStringDecoder::Flag::ConvertInitialBom).decode(text);
  }
  return TextFromAnsi(content);
}

// Unit by unit, so that folding never changes a length.
QString Folded(QString text) {
  for (QChar& unit : text)
    unit = unit.toCaseFolded();
  return text;
}

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

QStringList TextLines(const QByteArray& content) {
  return Decoded(content).replace(u'\r', u'\n').split(u'\n', Qt::SkipEmptyParts);
}

QString THashedStringList::Name(int place) const {
  const QString& line = FLines[place];
  return line.left(qMax(line.indexOf(u'='), qsizetype{0}));
}

int THashedStringList::IndexOf(const QString& line) const {
  // Later lines overwrite earlier ones in the index: the one added last is found.
  if (!FTextIndex) {
    FTextIndex.emplace();
    for (int place = 0; place < FLines.size(); ++place)
      FTextIndex->insert(Folded(FLines[place]), place);
  }
  return FTextIndex->value(Folded(line), -1);
}

int THashedStringList::IndexOfName(const QString& name) const {
  if (!FNameIndex) {
    FNameIndex.emplace();
    for (int place = 0; place < FLines.size(); ++place)
      if (FLines[place].contains(u'=')) FNameIndex->insert(Folded(Name(place)), place);
  }
  return FNameIndex->value(Folded(name), -1);
}

std::optional<QString> THashedStringList::Value(const QString& name) const {
  const int place = IndexOfName(name);
  if (place < 0) return std::nullopt;
  // Folding changes no length, so that the name asked for is as long as the line's own.
  return FLines[place].mid(name.size() + 1);
}

void THashedStringList::Assign(const QStringList& lines) {
  FLines = lines;
  Changed();
}

void THashedStringList::Add(const QString& line) {
  FLines.append(line);
  Changed();
}

void THashedStringList::Replace(int place, const QString& line) {
  FLines[place] = line;
  Changed();
}

void THashedStringList::Delete(int place) {
  FLines.removeAt(place);
  Changed();
}

void THashedStringList::Changed() {
  FTextIndex.reset();
  FNameIndex.reset();
}

int TCustomIniFile::ReadInteger(const QString& section, const QString& key, int defaultValue) const {
  const QString text = ReadString(section, key, {});
  const bool hexadecimal = text.startsWith(QLatin1String("0x"), Qt::CaseInsensitive);
  bool valid = false;
  const int value = text.toInt(&valid, hexadecimal ? 16 : 10);
  return valid ? value : defaultValue;
}

void TCustomIniFile::WriteInteger(const QString& section, const QString& key, int value) {
  WriteString(section, key, QString::number(value));
}

bool TCustomIniFile::ReadBool(const QString& section, const QString& key, bool defaultValue) const {
  return ReadInteger(section, key, defaultValue ? 1 : 0) != 0;
}

void TCustomIniFile::WriteBool(const QString& section, const QString& key, bool value) {
  WriteInteger(section, key, value ? 1 : 0);
}

double TCustomIniFile::ReadFloat(const QString& section, const QString& key, double defaultValue) const {
  bool valid = false;
  const double value = ReadString(section, key, {}).toDouble(&valid);
  return valid ? value : defaultValue;
}

void TCustomIniFile::WriteFloat(const QString& section, const QString& key, double value) {
  WriteString(section, key, QString::number(value, 'g', QLocale::FloatingPointShortest));
}

void TExtIniFile::LoadFromFile(const QString& fileName) {
  // Read as a whole before anything is dropped, so that a failure changes nothing.
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
    // A bracket that is closed further to the left makes no head: such a line belongs to the section before
    // it.
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
