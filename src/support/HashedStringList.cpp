#include "support/HashedStringList.h"

namespace {

// Unit by unit, so that folding never changes a length.
QString Folded(QString text) {
  for (QChar& unit : text)
    unit = unit.toCaseFolded();
  return text;
}

}  // namespace

QString THashedStringList::Name(int place) const {
  const QString& line = FLines[place];
  return line.left(qMax(line.indexOf(u'='), qsizetype{0}));
}

int THashedStringList::IndexOf(const QString& line) const {
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
