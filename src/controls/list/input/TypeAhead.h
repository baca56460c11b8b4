// The letters typed in quick succession, and the row they lead to.
#pragma once

#include <QString>

#include <functional>

class TTypeAhead {
 public:
  // Adds letters typed at a time (milliseconds); those older than pauseMs before it are forgotten.
  void Add(const QString& text, qint64 now, qint64 pauseMs);

  // The first of count rows that begins with the letters, without regard to case: from the current row on, or
  // from the next one if a single letter, maybe repeated, was typed. The search goes round; -1 for none.
  [[nodiscard]] int Find(int count, int current, const std::function<QString(int row)>& text) const;

 private:
  [[nodiscard]] bool OneLetterRepeated() const;

  QString FLetters;
  qint64 FLastTyped = 0;
};
