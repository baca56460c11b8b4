// What every ini file can do, whatever holds it: texts by section and key, and typed values made of them.
#pragma once

#include <QString>
#include <QStringList>

// A missing section or key is never an error: it reads as the default, and so does a text that is no value of
// the type asked for.
class TCustomIniFile {
 public:
  TCustomIniFile() = default;
  TCustomIniFile(const TCustomIniFile&) = delete;
  TCustomIniFile& operator=(const TCustomIniFile&) = delete;
  virtual ~TCustomIniFile() = default;

  // A key that is present with an empty value reads as empty text.
  [[nodiscard]] virtual QString ReadString(const QString& section, const QString& key,
                                           const QString& defaultValue) const = 0;
  virtual void WriteString(const QString& section, const QString& key, const QString& value) = 0;

  // Decimal digits with a sign, or "0x" and hexadecimal ones.
  [[nodiscard]] int ReadInteger(const QString& section, const QString& key, int defaultValue) const;
  void WriteInteger(const QString& section, const QString& key, int value);

  // Any integer but 0 is true; written as "1" and "0".
  [[nodiscard]] bool ReadBool(const QString& section, const QString& key, bool defaultValue) const;
  void WriteBool(const QString& section, const QString& key, bool value);

  // With a decimal point in every locale.
  [[nodiscard]] double ReadFloat(const QString& section, const QString& key, double defaultValue) const;
  void WriteFloat(const QString& section, const QString& key, double value);

  // Both replace what the target held: by the key of each line, empty for a line without '='; by the names of
  // all sections.
  virtual void ReadSection(const QString& section, QStringList& keys) const = 0;
  virtual void ReadSections(QStringList& sections) const = 0;

  // Replaces what the target held by the lines of the section as they stand.
  virtual void ReadSectionValues(const QString& section, QStringList& lines) const = 0;

  virtual void EraseSection(const QString& section) = 0;
  virtual void DeleteKey(const QString& section, const QString& key) = 0;

  // Writes what is held in memory to where it came from.
  virtual void UpdateFile() = 0;
};
