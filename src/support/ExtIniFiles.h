// Ini files held wholly in memory and filled from a file on request: the language files and the settings of
// other applications. None is ever written to disk.
#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringList>

#include <optional>
#include <stdexcept>
#include <vector>

// The lines of a text file that carries no note of its encoding but, perhaps, a byte-order mark.
// The mark of UTF-16 (either order) or UTF-8 decides and is removed; without one the bytes are in the
// system's ANSI code page. CR, LF and CR LF end a line; empty lines are left out. Re-entrant.
[[nodiscard]] QStringList TextLines(const QByteArray& content);

// Lines in order, found by their text or by their name without regard to case.
//
// A value. The name of a line is what stands before its first '='; a line without one has no name. Of two
// lines that are alike the one added last is found. Lookups cost constant time, but for the first one after a
// change, which builds the index. Places are 0-based, -1 for none. One thread.
class THashedStringList {
 public:
  [[nodiscard]] const QStringList& Lines() const { return FLines; }

  // The line's name; empty if it has none.
  [[nodiscard]] QString Name(int place) const;

  [[nodiscard]] int IndexOf(const QString& line) const;
  [[nodiscard]] int IndexOfName(const QString& name) const;

  // What follows the '=' of the line of this name; nothing if there is no such line.
  [[nodiscard]] std::optional<QString> Value(const QString& name) const;

  void Assign(const QStringList& lines);
  void Add(const QString& line);
  void Replace(int place, const QString& line);
  void Delete(int place);
  void Clear() { Assign({}); }

 private:
  using TIndex = QHash<QString, int>;

  void Changed();

  QStringList FLines;
  mutable std::optional<TIndex> FTextIndex;
  mutable std::optional<TIndex> FNameIndex;
};

// What every ini file can do, whatever holds it: texts by section and key, and typed values made of them.
//
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
