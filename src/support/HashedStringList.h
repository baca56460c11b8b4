// Lines in order, found by their text or by their name without regard to case.
#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

#include <optional>

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
