// An ini file held wholly in memory and filled from a file on request: the language files and the settings
// of other applications. It never writes to disk.
#pragma once

#include "support/CustomIniFile.h"
#include "support/HashedStringList.h"

#include <stdexcept>
#include <vector>

// A file that can't be read.
class TIniFileError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Sections and keys are found without regard to case. Nothing is merged: a second section or key of one name
// is kept beside the first, and a lookup finds the last one. Main thread.
class TExtIniFile : public TCustomIniFile {
 public:
  // Replaces the whole content. A byte-order mark of UTF-8 or UTF-16 decides the encoding; without one it is
  // the system's 8-bit encoding. Throws TIniFileError and changes nothing if the file can't be read.
  void LoadFromFile(const QString& fileName);

  // Replaces the whole content by these lines: "[section]", "key = value" with the blanks round the first '='
  // taken off, "; comment". Lines ahead of the first section are dropped.
  void SetStrings(const QStringList& lines);

  void Clear();

  [[nodiscard]] QString ReadString(const QString& section, const QString& key,
                                   const QString& defaultValue) const override;
  void WriteString(const QString& section, const QString& key, const QString& value) override;
  void ReadSection(const QString& section, QStringList& keys) const override;
  void ReadSections(QStringList& sections) const override;
  void ReadSectionValues(const QString& section, QStringList& lines) const override;
  void EraseSection(const QString& section) override;
  void DeleteKey(const QString& section, const QString& key) override;

  // Does nothing.
  void UpdateFile() override {}

 private:
  [[nodiscard]] const THashedStringList* FindSection(const QString& section) const;
  [[nodiscard]] THashedStringList* FindSection(const QString& section);
  THashedStringList& AddSection(const QString& section);

  THashedStringList FSections;                   // the names
  std::vector<THashedStringList> FSectionLines;  // at the same places, the lines of each
};
