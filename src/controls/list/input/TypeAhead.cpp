#include "controls/list/input/TypeAhead.h"

#include <algorithm>

void TTypeAhead::Add(const QString& text, qint64 now, qint64 pauseMs) {
  if (now - FLastTyped > pauseMs) FLetters.clear();
  FLetters += text;
  FLastTyped = now;
}

bool TTypeAhead::OneLetterRepeated() const {
  return std::all_of(FLetters.begin(), FLetters.end(),
                     [this](QChar letter) { return letter.toCaseFolded() == FLetters[0].toCaseFolded(); });
}

int TTypeAhead::Find(int count, int current, const std::function<QString(int row)>& text) const {
  if (FLetters.isEmpty()) return -1;
  const bool next = OneLetterRepeated();
  const QString sought = next ? FLetters.left(1) : FLetters;
  const int first = std::max(0, next ? current + 1 : current);
  for (int step = 0; step < count; ++step) {
    const int row = (first + step) % count;
    if (text(row).startsWith(sought, Qt::CaseInsensitive)) return row;
  }
  return -1;
}
