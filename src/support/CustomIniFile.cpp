#include "support/CustomIniFile.h"

#include <QLocale>

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
